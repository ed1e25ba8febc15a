#pragma once
#include <vector>

#include <opencv2/core/mat.hpp>

#include "core/Lane.h"

// Where a region lies in a frame of a given size, in pixels.
struct RegionBox {
    int x = 0;
    int y = 0;
    int width = 0;  // a multiple of 16
    int height = 0;
};

// Cuts the picture of one region out of a source frame: the region's box, with every pixel
// outside its polygon black.
class RegionCutter {
  public:
    // The box of roi (thousandths) in a frame of frameWidth x frameHeight.
    static RegionBox BoxOf(const int roi[4], int frameWidth, int frameHeight);

    // The polygon in box coordinates, filled with 255 on a black mask of the box's size.
    static cv::Mat MaskOf(const std::vector<ShapePoint>& shape, const RegionBox& box,
                          int frameWidth, int frameHeight);

    // The rectangle a cut of width x height at (x, y) may take from a source of the given size:
    // negative corners become 0, a side running over the source stops one pixel short of its
    // edge. Empty when less than 2 x 2 pixels remain.
    static cv::Rect LimitedCut(cv::Size source, int x, int y, int width, int height);

    // The masked cut; empty when the box leaves less than 2 x 2 pixels inside the source. The
    // limits stay one pixel short of the source's right and bottom edges.
    static cv::Mat CutMaskedRegion(const cv::Mat& source, const cv::Mat& mask, int x, int y,
                                   int width, int height);

    // The three steps for one region of a frame.
    static cv::Mat Cut(const cv::Mat& frame, const Lane& lane);
};

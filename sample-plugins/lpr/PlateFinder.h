#pragma once
#include <vector>

#include <opencv2/core/mat.hpp>

// A row of character-like blobs that may be a plate.
struct PlateCandidate {
    cv::Rect box;                 // the plate, with a margin around its characters
    int charHeight = 0;           // median height of its characters
    std::vector<cv::Rect> chars;  // left to right
};

// Finds plates as rows of dark, character-sized blobs on a light ground: adaptive threshold,
// connected components, and grouping by height, baseline and spacing. Character heights run
// from minHeight to maxHeight pixels.
class PlateFinder {
  public:
    static constexpr int kMinCharacters = 4;

    static std::vector<PlateCandidate> Find(const cv::Mat& grey, int minHeight, int maxHeight);
};

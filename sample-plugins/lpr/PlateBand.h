#pragma once
#include <optional>

#include <opencv2/core/mat.hpp>

// Hides the blue band of a European plate before the plate is read. In grey the band is a
// dark strip the plate's full height at its left end, with the country's code in small light
// letters ("I", "D", "NL") that a reader takes for characters of the plate. A band is a run of
// columns dark over most of the plate's height, starting in its first tenth, 4 to 16% of its
// width and a quarter to three fifths of its height wide, with the plate's light ground after
// it; it is painted over with that ground.
class PlateBand {
  public:
    struct Hidden {
        cv::Mat grey;  // the plate and its surroundings, the band painted over
        cv::Rect box;  // the plate in it
    };

    // box: the plate in grey. None when the plate has no band to be seen.
    static std::optional<Hidden> Hide(const cv::Mat& grey, const cv::Rect& box);
};

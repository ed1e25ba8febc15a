#pragma once
#include <optional>

#include <opencv2/core/mat.hpp>

// Turns a slanted plate level before it is read. The reader learnt plates turned by a few
// degrees; a camera that sees the road at an angle gives more. The slant is the turn that makes
// the plate's rows of edges sharpest (the row sums of its edge strength vary most), searched
// over +-20 degrees, every fourth degree and then each degree around the best of those; a
// plate within kLevelDegrees of level is left as it is.
class PlateLeveller {
  public:
    static constexpr double kLevelDegrees = 4.0;

    struct Levelled {
        cv::Mat grey;    // the plate and its surroundings, turned level
        cv::Rect box;    // the plate in it
        double degrees;  // the slant that was taken out, counter-clockwise positive
    };

    // box: the plate's upright bounding box in grey, as the detector gives it.
    static std::optional<Levelled> Level(const cv::Mat& grey, const cv::Rect& box);
    // The slant of the plate in box, in degrees, counter-clockwise positive.
    static double Slant(const cv::Mat& grey, const cv::Rect& box);
};

#pragma once
#include <opencv2/core/mat.hpp>

// Background-difference detector of the regions without a trigger: the box of the picture
// where something moved, at a fixed working width of 320 pixels whatever the region's size.
class MotionArea {
  public:
    static constexpr int kWorkingWidth = 320;
    static constexpr int kMinSide = 20;
    static constexpr double kLearningRate = 0.01;
    static constexpr double kThreshold = 50.0;
    static constexpr int kMovedLevel = 128;
    static constexpr int kMargin = 5;

    // grey: 8-bit, one channel. Returns 0, or -1 for a picture below 20 pixels in a side. The
    // box is left in x1, y1, x2, y2, in the picture's pixels; with nothing moving it stands
    // inverted (x1 > x2).
    int Run(const cv::Mat& grey);

    int x1 = 0;
    int y1 = 0;
    int x2 = 0;
    int y2 = 0;

  private:
    void FindMovedBox(const cv::Mat& difference);

    cv::Mat average_;     // running average, 32-bit float
    cv::Mat background_;  // the average in 8 bits
    cv::Mat small_;       // the present picture at working size
};

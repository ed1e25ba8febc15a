#include "MotionArea.h"

#include <algorithm>

#include <opencv2/imgproc.hpp>

int MotionArea::Run(const cv::Mat& grey) {
    x1 = grey.cols;
    y1 = grey.rows;
    x2 = 0;
    y2 = 0;
    small_.release();
    if (grey.cols < kMinSide || grey.rows < kMinSide)
        return -1;

    const float scale = static_cast<float>(grey.cols / 320.0);
    // A very wide, flat picture still gets one working row.
    const int workingHeight = std::max(1, static_cast<int>(grey.rows / static_cast<double>(scale)));
    cv::resize(grey, small_, cv::Size(kWorkingWidth, workingHeight), 0, 0, cv::INTER_LINEAR);

    double alpha = kLearningRate;
    if (average_.empty() || average_.size() != small_.size()) {
        average_ = cv::Mat::zeros(small_.size(), CV_32FC1);
        background_.release();
        alpha = 1.0;
    }
    cv::accumulateWeighted(small_, average_, alpha);
    cv::convertScaleAbs(average_, background_, 1.0, 0.0);

    cv::Mat difference;
    cv::absdiff(small_, background_, difference);
    cv::threshold(difference, difference, kThreshold, 255.0, cv::THRESH_BINARY);
    const cv::Mat element = cv::Mat::ones(4, 2, CV_8UC1);  // 2 columns x 4 rows
    const cv::Point anchor(1, 2);
    cv::erode(difference, difference, element, anchor);
    cv::dilate(difference, difference, element, anchor);
    FindMovedBox(difference);

    x1 = static_cast<int>(x1 * scale);
    y1 = static_cast<int>(y1 * scale);
    x2 = static_cast<int>(x2 * scale);
    y2 = static_cast<int>(y2 * scale);
    if (x1 < 0)
        x1 = 0;
    if (y1 < 0)
        y1 = 0;
    if (x2 > grey.cols)
        x2 = grey.cols - 1;
    if (y2 > grey.rows)
        y2 = grey.rows - 1;
    return 0;
}

void MotionArea::FindMovedBox(const cv::Mat& difference) {
    const int w = difference.cols;
    const int h = difference.rows;
    x1 = w;
    y1 = h;
    x2 = 0;
    y2 = 0;
    for (int r = 0; r < h; ++r) {
        const uint8_t* row = difference.ptr<uint8_t>(r);
        for (int c = 0; c < w; ++c) {
            if (row[c] <= kMovedLevel)
                continue;
            x1 = std::min(x1, c);
            y1 = std::min(y1, r);
            x2 = std::max(x2, c);
            y2 = std::max(y2, r);
        }
    }
    x1 = std::max(x1 - kMargin, 0);
    y1 = std::max(y1 - kMargin, 0);
    x2 += kMargin;
    if (x2 >= w)
        x2 = w - 1;
    y2 += kMargin;
    if (y2 >= h)
        y2 = h - 1;
}

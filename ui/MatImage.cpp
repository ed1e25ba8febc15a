#include "MatImage.h"

#include <cstring>

#include <opencv2/imgproc.hpp>

wxImage ToWxImage(const cv::Mat& picture) {
    if (picture.empty() || picture.depth() != CV_8U)
        return wxImage();
    cv::Mat rgb;
    if (picture.channels() == 1)
        cv::cvtColor(picture, rgb, cv::COLOR_GRAY2RGB);
    else if (picture.channels() == 4)
        cv::cvtColor(picture, rgb, cv::COLOR_RGBA2RGB);
    else if (picture.channels() == 3)
        rgb = picture.isContinuous() ? picture : picture.clone();
    else
        return wxImage();
    wxImage image(rgb.cols, rgb.rows, false);
    std::memcpy(image.GetData(), rgb.data, static_cast<size_t>(rgb.cols) * rgb.rows * 3);
    return image;
}

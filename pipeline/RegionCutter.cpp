#include "RegionCutter.h"

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <cstring>

#include <opencv2/imgproc.hpp>

namespace {

// Thousandths of a side to pixels, in 64 bits so that a damaged region cannot overflow.
int64_t Scale(int64_t thousandths, int64_t side) {
    return thousandths * side / 1000;
}

int ClampToInt(int64_t value, int64_t low, int64_t high) {
    return static_cast<int>(std::clamp(value, low, high));
}

}  // namespace

RegionBox RegionCutter::BoxOf(const int roi[4], int frameWidth, int frameHeight) {
    const int64_t spanX = std::llabs(int64_t{roi[2]} - roi[0]);
    const int64_t spanY = std::llabs(int64_t{roi[3]} - roi[1]);
    int64_t width = spanX * frameWidth / 4000 * 4;
    width -= width % 16;
    RegionBox box;
    // A box larger than the frame cuts no more than the frame; clamping keeps the mask small
    // for damaged regions and changes nothing for sane ones.
    box.width = ClampToInt(width, 0, frameWidth);
    box.height = ClampToInt(spanY * frameHeight / 1000, 0, frameHeight);
    box.x = ClampToInt(Scale(roi[0], frameWidth), -frameWidth, frameWidth);
    box.y = ClampToInt(Scale(roi[1], frameHeight), -frameHeight, frameHeight);
    return box;
}

cv::Mat RegionCutter::MaskOf(const std::vector<ShapePoint>& shape, const RegionBox& box,
                             int frameWidth, int frameHeight) {
    cv::Mat mask = cv::Mat::zeros(box.height, box.width, CV_8UC1);
    if (shape.empty() || mask.empty())
        return mask;
    std::vector<cv::Point> polygon;
    polygon.reserve(shape.size());
    const int64_t limit = int64_t{4} * std::max(frameWidth, frameHeight) + 16;
    for (const auto& point : shape) {
        const int64_t px = std::llabs(Scale(point.x, frameWidth) - box.x);
        const int64_t py = std::llabs(Scale(point.y, frameHeight) - box.y);
        polygon.emplace_back(ClampToInt(px, 0, limit), ClampToInt(py, 0, limit));
    }
    const cv::Point* contours[] = {polygon.data()};
    const int counts[] = {static_cast<int>(polygon.size())};
    cv::fillPoly(mask, contours, counts, 1, cv::Scalar(255), cv::LINE_8, 0);
    return mask;
}

cv::Rect RegionCutter::LimitedCut(cv::Size source, int x, int y, int width, int height) {
    x = std::max(x, 0);
    y = std::max(y, 0);
    if (source.width < x + width)
        width = source.width - x - 1;
    if (source.height < y + height)
        height = source.height - y - 1;
    if (width <= 1 || height <= 1)
        return cv::Rect();
    return cv::Rect(x, y, width, height);
}

cv::Mat RegionCutter::CutMaskedRegion(const cv::Mat& source, const cv::Mat& mask, int x, int y,
                                      int width, int height) {
    const cv::Rect limited = LimitedCut(source.size(), x, y, width, height);
    x = limited.x;
    y = limited.y;
    width = std::min(limited.width, mask.cols);
    height = std::min(limited.height, mask.rows);
    if (width <= 1 || height <= 1)
        return cv::Mat();
    cv::Mat cut(height, width, source.type());
    const size_t pixelBytes = source.elemSize();
    for (int r = 0; r < height; ++r) {
        const uint8_t* maskRow = mask.ptr<uint8_t>(r);
        const uint8_t* in = source.ptr<uint8_t>(y + r) + static_cast<size_t>(x) * pixelBytes;
        uint8_t* out = cut.ptr<uint8_t>(r);
        for (int c = 0; c < width; ++c, in += pixelBytes, out += pixelBytes) {
            if (maskRow[c] != 0)
                std::memcpy(out, in, pixelBytes);
            else
                std::memset(out, 0, pixelBytes);
        }
    }
    return cut;
}

cv::Mat RegionCutter::Cut(const cv::Mat& frame, const Lane& lane) {
    const RegionBox box = BoxOf(lane.roi, frame.cols, frame.rows);
    const cv::Mat mask = MaskOf(lane.shape, box, frame.cols, frame.rows);
    return CutMaskedRegion(frame, mask, box.x, box.y, box.width, box.height);
}

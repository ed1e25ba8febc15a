#include "PlateBand.h"

#include <algorithm>

#include <opencv2/imgproc.hpp>

#include "PlateReader.h"

namespace {

constexpr double kDarkColumn = 0.75;   // share of a column's rows that are dark in a band
constexpr double kLightColumn = 0.45;  // at most this share dark in a column of the ground

// The share of dark pixels (below the plate's own threshold) in each column of the plate,
// its top and bottom rims left out.
std::vector<double> DarkShares(const cv::Mat& plate) {
    cv::Mat dark;
    cv::threshold(plate, dark, 0, 1, cv::THRESH_BINARY_INV | cv::THRESH_OTSU);
    const int rim = plate.rows / 8;
    cv::Mat columns;
    cv::reduce(dark.rowRange(rim, plate.rows - rim), columns, 0, cv::REDUCE_SUM, CV_64F);
    std::vector<double> shares(static_cast<size_t>(plate.cols));
    for (int x = 0; x < plate.cols; ++x)
        shares[static_cast<size_t>(x)] = columns.at<double>(x) / (plate.rows - 2 * rim);
    return shares;
}

}  // namespace

std::optional<PlateBand::Hidden> PlateBand::Hide(const cv::Mat& grey, const cv::Rect& box) {
    const cv::Rect inside = box & cv::Rect(0, 0, grey.cols, grey.rows);
    if (inside != box || box.width < 24 || box.height < 8)
        return std::nullopt;
    const std::vector<double> shares = DarkShares(grey(box));
    const int width = box.width;
    // The band starts within the plate's first tenth (after its rim and the detector's slack).
    int start = 0;
    while (start < width / 10 && shares[static_cast<size_t>(start)] < kDarkColumn)
        ++start;
    if (start >= width / 10)
        return std::nullopt;
    int end = start;
    while (end < width && shares[static_cast<size_t>(end)] >= kDarkColumn * 0.8)
        ++end;
    // A band is about a third of the plate's height wide (40 of 110 mm); a stroke of a
    // character, however dark, is much narrower.
    const int band = end - start;
    if (band * 100 < width * 4 || band * 100 > width * 16 || band * 4 < box.height ||
        band * 5 > box.height * 3)
        return std::nullopt;
    // After the band, the plate's light ground: a few columns mostly light.
    const int after = std::min(width, end + std::max(2, width / 40));
    for (int x = end; x < after; ++x)
        if (shares[static_cast<size_t>(x)] > kLightColumn)
            return std::nullopt;
    // The surroundings the reader takes with the plate, the band painted with the ground's
    // brightness.
    const cv::Rect around = PlateReader::Surroundings(box, grey.size());
    Hidden hidden;
    hidden.grey = grey(around).clone();
    hidden.box = box - around.tl();
    const cv::Mat ground = grey(cv::Rect(box.x + end, box.y, after - end, box.height));
    const cv::Scalar level = cv::mean(ground);
    hidden.grey(cv::Rect(hidden.box.x, hidden.box.y, end, hidden.box.height)).setTo(level);
    return hidden;
}

#include "PlateLeveller.h"

#include <algorithm>
#include <cmath>

#include <opencv2/imgproc.hpp>

#include "PlateReader.h"

namespace {

constexpr double kSearchDegrees = 20.0;
constexpr double kStepDegrees = 1.0;
constexpr double kRoughStepDegrees = 4.0;
constexpr int kWorkHeight = 48;  // the plate is judged at this height, for speed

constexpr double kPi = 3.14159265358979323846;

// How sharp the rows of edges are: the squared steps between neighbouring row sums.
double RowSharpness(const cv::Mat& edges) {
    cv::Mat rows;
    cv::reduce(edges, rows, 1, cv::REDUCE_SUM, CV_64F);
    double sharpness = 0.0;
    for (int y = 1; y < rows.rows; ++y) {
        const double step = rows.at<double>(y) - rows.at<double>(y - 1);
        sharpness += step * step;
    }
    return sharpness;
}

cv::Mat Turned(const cv::Mat& image, double degrees) {
    const cv::Point2f centre(image.cols / 2.0f, image.rows / 2.0f);
    cv::Mat turned;
    cv::warpAffine(image, turned, cv::getRotationMatrix2D(centre, degrees, 1.0), image.size(),
                   cv::INTER_LINEAR, cv::BORDER_CONSTANT, cv::Scalar(0));
    return turned;
}

}  // namespace

double PlateLeveller::Slant(const cv::Mat& grey, const cv::Rect& box) {
    const cv::Rect cut = box & cv::Rect(0, 0, grey.cols, grey.rows);
    if (cut.width < 8 || cut.height < 8)
        return 0.0;
    cv::Mat small;
    const double scale = static_cast<double>(kWorkHeight) / cut.height;
    cv::resize(grey(cut), small, cv::Size(), scale, scale, cv::INTER_AREA);
    cv::Mat dx, dy, edges;
    cv::Sobel(small, dx, CV_32F, 1, 0);
    cv::Sobel(small, dy, CV_32F, 0, 1);
    cv::magnitude(dx, dy, edges);
    // Every fourth degree first, then each degree around the best of those.
    const auto sharpest = [&](double from, double to, double step, double best) {
        double bestSharpness = -1.0;
        for (double degrees = from; degrees <= to + 1e-9; degrees += step) {
            // Turning the picture by -slant makes a plate slanted by slant level.
            const double sharpness = RowSharpness(Turned(edges, -degrees));
            if (sharpness > bestSharpness) {
                bestSharpness = sharpness;
                best = degrees;
            }
        }
        return best;
    };
    const double rough = sharpest(-kSearchDegrees, kSearchDegrees, kRoughStepDegrees, 0.0);
    return sharpest(std::max(-kSearchDegrees, rough - kRoughStepDegrees + kStepDegrees),
                    std::min(kSearchDegrees, rough + kRoughStepDegrees - kStepDegrees),
                    kStepDegrees, rough);
}

std::optional<PlateLeveller::Levelled> PlateLeveller::Level(const cv::Mat& grey,
                                                            const cv::Rect& box) {
    const double degrees = Slant(grey, box);
    if (std::abs(degrees) < kLevelDegrees)
        return std::nullopt;
    // The plate's own size from its upright bounding box W x H at slant t:
    // W = w cos t + h sin t, H = w sin t + h cos t.
    const double t = std::abs(degrees) * kPi / 180.0;
    const double c = std::cos(t), s = std::sin(t), d = c * c - s * s;
    const double w = (box.width * c - box.height * s) / d;
    const double h = (box.height * c - box.width * s) / d;
    if (w < 8.0 || h < 4.0)
        return std::nullopt;
    // The surroundings turn with the plate, so that the reader sees its usual margin.
    const cv::Rect around = PlateReader::Surroundings(box, grey.size());
    const cv::Point2f centre(static_cast<float>(box.x + box.width / 2.0 - around.x),
                             static_cast<float>(box.y + box.height / 2.0 - around.y));
    Levelled levelled;
    cv::warpAffine(grey(around), levelled.grey, cv::getRotationMatrix2D(centre, -degrees, 1.0),
                   around.size(), cv::INTER_LINEAR, cv::BORDER_REPLICATE);
    levelled.box = cv::Rect(static_cast<int>(std::lround(centre.x - w / 2)),
                            static_cast<int>(std::lround(centre.y - h / 2)),
                            static_cast<int>(std::lround(w)), static_cast<int>(std::lround(h))) &
                   cv::Rect(0, 0, around.width, around.height);
    levelled.degrees = degrees;
    return levelled;
}

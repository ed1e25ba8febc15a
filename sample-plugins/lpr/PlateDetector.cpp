#include "PlateDetector.h"

#include <algorithm>
#include <cmath>

#include <opencv2/imgproc.hpp>

#include "OnnxNetwork.h"

namespace {

constexpr int kStride = 4;
constexpr double kNarrowestPlate = 20.0;  // pixels at the network's scale, inside what it learnt
constexpr double kWidestPlate = 160.0;
constexpr int kAlign = 16;  // the network halves the picture four times and doubles it twice

int Aligned(double length) {
    return std::max(kAlign, static_cast<int>(std::lround(length / kAlign)) * kAlign);
}

float Sigmoid(float x) {
    return 1.0f / (1.0f + std::exp(-x));
}

bool LocalPeak(const cv::Mat& heat, int y, int x) {
    const float value = heat.at<float>(y, x);
    for (int dy = -1; dy <= 1; ++dy)
        for (int dx = -1; dx <= 1; ++dx) {
            const int yy = y + dy;
            const int xx = x + dx;
            if ((dy == 0 && dx == 0) || yy < 0 || xx < 0 || yy >= heat.rows || xx >= heat.cols)
                continue;
            if (heat.at<float>(yy, xx) > value)
                return false;
        }
    return true;
}

}  // namespace

PlateDetector::PlateDetector(const std::string& modelFile)
    : net_(LoadOnnxNetwork(modelFile)), ready_(!net_.empty()) {}

double PlateDetector::InputScale(const cv::Size& picture, int minCharHeight, int maxCharHeight) {
    // A plate is about 4 to 7 character heights wide; the network learnt widths of 16 to 170.
    const double narrowest = 4.0 * std::max(minCharHeight, 1);
    const double widest = 7.0 * std::max(maxCharHeight, minCharHeight + 1);
    const double low = kNarrowestPlate / narrowest;
    const double high = kWidestPlate / widest;
    const double scale = std::sqrt(low * high);
    return std::min({1.0, scale, kInputWidth / static_cast<double>(std::max(picture.width, 1))});
}

std::vector<PlateDetector::Plate> PlateDetector::Find(const cv::Mat& grey, int minCharHeight,
                                                      int maxCharHeight, float minScore) {
    std::vector<Plate> plates;
    if (!ready_ || grey.empty() || grey.type() != CV_8UC1 || grey.cols < kAlign ||
        grey.rows < kAlign)
        return plates;
    const double scale = InputScale(grey.size(), minCharHeight, maxCharHeight);
    const cv::Size input(Aligned(grey.cols * scale), Aligned(grey.rows * scale));
    cv::Mat small;
    cv::resize(grey, small, input, 0, 0, cv::INTER_AREA);
    // The network was trained on (pixel / 255 - 0.5) / 0.5.
    const cv::Mat blob =
        cv::dnn::blobFromImage(small, 2.0 / 255.0, cv::Size(), cv::Scalar(127.5), false, false);
    net_.setInput(blob);
    const cv::Mat out = net_.forward();  // 1 x 5 x H/4 x W/4
    const int rows = out.size[2];
    const int cols = out.size[3];
    const auto map = [&](int channel) {
        return cv::Mat(rows, cols, CV_32F,
                       const_cast<float*>(out.ptr<float>(0, channel)));  // NOLINT: view
    };
    const cv::Mat logits = map(0);
    const double sx = grey.cols / static_cast<double>(input.width);
    const double sy = grey.rows / static_cast<double>(input.height);
    const float minLogit = std::log(minScore / (1.0f - minScore));
    for (int y = 0; y < rows; ++y)
        for (int x = 0; x < cols; ++x) {
            if (logits.at<float>(y, x) < minLogit || !LocalPeak(logits, y, x))
                continue;
            const double cx = (x + map(1).at<float>(y, x)) * kStride;
            const double cy = (y + map(2).at<float>(y, x)) * kStride;
            const double w = std::exp(map(3).at<float>(y, x)) * kStride;
            const double h = std::exp(map(4).at<float>(y, x)) * kStride;
            const cv::Rect box(
                cv::Point(static_cast<int>((cx - w / 2) * sx), static_cast<int>((cy - h / 2) * sy)),
                cv::Size(static_cast<int>(w * sx), static_cast<int>(h * sy)));
            const cv::Rect inside = box & cv::Rect(0, 0, grey.cols, grey.rows);
            if (inside.width > 1 && inside.height > 1)
                plates.push_back({inside, Sigmoid(logits.at<float>(y, x))});
        }
    std::sort(plates.begin(), plates.end(),
              [](const Plate& a, const Plate& b) { return a.score > b.score; });
    if (plates.size() > static_cast<size_t>(kMaxPlates))
        plates.resize(kMaxPlates);
    return plates;
}

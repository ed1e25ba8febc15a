#include "PlateDetector.h"

#include <algorithm>
#include <cmath>

#include <opencv2/imgproc.hpp>

#include "OnnxNetwork.h"

namespace {

constexpr int kStride = 4;
constexpr double kNarrowestPlate = 20.0;  // pixels at the network's scale, inside what it learnt
constexpr double kWidestPlate = 160.0;
// From about here up the fine pass loses a plate's ends; the coarse pass sees it whole.
constexpr double kWidePlate = kWidestPlate * 5 / 8;
constexpr int kAlign = 16;  // the network halves the picture four times and doubles it twice

int Aligned(double length) {
    return std::max(kAlign, static_cast<int>(std::lround(length / kAlign)) * kAlign);
}

// The picture's size at scale, each side a multiple of what the network needs.
cv::Size AlignedSize(const cv::Size& picture, double scale) {
    return cv::Size(Aligned(picture.width * scale), Aligned(picture.height * scale));
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
    : fine_(LoadOnnxNetwork(modelFile)),
      coarse_(LoadOnnxNetwork(modelFile)),
      ready_(!fine_.empty() && !coarse_.empty()) {}

double PlateDetector::InputScale(const cv::Size& picture, int minCharHeight, int maxCharHeight) {
    // A plate is about 4 to 7 character heights wide; the network learnt widths of 16 to 170.
    const double narrowest = 4.0 * std::max(minCharHeight, 1);
    const double widest = 7.0 * std::max(maxCharHeight, minCharHeight + 1);
    const double low = kNarrowestPlate / narrowest;
    const double high = kWidestPlate / widest;
    const double scale = std::sqrt(low * high);
    return std::min({1.0, scale, kInputWidth / static_cast<double>(std::max(picture.width, 1))});
}

double PlateDetector::CoarseScale(const cv::Size& picture, int minCharHeight, int maxCharHeight) {
    const double fine = InputScale(picture, minCharHeight, maxCharHeight);
    const double widest = 7.0 * std::max(maxCharHeight, minCharHeight + 1) * fine;
    if (widest <= kWidestPlate)
        return 0.0;
    // The widest plate asked for comes out kWidePlate wide, well inside what the network learnt
    // (its boxes of plates near the top of that range come out too small); and no coarser than
    // a third of the fine scale, where the narrowest plate the pass adds is still wider than
    // kNarrowestPlate.
    return std::max(fine * kWidePlate / widest, fine / 3.0);
}

std::vector<PlateDetector::Plate> PlateDetector::FindAt(cv::dnn::Net& net, const cv::Mat& small,
                                                        const cv::Size& picture, float minScore) {
    std::vector<Plate> plates;
    // The network was trained on (pixel / 255 - 0.5) / 0.5.
    const cv::Mat blob =
        cv::dnn::blobFromImage(small, 2.0 / 255.0, cv::Size(), cv::Scalar(127.5), false, false);
    net.setInput(blob);
    const cv::Mat out = net.forward();  // 1 x 5 x H/4 x W/4
    const int rows = out.size[2];
    const int cols = out.size[3];
    const auto map = [&](int channel) {
        return cv::Mat(rows, cols, CV_32F,
                       const_cast<float*>(out.ptr<float>(0, channel)));  // NOLINT: view
    };
    const cv::Mat logits = map(0);
    const double sx = picture.width / static_cast<double>(small.cols);
    const double sy = picture.height / static_cast<double>(small.rows);
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
            const cv::Rect inside = box & cv::Rect(cv::Point(0, 0), picture);
            if (inside.width > 1 && inside.height > 1)
                plates.push_back({inside, Sigmoid(logits.at<float>(y, x))});
        }
    return plates;
}

std::vector<PlateDetector::Plate> PlateDetector::Find(const cv::Mat& grey, int minCharHeight,
                                                      int maxCharHeight, float minScore) {
    std::vector<Plate> plates;
    if (!ready_ || grey.empty() || grey.type() != CV_8UC1 || grey.cols < kAlign ||
        grey.rows < kAlign)
        return plates;
    const double fine = InputScale(grey.size(), minCharHeight, maxCharHeight);
    cv::Mat fineInput;
    cv::resize(grey, fineInput, AlignedSize(grey.size(), fine), 0, 0, cv::INTER_AREA);
    plates = Strongest(FindAt(fine_, fineInput, grey.size(), minScore), kMaxPlates);
    const double coarse = CoarseScale(grey.size(), minCharHeight, maxCharHeight);
    if (coarse <= 0.0 || grey.cols * coarse < kAlign || grey.rows * coarse < kAlign)
        return plates;
    // The coarse pass adds the plates too wide for the fine one. Its input is made from the
    // fine one's: shrinking the whole picture again costs more than the pass.
    cv::Mat coarseInput;
    cv::resize(fineInput, coarseInput, AlignedSize(grey.size(), coarse), 0, 0, cv::INTER_AREA);
    std::vector<Plate> wide;
    for (const Plate& plate : FindAt(coarse_, coarseInput, grey.size(), minScore))
        if (plate.box.width * fine >= kWidePlate)
            wide.push_back(plate);
    for (const Plate& plate : Strongest(std::move(wide), kMaxWidePlates))
        plates.push_back(plate);
    return plates;
}

std::vector<PlateDetector::Plate> PlateDetector::Strongest(std::vector<Plate> plates,
                                                           size_t count) {
    std::sort(plates.begin(), plates.end(),
              [](const Plate& a, const Plate& b) { return a.score > b.score; });
    if (plates.size() > count)
        plates.resize(count);
    return plates;
}

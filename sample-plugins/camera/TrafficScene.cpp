#include "TrafficScene.h"

#include <algorithm>
#include <random>

#include <opencv2/imgproc.hpp>

#include "PlateArt.h"

namespace {

cv::Scalar BodyColour(int64_t car) {
    static const cv::Scalar kColours[] = {{40, 40, 170},  {160, 80, 30},   {50, 120, 50},
                                          {30, 30, 30},   {130, 130, 130}, {20, 110, 190},
                                          {120, 40, 110}, {70, 60, 50}};
    return kColours[static_cast<size_t>(car) % (sizeof kColours / sizeof kColours[0])];
}

}  // namespace

TrafficScene::TrafficScene(TrafficSettings settings) : settings_(std::move(settings)) {
    settings_.lanes = std::clamp(settings_.lanes, 1, 8);
    settings_.crossingMs = std::max(settings_.crossingMs, 100);
    settings_.gapMs = std::max(settings_.gapMs, 0);
    road_ = plateart::Road(settings_.size, settings_.lanes, settings_.seed);
}

std::string TrafficScene::PlateOf(int64_t car) const {
    if (!settings_.plates.empty())
        return settings_.plates[static_cast<size_t>(car) % settings_.plates.size()];
    std::mt19937 rng(settings_.seed * 1000003u + static_cast<unsigned>(car));
    return plateart::RandomEuropeanPlate(rng);
}

bool TrafficScene::Finished(int64_t ms) const {
    if (settings_.repeat || settings_.plates.empty())
        return false;
    const auto cars = static_cast<int64_t>(settings_.plates.size());
    const int64_t last = cars - 1;
    const int lane = static_cast<int>(last % settings_.lanes);
    const int64_t leaves =
        (last / settings_.lanes) * Period() + LaneOffset(lane) + settings_.crossingMs;
    return ms > leaves;
}

void TrafficScene::Render(int64_t ms, cv::Mat& bgr) const {
    road_.copyTo(bgr);
    const cv::Size car = plateart::CarSize(settings_.charHeight);
    const int laneWidth = settings_.size.width / settings_.lanes;
    const auto listed = static_cast<int64_t>(settings_.plates.size());
    for (int lane = 0; lane < settings_.lanes; ++lane) {
        const int64_t t = ms - LaneOffset(lane);
        if (t < 0)
            continue;
        const int64_t round = t / Period();
        const int64_t into = t % Period();
        if (into >= settings_.crossingMs)
            continue;
        const int64_t index = round * settings_.lanes + lane;
        if (!settings_.repeat && listed > 0 && index >= listed)
            continue;
        const int travel = settings_.size.height + car.height;
        const int y = static_cast<int>(-car.height / 2 + travel * into / settings_.crossingMs);
        const int x = lane * laneWidth + laneWidth / 2;
        plateart::DrawCar(bgr, cv::Point(x, y), PlateOf(index), settings_.charHeight,
                          BodyColour(index));
    }
    cv::GaussianBlur(bgr, bgr, cv::Size(3, 3), 0.8);
}

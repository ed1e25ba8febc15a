#pragma once
#include <cstdint>
#include <string>
#include <vector>

#include <opencv2/core/mat.hpp>

struct TrafficSettings {
    cv::Size size{1280, 720};
    int lanes = 1;
    int charHeight = 26;
    int crossingMs = 2400;            // time a car takes from the top edge to the bottom edge
    int gapMs = 900;                  // time between two cars of a lane
    std::vector<std::string> plates;  // empty: random plates
    bool repeat = true;               // start the list again once every car has passed
    unsigned seed = 1;
};

// Cars with readable plates driving down the lanes of a road, as a function of time: the
// same time gives the same picture, so tests know exactly what was shown.
class TrafficScene {
  public:
    explicit TrafficScene(TrafficSettings settings);

    void Render(int64_t ms, cv::Mat& bgr) const;
    // The plate of the k-th car (counted over all lanes, in order of entry).
    std::string PlateOf(int64_t car) const;
    // True once every listed car has left the picture (only without repeat).
    bool Finished(int64_t ms) const;
    const TrafficSettings& Settings() const { return settings_; }

  private:
    int64_t Period() const { return settings_.crossingMs + settings_.gapMs; }
    int64_t LaneOffset(int lane) const { return Period() * lane / settings_.lanes; }

    TrafficSettings settings_;
    cv::Mat road_;
};

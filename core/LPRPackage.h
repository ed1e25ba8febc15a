#pragma once
#include <chrono>
#include <cstdint>
#include <string>

#include <opencv2/core/mat.hpp>

// A queued region image, and the record of a recent reading in Project::lprresults (img empty).
struct LPRPackage {
    cv::Mat img;
    std::chrono::system_clock::time_point time = std::chrono::system_clock::now();
    int milliseconds = 0;
    uint32_t tick = 0;
    std::string plate = "unknown";
    int position = -1;
    // Fields of a transit line, with their defaults.
    std::string lane;
    std::string image;
    std::string text;
    int countryid = -1;
    std::string iso = "Unknown";
    int direction = 0;
    int rect[4] = {0, 0, 0, 0};
    int laneId = -1;
};

#pragma once
#include <string>
#include <vector>

#include <opencv2/core/types.hpp>

// One reading PlateCore reports, with the rank that orders the readings of a picture (the
// likeliest first: the gate and the result view take the first).
struct PlateReading {
    std::string plate;
    unsigned score = 0;  // the characters' confidences (0..100) summed
    cv::Rect box;
    int charHeight = 0;
    int characters = 0;
    int rows = 1;
    std::string tags;
    double rank = 0.0;
};

// A box that clips a plate's ends reads part of it, often surer of its characters than a box
// around the whole plate is of all of them. A reading from a wider box over the same place
// that holds another reading, with characters more, is ranked above it. Leaves the readings
// shortest first.
void RankWholeReadingsFirst(std::vector<PlateReading>& readings);

#pragma once
#include <chrono>
#include <string>

#include "core/LPRPackage.h"
#include "corvane/PluginTypes.h"

using WallClock = std::chrono::system_clock;

// A gate's transit line: fields separated by "::". The fields in front of the last separator
// take their index in order; the text behind the last separator is always field 11.
struct TransitLine {
    static constexpr int kFields = 12;
    static constexpr const char* kSeparator = "::";

    std::string field[kFields];
    bool present[kFields] = {};
    int separators = 0;

    static TransitLine Split(const std::string& line);

    // The reading record of the recent-results list, with the defaults for absent fields.
    // Field 2 may carry milliseconds behind a '.'.
    static LPRPackage Record(const std::string& line, WallClock::time_point arrival);
};

// "%d-%m-%Y %H:%M:%S" in local time, on top of start (fields the text lacks keep start's);
// false when the text does not begin with such a time.
bool ParseLocalTime(const std::string& text, WallClock::time_point start,
                    WallClock::time_point& result);

PluginDateTime ToPluginDateTime(WallClock::time_point time);

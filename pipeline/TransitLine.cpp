#include "TransitLine.h"

#include <ctime>
#include <vector>

#include "corvane/TagText.h"

namespace {

std::tm LocalTm(WallClock::time_point time) {
    const std::time_t seconds = WallClock::to_time_t(time);
    std::tm local{};
    localtime_r(&seconds, &local);
    return local;
}

}  // namespace

TransitLine TransitLine::Split(const std::string& line) {
    std::vector<std::string> parts;
    size_t start = 0;
    size_t at;
    while ((at = line.find(kSeparator, start)) != std::string::npos) {
        parts.push_back(line.substr(start, at - start));
        start = at + 2;
    }
    TransitLine transit;
    transit.separators = static_cast<int>(parts.size());
    if (parts.empty())
        return transit;  // no separator: nothing of the line is taken
    for (size_t i = 0; i < parts.size() && i < kFields - 1; ++i) {
        transit.field[i] = parts[i];
        transit.present[i] = true;
    }
    transit.field[kFields - 1] = line.substr(start);
    transit.present[kFields - 1] = true;
    return transit;
}

LPRPackage TransitLine::Record(const std::string& line, WallClock::time_point arrival) {
    const TransitLine transit = Split(line);
    LPRPackage record;
    record.plate = transit.field[0];
    record.lane = transit.field[1];
    record.time = arrival;
    if (transit.present[2]) {
        const std::string& text = transit.field[2];
        const size_t dot = text.find('.');
        std::string stamp = text;
        if (dot != std::string::npos && dot > 0) {
            stamp = text.substr(0, dot);
            record.milliseconds = AtoI(text.substr(dot + 1));
        }
        ParseLocalTime(stamp, arrival, record.time);
    }
    record.image = transit.field[3];
    record.text = transit.field[4];
    if (transit.present[5])
        record.countryid = AtoI(transit.field[5]);
    if (transit.present[6])
        record.iso = transit.field[6];
    record.direction = AtoI(transit.field[7]);
    for (int i = 0; i < 4; ++i)
        record.rect[i] = AtoI(transit.field[8 + i]);
    return record;
}

bool ParseLocalTime(const std::string& text, WallClock::time_point start,
                    WallClock::time_point& result) {
    std::tm local = LocalTm(start);
    if (strptime(text.c_str(), "%d-%m-%Y %H:%M:%S", &local) == nullptr)
        return false;
    local.tm_isdst = -1;
    const std::time_t seconds = std::mktime(&local);
    if (seconds == static_cast<std::time_t>(-1))
        return false;
    result = WallClock::from_time_t(seconds);
    return true;
}

PluginDateTime ToPluginDateTime(WallClock::time_point time) {
    const std::tm local = LocalTm(time);
    PluginDateTime stamp;
    stamp.year = local.tm_year + 1900;
    stamp.month = local.tm_mon + 1;
    stamp.day = local.tm_mday;
    stamp.hour = local.tm_hour;
    stamp.minute = local.tm_min;
    stamp.second = local.tm_sec;
    stamp.millisecond = static_cast<int>(
        std::chrono::duration_cast<std::chrono::milliseconds>(time.time_since_epoch()).count() %
        1000);
    return stamp;
}

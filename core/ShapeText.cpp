#include "ShapeText.h"

#include <algorithm>
#include <cctype>
#include <cstdlib>

namespace ShapeText {

namespace {

// One number of a field: blanks, then base-10 digits with an optional sign, then nothing else
// but blanks.
std::optional<int> ReadNumber(const std::string& field) {
    const char* begin = field.c_str();
    while (*begin == ' ' || *begin == '\t')
        ++begin;
    char* end = nullptr;
    const long value = std::strtol(begin, &end, 10);
    if (end == begin)
        return std::nullopt;
    while (*end == ' ' || *end == '\t' || *end == '\r' || *end == '\n')
        ++end;
    if (*end != '\0')
        return std::nullopt;
    return static_cast<int>(value);
}

std::vector<std::string> Split(const std::string& text, char separator) {
    std::vector<std::string> parts;
    size_t start = 0;
    for (size_t at = text.find(separator); at != std::string::npos;
         at = text.find(separator, start)) {
        parts.push_back(text.substr(start, at - start));
        start = at + 1;
    }
    parts.push_back(text.substr(start));
    return parts;
}

bool Blank(const std::string& text) {
    return std::all_of(text.begin(), text.end(),
                       [](unsigned char c) { return std::isspace(c) != 0; });
}

}  // namespace

std::optional<std::vector<ShapePoint>> Parse(const std::string& text) {
    std::vector<ShapePoint> points;
    const std::vector<std::string> pointTexts = Split(text, ';');
    for (size_t i = 0; i < pointTexts.size(); ++i) {
        const std::string& pointText = pointTexts[i];
        // Blanks before the first point and behind the last (a trailing ";") are passed over;
        // a blank field between two points holds no number and makes the text invalid.
        if (Blank(pointText)) {
            const bool pointBefore = !points.empty();
            const bool pointAfter =
                std::any_of(pointTexts.begin() + static_cast<long>(i) + 1, pointTexts.end(),
                            [](const std::string& t) { return !Blank(t); });
            if (pointBefore && pointAfter)
                return std::nullopt;
            continue;
        }
        const std::vector<std::string> fields = Split(pointText, ',');
        if (fields.size() > 2)
            return std::nullopt;
        ShapePoint point;
        const std::optional<int> x = ReadNumber(fields[0]);
        if (!x)
            return std::nullopt;
        point.x = *x;
        if (fields.size() == 2) {
            const std::optional<int> y = ReadNumber(fields[1]);
            if (!y)
                return std::nullopt;
            point.y = *y;
        }
        points.push_back(point);
    }
    if (points.size() < 2)
        points = {{0, 0}, {1000, 0}, {1000, 1000}, {0, 1000}};
    return points;
}

std::string Normal(const std::vector<ShapePoint>& points) {
    std::string text;
    for (size_t i = 0; i < points.size(); ++i) {
        text += std::to_string(points[i].x) + ", " + std::to_string(points[i].y);
        text += i + 1 < points.size() ? "; " : " ";
    }
    return text;
}

void BoundingBox(const std::vector<ShapePoint>& points, int roi[4]) {
    if (points.empty())
        return;
    roi[0] = roi[2] = points[0].x;
    roi[1] = roi[3] = points[0].y;
    for (const ShapePoint& point : points) {
        roi[0] = std::min(roi[0], point.x);
        roi[1] = std::min(roi[1], point.y);
        roi[2] = std::max(roi[2], point.x);
        roi[3] = std::max(roi[3], point.y);
    }
}

}  // namespace ShapeText

#include "PlateArt.h"

#include <algorithm>

#include <opencv2/imgproc.hpp>

namespace plateart {

namespace {

constexpr int kFont = cv::FONT_HERSHEY_COMPLEX;

char RandomOf(std::mt19937& rng, const std::string& pool) {
    std::uniform_int_distribution<size_t> pick(0, pool.size() - 1);
    return pool[pick(rng)];
}

std::string Without(std::string pool, const std::string& forbidden) {
    for (const char c : forbidden)
        pool.erase(std::remove(pool.begin(), pool.end(), c), pool.end());
    return pool;
}

double FontScale(int charHeight) {
    int baseline = 0;
    const cv::Size unit = cv::getTextSize("0", kFont, 1.0, 1, &baseline);
    return charHeight / static_cast<double>(unit.height);
}

int Stroke(int charHeight) {
    return std::max(1, charHeight / 10);
}

int Gap(int charHeight) {
    return std::max(2, charHeight / 5);
}

int GlyphWidth(const std::string& glyph, int charHeight) {
    int baseline = 0;
    return cv::getTextSize(glyph, kFont, FontScale(charHeight), Stroke(charHeight), &baseline)
        .width;
}

int TextWidth(const std::string& text, int charHeight) {
    int width = 0;
    for (const char c : text)
        width += GlyphWidth(std::string(1, c), charHeight) + Gap(charHeight);
    return text.empty() ? 0 : width - Gap(charHeight);
}

}  // namespace

std::string RandomPlate(std::mt19937& rng, const std::string& layout,
                        const std::string& forbidden) {
    const std::string letters = Without("ABCDEFGHJKLMNPRSTVWXYZ", forbidden);
    const std::string digits = "0123456789";
    std::string plate;
    for (const char slot : layout) {
        if (slot == 'L')
            plate += RandomOf(rng, letters);
        else if (slot == 'N')
            plate += RandomOf(rng, digits);
        else if (slot == 'A')
            plate += RandomOf(rng, letters + digits);
    }
    return plate;
}

std::string RandomEuropeanPlate(std::mt19937& rng) {
    static const char* const kLayouts[][2] = {
        {"LLNNNLL", "IOQU"},    // Italy
        {"LLNNNLL", "IOU"},     // France
        {"NNNNLLL", "AEIOUQ"},  // Spain
        {"LLNNLLL", "IQZ"},     // United Kingdom
        {"LLLLNNN", "IOQ"},     // Germany: district, two letters, three digits
    };
    std::uniform_int_distribution<int> pick(0, 4);
    const auto& layout = kLayouts[pick(rng)];
    return RandomPlate(rng, layout[0], layout[1]);
}

cv::Size PlateSize(const std::string& text, int charHeight) {
    return cv::Size(TextWidth(text, charHeight) + charHeight, charHeight * 16 / 10);
}

void DrawPlate(cv::Mat& bgr, cv::Point origin, const std::string& text, int charHeight) {
    const cv::Size size = PlateSize(text, charHeight);
    const cv::Rect plate(origin, size);
    cv::rectangle(bgr, plate, cv::Scalar(235, 235, 235), cv::FILLED);
    cv::rectangle(bgr, plate, cv::Scalar(40, 40, 40), std::max(1, charHeight / 14));
    // Characters one by one with a gap between them, as plate fonts keep them apart.
    int x = origin.x + charHeight / 2;
    const int baseline = origin.y + (size.height + charHeight) / 2;
    for (const char c : text) {
        const std::string glyph(1, c);
        cv::putText(bgr, glyph, cv::Point(x, baseline), kFont, FontScale(charHeight),
                    cv::Scalar(15, 15, 15), Stroke(charHeight), cv::LINE_AA);
        x += GlyphWidth(glyph, charHeight) + Gap(charHeight);
    }
}

cv::Size CarSize(int charHeight) {
    return cv::Size(charHeight * 14, charHeight * 11);
}

void DrawCar(cv::Mat& bgr, cv::Point centre, const std::string& plate, int charHeight,
             const cv::Scalar& body) {
    const cv::Size car = CarSize(charHeight);
    const cv::Point topLeft(centre.x - car.width / 2, centre.y - car.height / 2);
    const cv::Rect outline(topLeft, car);
    cv::rectangle(bgr, outline, body, cv::FILLED);
    // Windscreen, lights and the dark bumper strip around the plate.
    cv::rectangle(bgr,
                  cv::Rect(topLeft.x + car.width / 10, topLeft.y + car.height / 12,
                           car.width * 8 / 10, car.height * 4 / 12),
                  cv::Scalar(60, 50, 45), cv::FILLED);
    const int lightY = topLeft.y + car.height * 7 / 12;
    cv::circle(bgr, cv::Point(topLeft.x + car.width / 8, lightY), charHeight / 2,
               cv::Scalar(200, 230, 240), cv::FILLED);
    cv::circle(bgr, cv::Point(topLeft.x + car.width * 7 / 8, lightY), charHeight / 2,
               cv::Scalar(200, 230, 240), cv::FILLED);
    const cv::Size plateSize = PlateSize(plate, charHeight);
    const cv::Point plateAt(centre.x - plateSize.width / 2,
                            topLeft.y + car.height * 3 / 4 - plateSize.height / 2);
    DrawPlate(bgr, plateAt, plate, charHeight);
}

cv::Mat Road(cv::Size size, int lanes, unsigned seed) {
    cv::Mat road(size, CV_8UC3, cv::Scalar(95, 95, 100));
    cv::Mat noise(size, CV_8UC3);
    cv::theRNG().state = seed;
    cv::randn(noise, cv::Scalar::all(0), cv::Scalar::all(6));
    road += noise;
    const int laneWidth = size.width / std::max(lanes, 1);
    for (int lane = 1; lane < lanes; ++lane)
        for (int y = 0; y < size.height; y += 80)
            cv::rectangle(road, cv::Rect(lane * laneWidth - 4, y, 8, 40), cv::Scalar(220, 220, 220),
                          cv::FILLED);
    return road;
}

}  // namespace plateart

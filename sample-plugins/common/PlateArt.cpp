#include "PlateArt.h"

#include <algorithm>
#include <cctype>
#include <cmath>
#include <vector>

#include <opencv2/imgproc.hpp>

namespace plateart {

namespace {

// A narrow sans-serif, as the stock countries' plate fonts are: Hershey's plain face squeezed
// to four fifths of its width.
constexpr int kFont = cv::FONT_HERSHEY_SIMPLEX;
constexpr double kSqueeze = 0.8;

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
    return std::max(1, charHeight / 7);
}

int Gap(int charHeight) {
    return std::max(2, charHeight / 6);
}

int GlyphWidth(const std::string& glyph, int charHeight) {
    int baseline = 0;
    const int drawn =
        cv::getTextSize(glyph, kFont, FontScale(charHeight), Stroke(charHeight), &baseline).width;
    return std::max(1, static_cast<int>(drawn * kSqueeze));
}

int TextWidth(const std::string& text, int charHeight) {
    int width = 0;
    for (const char c : text)
        width += GlyphWidth(std::string(1, c), charHeight) + Gap(charHeight);
    return text.empty() ? 0 : width - Gap(charHeight);
}

// The blue band's width on the left of the plate.
int BandWidth(int charHeight) {
    return std::max(4, charHeight * 6 / 10);
}

// The country code in the band, from the layout the text follows.
std::string CountryOf(const std::string& text) {
    std::string layout;
    for (const char c : text)
        layout += std::isdigit(static_cast<unsigned char>(c)) != 0 ? 'N' : 'L';
    if (layout == "NNNNLLL")
        return "E";
    if (layout == "LLNNLLL")
        return "GB";
    if (layout == "LLLLNNN")
        return "D";
    return "I";
}

// One character: drawn at full width in a mask, squeezed, then inked onto the plate.
void DrawGlyph(cv::Mat& bgr, cv::Point topLeft, char c, int charHeight, const cv::Scalar& ink) {
    const std::string glyph(1, c);
    int baseline = 0;
    const double scale = FontScale(charHeight);
    const int stroke = Stroke(charHeight);
    const cv::Size full = cv::getTextSize(glyph, kFont, scale, stroke, &baseline);
    cv::Mat mask = cv::Mat::zeros(charHeight + 2 * stroke, full.width + 2 * stroke, CV_8UC1);
    cv::putText(mask, glyph, cv::Point(stroke, stroke + charHeight), kFont, scale, cv::Scalar(255),
                stroke, cv::LINE_AA);
    cv::resize(mask, mask, cv::Size(std::max(1, static_cast<int>(mask.cols * kSqueeze)), mask.rows),
               0, 0, cv::INTER_AREA);
    const cv::Rect at = cv::Rect(topLeft - cv::Point(stroke, stroke), mask.size()) &
                        cv::Rect(0, 0, bgr.cols, bgr.rows);
    if (at.empty())
        return;
    const cv::Mat part = mask(cv::Rect(at.tl() - (topLeft - cv::Point(stroke, stroke)), at.size()));
    cv::Mat target = bgr(at);
    for (int y = 0; y < part.rows; ++y)
        for (int x = 0; x < part.cols; ++x) {
            const double alpha = part.at<uchar>(y, x) / 255.0;
            cv::Vec3b& pixel = target.at<cv::Vec3b>(y, x);
            for (int k = 0; k < 3; ++k)
                pixel[k] = cv::saturate_cast<uchar>(pixel[k] * (1.0 - alpha) + ink[k] * alpha);
        }
}

void RoundedBox(cv::Mat& bgr, const cv::Rect& box, int radius, const cv::Scalar& colour) {
    radius = std::min({radius, box.width / 2, box.height / 2});
    cv::rectangle(bgr, cv::Rect(box.x + radius, box.y, box.width - 2 * radius, box.height), colour,
                  cv::FILLED);
    cv::rectangle(bgr, cv::Rect(box.x, box.y + radius, box.width, box.height - 2 * radius), colour,
                  cv::FILLED);
    for (const cv::Point corner : {cv::Point(box.x + radius, box.y + radius),
                                   cv::Point(box.br().x - radius - 1, box.y + radius),
                                   cv::Point(box.x + radius, box.br().y - radius - 1),
                                   cv::Point(box.br().x - radius - 1, box.br().y - radius - 1)})
        cv::circle(bgr, corner, radius, colour, cv::FILLED, cv::LINE_AA);
}

cv::Scalar Shade(const cv::Scalar& colour, double factor) {
    return cv::Scalar(colour[0] * factor, colour[1] * factor, colour[2] * factor);
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
    return cv::Size(BandWidth(charHeight) + TextWidth(text, charHeight) + charHeight * 7 / 10,
                    charHeight * 15 / 10);
}

void DrawPlate(cv::Mat& bgr, cv::Point origin, const std::string& text, int charHeight) {
    const cv::Size size = PlateSize(text, charHeight);
    const cv::Rect plate(origin, size);
    const int corner = std::max(1, charHeight / 8);
    RoundedBox(bgr, plate, corner, cv::Scalar(40, 40, 40));
    const int rim = std::max(1, charHeight / 16);
    RoundedBox(
        bgr, cv::Rect(plate.x + rim, plate.y + rim, plate.width - 2 * rim, plate.height - 2 * rim),
        corner, cv::Scalar(238, 240, 240));
    // The blue band: a ring of stars and the country code.
    const int band = BandWidth(charHeight);
    const cv::Rect bandBox(plate.x + rim, plate.y + rim, band, plate.height - 2 * rim);
    cv::rectangle(bgr, bandBox, cv::Scalar(153, 51, 0), cv::FILLED);
    const cv::Point ring(bandBox.x + band / 2, bandBox.y + bandBox.height * 3 / 10);
    const int ringRadius = std::max(2, band / 3);
    for (int star = 0; star < 12; ++star) {
        const double angle = star * CV_PI / 6.0;
        cv::circle(bgr,
                   ring + cv::Point(static_cast<int>(ringRadius * std::cos(angle)),
                                    static_cast<int>(ringRadius * std::sin(angle))),
                   std::max(1, charHeight / 40), cv::Scalar(0, 204, 255), cv::FILLED);
    }
    const std::string country = CountryOf(text);
    const double codeScale = FontScale(charHeight) * 0.38;
    int baseline = 0;
    const cv::Size code = cv::getTextSize(country, kFont, codeScale, 1, &baseline);
    cv::putText(bgr, country,
                cv::Point(bandBox.x + (band - code.width) / 2, bandBox.br().y - charHeight / 8),
                kFont, codeScale, cv::Scalar(240, 240, 240), std::max(1, charHeight / 24),
                cv::LINE_AA);
    // Characters one by one with a gap between them, as plate fonts keep them apart.
    int x = plate.x + band + charHeight * 35 / 100;
    const int top = plate.y + (size.height - charHeight) / 2;
    for (const char c : text) {
        DrawGlyph(bgr, cv::Point(x, top), c, charHeight, cv::Scalar(20, 20, 20));
        x += GlyphWidth(std::string(1, c), charHeight) + Gap(charHeight);
    }
}

cv::Size CarSize(int charHeight) {
    return cv::Size(charHeight * 14, charHeight * 11);
}

cv::Mat CarInLane(const std::string& plate, int charHeight, int shade) {
    const cv::Size car = CarSize(charHeight);
    cv::Mat bgr(car.height * 2, car.width * 2, CV_8UC3, cv::Scalar(95, 95, 100));
    DrawCar(bgr, cv::Point(bgr.cols / 2, bgr.rows / 2), plate, charHeight,
            cv::Scalar(40 + shade % 150, 60, 150));
    cv::GaussianBlur(bgr, bgr, cv::Size(3, 3), 0.8);
    cv::Mat grey;
    cv::cvtColor(bgr, grey, cv::COLOR_BGR2GRAY);
    return grey;
}

void DrawCar(cv::Mat& bgr, cv::Point centre, const std::string& plate, int charHeight,
             const cv::Scalar& body) {
    const cv::Size car = CarSize(charHeight);
    const cv::Point topLeft(centre.x - car.width / 2, centre.y - car.height / 2);
    const int w = car.width;
    const int h = car.height;
    const auto at = [&](double fx, double fy) {
        return cv::Point(topLeft.x + static_cast<int>(w * fx),
                         topLeft.y + static_cast<int>(h * fy));
    };
    // Tyres under the body, the body with its roof narrower than its shoulders.
    const cv::Scalar tyre(25, 25, 28);
    cv::rectangle(bgr, cv::Rect(at(0.04, 0.78), at(0.2, 1.0)), tyre, cv::FILLED);
    cv::rectangle(bgr, cv::Rect(at(0.8, 0.78), at(0.96, 1.0)), tyre, cv::FILLED);
    RoundedBox(bgr, cv::Rect(at(0.0, 0.4), at(1.0, 0.94)), charHeight, body);
    const std::vector<cv::Point> cabin = {at(0.14, 0.42), at(0.24, 0.06), at(0.76, 0.06),
                                          at(0.86, 0.42)};
    cv::fillConvexPoly(bgr, cabin, Shade(body, 0.85), cv::LINE_AA);
    // Windscreen with a lighter sky reflection, and the mirrors.
    const std::vector<cv::Point> glass = {at(0.18, 0.4), at(0.27, 0.1), at(0.73, 0.1),
                                          at(0.82, 0.4)};
    cv::fillConvexPoly(bgr, glass, cv::Scalar(70, 58, 50), cv::LINE_AA);
    const std::vector<cv::Point> glare = {at(0.3, 0.13), at(0.42, 0.13), at(0.33, 0.37),
                                          at(0.22, 0.37)};
    cv::fillConvexPoly(bgr, glare, cv::Scalar(105, 92, 82), cv::LINE_AA);
    cv::rectangle(bgr, cv::Rect(at(0.08, 0.33), at(0.16, 0.41)), Shade(body, 0.7), cv::FILLED);
    cv::rectangle(bgr, cv::Rect(at(0.84, 0.33), at(0.92, 0.41)), Shade(body, 0.7), cv::FILLED);
    // Headlights, the grille between them, and the bumper around the plate.
    cv::ellipse(bgr, at(0.14, 0.55), cv::Size(w / 11, h / 18), 0, 0, 360, cv::Scalar(215, 235, 245),
                cv::FILLED, cv::LINE_AA);
    cv::ellipse(bgr, at(0.86, 0.55), cv::Size(w / 11, h / 18), 0, 0, 360, cv::Scalar(215, 235, 245),
                cv::FILLED, cv::LINE_AA);
    cv::rectangle(bgr, cv::Rect(at(0.3, 0.5), at(0.7, 0.6)), cv::Scalar(35, 35, 38), cv::FILLED);
    for (int bar = 1; bar < 4; ++bar)
        cv::line(bgr, at(0.31, 0.5 + bar * 0.025), at(0.69, 0.5 + bar * 0.025),
                 cv::Scalar(80, 80, 85), std::max(1, charHeight / 20));
    cv::rectangle(bgr, cv::Rect(at(0.06, 0.66), at(0.94, 0.86)), Shade(body, 0.6), cv::FILLED);
    const cv::Size plateSize = PlateSize(plate, charHeight);
    const cv::Point plateAt(centre.x - plateSize.width / 2,
                            topLeft.y + h * 3 / 4 - plateSize.height / 2);
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

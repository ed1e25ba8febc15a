#pragma once
// Drawing of number plates and cars for the synthetic traffic source, the tests and the
// benchmarks: one look, so that what the reader is measured on is what the demo shows.
#include <random>
#include <string>

#include <opencv2/core/mat.hpp>

namespace plateart {

// A random plate text for a layout: L a letter, N a digit, A either; forbidden letters are
// never drawn. Other layout characters are left out (plates are drawn without separators).
std::string RandomPlate(std::mt19937& rng, const std::string& layout,
                        const std::string& forbidden = std::string());

// A random plate of one of the stock European layouts.
std::string RandomEuropeanPlate(std::mt19937& rng);

// Size of the plate drawn for text at a character height.
cv::Size PlateSize(const std::string& text, int charHeight);

// A European plate, its top left corner at origin: white with a dark rim, the blue band with
// the country code of the text's layout, black characters in a narrow face.
void DrawPlate(cv::Mat& bgr, cv::Point origin, const std::string& text, int charHeight);

// A car seen from the front, centred at centre: tyres, body, cabin and windscreen, mirrors,
// headlights and grille, and its plate in the bumper.
void DrawCar(cv::Mat& bgr, cv::Point centre, const std::string& plate, int charHeight,
             const cv::Scalar& body);

// Size of the car DrawCar draws for a character height.
cv::Size CarSize(int charHeight);

// A car with its plate in the middle of a grey road, in grey as a region thread gives it: a
// region a lane wide, twice the car's size. shade varies the body's colour.
cv::Mat CarInLane(const std::string& plate, int charHeight, int shade);

// A road of lanes seen from above, with a fixed asphalt texture.
cv::Mat Road(cv::Size size, int lanes, unsigned seed);

}  // namespace plateart

#pragma once
#include <optional>
#include <string>
#include <vector>

#include "Lane.h"

// The region polygon as the operator types it: points separated by ";", the two numbers of a
// point by ",", blanks allowed before each number.
namespace ShapeText {

// The points of a text; empty when the text is invalid (a field without a number, a third
// number). Fewer than two points give the full frame's four corners.
std::optional<std::vector<ShapePoint>> Parse(const std::string& text);

// "x, y; x, y; ... x, y " : the form a parsed text takes in the grid.
std::string Normal(const std::vector<ShapePoint>& points);

// The bounding box x1, y1, x2, y2 of the points.
void BoundingBox(const std::vector<ShapePoint>& points, int roi[4]);

constexpr const char* kDefault = "0,0; 1000, 0; 1000, 1000; 0, 1000";

}  // namespace ShapeText

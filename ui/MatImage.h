#pragma once
#include <wx/image.h>

#include <opencv2/core.hpp>

// A copy of a packed 8-bit picture (RGB or grey) as a toolkit image; invalid for anything else.
wxImage ToWxImage(const cv::Mat& picture);

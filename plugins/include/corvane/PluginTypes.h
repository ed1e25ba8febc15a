#pragma once
// Types shared by the program and its plug-ins.
//
// Text crosses the plug-in boundary as std::string holding UTF-8, passed and returned by value.
// Plug-ins and program are built with the same C++ runtime (g++/libstdc++ on this platform), so
// the string objects are compatible on both sides. Windows are opaque handles: the program
// passes its toolkit window pointers as NativeWindow, and a plug-in that brings a dialog of its
// own built with the same toolkit may cast it back.
#include <cstdint>
#include <string>
#include <vector>

using NativeWindow = void*;

// A rectangle in pixels: position of the top left corner and size.
struct PluginRect {
    int x = 0;
    int y = 0;
    int width = 0;
    int height = 0;
};

// A moment in local time, broken down, with milliseconds.
struct PluginDateTime {
    int year = 1970;
    int month = 1;  // 1..12
    int day = 1;    // 1..31
    int hour = 0;
    int minute = 0;
    int second = 0;
    int millisecond = 0;
};

// The image type of the plate reader's contract is OpenCV's IplImage. Plug-ins that read its
// fields include <opencv2/core/types_c.h>; the contract itself needs only the name.
struct _IplImage;
typedef struct _IplImage IplImage;

#define CORVANE_PLUGIN_EXPORT extern "C" __attribute__((visibility("default")))

#include "FrameConverter.h"

#include <algorithm>
#include <cstring>

#include "corvane/CameraPlugin.h"

namespace {

uint8_t Clamp(int value) {
    return static_cast<uint8_t>(std::clamp(value, 0, 255));
}

void ConvertGrey(const uint8_t* raw, size_t pixels, uint8_t* out) {
    for (size_t i = 0; i < pixels; ++i, out += 3)
        out[0] = out[1] = out[2] = raw[i];
}

void ConvertRgbx(const uint8_t* raw, size_t pixels, uint8_t* out) {
    for (size_t i = 0; i < pixels; ++i, raw += 4, out += 3)
        std::memcpy(out, raw, 3);
}

void ConvertYuv(const uint8_t* raw, size_t pixels, uint8_t* out) {
    const size_t groups = pixels * 2 / 4;
    for (size_t i = 0; i < groups; ++i, raw += 4, out += 6)
        FrameConverter::YuvPairToRgb(raw, out);
}

}  // namespace

void FrameConverter::YuvPairToRgb(const uint8_t* uyvy, uint8_t* rgb) {
    const int u = uyvy[0] - 128;
    const int y0 = uyvy[1];
    const int v = uyvy[2] - 128;
    const int y1 = uyvy[3];
    // Right shifts of negative values are arithmetic on every compiler we build with.
    const int a = (v * 1435) >> 10;
    const int b = (v * 731) >> 10;
    const int c = (u * 352) >> 10;
    const int d = (u * 1814) >> 10;
    rgb[0] = Clamp(y0 + a);
    rgb[1] = Clamp(y0 - c - b);
    rgb[2] = Clamp(y0 + d);
    rgb[3] = Clamp(y1 + a);
    rgb[4] = Clamp(y1 - c - b);
    rgb[5] = Clamp(y1 + d);
}

bool FrameConverter::Convert(const void* raw, int width, int height, int format, cv::Mat& picture) {
    picture.release();
    const int64_t pixels = int64_t{width} * height;
    if (raw == nullptr || width <= 0 || height <= 0 || pixels > kMaxPixels)
        return false;
    if (format < kFrameGrey8 || format > kFrameRGBX32)
        return false;
    picture.create(height, width, CV_8UC3);
    const auto* in = static_cast<const uint8_t*>(raw);
    uint8_t* out = picture.data;
    const auto count = static_cast<size_t>(pixels);
    switch (format) {
        case kFrameRGB24:
            std::memcpy(out, in, count * 3);
            return true;  // no in-band copy: the raw bytes are the picture already
        case kFrameRGBX32:
            ConvertRgbx(in, count, out);
            break;
        case kFrameGrey8:
            ConvertGrey(in, count, out);
            break;
        case kFrameYUV422:
            if (count % 2 != 0)
                picture.setTo(0);  // the last pixel of an odd frame has no group of its own
            ConvertYuv(in, count, out);
            break;
    }
    // The condition counts pixels, not bytes: a grey frame of exactly 300 pixels keeps its
    // conversion.
    if (pixels > kInBandBytes)
        std::memcpy(out, in, kInBandBytes);
    return true;
}

#pragma once
#include <cstdint>

#include <opencv2/core/mat.hpp>

// Turns a camera plug-in's raw frame into the 24-bit picture the pipeline works on: red, green,
// blue, rows without padding.
class FrameConverter {
  public:
    // Largest frame, in pixels, that the pipeline takes: 64 MiB at three bytes a pixel.
    static constexpr int64_t kMaxPixels = (int64_t{64} << 20) / 3;
    // Leading raw bytes copied over the converted picture (the in-band channel of a source),
    // when the frame has more pixels than this.
    static constexpr int kInBandBytes = 300;

    // Fills picture (re-allocated to height x width, 3 channels) from raw. Returns false for a
    // size out of range, a null buffer or a format other than 1 to 4; picture is then empty.
    static bool Convert(const void* raw, int width, int height, int format, cv::Mat& picture);

    // One YUV 4:2:2 group (U, Y0, V, Y1) to two RGB pixels, integer arithmetic.
    static void YuvPairToRgb(const uint8_t* uyvy, uint8_t* rgb);
};

#pragma once
#include <cstdint>

#include <opencv2/core/mat.hpp>
#include <opencv2/imgproc.hpp>

// The rate limiter in front of a stream: a frame goes out when its time has come, and a stall
// never causes a burst afterwards.
class StreamPacer {
  public:
    explicit StreamPacer(uint32_t now) : next_(now) {}

    // 100 ms, or one frame time for a positive rate.
    static int PeriodOf(int fps) { return fps > 0 ? static_cast<int>(1000.0 / fps) : 100; }

    // The source's step lets a frame through only once its time has strictly passed; the
    // region's step already at the time itself.
    bool DueStrict(uint32_t now) const { return static_cast<int32_t>(now - next_) > 0; }
    bool DueOrEqual(uint32_t now) const { return static_cast<int32_t>(now - next_) >= 0; }

    // Sets the next time one period on, pulled up to now after a stall and never more than one
    // period ahead.
    void Advance(uint32_t now, int period) {
        uint32_t next = next_ + static_cast<uint32_t>(period);
        if (static_cast<int32_t>(next - now) < 0)
            next = now;
        if (static_cast<int32_t>(next - (now + static_cast<uint32_t>(period))) > 0)
            next = now + static_cast<uint32_t>(period);
        next_ = next;
    }

    uint32_t Next() const { return next_; }

    // Stream picture size: halved for 1, quartered for 2, each side then even.
    static cv::Size OutputSize(int width, int height, int frameDim) {
        if (frameDim == 1) {
            width /= 2;
            height /= 2;
        } else if (frameDim == 2) {
            width /= 4;
            height /= 4;
        }
        return cv::Size(width / 2 * 2, height / 2 * 2);
    }

    // The picture scaled (bilinear) to its stream size; empty when a side comes out 0.
    static cv::Mat Scaled(const cv::Mat& picture, int frameDim) {
        const cv::Size size = OutputSize(picture.cols, picture.rows, frameDim);
        cv::Mat scaled;
        if (size.width > 0 && size.height > 0)
            cv::resize(picture, scaled, size, 0, 0, cv::INTER_LINEAR);
        return scaled;
    }

  private:
    uint32_t next_;
};

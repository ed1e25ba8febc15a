#pragma once
#include <cstdint>
#include <vector>

struct AVCodec;
struct AVCodecContext;
struct AVFrame;
struct AVPacket;

// One stream's H.264 encoder: libavcodec with libx264 (ultrafast, zero latency, every frame a
// key frame), parameter sets in band. Takes packed RGB pictures and follows their size.
class H264Encoder {
  public:
    static constexpr int kMaxPacket = 300000;  // a larger packet is dropped

    // frameRate: the pictures a second the producer delivers. It becomes the time base, and so
    // the rate the parameter sets announce, which players and the session description follow.
    H264Encoder(int width, int height, int bitRate, int frameRate = kDefaultFrameRate);
    static constexpr int kDefaultFrameRate = 5;
    ~H264Encoder();
    H264Encoder(const H264Encoder&) = delete;
    H264Encoder& operator=(const H264Encoder&) = delete;

    bool Ready() const { return context_ != nullptr && picture_ != nullptr; }

    // Encodes one picture (rows of width * 3 bytes, red first) into packet (Annex B, start
    // codes included). Returns the packet's size, 0 when there is none or it is too large.
    // A picture of another size reopens the encoder first ("Restart avcodec"). An encoder that
    // cannot open (libx264 refuses a bit rate under 1,000 b/s) is tried again once a minute,
    // with one line each time, never at every picture.
    int Encode(const uint8_t* rgb, int width, int height, std::vector<uint8_t>& packet);
    static constexpr uint32_t kRetryMs = 60000;
    // How often the encoder was opened, or tried to be.
    int OpenAttempts() const { return attempts_; }

    // Rate statistics written into the open encoder, as the interval of the stream found them.
    void SetMeasuredRate(int frames, int bytes, int seconds);
    int TimeBaseNum() const;
    int TimeBaseDen() const;
    int64_t BitRate() const;
    int Width() const { return width_; }
    int Height() const { return height_; }

    // The integer colour conversion: Y from every pixel, Cb and Cr from the last pixel of each
    // 2 x 2 block in scan order (its bottom right one).
    static void RgbToYuv420(const uint8_t* rgb, int width, int height, uint8_t* y, int yStride,
                            uint8_t* cb, int cbStride, uint8_t* cr, int crStride);

  private:
    bool Open(int width, int height);
    void Close();

    const AVCodec* codec_ = nullptr;
    AVCodecContext* context_ = nullptr;
    AVFrame* picture_ = nullptr;
    AVPacket* packet_ = nullptr;
    int frameRate_ = kDefaultFrameRate;
    int bitRate_;
    int width_ = 0;
    int height_ = 0;
    int attempts_ = 0;
    bool failed_ = false;  // the last open failed, at failedAt_
    uint32_t failedAt_ = 0;
};

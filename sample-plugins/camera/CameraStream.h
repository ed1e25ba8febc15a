#pragma once
// One connection to a network camera through FFmpeg: opens a URL, reads its video and decodes
// it into packed RGB pictures. Every blocking step is bounded by the stall time and by the
// owner's stop flag, so no camera, silent or hostile, can hold the thread that reads it.
#include <atomic>
#include <cstdint>
#include <string>
#include <vector>

struct AVCodecContext;
struct AVFormatContext;
struct AVFrame;
struct AVPacket;
struct SwsContext;

class CameraStream {
  public:
    struct Options {
        std::string url;                  // with any credentials already in it
        std::string transport;            // "TCP", "UDP" or anything else for FFmpeg's choice
        int stallMs = 5000;               // no picture for this long: the stream is lost
        int64_t maxPixels = 7680 * 4320;  // larger pictures are dropped, never decoded
    };

    explicit CameraStream(const std::atomic<bool>& stop);
    ~CameraStream();
    CameraStream(const CameraStream&) = delete;
    CameraStream& operator=(const CameraStream&) = delete;

    // Empty when the stream is open and has a video track, else why not.
    std::string Open(const Options& options);
    // Reads until the next picture is decoded into rgb (width x height x 3 bytes, no padding).
    // Empty on a picture, else why the stream is lost (ended, stalled, cut, stopped).
    std::string Next(std::vector<uint8_t>& rgb, int& width, int& height);
    void Close();

    // Pictures that could not be decoded (corrupt or oversized) since Open.
    int DroppedPictures() const { return dropped_; }

  private:
    static int Interrupted(void* self);
    std::string OpenDecoder();
    bool Convert(std::vector<uint8_t>& rgb, int& width, int& height);
    int64_t NowMs() const;

    const std::atomic<bool>& stop_;
    Options options_;
    std::atomic<int64_t> deadlineMs_{0};
    AVFormatContext* format_ = nullptr;
    AVCodecContext* decoder_ = nullptr;
    AVPacket* packet_ = nullptr;
    AVFrame* frame_ = nullptr;
    SwsContext* scaler_ = nullptr;
    int videoIndex_ = -1;
    int dropped_ = 0;
    bool draining_ = false;
    int64_t lastPictureMs_ = 0;
};

// The URL with user and password put in (percent-encoded), and the URL as it may be shown:
// without any credentials, whether they came as parameters or in the URL itself.
std::string UrlWithCredentials(const std::string& url, const std::string& user,
                               const std::string& password);
std::string UrlForLog(const std::string& url);

// IpCamera: the reference camera plug-in for network cameras. Reads any URL FFmpeg opens (RTSP
// over TCP or UDP with H.264, H.265 or MJPEG, HTTP MJPEG, ...) on a thread of its own, as fast
// as pictures arrive, and hands the newest one over as 24-bit RGB. A stalled or cut stream is
// reopened with a growing pause (1 s up to 30 s), for as long as the source samples.
#include <algorithm>
#include <atomic>
#include <condition_variable>
#include <cstdio>
#include <mutex>
#include <thread>
#include <vector>

#include "CameraStream.h"
#include "IpCameraDialog.h"
#include "ParameterSheet.h"
#include "corvane/CameraPlugin.h"

namespace {

constexpr int kFirstPauseS = 1;
constexpr int kLongestPauseS = 30;

class IpCamera : public CameraPlugin {
  public:
    IpCamera() : sheet_(IpCameraSheet()) {}
    ~IpCamera() override { StopCapture(); }

    void Start(NativeWindow) override {
        // A second Start without Close keeps the running capture.
        if (capture_.joinable())
            return;
        stop_ = false;
        shownUrl_ = UrlForLog(sheet_.Text("URL"));
        capture_ = std::thread([this] { Capture(); });
    }
    void LockFrame() override { frameMutex_.lock(); }
    void UnlockFrame() override { frameMutex_.unlock(); }
    void* GetFrame(int* width, int* height, int* format, int* frameId) override {
        if (front_.empty())
            return nullptr;
        *width = frontWidth_;
        *height = frontHeight_;
        *format = kFrameRGB24;
        *frameId = frameId_;
        return front_.data();
    }
    void FreeMemory() override {
        std::lock_guard<std::mutex> lock(frameMutex_);
        std::vector<uint8_t>().swap(front_);
    }
    std::string GetParameters(int) override { return sheet_.ValueReturn(); }
    void SetParameters(std::string text) override {
        const bool running = capture_.joinable();
        StopCapture();
        sheet_.Apply(text);
        if (running)
            Start(nullptr);
    }
    std::string GetLibName() override { return "IpCamera"; }
    std::string GetGuiName(unsigned int* word) override {
        if (word != nullptr)
            *word = 0;
        return "IP Camera";
    }
    std::string GetDescription() override {
        return "Reads a network camera (RTSP, HTTP MJPEG or any URL FFmpeg opens), reconnecting";
    }
    void Close() override { StopCapture(); }
    int HasDialog() override { return 1; }
    int ShowDialog(NativeWindow parent, std::string) override {
        return ShowIpCameraDialog(parent, sheet_) ? 1 : 0;
    }

  private:
    // One line on the console for each change of state; credentials never appear in it.
    void Say(const std::string& what) const {
        std::fprintf(stderr, "IpCamera %s: %s\n", shownUrl_.c_str(), what.c_str());
    }

    CameraStream::Options StreamOptions() const {
        CameraStream::Options options;
        options.url =
            UrlWithCredentials(sheet_.Text("URL"), sheet_.Text("User"), sheet_.Text("Password"));
        options.transport = sheet_.Text("Transport");
        options.stallMs = std::clamp(sheet_.Int("Stall time (s)"), 1, 600) * 1000;
        return options;
    }

    void Publish(int width, int height) {
        std::lock_guard<std::mutex> lock(frameMutex_);
        front_.swap(back_);
        frontWidth_ = width;
        frontHeight_ = height;
        frameId_ = frameId_ == INT32_MAX ? 0 : frameId_ + 1;  // never -1, never a repeat
    }

    // Reads pictures until the stream is lost; pictures: how many came.
    std::string ReadPictures(CameraStream& stream, int& pictures) {
        int width = 0;
        int height = 0;
        for (;;) {
            const std::string lost = stream.Next(back_, width, height);
            if (!lost.empty())
                return lost;
            if (pictures == 0 || width != frontWidth_ || height != frontHeight_)
                Say((pictures == 0 ? "connected, " : "picture size now ") + std::to_string(width) +
                    "x" + std::to_string(height));
            Publish(width, height);
            ++pictures;
        }
    }

    void Capture() {
        const CameraStream::Options options = StreamOptions();
        CameraStream stream(stop_);
        int pause = kFirstPauseS;
        std::string lastFailure;
        int lastPause = 0;
        while (!stop_) {
            int pictures = 0;
            std::string failure = stream.Open(options);
            if (failure.empty())
                failure = ReadPictures(stream, pictures);
            stream.Close();
            if (stop_)
                break;
            if (pictures > 0) {
                Say("lost: " + failure);
                pause = kFirstPauseS;
                lastFailure.clear();
                lastPause = 0;
            } else if (failure != lastFailure) {
                Say("cannot read: " + failure);
                lastFailure = failure;
            }
            if (pause != lastPause)
                Say("reconnecting in " + std::to_string(pause) + " s");
            lastPause = pause;
            if (!PauseFor(pause))
                break;
            pause = std::min(pause * 2, kLongestPauseS);
        }
    }

    // False when stopped during the pause.
    bool PauseFor(int seconds) {
        std::unique_lock<std::mutex> lock(stopMutex_);
        return !stopped_.wait_for(lock, std::chrono::seconds(seconds),
                                  [this] { return stop_.load(); });
    }

    void StopCapture() {
        {
            std::lock_guard<std::mutex> lock(stopMutex_);
            stop_ = true;
        }
        stopped_.notify_all();
        if (capture_.joinable())
            capture_.join();
    }

    ParameterSheet sheet_;
    std::string shownUrl_;  // the camera as the console names it, set before capture starts
    std::thread capture_;
    std::atomic<bool> stop_{false};
    std::mutex stopMutex_;
    std::condition_variable stopped_;
    std::mutex frameMutex_;
    std::vector<uint8_t> front_;  // what the grab thread reads, under the frame lock
    std::vector<uint8_t> back_;   // what the capture thread decodes into, outside it
    int frontWidth_ = 0;
    int frontHeight_ = 0;
    int frameId_ = 0;
};

}  // namespace

CORVANE_PLUGIN_EXPORT CameraPlugin* CreateCameraPlugin() {
    return new IpCamera();
}

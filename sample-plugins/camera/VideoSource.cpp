// VideoSource: the reference camera plug-in. Plays a video file or an image sequence (any
// pattern OpenCV's FFmpeg back end opens, such as "frames/%04d.png"), or renders synthetic
// traffic with readable plates. Frames are delivered as 24-bit RGB.
#include <atomic>
#include <chrono>
#include <mutex>
#include <sstream>
#include <thread>

#include <opencv2/imgproc.hpp>
#include <opencv2/videoio.hpp>

#include "ParameterSheet.h"
#include "TrafficScene.h"
#include "corvane/CameraPlugin.h"

namespace {

constexpr const char* kSynthetic = "Synthetic traffic";
constexpr const char* kVideoFile = "Video file";

std::vector<std::string> SplitList(const std::string& text) {
    std::vector<std::string> items;
    std::stringstream stream(text);
    std::string item;
    while (std::getline(stream, item, ',')) {
        item.erase(std::remove(item.begin(), item.end(), ' '), item.end());
        if (!item.empty())
            items.push_back(item);
    }
    return items;
}

class VideoSource : public CameraPlugin {
  public:
    VideoSource() : sheet_("Video Source") {
        sheet_.Add("Source", "CHOICE", kSynthetic, std::string(kSynthetic) + ";" + kVideoFile + ";")
            .Add("Video file", "FILE", "")
            .Add("Width", "INT", "1280")
            .Add("Height", "INT", "720")
            .Add("Frames per second", "INT", "25")
            .Add("Traffic lanes", "INT", "1")
            .Add("Character height", "INT", "26")
            .Add("Crossing time (ms)", "INT", "2400")
            .Add("Gap (ms)", "INT", "900")
            .Add("Plates", "STRING", "")
            .Add("Repeat", "CHOICE", "Yes", "Yes;No;")
            .Add("Seed", "INT", "1");
    }
    ~VideoSource() override { StopProducer(); }

    void Start(NativeWindow) override {
        // A second Start without Close keeps the running producer.
        if (producer_.joinable())
            return;
        stop_ = false;
        producer_ = std::thread([this] { Produce(); });
    }
    void LockFrame() override { frameMutex_.lock(); }
    void UnlockFrame() override { frameMutex_.unlock(); }
    void* GetFrame(int* width, int* height, int* format, int* frameId) override {
        if (front_.empty())
            return nullptr;
        *width = front_.cols;
        *height = front_.rows;
        *format = kFrameRGB24;
        *frameId = frameId_;
        return front_.data;
    }
    void FreeMemory() override {
        std::lock_guard<std::mutex> lock(frameMutex_);
        front_.release();
    }
    std::string GetParameters(int) override { return sheet_.Description(); }
    void SetParameters(std::string text) override {
        const bool running = producer_.joinable();
        StopProducer();
        sheet_.Apply(text);
        if (running)
            Start(nullptr);
    }
    std::string GetLibName() override { return "VideoSource"; }
    std::string GetGuiName(unsigned int* word) override {
        if (word != nullptr)
            *word = 0;
        return "Video Source";
    }
    std::string GetDescription() override {
        return "Plays a video file or image sequence, or renders synthetic traffic";
    }
    void Close() override { StopProducer(); }
    int HasDialog() override { return 0; }
    int ShowDialog(NativeWindow, std::string) override { return 0; }

  private:
    TrafficSettings Traffic() const {
        TrafficSettings traffic;
        traffic.size =
            cv::Size(std::max(sheet_.Int("Width"), 64) / 4 * 4, std::max(sheet_.Int("Height"), 48));
        traffic.lanes = std::max(sheet_.Int("Traffic lanes"), 1);
        traffic.charHeight = std::max(sheet_.Int("Character height"), 8);
        traffic.crossingMs = sheet_.Int("Crossing time (ms)");
        traffic.gapMs = sheet_.Int("Gap (ms)");
        traffic.plates = SplitList(sheet_.Text("Plates"));
        traffic.repeat = sheet_.Text("Repeat") != "No";
        traffic.seed = static_cast<unsigned>(sheet_.Int("Seed"));
        return traffic;
    }

    void Publish(const cv::Mat& bgr) {
        std::lock_guard<std::mutex> lock(frameMutex_);
        cv::cvtColor(bgr, front_, cv::COLOR_BGR2RGB);
        ++frameId_;
    }

    void Produce() {
        const int fps = std::clamp(sheet_.Int("Frames per second"), 1, 120);
        const auto period = std::chrono::microseconds(1000000 / fps);
        const auto started = std::chrono::steady_clock::now();
        auto next = started;
        std::unique_ptr<TrafficScene> scene;
        cv::VideoCapture video;
        if (sheet_.Text("Source") == kVideoFile)
            video.open(sheet_.Text("Video file"));
        else
            scene = std::make_unique<TrafficScene>(Traffic());
        cv::Mat bgr;
        while (!stop_) {
            const auto now = std::chrono::steady_clock::now();
            const auto ms =
                std::chrono::duration_cast<std::chrono::milliseconds>(now - started).count();
            if (scene != nullptr) {
                scene->Render(ms, bgr);
                Publish(bgr);
            } else if (video.isOpened()) {
                if (!video.read(bgr)) {
                    video.set(cv::CAP_PROP_POS_FRAMES, 0);  // play in a loop
                    if (!video.read(bgr))
                        break;
                }
                if (bgr.cols % 4 != 0)
                    bgr = bgr.colRange(0, bgr.cols / 4 * 4).clone();
                Publish(bgr);
            }
            next += period;
            if (next < now)
                next = now;
            std::this_thread::sleep_until(next);
        }
    }

    void StopProducer() {
        stop_ = true;
        if (producer_.joinable())
            producer_.join();
    }

    ParameterSheet sheet_;
    std::thread producer_;
    std::atomic<bool> stop_{false};
    std::mutex frameMutex_;
    cv::Mat front_;
    int frameId_ = 0;
};

}  // namespace

CORVANE_PLUGIN_EXPORT CameraPlugin* CreateCameraPlugin() {
    return new VideoSource();
}

#pragma once
#include <cstdint>
#include <string>

#include <opencv2/core/mat.hpp>

#include "StreamPacer.h"
#include "platform/WorkerThread.h"

class CameraPlugin;
class EventSink;
class Project;
class StreamServices;

// What a source's thread is handed when it starts.
struct GrabSettings {
    int cameraId = 0;
    CameraPlugin* plugin = nullptr;  // not owned
    std::string name;
    EventSink* eventTarget = nullptr;
    int port = -1;
    int FrameDim = 0;
    int FPS = 10;
};

// The one thread of a sampling source: takes each new frame from the plug-in, converts it,
// feeds the source's stream at its rate, cuts and queues the picture of every region of the
// source, and hands frames to the live view while somebody looks.
class GrabThread : public platform::WorkerThread {
  public:
    static constexpr int kRetryMs = 10;
    static constexpr uint32_t kViewIdleMs = 1200000;  // the live view sleeps after 20 minutes

    GrabThread(Project& project, StreamServices* streams, GrabSettings settings);
    ~GrabThread() override { Delete(); }

    // Everything done with one converted frame, in order: stream, regions, live view.
    // captureTick: when the frame was taken from the plug-in.
    void HandleFrame(const cv::Mat& frame, uint32_t captureTick);
    // Cuts and queues the picture of every region of this source.
    void DistributeFrame(const cv::Mat& frame);

    const GrabSettings& Settings() const { return settings_; }

  protected:
    void Entry() override;

  private:
    bool GrabOnce();
    void StreamStep(const cv::Mat& frame, uint32_t captureTick);
    void LiveViewStep(const cv::Mat& frame);

    Project& project_;
    StreamServices* streams_;
    const GrabSettings settings_;
    StreamPacer pacer_;
    int lastFrameId_ = -1;
    int frameCount_ = 0;
    uint32_t fpsTick_ = 0;
    cv::Mat frame_;  // reused from frame to frame while the size stays
};

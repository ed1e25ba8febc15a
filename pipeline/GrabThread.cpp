#include "GrabThread.h"

#include <cstdio>

#include "FrameConverter.h"
#include "LPRThread.h"
#include "RegionCutter.h"
#include "StreamServices.h"
#include "core/Project.h"
#include "corvane/CameraPlugin.h"
#include "platform/Ticks.h"

namespace {
constexpr uint32_t kFpsPeriodMs = 30000;
}

GrabThread::GrabThread(Project& project, StreamServices* streams, GrabSettings settings)
    : project_(project),
      streams_(streams),
      settings_(std::move(settings)),
      pacer_(platform::GetTickCount()) {
    SetReportName("grab thread of " + settings_.name);
}

void GrabThread::Entry() {
    if (settings_.plugin == nullptr)
        return;
    lastFrameId_ = -1;
    frameCount_ = 0;
    fpsTick_ = platform::GetTickCount();
    pacer_ = StreamPacer(fpsTick_);
    while (!TestDestroy()) {
        if (!GrabOnce())
            Pause(kRetryMs);
    }
}

bool GrabThread::GrabOnce() {
    CameraPlugin& plugin = *settings_.plugin;
    int width = 0;
    int height = 0;
    int format = 0;
    // The id keeps the last frame's value: a plug-in that has no new frame may leave it alone.
    int frameId = lastFrameId_;
    plugin.LockFrame();
    const void* raw = plugin.GetFrame(&width, &height, &format, &frameId);
    if (width <= 0 || height <= 0 || raw == nullptr || frameId == lastFrameId_) {
        plugin.UnlockFrame();
        return false;
    }
    ++frameCount_;
    const uint32_t now = platform::GetTickCount();
    const uint32_t elapsed = platform::ElapsedTicks(now, fpsTick_);
    if (elapsed > kFpsPeriodMs) {
        fpsTick_ = now;
        // Over the window as it really was: after a stall it is longer than the period.
        std::printf("VIDEOSOURCE %s W:%d H:%d FPS:%.1f\n", settings_.name.c_str(), width, height,
                    frameCount_ / (elapsed / 1000.0));
        frameCount_ = 0;
    }
    lastFrameId_ = frameId;
    // The whole cycle runs inside the plug-in's frame lock, as the contract promises it.
    if (FrameConverter::Convert(raw, width, height, format, frame_))
        HandleFrame(frame_, now);
    plugin.UnlockFrame();
    return true;
}

void GrabThread::HandleFrame(const cv::Mat& frame, uint32_t captureTick) {
    if (streams_ != nullptr && streams_->RtspRunning())
        StreamStep(frame, captureTick);
    DistributeFrame(frame);
    LiveViewStep(frame);
}

void GrabThread::StreamStep(const cv::Mat& frame, uint32_t captureTick) {
    if (settings_.port <= 0)
        return;
    const int period = StreamPacer::PeriodOf(settings_.FPS);
    const uint32_t now = platform::GetTickCount();
    if (!pacer_.DueStrict(now))
        return;
    pacer_.Advance(now, period);
    const cv::Mat scaled = StreamPacer::Scaled(frame, settings_.FrameDim);
    if (scaled.empty())
        return;
    const Camera* camera = project_.GetCamera(settings_.cameraId);
    if (camera != nullptr && camera->port > 0 && camera->soapthread)
        streams_->SetVideoFormat(*camera->soapthread, scaled.cols, scaled.rows,
                                 streams_->StreamRate(settings_.name, settings_.FPS));
    streams_->SetStreamSize(scaled.cols, scaled.rows, settings_.name);
    streams_->PushStreamFrame(scaled.data, scaled.cols, scaled.rows, settings_.name, captureTick);
}

void GrabThread::DistributeFrame(const cv::Mat& frame) {
    std::lock_guard<std::mutex> lock(project_.lanesmutex);
    for (const auto& lane : project_.lanes) {
        if (lane.camname != settings_.name)
            continue;
        const cv::Mat cut = RegionCutter::Cut(frame, lane);
        if (!cut.empty() && lane.lprthread)
            lane.lprthread->AddLPRPackage(cut.data, cut.cols, cut.rows);
    }
}

void GrabThread::LiveViewStep(const cv::Mat& frame) {
    uint32_t viewtick;
    {
        std::lock_guard<std::mutex> lock(project_.framemutex);
        viewtick = project_.viewtick;
    }
    if (platform::ElapsedTicks(platform::GetTickCount(), viewtick) >= kViewIdleMs ||
        project_.selcamera != settings_.cameraId)
        return;
    project_.camframes.Publish(frame.clone());
    if (settings_.eventTarget != nullptr)
        settings_.eventTarget->PostCommand(ID_VIEW_REFRESH, 0, std::string());
}

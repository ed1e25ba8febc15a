#pragma once
#include "core/Project.h"

class StreamServices;

// Start and stop of the pipeline's threads: one recognition thread a region, one grab thread a
// sampling source, and the stream front of each that has a port. Runs on the GUI thread.
class LaneControl : public LaneRunner {
  public:
    static constexpr int kDiscoveryPort = 3702;
    static constexpr int kRestartPauseMs = 200;

    // Installs itself as the project's runner; streams may be null (no stream is served).
    LaneControl(Project& project, StreamServices* streams);
    ~LaneControl() override;
    LaneControl(const LaneControl&) = delete;
    LaneControl& operator=(const LaneControl&) = delete;

    void SetStreamServices(StreamServices* streams) { streams_ = streams; }

    // Stream first, recognition thread last; settings out of range are corrected in the lane.
    void StartLane(Lane& lane) override;
    void StopLane(Lane& lane) override;
    // The plug-in must be open and configured; eventTarget hears of live-view frames.
    void StartCamera(Camera& camera, EventSink* eventTarget);
    // Stops the source's threads; the plug-in stays open.
    void StopCamera(Camera& camera) override;

    // The operator's Start Sampling and Stop Sampling.
    void StartSampling(Camera& camera);
    void StopSampling(Camera& camera);
    // Reload of a source a plug-in asked for (event 6093); false when no source has the id.
    bool RestartCamera(int cameraId);

    // The corrections a region's settings get on the way up.
    static void CorrectLaneSettings(Lane& lane);

  private:
    Project& project_;
    StreamServices* streams_;
};

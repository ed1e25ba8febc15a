#include "LaneControl.h"

#include <cstdio>

#include "GrabThread.h"
#include "LPRThread.h"
#include "StreamServices.h"
#include "corvane/CameraPlugin.h"
#include "platform/Ticks.h"

LaneControl::LaneControl(Project& project, StreamServices* streams)
    : project_(project), streams_(streams) {
    project_.SetLaneRunner(this);
}

LaneControl::~LaneControl() {
    project_.SetLaneRunner(nullptr);
}

void LaneControl::CorrectLaneSettings(Lane& lane) {
    if (lane.DROIX < 0 || lane.DROIX > 300)
        lane.DROIX = 20;
    if (lane.DROIY < 0 || lane.DROIY > 300)
        lane.DROIY = 20;
    if (lane.MinCar < 11)
        lane.MinCar = 10;
    if (lane.MaxCar <= lane.MinCar)
        lane.MaxCar = 2 * lane.MinCar;
    if (lane.BufferLen > Lane::kMaxBufferLen)
        lane.BufferLen = Lane::kMaxBufferLen;
}

void LaneControl::StartLane(Lane& lane) {
    if (lane.port < 1) {
        lane.soapthread.reset();
        lane.wsdiscovery.reset();
    } else if (streams_ != nullptr) {
        streams_->AddStream(lane.name, lane.bitrate);
        streams_->StartFront(lane.name, lane.port, lane.bitrate, lane.AutoDiscovery != 0,
                             lane.soapthread, lane.wsdiscovery);
    }
    CorrectLaneSettings(lane);
    LPRSettings settings;
    settings.laneId = lane.id;
    settings.name = lane.name;
    settings.BufferLen = lane.BufferLen;
    settings.MinCar = lane.MinCar;
    settings.MaxCar = lane.MaxCar;
    settings.DROIX = lane.DROIX;
    settings.DROIY = lane.DROIY;
    auto thread = std::make_shared<LPRThread>(project_, streams_, settings);
    thread->Run();
    std::lock_guard<std::mutex> lock(project_.lanesmutex);
    lane.lprthread = std::move(thread);
}

void LaneControl::StopLane(Lane& lane) {
    std::fputs("Stop lpr thread\n", stderr);
    std::shared_ptr<LPRThread> thread;
    {
        std::lock_guard<std::mutex> lock(project_.lanesmutex);
        thread = std::move(lane.lprthread);
    }
    if (thread) {
        thread->Delete();  // the thread closes its plug-in on its way out
        thread.reset();
    }
    std::printf("LPR STOPPED\n");
    if (lane.port >= 1) {
        std::fputs("Remove h264 stream\n", stderr);
        if (streams_ != nullptr)
            streams_->RemoveStream(lane.name);
        std::fputs("Stop soap\n", stderr);
        if (streams_ != nullptr)
            streams_->StopFront(lane.soapthread, lane.wsdiscovery);
        lane.soapthread.reset();
        lane.wsdiscovery.reset();
    }
}

void LaneControl::StartCamera(Camera& camera, EventSink* eventTarget) {
    if (camera.port < 1) {
        camera.soapthread.reset();
        camera.wsdiscovery.reset();
    } else if (streams_ != nullptr) {
        // A source's front comes up before its stream, unlike a region's.
        streams_->StartFront(camera.name, camera.port, camera.bitrate, camera.AutoDiscovery != 0,
                             camera.soapthread, camera.wsdiscovery);
        streams_->AddStream(camera.name, camera.bitrate);
    }
    if (camera.plugin != nullptr)
        camera.plugin->Start(project_.viewer);
    GrabSettings settings;
    settings.cameraId = camera.id;
    settings.plugin = camera.plugin;
    settings.name = camera.name;
    settings.eventTarget = eventTarget;
    settings.port = camera.port;
    settings.FrameDim = camera.FrameDim;
    settings.FPS = camera.FPS;
    camera.grabthread = std::make_shared<GrabThread>(project_, streams_, settings);
    camera.grabthread->Run();
}

void LaneControl::StopCamera(Camera& camera) {
    if (camera.grabthread) {
        camera.grabthread->Delete();
        camera.grabthread.reset();
    }
    if (streams_ != nullptr) {
        streams_->RemoveStream(camera.name);
        streams_->StopFront(camera.soapthread, camera.wsdiscovery);
    }
    camera.soapthread.reset();
    camera.wsdiscovery.reset();
}

void LaneControl::StartSampling(Camera& camera) {
    camera.sampling = 1;
    StartCamera(camera, project_.mainframe);
}

void LaneControl::StopSampling(Camera& camera) {
    camera.sampling = 0;
    std::printf("Stop grab\n");
    StopCamera(camera);
    if (camera.plugin != nullptr) {
        std::printf("Close camera\n");
        camera.plugin->Close();
        std::printf("Free memory\n");
        camera.plugin->FreeMemory();
    }
    std::printf("Enable buttons\n");
}

bool LaneControl::RestartCamera(int cameraId) {
    Camera* camera = project_.GetCamera(cameraId);
    if (camera == nullptr)
        return false;
    StopCamera(*camera);
    platform::SleepMs(kRestartPauseMs);
    if (camera->plugin != nullptr) {
        camera->plugin->Close();
        camera->plugin->FreeMemory();
        camera->plugin->SetParameters(camera->settings);
        camera->plugin->Start(project_.viewer);
    }
    StartCamera(*camera, project_.mainframe);
    return true;
}

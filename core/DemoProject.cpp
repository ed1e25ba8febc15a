#include "DemoProject.h"

#include "Project.h"
#include "corvane/CameraPlugin.h"
#include "corvane/IntegratorPlugin.h"
#include "corvane/PostProcessorPlugin.h"
#include "plugins/Parametro.h"
#include "plugins/PluginOpenArgs.h"

namespace {

void AddDemoCamera(Project& project) {
    Camera camera;
    camera.name = "Camera1";
    camera.id = project.NewCameraId();
    camera.port = 8081;  // streamed as rtsp://<host>:8554/Camera1
    camera.FrameDim = 1;
    camera.AutoDiscovery = 1;
    camera.bitrate = 1000000;
    camera.plugin = project.cameraplugins.CreateCamera("VideoSource");
    if (camera.plugin == nullptr)
        return;
    camera.settings = ValueTextOf({{"Source", "Synthetic traffic"},
                                   {"Width", "1280"},
                                   {"Height", "720"},
                                   {"Frames per second", "25"},
                                   {"Traffic lanes", "1"},
                                   {"Repeat", "Yes"}});
    camera.plugin->SetParameters(camera.settings);
    project.cameras.Add(camera);
}

void AddDemoGate(Project& project) {
    Integrator gate;
    gate.name = "Gate1";
    gate.id = project.NewIntegratorId();
    gate.plugin = project.integratorplugins.CreaIntegratorPlugin("VotingGate");
    if (gate.plugin == nullptr)
        return;
    gate.settings = ValueTextOf({{"Readings for a transit", "2"},
                                 {"Empty frames to close", "3"},
                                 {"Image folder", "Transit_Images"},
                                 {"Barrier output", "Board1;11"}}) +
                    "<INTNAME>Gate1<\\INTNAME>";
    gate.plugin->SetParameters(gate.settings);
    OpenWith(gate.plugin, gate.id, project.OpenArgs());
    project.integrators.Add(gate);
}

void AddDemoProcessor(Project& project) {
    PostProcessor processor;
    processor.name = "Transits1";
    processor.id = project.NewProcessorId();
    processor.refintegrator = "Gate1";
    processor.plugin = project.processorplugins.CreaProcessorPlugin("CsvTransits");
    if (processor.plugin == nullptr)
        return;
    processor.settings = ValueTextOf({{"Folder", "Transits"}});
    processor.plugin->SetParameters(processor.settings);
    OpenWith(processor.plugin, processor.id, project.OpenArgs());
    project.processors.Add(processor);
}

void AddDemoLane(Project& project) {
    Lane lane;
    lane.name = "Lane1";
    lane.place = "Entrance";
    lane.id = project.NewLaneId();
    lane.camname = "Camera1";
    lane.lprlib = "PlateCore";
    lane.intname = "Gate1";
    lane.MinCar = 14;
    lane.MaxCar = 45;
    lane.CreateLogs = 1;
    lane.UseTemplate = 1;
    lane.BufferLen = 3;
    lane.port = 8082;  // the region with its readings drawn: rtsp://<host>:8554/Lane1
    lane.FrameDim = 0;
    lane.shape = lane.RoiCorners();
    std::lock_guard<std::mutex> lock(project.lanesmutex);
    project.lanes.Add(lane);
}

}  // namespace

void PopulateDemoProject(Project& project) {
    project.EditBracket([&] {
        project.AddBoard("Board1", "VirtualBoard",
                         ValueTextOf({{"Loopback", "Yes"}, {"Pulse input 1 every (ms)", "0"}}),
                         project.NewBoardId());
        AddDemoCamera(project);
        AddDemoGate(project);
        AddDemoProcessor(project);
        AddDemoLane(project);
    });
}

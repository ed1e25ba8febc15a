// The program's entry. Until the desktop window lands it runs headless: it brings the model up
// in the start-up order, opens the project named on the command line (or the demo project),
// starts sampling every source as the operator would, prints the transits as they come, and
// stops everything in the close order when interrupted.
#include <csignal>
#include <cstdio>
#include <cstring>
#include <string>

#include "access/AccessStore.h"
#include "core/DemoProject.h"
#include "core/EventQueue.h"
#include "core/Project.h"
#include "core/ProjectSession.h"
#include "core/StartMode.h"
#include "pipeline/LaneControl.h"
#include "pipeline/TransitLine.h"
#include "platform/FileSystem.h"
#include "platform/Ticks.h"
#include "streaming/RtspService.h"

namespace {

volatile std::sig_atomic_t g_stop = 0;

void OnSignal(int) {
    g_stop = 1;
}

class ConsoleHost : public ProjectHost {
  public:
    bool AskYesNo(const std::string& question) override {
        std::printf("%s Yes\n", question.c_str());
        return true;
    }
    void ShowMessage(const std::string& message) override { std::printf("%s\n", message.c_str()); }
    void SetTitle(const std::string& title) override { std::printf("%s\n", title.c_str()); }
};

// What the window does with posted events, on the main thread.
void HandleEvent(Project& project, LaneControl& control, const EventQueue::Event& event) {
    switch (event.id) {
        case ID_LPR_RESULT: {
            const LPRPackage record = TransitLine::Record(event.text, WallClock::now());
            project.AddResult(record);
            std::printf("TRANSIT %s lane %s image %s\n", record.plate.c_str(), record.lane.c_str(),
                        record.image.c_str());
            break;
        }
        case ID_CAMERA_RESTART:
            control.RestartCamera(event.value);
            break;
        default:
            break;
    }
}

void OpenStartProject(ProjectSession& session, Project& project, const std::string& file) {
    if (!file.empty()) {
        session.LoadProject(file);
    } else if (platform::FileExists("projects/demo/demo.tlr")) {
        session.LoadProject("projects/demo/demo.tlr");
    } else {
        platform::MakeDirectory("projects");
        if (session.NewProject("projects", "demo")) {
            PopulateDemoProject(project);
            session.SaveAll();
        }
    }
}

Project g_project;

}  // namespace

int main(int argc, char** argv) {
    std::setvbuf(stdout, nullptr, _IONBF, 0);
    std::fprintf(stderr, "%s\n\n", ProjectSession::kBanner);
    const StartMode mode = ParseStartMode(argc, argv);
    int seconds = -1;
    std::string projectFile;
    for (int i = mode == kStartNormal ? 1 : 2; i < argc; ++i) {
        if (std::strcmp(argv[i], "--seconds") == 0 && i + 1 < argc)
            seconds = std::atoi(argv[++i]);
        else
            projectFile = argv[i];
    }

    Project& project = g_project;
    SetAccessDefaults(project);
    LoadAccess(project);
    project.appdir = platform::GetWorkingDirectory();
    project.LoadPluginDirectories();
    EventQueue events;
    project.mainframe = &events;
    project.lprsink = &events;
    // The RTSP service runs from start to close, whether a project is open or not. A moment's
    // wait lets it bind its port before the sources add their streams.
    RtspService rtsp;
    DeviceFronts fronts;
    rtsp.SetDeviceFronts(&fronts);
    rtsp.Start();
    for (int i = 0; i < 50 && !rtsp.RtspRunning(); ++i)
        platform::SleepMs(20);
    LaneControl control(project, &rtsp);

    ConsoleHost host;
    ProjectSession session(project, host);
    OpenStartProject(session, project, projectFile);
    std::fputs(project.GetProjectText().c_str(), stdout);
    for (auto& camera : project.cameras)
        control.StartSampling(camera);

    std::signal(SIGINT, OnSignal);
    std::signal(SIGTERM, OnSignal);
    const uint32_t started = platform::GetTickCount();
    while (!g_stop && (seconds < 0 || platform::ElapsedTicks(platform::GetTickCount(), started) <
                                          static_cast<uint32_t>(seconds) * 1000u))
        events.Drain([&](const EventQueue::Event& event) { HandleEvent(project, control, event); },
                     std::chrono::milliseconds(100));

    project.processorplugins.StopMirrorDB();
    project.StopBoardThread();
    project.StopCameras();
    project.StopLanes();
    project.CloseAll();
    rtsp.StopAllStreams();
    std::printf("Destroy\n");
    return 0;
}

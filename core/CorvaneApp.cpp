// The program's entry. Until the desktop window lands it runs headless: it brings the model up
// in the start-up order, opens the project named on the command line (or the demo project),
// runs it until interrupted and stops everything in the close order.
#include <csignal>
#include <cstdio>
#include <cstring>
#include <string>

#include "access/AccessStore.h"
#include "core/Project.h"
#include "core/ProjectSession.h"
#include "core/StartMode.h"
#include "platform/FileSystem.h"
#include "platform/Ticks.h"

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

void LoadPluginDirectories(Project& project) {
    project.cameraplugins.InitList();
    project.integratorplugins.LoadPlugin();
    project.processorplugins.LoadPlugin();
    project.boardplugins.LoadPlugin();
    project.triggerplugins.LoadPlugin();
    project.lprplugins.InitList();
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
    LoadPluginDirectories(project);

    ConsoleHost host;
    ProjectSession session(project, host);
    if (!projectFile.empty()) {
        session.LoadProject(projectFile);
    } else if (platform::FileExists("projects/demo/demo.tlr")) {
        session.LoadProject("projects/demo/demo.tlr");
    } else {
        platform::MakeDirectory("projects");
        session.NewProject("projects", "demo");
    }
    std::fputs(project.GetProjectText().c_str(), stdout);

    std::signal(SIGINT, OnSignal);
    std::signal(SIGTERM, OnSignal);
    const uint32_t started = platform::GetTickCount();
    while (!g_stop && (seconds < 0 || platform::ElapsedTicks(platform::GetTickCount(), started) <
                                          static_cast<uint32_t>(seconds) * 1000u))
        platform::SleepMs(100);

    project.processorplugins.StopMirrorDB();
    project.StopBoardThread();
    project.StopCameras();
    project.StopLanes();
    project.CloseAll();
    std::printf("Destroy\n");
    return 0;
}

// The program without a window, in one of two roles:
//
//  - the workstation (--headless, or no display): it stops the unattended runtime of this machine,
//  brings the
//    model up in the start-up order, opens the project named on the command line (or the demo
//    project), samples every source, prints the transits and the database state, and can
//    fetch a runtime's project (--download IP) or send the open one (--upload IP);
//  - the runtime (--runtime, or started as corvane-runtime): the same pipeline and streams,
//    plus the project transfer server on TCP 14400, so a site runs unattended and is managed
//    from a workstation.
//
// Both stop everything in the close order when interrupted or when --seconds N have passed.
#include <csignal>
#include <cstdio>
#include <cstring>
#include <string>

#include "HeadlessProgram.h"

#include "access/AccessStore.h"
#include "core/DemoProject.h"
#include "core/EventQueue.h"
#include "core/Project.h"
#include "core/ProjectSession.h"
#include "core/StartMode.h"
#include "database/CheckDBThread.h"
#include "pipeline/LaneControl.h"
#include "pipeline/TransitLine.h"
#include "platform/FileSystem.h"
#include "platform/Ticks.h"
#include "remote/LocalRuntime.h"
#include "remote/ProjectBlock.h"
#include "remote/RemoteAdministration.h"
#include "remote/RuntimeServer.h"
#include "streaming/RtspService.h"

namespace {

volatile std::sig_atomic_t g_stop = 0;

void OnSignal(int) {
    g_stop = 1;
}

constexpr const char* kRuntimeFolder = "projects/runtime";
constexpr const char* kRuntimeProjectFile = "runtime.tlr";
constexpr const char* kIncomingFolder = "projects/incoming";

struct Options {
    StartMode startMode = kStartNormal;
    bool runtime = false;
    bool headless = false;           // asked for by name; the other roles imply it
    std::string listen = "0.0.0.0";  // the runtime's transfer server address
    int seconds = -1;
    std::string projectFile;
    std::string download;  // runtime address to fetch the project from
    std::string upload;    // runtime address to send the open project to
};

Options ParseOptions(int argc, char** argv) {
    Options options;
    options.startMode = ParseStartMode(argc, argv);
    const char* program = std::strrchr(argv[0], '/');
    options.runtime =
        std::strcmp(program != nullptr ? program + 1 : argv[0], "corvane-runtime") == 0;
    for (int i = options.startMode == kStartNormal ? 1 : 2; i < argc; ++i) {
        const bool hasValue = i + 1 < argc;
        if (std::strcmp(argv[i], "--seconds") == 0 && hasValue)
            options.seconds = std::atoi(argv[++i]);
        else if (std::strcmp(argv[i], "--runtime") == 0)
            options.runtime = true;
        else if (std::strcmp(argv[i], "--listen") == 0 && hasValue)
            options.listen = argv[++i];
        else if (std::strcmp(argv[i], "--download") == 0 && hasValue)
            options.download = argv[++i];
        else if (std::strcmp(argv[i], "--upload") == 0 && hasValue)
            options.upload = argv[++i];
        else if (std::strcmp(argv[i], "--headless") == 0)
            options.headless = true;
        else if (std::strcmp(argv[i], "--demo") == 0)
            continue;
        else
            options.projectFile = argv[i];
    }
    return options;
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

// The headless program: the model, its services and what the window would do with the posted
// events, all on the main thread.
class HeadlessProgram {
  public:
    explicit HeadlessProgram(Project& project, const Options& options)
        : project_(project),
          options_(options),
          control_(project, &rtsp_),
          session_(project, host_),
          remote_(project, session_, host_, &events_) {}

    int Run() {
        if (!options_.runtime)
            StopLocalRuntime();
        SetAccessDefaults(project_);
        LoadAccess(project_);
        project_.appdir = platform::GetWorkingDirectory();
        project_.LoadPluginDirectories();
        project_.mainframe = &events_;
        project_.lprsink = &events_;
        StartServices();
        OpenStartProject();
        StartTransfers();

        std::signal(SIGINT, OnSignal);
        std::signal(SIGTERM, OnSignal);
        const uint32_t started = platform::GetTickCount();
        while (!g_stop &&
               (options_.seconds < 0 || platform::ElapsedTicks(platform::GetTickCount(), started) <
                                            static_cast<uint32_t>(options_.seconds) * 1000u))
            events_.Drain([this](const EventQueue::Event& event) { Handle(event); },
                          std::chrono::milliseconds(100));
        Close();
        return 0;
    }

  private:
    void StopLocalRuntime() {
        LocalRuntime::KillRuntimeProcesses();
        LocalRuntime::KillWizardProcess();
        if (LocalRuntime::ServiceExists() == 1) {
            runtimestopped_ = true;
            LocalRuntime::StopService(LocalRuntime::kServiceName);
        }
    }

    void StartServices() {
        // The RTSP service runs from start to close, whether a project is open or not. A
        // moment's wait lets it bind its port before the sources add their streams.
        rtsp_.SetDeviceFronts(&fronts_);
        rtsp_.Start();
        for (int i = 0; i < 50 && !rtsp_.RtspRunning(); ++i)
            platform::SleepMs(20);
        checkdb_ = std::make_unique<CheckDBThread>(&events_, &project_);
        checkdb_->Run();
        if (options_.runtime) {
            server_ = std::make_unique<RuntimeServer>(&events_, options_.listen,
                                                      ProjectBlock::kRuntimePort,
                                                      project_.appdir + "/" + kIncomingFolder);
            server_->Run();
        }
    }

    void OpenStartProject() {
        if (!options_.projectFile.empty()) {
            session_.LoadProject(options_.projectFile);
        } else if (!options_.download.empty()) {
            return;  // the project comes from the runtime
        } else if (options_.runtime && platform::FileExists(RuntimeProjectPath())) {
            session_.LoadProject(RuntimeProjectPath());
        } else if (platform::FileExists("projects/demo/demo.tlr")) {
            session_.LoadProject("projects/demo/demo.tlr");
        } else {
            platform::MakeDirectory("projects");
            if (session_.NewProject("projects", "demo")) {
                PopulateDemoProject(project_);
                session_.SaveAll();
            }
        }
        ProjectOpened();
    }

    void ProjectOpened() {
        std::printf("Project %s open, site \"%s\"\n", project_.prjname.c_str(),
                    project_.place.placename.c_str());
        std::fputs(project_.GetProjectText().c_str(), stdout);
        for (auto& camera : project_.cameras)
            control_.StartSampling(camera);
        if (server_)
            server_->SetServedProject(project_.prjdir, project_.prjname + ".tlr");
    }

    void StartTransfers() {
        if (!options_.download.empty())
            remote_.Download(options_.download);
        if (!options_.upload.empty())
            remote_.Upload(options_.upload);
    }

    static std::string RuntimeProjectPath() {
        return std::string(kRuntimeFolder) + "/" + kRuntimeProjectFile;
    }

    // An uploaded project replaces the runtime's own, and a reboot reopens it.
    void ReopenRuntimeProject(bool fromUpload) {
        if (project_.prjopen == 1)
            session_.CloseProject();
        if (fromUpload) {
            const std::string folder = project_.appdir + "/" + kRuntimeFolder;
            platform::MakeDirectory(project_.appdir + "/projects");
            server_->TakeIncoming(folder, kRuntimeProjectFile);
            std::printf("Project received\n");
        }
        const std::string file = platform::FileExists(RuntimeProjectPath())
                                     ? RuntimeProjectPath()
                                     : project_.prjdir + project_.prjname + ".tlr";
        session_.LoadProject(file);
        ProjectOpened();
    }

    void Handle(const EventQueue::Event& event) {
        switch (event.id) {
            case ID_LPR_RESULT: {
                const LPRPackage record = TransitLine::Record(event.text, WallClock::now());
                project_.AddResult(record);
                std::printf("TRANSIT %s lane %s image %s\n", record.plate.c_str(),
                            record.lane.c_str(), record.image.c_str());
                break;
            }
            case ID_CAMERA_RESTART:
                control_.RestartCamera(event.value);
                break;
            case ID_DB_STATUS:
                if (event.value != dbstate_)
                    std::printf("%s\n", CheckDBThread::StatusText(event.value));
                dbstate_ = event.value;
                break;
            case ID_TRANSFER_DONE:
            case ID_TRANSFER_FAILED:
                remote_.OnTransferEvent(event.id, event.value);
                if (event.id == ID_TRANSFER_DONE && event.value == StartThread::kDownload)
                    ProjectOpened();
                break;
            case RuntimeServer::kProjectReceived:
                ReopenRuntimeProject(true);
                break;
            case RuntimeServer::kRebootRequested:
                std::printf("Reboot requested\n");
                ReopenRuntimeProject(false);
                break;
            default:
                break;
        }
    }

    void Close() {
        server_.reset();
        checkdb_.reset();
        project_.processorplugins.StopMirrorDB();
        project_.StopBoardThread();
        project_.StopCameras();
        project_.StopLanes();
        project_.CloseAll();
        rtsp_.StopAllStreams();
        if (runtimestopped_ && host_.AskYesNo("Restart Corvane-Runtime service?"))
            LocalRuntime::StartService(LocalRuntime::kServiceName);
        std::printf("Destroy\n");
    }

    Project& project_;
    const Options& options_;
    EventQueue events_;
    RtspService rtsp_;
    DeviceFronts fronts_;
    LaneControl control_;
    ConsoleHost host_;
    ProjectSession session_;
    RemoteAdministration remote_;
    std::unique_ptr<CheckDBThread> checkdb_;
    std::unique_ptr<RuntimeServer> server_;
    bool runtimestopped_ = false;
    int dbstate_ = 2;  // nothing shown yet: "checking..."
};

}  // namespace

bool WantsHeadless(int argc, char** argv) {
    const Options options = ParseOptions(argc, argv);
    return options.headless || options.runtime || !options.download.empty() ||
           !options.upload.empty();
}

int RunHeadless(Project& project, int argc, char** argv) {
    std::setvbuf(stdout, nullptr, _IONBF, 0);
    std::fprintf(stderr, "%s\n\n", ProjectSession::kBanner);
    const Options options = ParseOptions(argc, argv);
    HeadlessProgram program(project, options);
    return program.Run();
}

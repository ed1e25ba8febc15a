// The program without a window, in one of two roles:
//
//  - the workstation (--headless): it stops the unattended runtime of this machine, brings the
//    model up in the start-up order, opens the project named on the command line (or the demo
//    project), samples every source, prints the transits and the database state, and can fetch
//    a runtime's project (--download IP) or send the open one (--upload IP);
//  - the runtime (--runtime, or started as corvane-runtime): the same pipeline and streams,
//    plus the project transfer server on TCP 14400, so a site runs unattended and is managed
//    from a workstation. It keeps the project before the last upload and takes it back with
//    --rollback.
//
// Both stop everything in the close order when interrupted or when --seconds N have passed.
#include <csignal>
#include <cstdio>
#include <cstring>
#include <string>

#include "HeadlessProgram.h"

#include <unistd.h>

#include "ProgramOptions.h"

#include "access/AccessStore.h"
#include "core/DemoProject.h"
#include "core/EventQueue.h"
#include "core/Project.h"
#include "core/ProjectCheck.h"
#include "core/ProjectSession.h"
#include "core/SecretText.h"
#include "core/StartMode.h"
#include "database/CheckDBThread.h"
#include "pipeline/LaneControl.h"
#include "pipeline/TransitLine.h"
#include "platform/FileSystem.h"
#include "platform/Log.h"
#include "platform/Ticks.h"
#include "remote/LocalRuntime.h"
#include "remote/ProjectBlock.h"
#include "remote/RemoteAdministration.h"
#include "remote/RuntimeProjectStore.h"
#include "remote/RuntimeServer.h"
#include "streaming/RtspService.h"

namespace {

volatile std::sig_atomic_t g_stop = 0;

void OnSignal(int) {
    g_stop = 1;
}

constexpr const char* kProjectsFolder = "projects";

// Answers the flows' questions on the console. A program without an operator never saves on
// its own: what is on disk is what the operator or an upload put there.
class ConsoleHost : public ProjectHost {
  public:
    static constexpr const char* kSaveQuestion = "Save Changes?";

    bool AskYesNo(const std::string& question) override {
        const bool yes = question != kSaveQuestion;
        std::printf("%s %s\n", question.c_str(), yes ? "Yes" : "No");
        return yes;
    }
    void ShowMessage(const std::string& message) override { std::printf("%s\n", message.c_str()); }
    void SetTitle(const std::string& title) override { std::printf("%s\n", title.c_str()); }
};

// The headless program: the model, its services and what the window would do with the posted
// events, all on the main thread.
class HeadlessProgram {
  public:
    explicit HeadlessProgram(Project& project, const ProgramOptions& options)
        : project_(project),
          options_(options),
          control_(project, &rtsp_),
          session_(project, host_),
          remote_(project, session_, host_, &events_) {}

    int Run() {
        if (!ParseAllowed() || !ReadKey())
            return 2;
        project_.appdir = appdir_;
        if (!options_.runtime)
            runtimestopped_ = LocalRuntime::StopForWorkstation();
        SetAccessDefaults(project_);
        LoadAccess(project_);
        project_.LoadPluginDirectories();
        project_.mainframe = &events_;
        project_.lprsink = &events_;
        if (options_.runtime && options_.rollback)
            std::printf(store_.Rollback() ? "Project rolled back\n"
                                          : "No previous project to roll back to\n");
        if (options_.runtime && store_.ReplayStaged())
            std::printf("Project received\n");
        StartStreams();
        OpenStartProject();
        // The monitor comes up with the project's database settings, never before them.
        StartMonitor();
        // The transfer server comes up with a project to serve, never before it.
        if (options_.runtime)
            StartTransferServer();
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
    void StartStreams() {
        // The RTSP service runs from start to close, whether a project is open or not. A
        // moment's wait lets it bind its port before the sources add their streams.
        rtsp_.SetDeviceFronts(&fronts_);
        rtsp_.Start();
        for (int i = 0; i < 50 && !rtsp_.RtspRunning(); ++i)
            platform::SleepMs(20);
    }

    void StartMonitor() {
        checkdb_ = std::make_unique<CheckDBThread>(&events_, &project_);
        checkdb_->Run();
    }

    // The shared key: --key-file, or on a workstation the key file of the application folder.
    // A key file named on the command line that cannot be read or holds no key stops the
    // start: running without the key the operator asked for would serve the site to anyone.
    bool ReadKey() {
        if (options_.keyFile.empty()) {
            key_ = options_.runtime
                       ? std::string()
                       : ProjectBlock::ReadKeyFile(appdir_ + "/" + RemoteAdministration::kKeyFile);
            return true;
        }
        if (!platform::FileExists(options_.keyFile)) {
            std::fprintf(stderr, "corvane: --key-file %s cannot be read\n",
                         options_.keyFile.c_str());
            return false;
        }
        key_ = ProjectBlock::ReadKeyFile(options_.keyFile);
        if (key_.empty()) {
            std::fprintf(stderr, "corvane: --key-file %s holds no key\n", options_.keyFile.c_str());
            return false;
        }
        return true;
    }

    // The workstations named by --allow; false (said on the console) for one that is no
    // network.
    bool ParseAllowed() {
        for (const std::string& text : options_.allow) {
            platform::AddressRange range;
            if (!platform::AddressRange::Parse(text, range)) {
                std::fprintf(stderr, "corvane: --allow %s is not ADDRESS/PREFIX\n", text.c_str());
                return false;
            }
            allowed_.push_back(range);
        }
        return true;
    }

    void StartTransferServer() {
        server_ = std::make_unique<RuntimeServer>(
            &events_, options_.listen, ProjectBlock::kRuntimePort, store_.IncomingFolder());
        server_->SetAllowed(allowed_);
        server_->SetKey(key_);
        const std::string appdir = project_.appdir;
        server_->SetProjectCheck([appdir](const std::string& folder, const std::string& file) {
            return CheckProject(folder, file, appdir);
        });
        server_->SetServedProject(project_.prjdir, project_.prjname + ".tlr");
        server_->Run();
    }

    void OpenStartProject() {
        if (!options_.projectFile.empty()) {
            session_.LoadProject(options_.projectFile);
        } else if (!options_.download.empty()) {
            return;  // the project comes from the runtime
        } else if (options_.runtime && store_.HasProject()) {
            session_.LoadProject(store_.CurrentProject());
        } else if (platform::FileExists(DemoFile())) {
            session_.LoadProject(DemoFile());
        } else {
            platform::MakeDirectory(ProjectsFolder());
            if (session_.NewProject(ProjectsFolder(), "demo")) {
                PopulateDemoProject(project_);
                session_.SaveAll();
            }
        }
        ProjectOpened();
    }

    std::string ProjectsFolder() const { return appdir_ + "/" + kProjectsFolder; }
    std::string DemoFile() const { return ProjectsFolder() + "/demo/demo.tlr"; }

    void ProjectOpened() {
        std::printf("Project %s open, site \"%s\"\n", project_.prjname.c_str(),
                    project_.place.placename.c_str());
        // Plug-in settings are printed with their secrets masked: the output goes to journals.
        std::fputs(MaskSecrets(project_.GetProjectText()).c_str(), stdout);
        for (auto& camera : project_.cameras)
            control_.StartSampling(camera);
        if (server_)
            server_->SetServedProject(project_.prjdir, project_.prjname + ".tlr");
    }

    void StartTransfers() {
        remote_.SetKey(key_);
        if (!options_.download.empty())
            remote_.Download(options_.download);
        if (!options_.upload.empty())
            remote_.Upload(options_.upload);
    }

    // A checked upload replaces the runtime's project (the one before it is kept), and a
    // reboot reopens the project.
    void ReopenRuntimeProject(bool fromUpload) {
        if (fromUpload) {
            const std::string staged = server_->TakeIncoming();
            if (staged.empty())
                return;
            const std::string running = project_.prjdir;
            if (project_.prjopen == 1)
                session_.CloseProject();
            if (store_.Replace(staged, running))
                std::printf("Project received\n");
        } else if (project_.prjopen == 1) {
            session_.CloseProject();
        }
        const std::string file = store_.HasProject() ? store_.CurrentProject()
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

    // The monitor first and bounded (a stuck driver call is left behind), the transfer server
    // last, so that a runtime that samples can always be managed.
    void Close() {
        // From here on no stop waits without bound: the process ends right after.
        platform::SetExitStopLimit(platform::kExitStopLimitMs);
        platform::StopOrAbandon(checkdb_, platform::kExitStopLimitMs);
        project_.processorplugins.StopMirrorDB();
        project_.StopBoardThread();
        project_.StopCameras();
        project_.StopLanes();
        project_.CloseAll();
        rtsp_.StopAllStreams();
        server_.reset();
        if (runtimestopped_ && host_.AskYesNo("Restart Corvane-Runtime service?"))
            LocalRuntime::StartService(LocalRuntime::kServiceName);
        std::printf("Destroy\n");
    }

    Project& project_;
    const ProgramOptions& options_;
    EventQueue events_;
    RtspService rtsp_;
    DeviceFronts fronts_;
    LaneControl control_;
    ConsoleHost host_;
    ProjectSession session_;
    RemoteAdministration remote_;
    std::unique_ptr<CheckDBThread> checkdb_;
    std::unique_ptr<RuntimeServer> server_;
    std::vector<platform::AddressRange> allowed_;
    // The application folder, fixed at start: nothing later depends on the working directory.
    const std::string appdir_ = platform::GetWorkingDirectory();
    RuntimeProjectStore store_{appdir_ + "/" + kProjectsFolder};
    std::string key_;
    bool runtimestopped_ = false;
    int dbstate_ = 2;  // nothing shown yet: "checking..."
};

}  // namespace

int RunHeadless(Project& project, const ProgramOptions& options) {
    std::setvbuf(stdout, nullptr, _IONBF, 0);
    std::fprintf(stderr, "%s\n\n", ProjectSession::kBanner);
    HeadlessProgram program(project, options);
    const int code = program.Run();
    // Everything was stopped in the close order; a worker left behind in a driver call must not
    // meet the static destructors, so the process ends here.
    std::fflush(nullptr);
    ::_exit(code);
}

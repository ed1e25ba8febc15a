// The program itself as the unattended runtime (--runtime), managed from a workstation over
// TCP 14400: its project is downloaded, a changed project is uploaded and opened, a reboot
// reopens it, and a stop ends it in the close order.
#include <fcntl.h>
#include <signal.h>
#include <spawn.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "CameraProcess.h"
#include "TestSupport.h"
#include "TransferStation.h"
#include "core/EventQueue.h"
#include "core/Project.h"
#include "core/ProjectFile.h"
#include "platform/FileSystem.h"
#include "platform/TcpSocket.h"
#include "platform/Ticks.h"
#include "plugins/Parametro.h"
#include "remote/ProjectBlock.h"
#include "remote/StartThread.h"

extern char** environ;

namespace {

// The program running in an application folder, its output kept in a file. Without a folder of
// its own it gets a new one; environment entries "NAME=" remove a variable, "NAME=value" set it.
class RuntimeProcess {
  public:
    explicit RuntimeProcess(const TempDir* folder = nullptr,
                            std::vector<std::string> args = {"--runtime", "--seconds", "90"},
                            const std::vector<std::string>& environment = {})
        : dir_(folder != nullptr ? *folder : own_) {
        if (folder == nullptr)
            FillAppFolder(dir_, CORVANE_APP_DIR);
        const std::string program = std::string(CORVANE_APP_DIR) + "/corvane";
        const std::string output = dir_.File("output.txt");
        posix_spawn_file_actions_t actions;
        posix_spawn_file_actions_init(&actions);
        posix_spawn_file_actions_addopen(&actions, STDOUT_FILENO, output.c_str(),
                                         O_WRONLY | O_CREAT | O_TRUNC, 0644);
        posix_spawn_file_actions_adddup2(&actions, STDOUT_FILENO, STDERR_FILENO);
        // The child starts in the application folder: it is the program's working directory.
        platform::ScopedWorkingDirectory cwd(dir_.Path());
        args.insert(args.begin(), program);
        std::vector<char*> argv;
        for (auto& arg : args)
            argv.push_back(arg.data());
        argv.push_back(nullptr);
        std::vector<std::string> env = Environment(environment);
        std::vector<char*> envp;
        for (auto& entry : env)
            envp.push_back(entry.data());
        envp.push_back(nullptr);
        ::posix_spawn(&pid_, program.c_str(), &actions, nullptr, argv.data(), envp.data());
        posix_spawn_file_actions_destroy(&actions);
    }
    ~RuntimeProcess() {
        if (pid_ > 0 && !ended_) {
            ::kill(pid_, SIGKILL);
            ::waitpid(pid_, nullptr, 0);
        }
    }
    std::string Output() const { return ReadFileText(dir_.File("output.txt")); }
    bool WaitForOutput(const std::string& text, int count = 1,
                       std::chrono::seconds limit = std::chrono::seconds(30)) const {
        const auto end = std::chrono::steady_clock::now() + limit;
        while (std::chrono::steady_clock::now() < end) {
            if (Occurrences(Output(), text) >= count)
                return true;
            platform::SleepMs(100);
        }
        return false;
    }
    bool WaitForPort() const {
        for (int i = 0; i < 300; ++i) {
            if (platform::TcpSocket::Connect("127.0.0.1", ProjectBlock::kRuntimePort, 500).IsOpen())
                return true;
            platform::SleepMs(100);
        }
        return false;
    }
    // The exit code once the program ended by itself within the limit, else -1.
    int ExitCode(int limitMs) {
        int status = 0;
        for (int waited = 0; waited < limitMs; waited += 50) {
            if (::waitpid(pid_, &status, WNOHANG) == pid_) {
                ended_ = true;
                return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
            }
            platform::SleepMs(50);
        }
        return -1;
    }
    // Asks the program to stop and answers whether it ended by itself within the limit.
    bool Terminate(int limitMs) {
        ::kill(pid_, SIGTERM);
        int status = 0;
        for (int waited = 0; waited < limitMs; waited += 50) {
            if (::waitpid(pid_, &status, WNOHANG) == pid_) {
                ended_ = true;
                return WIFEXITED(status) && WEXITSTATUS(status) == 0;
            }
            platform::SleepMs(50);
        }
        return false;
    }
    std::string File(const std::string& name) const { return dir_.File(name); }
    const TempDir& Folder() const { return dir_; }

    static int Occurrences(const std::string& text, const std::string& what) {
        int count = 0;
        for (size_t at = text.find(what); at != std::string::npos; at = text.find(what, at + 1))
            ++count;
        return count;
    }

  private:
    static std::vector<std::string> Environment(const std::vector<std::string>& changes) {
        std::vector<std::string> env;
        for (char** entry = environ; *entry != nullptr; ++entry)
            env.emplace_back(*entry);
        for (const std::string& change : changes) {
            const std::string name = change.substr(0, change.find('=') + 1);
            env.erase(std::remove_if(env.begin(), env.end(),
                                     [&](const std::string& e) { return e.rfind(name, 0) == 0; }),
                      env.end());
            if (change.size() > name.size())
                env.push_back(change);
        }
        return env;
    }

    TempDir own_;
    const TempDir& dir_;
    pid_t pid_ = -1;
    bool ended_ = false;
};

std::pair<int, int> Transfer(Project& project, EventQueue& events, int mode) {
    StartThread thread(&project, &events, "127.0.0.1", mode);
    thread.Run();
    return TransferResult(events);
}

}  // namespace

TEST(RuntimeProgram, IsManagedFromAWorkstationOverTcp14400) {
    RuntimeProcess runtime;
    ASSERT_TRUE(runtime.WaitForPort()) << runtime.Output();

    TempDir workstation;
    platform::ScopedWorkingDirectory cwd(workstation.Path());
    EventQueue events;
    Project project;
    project.appdir = workstation.Path();

    // The runtime serves the project it runs: the demo project on a first start.
    ASSERT_EQ(Transfer(project, events, StartThread::kDownload),
              std::make_pair(+ID_TRANSFER_DONE, 0));
    for (const char* file :
         {"cameras.dat", "lanes.dat", "integrators.dat", "boards.dat", "processors.dat"})
        EXPECT_EQ(ReadFileBytes(workstation.File(std::string("TempPrj/") + file)),
                  ReadFileBytes(runtime.File(std::string("projects/demo/") + file)))
            << file;
    const std::string downloaded = ReadFileText(workstation.File("TempPrj/default.tlr"));
    EXPECT_NE(downloaded.find("<PRJNAME>demo<\\PRJNAME>"), std::string::npos);

    // The workstation changes the site's name and sends the project back.
    platform::MakeDirectory(workstation.File("site"));
    for (const char* file : {"cameras.dat", "lanes.dat", "integrators.dat", "boards.dat",
                             "processors.dat", "triggers.dat"})
        platform::CopyFileOver(workstation.File(std::string("TempPrj/") + file),
                               workstation.File(std::string("site/") + file));
    std::string changed = downloaded;
    const size_t at = changed.find("<PLACENAME>");
    const size_t end = changed.find("<\\PLACENAME>");
    ASSERT_LT(at, end);
    changed.replace(at + 11, end - at - 11, "Crossing North");
    WriteFileText(workstation.File("site/site.tlr"), changed);
    project.prjdir = workstation.File("site/");
    project.prjname = "site";
    ASSERT_EQ(Transfer(project, events, StartThread::kUpload), std::make_pair(+ID_TRANSFER_DONE, 1))
        << runtime.Output();
    ASSERT_TRUE(runtime.WaitForOutput("Project received")) << runtime.Output();
    ASSERT_TRUE(runtime.WaitForOutput("Crossing North")) << runtime.Output();
    // The runtime runs what it received, as it was received: opening it writes nothing.
    const std::string opened = ReadFileText(runtime.File("projects/runtime/runtime.tlr"));
    EXPECT_EQ(opened, changed);
    // The demo it ran before is kept, so the first upload can be taken back too.
    EXPECT_NE(ReadFileText(runtime.File("projects/runtime.previous/runtime.tlr"))
                  .find("<PRJNAME>demo<\\PRJNAME>"),
              std::string::npos);
    EXPECT_EQ(ReadFileBytes(runtime.File("projects/runtime/cameras.dat")),
              ReadFileBytes(workstation.File("site/cameras.dat")));

    // A reboot reopens the runtime project; the next download is the new project.
    ASSERT_EQ(Transfer(project, events, StartThread::kReboot),
              std::make_pair(+ID_TRANSFER_DONE, 2));
    ASSERT_TRUE(runtime.WaitForOutput("Reboot requested")) << runtime.Output();
    ASSERT_TRUE(runtime.WaitForOutput("Crossing North", 2)) << runtime.Output();
    EXPECT_EQ(ReadFileText(runtime.File("projects/runtime/runtime.tlr")), changed);  // no save
    ASSERT_EQ(Transfer(project, events, StartThread::kDownload),
              std::make_pair(+ID_TRANSFER_DONE, 0));
    EXPECT_NE(ReadFileText(workstation.File("TempPrj/default.tlr")).find("Crossing North"),
              std::string::npos);

    // It listens on loopback only: no other machine reaches it unless told otherwise.
    const std::string sockets = ReadFileText("/proc/net/tcp");
    EXPECT_NE(sockets.find("0100007F:3840"), std::string::npos);
    EXPECT_EQ(sockets.find("00000000:3840"), std::string::npos);

    // A block of empty sections is refused and replaces nothing.
    {
        std::string empty;
        for (const auto& section : ProjectBlock::kSectionTable)
            empty += ProjectBlock::OpeningTag(section) + ProjectBlock::ClosingTag(section);
        platform::TcpSocket peer = platform::TcpSocket::Connect("127.0.0.1", 14400, 2000);
        peer.SetTimeouts(3000, 1000);
        peer.SendAll(empty);
        char reply[16];
        EXPECT_EQ(peer.Receive(reply, sizeof reply), 0u);
        EXPECT_TRUE(runtime.WaitForOutput("Project refused, nothing replaced")) << runtime.Output();
        EXPECT_EQ(ReadFileText(runtime.File("projects/runtime/runtime.tlr")), opened);
    }

    // A second upload keeps the first as the previous project.
    changed.replace(changed.find("Crossing North"), 14, "Crossing South");
    WriteFileText(workstation.File("site/site.tlr"), changed);
    ASSERT_EQ(Transfer(project, events, StartThread::kUpload),
              std::make_pair(+ID_TRANSFER_DONE, 1));
    ASSERT_TRUE(runtime.WaitForOutput("Crossing South")) << runtime.Output();
    EXPECT_NE(
        ReadFileText(runtime.File("projects/runtime.previous/runtime.tlr")).find("Crossing North"),
        std::string::npos);

    EXPECT_TRUE(runtime.Terminate(20000)) << runtime.Output();
    EXPECT_NE(runtime.Output().find("Destroy"), std::string::npos);

    // Started again with --rollback, it runs the project before the last upload.
    const TempDir& folder = runtime.Folder();
    RuntimeProcess rolledBack(&folder, {"--runtime", "--rollback", "--seconds", "60"});
    ASSERT_TRUE(rolledBack.WaitForOutput("Project rolled back")) << rolledBack.Output();
    ASSERT_TRUE(rolledBack.WaitForOutput("Crossing North")) << rolledBack.Output();
    EXPECT_NE(ReadFileText(rolledBack.File("projects/runtime.previous/runtime.tlr"))
                  .find("Crossing South"),
              std::string::npos);
    EXPECT_TRUE(rolledBack.Terminate(20000)) << rolledBack.Output();
}

TEST(RuntimeProgram, AKeyFileThatCannotBeReadOrHoldsNoKeyStopsTheStart) {
    TempDir folder;
    FillAppFolder(folder, CORVANE_APP_DIR);
    RuntimeProcess missing(&folder, {"--runtime", "--key-file", folder.File("no-such-key")});
    EXPECT_EQ(missing.ExitCode(10000), 2);
    EXPECT_NE(missing.Output().find("cannot be read"), std::string::npos) << missing.Output();
    WriteFileText(folder.File("empty.key"), "\n");
    RuntimeProcess empty(&folder, {"--runtime", "--key-file", folder.File("empty.key")});
    EXPECT_EQ(empty.ExitCode(10000), 2);
    EXPECT_NE(empty.Output().find("holds no key"), std::string::npos) << empty.Output();
    EXPECT_FALSE(platform::DirectoryExists(folder.File("projects")));  // nothing was opened
}

TEST(RuntimeProgram, EveryFreshFirstStartReadsPlates) {
    // A first start makes the demo project and saves it: whatever the flows did on the way,
    // each region must find its reader and read.
    for (int start = 0; start < 20; ++start) {
        RuntimeProcess program(nullptr, {"--headless", "--seconds", "60"});
        const bool read = program.WaitForOutput("TRANSIT ", 1, std::chrono::seconds(15));
        EXPECT_TRUE(read) << "start " << start << ":\n" << program.Output();
        EXPECT_TRUE(program.Terminate(20000)) << program.Output();
        if (!read)
            break;
    }
}

TEST(RuntimeProgram, WithoutADisplayTheWorkstationSaysSoAndTouchesNothing) {
    // Started over a remote shell, the workstation must not turn into a windowless program
    // that stops the site's runtime service: it explains and ends.
    TempDir folder;
    FillAppFolder(folder, CORVANE_APP_DIR);
    WriteFileText(folder.File("systemctl"),
                  "#!/bin/sh\necho \"$*\" >> \"$(dirname \"$0\")/calls\"\necho loaded\n");
    ::chmod(folder.File("systemctl").c_str(), 0755);
    RuntimeProcess program(
        &folder, {"-nopwd"},
        {"DISPLAY=", "WAYLAND_DISPLAY=", "CORVANE_SYSTEMCTL=" + folder.File("systemctl")});
    EXPECT_EQ(program.ExitCode(10000), 2);
    EXPECT_NE(program.Output().find("no display to open the window on"), std::string::npos)
        << program.Output();
    EXPECT_FALSE(platform::FileExists(folder.File("calls")));
    EXPECT_FALSE(platform::DirectoryExists(folder.File("projects")));

    RuntimeProcess typo(&folder, {"--headles"}, {"DISPLAY="});
    EXPECT_EQ(typo.ExitCode(10000), 2);
    EXPECT_NE(typo.Output().find("unknown option --headles"), std::string::npos);
}

TEST(RuntimeProgram, AWindowlessSiteReadsItsNetworkCamera) {
    // A site saved with a network camera as its source, run with --headless: the camera is read
    // as soon as the project is open, and the program ends in time with the camera still open.
    const int port = 23300 + static_cast<int>(::getpid() % 300);
    CameraProcess camera(port, "AB123CD");
    ASSERT_TRUE(camera.Ready());
    TempDir app;
    FillAppFolder(app, CORVANE_APP_DIR);
    const std::string url = "rtsp://127.0.0.1:" + std::to_string(port) + "/cam";
    {
        platform::ScopedWorkingDirectory inApp(app.Path());
        Project project;
        project.appdir = app.Path();
        project.prjname = "gate";
        project.place.placename = "North";
        Camera source;
        source.name = "Entry";
        source.id = 1;
        source.plugin = project.cameraplugins.CreateCamera("IpCamera");
        ASSERT_NE(source.plugin, nullptr);
        source.settings = ValueTextOf(
            {{"URL", url}, {"Transport", "TCP"}, {"User", "operator"}, {"Password", "s3cret"}});
        project.cameras.Add(source);
        Lane lane;
        lane.name = "L1";
        lane.id = 1;
        lane.camname = "Entry";
        lane.lprlib = "PlateCore";
        project.lanes.Add(lane);
        platform::MakeDirectory("gate");
        platform::ScopedWorkingDirectory inFolder(app.File("gate"));
        project.SaveComponents(platform::GetWorkingDirectory());
        WriteProjectFile("gate.tlr", project);
    }
    RuntimeProcess program(&app, {"--headless", "gate/gate.tlr", "--seconds", "8"});
    EXPECT_TRUE(program.WaitForOutput("IpCamera " + url + ": connected, 640x360"))
        << program.Output();
    EXPECT_EQ(program.ExitCode(15000), 0) << program.Output();
    // The project is printed at open, its camera's password masked: the output goes to journals.
    EXPECT_EQ(program.Output().find("s3cret"), std::string::npos) << program.Output();
    EXPECT_NE(program.Output().find("<NAME>Password<\\NAME>"), std::string::npos);
}

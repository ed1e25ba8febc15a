// The program itself as the unattended runtime (--runtime), managed from a workstation over
// TCP 14400: its project is downloaded, a changed project is uploaded and opened, a reboot
// reopens it, and a stop ends it in the close order.
#include <fcntl.h>
#include <signal.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "TestSupport.h"
#include "core/EventQueue.h"
#include "core/Project.h"
#include "platform/FileSystem.h"
#include "platform/TcpSocket.h"
#include "platform/Ticks.h"
#include "remote/ProjectBlock.h"
#include "remote/StartThread.h"

extern char** environ;

namespace {

// The program running in an application folder of its own, its output kept in a file.
class RuntimeProcess {
  public:
    RuntimeProcess() {
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
        std::vector<std::string> args = {program,     "--runtime", "--listen",
                                         "127.0.0.1", "--seconds", "90"};
        std::vector<char*> argv;
        for (auto& arg : args)
            argv.push_back(arg.data());
        argv.push_back(nullptr);
        ::posix_spawn(&pid_, program.c_str(), &actions, nullptr, argv.data(), environ);
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

    static int Occurrences(const std::string& text, const std::string& what) {
        int count = 0;
        for (size_t at = text.find(what); at != std::string::npos; at = text.find(what, at + 1))
            ++count;
        return count;
    }

  private:
    TempDir dir_;
    pid_t pid_ = -1;
    bool ended_ = false;
};

std::pair<int, int> Transfer(Project& project, EventQueue& events, int mode) {
    StartThread thread(&project, &events, "127.0.0.1", mode);
    thread.Run();
    std::pair<int, int> result{0, -1};
    const auto end = std::chrono::steady_clock::now() + std::chrono::seconds(20);
    while (result.first == 0 && std::chrono::steady_clock::now() < end)
        events.Drain(
            [&](const EventQueue::Event& event) {
                if (event.id == ID_TRANSFER_DONE || event.id == ID_TRANSFER_FAILED)
                    result = {event.id, event.value};
            },
            std::chrono::milliseconds(50));
    return result;
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
    ASSERT_EQ(Transfer(project, events, StartThread::kUpload),
              std::make_pair(+ID_TRANSFER_DONE, 1));
    ASSERT_TRUE(runtime.WaitForOutput("Project received")) << runtime.Output();
    ASSERT_TRUE(runtime.WaitForOutput("Crossing North")) << runtime.Output();
    const std::string opened = ReadFileText(runtime.File("projects/runtime/runtime.tlr"));
    EXPECT_NE(opened.find("<PLACENAME>Crossing North<\\PLACENAME>"), std::string::npos);
    EXPECT_NE(opened.find("<PRJNAME>runtime<\\PRJNAME>"), std::string::npos);
    EXPECT_EQ(ReadFileBytes(runtime.File("projects/runtime/cameras.dat")),
              ReadFileBytes(workstation.File("site/cameras.dat")));

    // A reboot reopens the runtime project; the next download is the new project.
    ASSERT_EQ(Transfer(project, events, StartThread::kReboot),
              std::make_pair(+ID_TRANSFER_DONE, 2));
    ASSERT_TRUE(runtime.WaitForOutput("Reboot requested")) << runtime.Output();
    ASSERT_TRUE(runtime.WaitForOutput("Crossing North", 2)) << runtime.Output();
    ASSERT_EQ(Transfer(project, events, StartThread::kDownload),
              std::make_pair(+ID_TRANSFER_DONE, 0));
    EXPECT_NE(ReadFileText(workstation.File("TempPrj/default.tlr")).find("Crossing North"),
              std::string::npos);

    EXPECT_TRUE(runtime.Terminate(20000)) << runtime.Output();
    EXPECT_NE(runtime.Output().find("Destroy"), std::string::npos);
}

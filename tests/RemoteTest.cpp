// Project transfer on TCP 14400 with real sockets on loopback: the project block byte for
// byte, the workstation's transfer thread against a scripted runtime (pieces, pauses, cuts,
// oversized blocks), the runtime's own server against the transfer thread and bad peers, and
// the local runtime's process and service control.
#include <signal.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <functional>
#include <string>
#include <thread>
#include <vector>

#include <gtest/gtest.h>

#include "TestSupport.h"
#include "TransferStation.h"
#include "core/EventQueue.h"
#include "core/Project.h"
#include "core/ProjectSession.h"
#include "platform/FileSystem.h"
#include "platform/TcpSocket.h"
#include "platform/Ticks.h"
#include "remote/LocalRuntime.h"
#include "remote/ProjectBlock.h"
#include "remote/RemoteAdministration.h"
#include "remote/RuntimeServer.h"
#include "remote/StartThread.h"

namespace {

using namespace std::chrono_literals;

const std::vector<std::string> kComponentFiles = {"boards.dat", "cameras.dat",    "integrators.dat",
                                                  "lanes.dat",  "processors.dat", "triggers.dat"};

// A project folder whose files hold bytes that a text reader would trip over.
void WriteProjectFiles(const std::string& folder, const std::string& projectFile) {
    WriteFileText(folder + "/" + projectFile, "<PROJECT>\n<PLACENAME>Site<\\PLACENAME>\n");
    for (size_t i = 0; i < kComponentFiles.size(); ++i) {
        std::string bytes = "\x01\x00\x00\x00" + kComponentFiles[i];
        bytes += std::string(1, '\0') + "<FILE" + std::string(i, '\xff');
        WriteFileText(folder + "/" + kComponentFiles[i], bytes);
    }
}

void ExpectSameFiles(const std::string& from, const std::string& fromProject, const std::string& to,
                     const std::string& toProject) {
    EXPECT_EQ(ReadFileText(to + "/" + toProject), ReadFileText(from + "/" + fromProject));
    for (const auto& name : kComponentFiles)
        EXPECT_EQ(ReadFileBytes(to + "/" + name), ReadFileBytes(from + "/" + name)) << name;
}

// A runtime played by the test on 127.0.0.1:14400: it takes one connection, reads the request
// until it is complete (or the peer pauses for 2 s) and answers as scripted.
class ScriptedRuntime {
  public:
    using Reply = std::function<void(platform::TcpSocket&)>;

    explicit ScriptedRuntime(Reply reply)
        : listener_(platform::TcpSocket::Listen("127.0.0.1", ProjectBlock::kRuntimePort)),
          thread_([this, reply] { Serve(reply); }) {}
    ~ScriptedRuntime() { thread_.join(); }
    bool Listening() const { return listener_.IsOpen(); }
    // What the client sent; valid once the client's result arrived.
    std::string Request() {
        thread_.join();
        thread_ = std::thread([] {});
        return request_;
    }

  private:
    void Serve(const Reply& reply) {
        platform::TcpSocket peer = listener_.Accept(10000);
        if (!peer.IsOpen())
            return;
        peer.SetTimeouts(2000, 2000);
        char piece[4096];
        while (!Complete()) {
            const size_t got = peer.Receive(piece, sizeof piece);
            if (got == 0)
                break;
            request_.append(piece, got);
        }
        reply(peer);
    }
    bool Complete() const {
        return request_ == ProjectBlock::kDownloadRequest ||
               request_ == ProjectBlock::kRebootRequest ||
               request_.find("<\\FILETRIGGERS>") != std::string::npos;
    }

    platform::TcpSocket listener_;
    std::string request_;
    std::thread thread_;
};

void SendInPieces(platform::TcpSocket& peer, const std::string& bytes, size_t piece,
                  std::chrono::milliseconds gap) {
    for (size_t at = 0; at < bytes.size(); at += piece) {
        peer.SendAll(bytes.data() + at, std::min(piece, bytes.size() - at));
        std::this_thread::sleep_for(gap);
    }
}

}  // namespace

TEST(ProjectBlock, SectionsCarryTheFilesByteForByte) {
    TempDir from;
    WriteProjectFiles(from.Path(), "site.tlr");
    ::unlink(from.File("triggers.dat").c_str());
    const std::string block = ProjectBlock::Compose(from.Path(), "site.tlr");
    std::string expected =
        "<FILEPROJECT>" + ReadFileText(from.File("site.tlr")) + "<\\FILEPROJECT>";
    const char* tags[] = {"FILEBOARDS", "FILECAMERAS", "FILEINTEGRATORS", "FILELANES",
                          "FILEPROCESSORS"};
    for (size_t i = 0; i < 5; ++i)
        expected += std::string("<") + tags[i] + ">" + ReadFileText(from.File(kComponentFiles[i])) +
                    "<\\" + tags[i] + ">";
    expected += "<FILETRIGGERS><\\FILETRIGGERS>";  // a missing file: an empty section
    EXPECT_EQ(block, expected);

    TempDir to;
    ASSERT_TRUE(ProjectBlock::WriteSections(block, to.Path(), "default.tlr"));
    EXPECT_EQ(ReadFileText(to.File("default.tlr")), ReadFileText(from.File("site.tlr")));
    EXPECT_EQ(ReadFileBytes(to.File("lanes.dat")), ReadFileBytes(from.File("lanes.dat")));
    EXPECT_TRUE(ReadFileText(to.File("triggers.dat")).empty());
    EXPECT_TRUE(platform::FileExists(to.File("triggers.dat")));

    // Any tag missing: nothing is written. A section whose opening tag stands behind its
    // closing one ends the check there, with the sections before it written.
    TempDir partial;
    EXPECT_FALSE(ProjectBlock::WriteSections(block.substr(0, block.size() - 1), partial.Path(),
                                             "default.tlr"));
    EXPECT_FALSE(platform::FileExists(partial.File("default.tlr")));
    std::string swapped = block;
    const size_t open = swapped.find("<FILELANES>");
    const size_t close = swapped.find("<\\FILELANES>");
    swapped = swapped.substr(0, open) + "<\\FILELANES>" +
              swapped.substr(open + 11, close - open - 11) + "<FILELANES>" +
              swapped.substr(close + 12);
    EXPECT_FALSE(ProjectBlock::WriteSections(swapped, partial.Path(), "default.tlr"));
    EXPECT_TRUE(platform::FileExists(partial.File("integrators.dat")));
    EXPECT_FALSE(platform::FileExists(partial.File("lanes.dat")));
}

TEST(StartThread, ADownloadArrivingInPiecesIsAssembledIntoTempPrj) {
    Workstation station;
    TempDir runtime;
    WriteProjectFiles(runtime.Path(), "site.tlr");
    const std::string block = ProjectBlock::Compose(runtime.Path(), "site.tlr");
    ScriptedRuntime scripted(
        [&](platform::TcpSocket& peer) { SendInPieces(peer, block, 1000, 30ms); });
    ASSERT_TRUE(scripted.Listening());
    EXPECT_EQ(station.Transfer(StartThread::kDownload), std::make_pair(+ID_TRANSFER_DONE, 0));
    EXPECT_EQ(scripted.Request(), "<DOWNLOAD>DWN<\\DOWNLOAD>");
    EXPECT_EQ(std::string(ProjectBlock::kDownloadRequest).size(), 24u);
    ExpectSameFiles(runtime.Path(), "site.tlr", station.dir.File("TempPrj"), "default.tlr");
}

TEST(StartThread, APausedCutOrOversizedDownloadFailsAndLeavesTempPrjAsItWas) {
    Workstation station;
    platform::MakeDirectory(station.dir.File("TempPrj"));
    WriteFileText(station.dir.File("TempPrj/default.tlr"), "previous project");
    TempDir runtime;
    WriteProjectFiles(runtime.Path(), "site.tlr");
    const std::string block = ProjectBlock::Compose(runtime.Path(), "site.tlr");

    // A pause of more than a second in the stream ends the download.
    {
        ScriptedRuntime scripted([&](platform::TcpSocket& peer) {
            peer.SendAll(block.substr(0, 100));
            std::this_thread::sleep_for(1500ms);
            peer.SendAll(block.substr(100));
        });
        EXPECT_EQ(station.Transfer(StartThread::kDownload), std::make_pair(+ID_TRANSFER_FAILED, 0));
    }
    // The runtime closes before the last closing tag.
    {
        ScriptedRuntime scripted(
            [&](platform::TcpSocket& peer) { peer.SendAll(block.substr(0, block.size() - 3)); });
        EXPECT_EQ(station.Transfer(StartThread::kDownload), std::make_pair(+ID_TRANSFER_FAILED, 0));
    }
    // A block of 1,000,000 bytes is one too many; 999,999 bytes still fit.
    for (const size_t size : {size_t{1000000}, size_t{999999}}) {
        std::string big = block;
        const size_t at = big.find("<\\FILECAMERAS>");
        big.insert(at, std::string(size - block.size(), 'c'));
        ASSERT_EQ(big.size(), size);
        ScriptedRuntime scripted([&](platform::TcpSocket& peer) { peer.SendAll(big); });
        EXPECT_EQ(station.Transfer(StartThread::kDownload),
                  std::make_pair(
                      size < ProjectBlock::kMaxBlock ? +ID_TRANSFER_DONE : +ID_TRANSFER_FAILED, 0));
        if (size == ProjectBlock::kMaxBlock) {
            EXPECT_EQ(ReadFileText(station.dir.File("TempPrj/default.tlr")), "previous project");
        }
    }
    EXPECT_EQ(ReadFileText(station.dir.File("TempPrj/default.tlr")),
              ReadFileText(runtime.File("site.tlr")));
}

TEST(StartThread, AnUploadSendsTheFilesOnDiskAndNeedsOkInTheReply) {
    Workstation station;
    TempDir projectFolder;
    WriteProjectFiles(projectFolder.Path(), "site.tlr");
    station.project.prjdir = projectFolder.Path() + "/";
    station.project.prjname = "site";
    const std::string expected = ProjectBlock::Compose(projectFolder.Path(), "site.tlr");

    const std::pair<std::string, int> replies[] = {
        {"runtime says <OK> and more", ID_TRANSFER_DONE},
        {"<NO>", ID_TRANSFER_FAILED},
        {"", ID_TRANSFER_FAILED},
    };
    for (const auto& [reply, outcome] : replies) {
        ScriptedRuntime scripted([&](platform::TcpSocket& peer) {
            if (!reply.empty())
                peer.SendAll(reply);
        });
        EXPECT_EQ(station.Transfer(StartThread::kUpload), std::make_pair(outcome, 1)) << reply;
        EXPECT_EQ(scripted.Request(), expected);
    }
    EXPECT_EQ(platform::GetWorkingDirectory(), station.dir.Path());
}

TEST(StartThread, RebootAndAnUnreachableRuntime) {
    Workstation station;
    {
        ScriptedRuntime scripted([](platform::TcpSocket& peer) { peer.SendAll("<OK>"); });
        EXPECT_EQ(station.Transfer(StartThread::kReboot), std::make_pair(+ID_TRANSFER_DONE, 2));
        EXPECT_EQ(scripted.Request(), "<REQREBOOT><\\REQREBOOT>");
        EXPECT_EQ(std::string(ProjectBlock::kRebootRequest).size(), 23u);
    }
    // Nobody listens: the failure comes at once, with the mode.
    LogCapture log;
    const uint32_t started = platform::GetTickCount();
    EXPECT_EQ(station.Transfer(StartThread::kDownload), std::make_pair(+ID_TRANSFER_FAILED, 0));
    EXPECT_LT(platform::ElapsedTicks(platform::GetTickCount(), started), 3000u);
    EXPECT_EQ(station.Transfer(StartThread::kUpload, "not an address"),
              std::make_pair(+ID_TRANSFER_FAILED, 1));
}

namespace {

class RecordingHost : public ProjectHost {
  public:
    bool AskYesNo(const std::string& question) override {
        lines.push_back("? " + question);
        return answer;
    }
    void ShowMessage(const std::string& message) override { lines.push_back(message); }
    bool answer = false;
    std::vector<std::string> lines;
};

}  // namespace

TEST(RemoteAdministration, TheWindowsReactionsToTransferResults) {
    Workstation station;
    RecordingHost host;
    ProjectSession session(station.project, host);
    RemoteAdministration remote(station.project, session, host, &station.events);
    remote.OnTransferEvent(ID_TRANSFER_FAILED, 0);
    remote.OnTransferEvent(ID_TRANSFER_FAILED, 1);
    remote.OnTransferEvent(ID_TRANSFER_FAILED, 2);
    remote.OnTransferEvent(ID_TRANSFER_DONE, 2);
    EXPECT_EQ(host.lines,
              (std::vector<std::string>{"Cannot download project", "Error while uploading project",
                                        "Reboot error", "Runtime is rebooting..."}));

    // After an upload, No ends the sequence without a word; Yes asks the runtime to reboot.
    host.lines.clear();
    remote.OnTransferEvent(ID_TRANSFER_DONE, 1);
    EXPECT_EQ(host.lines, (std::vector<std::string>{"? Reboot remote runtime?"}));
    EXPECT_EQ(TransferResult(station.events, 1500ms).first, 0);

    ScriptedRuntime scripted([](platform::TcpSocket& peer) { peer.SendAll("<OK>"); });
    station.project.runtimeip = "127.0.0.1";
    host.answer = true;
    remote.OnTransferEvent(ID_TRANSFER_DONE, 1);
    EXPECT_EQ(TransferResult(station.events), std::make_pair(+ID_TRANSFER_DONE, 2));
    EXPECT_EQ(scripted.Request(), ProjectBlock::kRebootRequest);
}

TEST(RuntimeServer, ServesDownloadsTakesUploadsAndSurvivesBadPeers) {
    TempDir runtimeDir;
    TempDir served;
    WriteProjectFiles(served.Path(), "runtime.tlr");
    EventQueue runtimeEvents;
    RuntimeServer server(&runtimeEvents, "127.0.0.1", ProjectBlock::kRuntimePort,
                         runtimeDir.File("incoming"));
    server.SetServedProject(served.Path(), "runtime.tlr");
    server.Run();
    for (int i = 0; i < 50 && !server.Listening(); ++i)
        platform::SleepMs(20);
    ASSERT_TRUE(server.Listening());

    // Garbage and oversized blocks are dropped; the server goes on serving.
    {
        platform::TcpSocket garbage = platform::TcpSocket::Connect("127.0.0.1", 14400, 2000);
        garbage.SetTimeouts(3000, 1000);
        garbage.SendAll("GET / HTTP/1.0\r\n\r\n");
        char reply[16];
        EXPECT_EQ(garbage.Receive(reply, sizeof reply), 0u);
        platform::TcpSocket huge = platform::TcpSocket::Connect("127.0.0.1", 14400, 2000);
        huge.SetTimeouts(3000, 1000);
        huge.SendAll("<FILEPROJECT>" + std::string(1100000, 'x'));
        EXPECT_EQ(huge.Receive(reply, sizeof reply), 0u);
    }

    Workstation station;
    EXPECT_EQ(station.Transfer(StartThread::kDownload), std::make_pair(+ID_TRANSFER_DONE, 0));
    ExpectSameFiles(served.Path(), "runtime.tlr", station.dir.File("TempPrj"), "default.tlr");

    TempDir uploaded;
    WriteProjectFiles(uploaded.Path(), "site.tlr");
    WriteFileText(uploaded.File("cameras.dat"), std::string("new cameras\0", 12));
    station.project.prjdir = uploaded.Path();
    station.project.prjname = "site";
    EXPECT_EQ(station.Transfer(StartThread::kUpload), std::make_pair(+ID_TRANSFER_DONE, 1));
    EXPECT_EQ(station.Transfer(StartThread::kReboot), std::make_pair(+ID_TRANSFER_DONE, 2));
    std::vector<int> requests;
    runtimeEvents.Drain([&](const EventQueue::Event& event) { requests.push_back(event.id); },
                        1000ms);
    EXPECT_EQ(requests,
              (std::vector<int>{RuntimeServer::kProjectReceived, RuntimeServer::kRebootRequested}));
    const std::string staged = server.TakeIncoming();
    ASSERT_FALSE(staged.empty());
    ExpectSameFiles(uploaded.Path(), "site.tlr", staged, "runtime.tlr");
    EXPECT_TRUE(server.TakeIncoming().empty());

    // A peer that connects and stays silent does not hold up a stop.
    platform::TcpSocket silent = platform::TcpSocket::Connect("127.0.0.1", 14400, 2000);
    platform::SleepMs(200);
    const uint32_t asked = platform::GetTickCount();
    server.Delete();
    EXPECT_LT(platform::ElapsedTicks(platform::GetTickCount(), asked), 2500u);
}

namespace {

// A child process running sleep under a chosen program name.
class NamedSleeper {
  public:
    NamedSleeper(const TempDir& dir, const std::string& image) {
        const std::string path = dir.File(image);
        platform::CopyFileOver("/bin/sleep", path);
        ::chmod(path.c_str(), 0755);
        pid_ = ::fork();
        if (pid_ == 0) {
            ::execl(path.c_str(), path.c_str(), "30", static_cast<char*>(nullptr));
            ::_exit(127);
        }
        platform::SleepMs(100);
    }
    ~NamedSleeper() {
        if (!Reaped()) {
            ::kill(pid_, SIGKILL);
            ::waitpid(pid_, nullptr, 0);
        }
    }
    // True once the process ended by SIGKILL.
    bool Killed() {
        for (int i = 0; i < 50 && !Reaped(); ++i)
            platform::SleepMs(20);
        return reaped_ && WIFSIGNALED(status_) && WTERMSIG(status_) == SIGKILL;
    }

  private:
    bool Reaped() {
        if (!reaped_ && ::waitpid(pid_, &status_, WNOHANG) == pid_)
            reaped_ = true;
        return reaped_;
    }
    pid_t pid_ = -1;
    int status_ = 0;
    bool reaped_ = false;
};

std::string Printed(const std::function<void()>& action) {
    testing::internal::CaptureStdout();
    action();
    std::fflush(stdout);
    return testing::internal::GetCapturedStdout();
}

}  // namespace

TEST(LocalRuntime, EndsTheRuntimeWatchdogAndWizardByImageNameInAnyCase) {
    EXPECT_TRUE(LocalRuntime::ImageMatches("Corvane-Runtime.exe", "CORVANE-RUNTIME.EXE"));
    EXPECT_TRUE(LocalRuntime::ImageMatches("corvane-runtime", "CORVANE-RUNTIME.EXE"));
    EXPECT_FALSE(LocalRuntime::ImageMatches("corvane", "CORVANE-RUNTIME.EXE"));
    EXPECT_FALSE(LocalRuntime::ImageMatches("corvane-runtime.exe.bak", "CORVANE-RUNTIME.EXE"));

    TempDir dir;
    NamedSleeper runtime(dir, "Corvane-Runtime.exe");
    NamedSleeper watchdog(dir, "tarvowatchdog");
    NamedSleeper wizard(dir, "TarvoWizard.EXE");
    NamedSleeper bystander(dir, "corvane-runtimes");
    EXPECT_GE(LocalRuntime::KillRuntimeProcesses(), 2);
    EXPECT_TRUE(runtime.Killed());
    EXPECT_TRUE(watchdog.Killed());
    EXPECT_GE(LocalRuntime::KillWizardProcess(), 1);
    EXPECT_TRUE(wizard.Killed());
    EXPECT_FALSE(bystander.Killed());
}

namespace {

// A copy of the shell named "corvane", running a sleep with the given last word, as the
// program started as "corvane <word>" would show in /proc.
pid_t StartAs(const std::string& program, const char* word) {
    const pid_t pid = ::fork();
    if (pid == 0) {
        ::execl(program.c_str(), program.c_str(), "-c", "sleep 30; true", word,
                static_cast<char*>(nullptr));
        ::_exit(127);
    }
    return pid;
}

bool EndedByKill(pid_t pid) {
    int status = 0;
    for (int i = 0; i < 50; ++i) {
        if (::waitpid(pid, &status, WNOHANG) == pid)
            return WIFSIGNALED(status) && WTERMSIG(status) == SIGKILL;
        platform::SleepMs(20);
    }
    ::kill(pid, SIGKILL);
    ::waitpid(pid, nullptr, 0);
    return false;
}

}  // namespace

TEST(LocalRuntime, TheProgramStartedWithRuntimeIsEndedAndNoOtherOfItsRuns) {
    TempDir dir;
    const std::string program = dir.File("corvane");
    platform::CopyFileOver("/bin/sh", program);
    ::chmod(program.c_str(), 0755);
    const pid_t runtime = StartAs(program, "--runtime");
    const pid_t workstation = StartAs(program, "--headless");
    platform::SleepMs(200);
    EXPECT_GE(LocalRuntime::KillRuntimeProcesses(program), 1);
    EXPECT_TRUE(EndedByKill(runtime));
    EXPECT_EQ(::kill(workstation, 0), 0);  // a neighbour's program is left alone
    ::kill(workstation, SIGKILL);
    ::waitpid(workstation, nullptr, 0);
}

TEST(LocalRuntime, ServiceQueryStopAndStartPrintTheirLines) {
    // The machine's systemctl: a container without systemd, or a machine without the unit,
    // has no such service.
    ::unsetenv("CORVANE_SYSTEMCTL");
    EXPECT_EQ(Printed([] { EXPECT_EQ(LocalRuntime::ServiceExists(), 0); }),
              "il servizio Corvane-Runtime non esiste\n");

    // A service manager played by a script that keeps the unit's state in a file.
    TempDir dir;
    WriteFileText(dir.File("systemctl"),
                  "#!/bin/sh\n"
                  "here=$(dirname \"$0\")\n"
                  "echo \"$*\" >> \"$here/calls\"\n"
                  "state=$(cat \"$here/state\")\n"
                  "case \"$1\" in\n"
                  "  show) [ \"$state\" = missing ] && echo not-found || echo loaded ;;\n"
                  "  is-active) [ \"$state\" = running ] && { echo active; exit 0; }\n"
                  "             echo inactive; exit 3 ;;\n"
                  "  stop) echo stopped > \"$here/state\" ;;\n"
                  "  start) [ \"$state\" = broken ] && exit 1; echo running > \"$here/state\" ;;\n"
                  "esac\n");
    ::chmod(dir.File("systemctl").c_str(), 0755);
    ::setenv("CORVANE_SYSTEMCTL", dir.File("systemctl").c_str(), 1);
    const std::string service = LocalRuntime::kServiceName;

    WriteFileText(dir.File("state"), "running\n");
    EXPECT_EQ(Printed([] { EXPECT_EQ(LocalRuntime::ServiceExists(), 1); }),
              "Trovato il servizio Corvane-Runtime\n");
    EXPECT_EQ(Printed([&] { LocalRuntime::StopService(service); }), "Service stopped.\n");
    EXPECT_NE(ReadFileText(dir.File("calls")).find("stop --no-block Corvane-Runtime.service"),
              std::string::npos);
    EXPECT_EQ(Printed([&] { LocalRuntime::StopService(service); }), "Service not running.\n");
    EXPECT_EQ(Printed([&] { LocalRuntime::StartService(service); }), "Service started.\n");
    EXPECT_EQ(Printed([&] { LocalRuntime::StartService(service); }), "Service already running.\n");
    WriteFileText(dir.File("state"), "broken\n");
    EXPECT_EQ(Printed([&] { LocalRuntime::StartService(service); }), "Service failed to start.\n");
    WriteFileText(dir.File("state"), "missing\n");
    EXPECT_EQ(Printed([] { EXPECT_EQ(LocalRuntime::ServiceExists(), 0); }),
              "il servizio Corvane-Runtime non esiste\n");
    ::unsetenv("CORVANE_SYSTEMCTL");
}

TEST(LocalRuntime, TheWorkstationStopsAStartingServiceBeforeItEndsTheRuntime) {
    // A service manager played by a script: the unit is still starting, and the script notes
    // whether the runtime's process was alive when the stop came (so that systemd, asked to
    // stop first, does not start again what the workstation ends next).
    TempDir dir;
    NamedSleeper runtime(dir, "corvane-runtime");
    WriteFileText(dir.File("systemctl"),
                  "#!/bin/sh\n"
                  "here=$(dirname \"$0\")\n"
                  "case \"$1\" in\n"
                  "  show) echo loaded ;;\n"
                  "  is-active) cat \"$here/state\"; exit 3 ;;\n"
                  "  stop) pgrep -x corvane-runtime >/dev/null && echo alive >> \"$here/calls\"\n"
                  "        echo \"$*\" >> \"$here/calls\"; echo inactive > \"$here/state\" ;;\n"
                  "esac\n");
    ::chmod(dir.File("systemctl").c_str(), 0755);
    ::setenv("CORVANE_SYSTEMCTL", dir.File("systemctl").c_str(), 1);
    WriteFileText(dir.File("state"), "activating\n");
    const std::string printed = Printed([] { EXPECT_TRUE(LocalRuntime::StopForWorkstation()); });
    EXPECT_EQ(printed, "Trovato il servizio Corvane-Runtime\nService stopped.\n");
    EXPECT_EQ(ReadFileText(dir.File("calls")), "alive\nstop --no-block Corvane-Runtime.service\n");
    EXPECT_TRUE(runtime.Killed());

    // Reloading and stopping units are running too; only a unit at rest is not.
    for (const char* state : {"reloading", "deactivating"}) {
        WriteFileText(dir.File("state"), std::string(state) + "\n");
        EXPECT_EQ(Printed([] { LocalRuntime::StopService(LocalRuntime::kServiceName); }),
                  "Service stopped.\n")
            << state;
    }
    WriteFileText(dir.File("state"), "failed\n");
    EXPECT_EQ(Printed([] { LocalRuntime::StopService(LocalRuntime::kServiceName); }),
              "Service not running.\n");
    ::unsetenv("CORVANE_SYSTEMCTL");
}

TEST(LocalRuntime, TheRealServiceManagerStopsTheUnitWhereSystemdRuns) {
    if (!platform::DirectoryExists("/run/systemd/system"))
        GTEST_SKIP() << "systemd does not run on this machine: the scripted manager above stands "
                        "in for it";
    ::unsetenv("CORVANE_SYSTEMCTL");
    // Without the unit installed the service does not exist, and nothing is stopped.
    if (LocalRuntime::ServiceExists() == 0) {
        EXPECT_EQ(Printed([] { EXPECT_FALSE(LocalRuntime::StopForWorkstation()); }),
                  "il servizio Corvane-Runtime non esiste\n");
    }
}

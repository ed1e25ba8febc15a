// The runtime's transfer server against strangers and bad uploads, with real sockets on
// loopback: only allowed networks and the shared key get in, slow and silent peers cost only
// their own connection, an upload is checked whole before "<OK>", the transfer time is a
// deadline, and the project the runtime had is kept and can be taken back.
#include <arpa/inet.h>
#include <netinet/in.h>
#include <sys/socket.h>
#include <unistd.h>

#include <atomic>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <map>
#include <string>
#include <thread>
#include <vector>

#include <gtest/gtest.h>

#include "SavedSite.h"
#include "TestSupport.h"
#include "TransferStation.h"
#include "core/EventQueue.h"
#include "core/Project.h"
#include "core/ProjectCheck.h"
#include "core/ProjectFile.h"
#include "platform/FileSystem.h"
#include "platform/TcpSocket.h"
#include "platform/Ticks.h"
#include "remote/ProjectBlock.h"
#include "remote/RuntimeProjectStore.h"
#include "remote/RuntimeServer.h"
#include "remote/StartThread.h"

namespace {

using namespace std::chrono_literals;

// A runtime's transfer server on 127.0.0.1:14400 that checks uploads as the program does.
struct Runtime {
    explicit Runtime(std::vector<platform::AddressRange> allowed = {}, std::string key = {})
        : server(&events, "127.0.0.1", ProjectBlock::kRuntimePort, dir.File("incoming")) {
        SaveSite(served.Path(), "runtime", "Served");
        server.SetServedProject(served.Path(), "runtime.tlr");
        server.SetAllowed(std::move(allowed));
        server.SetKey(std::move(key));
        server.SetProjectCheck([](const std::string& folder, const std::string& file) {
            return CheckProject(folder, file, AppDir());
        });
        server.Run();
        for (int i = 0; i < 100 && !server.Listening(); ++i)
            platform::SleepMs(20);
    }
    std::vector<int> Events(std::chrono::milliseconds wait) {
        std::vector<int> ids;
        events.Drain([&](const EventQueue::Event& event) { ids.push_back(event.id); }, wait);
        return ids;
    }
    TempDir dir;
    TempDir served;
    EventQueue events;
    RuntimeServer server;
};

// A connection to the runtime port from a chosen loopback address.
platform::TcpSocket ConnectFrom(const char* source) {
    const int fd = ConnectFromAddress(source, ProjectBlock::kRuntimePort);
    if (fd < 0)
        return platform::TcpSocket();
    platform::TcpSocket socket(fd);
    socket.SetTimeouts(3000, 1000);
    return socket;
}

// Everything the peer answers until it closes or stays silent for the socket's time-out.
std::string Answer(platform::TcpSocket& socket) {
    std::string answer;
    char piece[4096];
    for (size_t got; (got = socket.Receive(piece, sizeof piece)) > 0;)
        answer.append(piece, got);
    return answer;
}

// Every line a capture holds, for a failure's message.
std::string Joined(const std::vector<std::string>& lines) {
    std::string text;
    for (const std::string& line : lines)
        text += line + "\n";
    return text;
}

std::string EmptyBlock() {
    std::string block;
    for (const auto& section : ProjectBlock::kSectionTable)
        block += ProjectBlock::OpeningTag(section) + ProjectBlock::ClosingTag(section);
    return block;
}

}  // namespace

TEST(RuntimeTransfer, AnUploadIsCheckedWholeBeforeOkAndNothingBadIsTaken) {
    Runtime runtime;
    ASSERT_TRUE(runtime.server.Listening());
    LogCapture log;

    // A block of empty sections would have emptied the site: it gets no "<OK>".
    EXPECT_EQ(EmptyBlock().size(), 199u);
    platform::TcpSocket empty = ConnectFrom("127.0.0.1");
    empty.SendAll(EmptyBlock());
    EXPECT_EQ(Answer(empty), "");
    EXPECT_TRUE(log.Contains("Project refused, nothing replaced: the project file holds no"));

    // A project naming a reader that is not installed is refused the same way.
    Workstation station;
    SaveSite(station.dir.Path(), "site", "Uploaded");
    WriteFileText(station.dir.File("lanes.dat"), "broken");
    station.project.prjdir = station.dir.Path();
    station.project.prjname = "site";
    EXPECT_EQ(station.Transfer(StartThread::kUpload).first, +ID_TRANSFER_FAILED);
    EXPECT_TRUE(runtime.server.TakeIncoming().empty());
    EXPECT_TRUE(runtime.Events(300ms).empty());

    // A whole project is taken.
    SaveSite(station.dir.Path(), "site", "Uploaded");
    EXPECT_EQ(station.Transfer(StartThread::kUpload).first, +ID_TRANSFER_DONE);
    EXPECT_EQ(runtime.Events(1000ms), std::vector<int>{RuntimeServer::kProjectReceived});
    const std::string staged = runtime.server.TakeIncoming();
    ASSERT_FALSE(staged.empty());
    EXPECT_EQ(ReadFileBytes(staged + "/lanes.dat"), ReadFileBytes(station.dir.File("lanes.dat")));
}

TEST(RuntimeTransfer, AProjectTooLargeToTravelIsRefusedBeforeAnythingIsSent) {
    Workstation station;
    SaveSite(station.dir.Path(), "site", "Large");
    WriteFileText(station.dir.File("site.tlr"), std::string(1000001, 'x'));
    station.project.prjdir = station.dir.Path();
    station.project.prjname = "site";
    platform::TcpSocket listener = platform::TcpSocket::Listen("127.0.0.1", 14400);
    ASSERT_TRUE(listener.IsOpen());
    LogCapture log;
    EXPECT_EQ(station.Transfer(StartThread::kUpload).first, +ID_TRANSFER_FAILED);
    EXPECT_FALSE(listener.Accept(500).IsOpen()) << "the workstation connected all the same";
    EXPECT_TRUE(log.Contains("Upload refused, nothing sent: the project is too large"));
}

TEST(RuntimeTransfer, PeersOutsideTheAllowedNetworksAreClosedAtAccept) {
    platform::AddressRange workstation;
    ASSERT_TRUE(platform::AddressRange::Parse("127.0.0.1/32", workstation));
    Runtime runtime({workstation});
    LogCapture log;
    platform::TcpSocket stranger = ConnectFrom("127.0.0.2");
    ASSERT_TRUE(stranger.IsOpen());
    stranger.SendAll(ProjectBlock::kDownloadRequest);
    EXPECT_EQ(Answer(stranger), "");
    EXPECT_TRUE(log.Contains("Transfer refused to 127.0.0.2: not an allowed workstation"));
    platform::TcpSocket allowed = ConnectFrom("127.0.0.1");
    allowed.SendAll(ProjectBlock::kDownloadRequest);
    EXPECT_EQ(Answer(allowed), ProjectBlock::Compose(runtime.served.Path(), "runtime.tlr"));

    platform::AddressRange range;
    EXPECT_TRUE(platform::AddressRange::Parse("10.1.2.3/8", range));
    EXPECT_TRUE(range.Contains(0x0AFFFFFF));
    EXPECT_FALSE(range.Contains(0x0B000000));
    EXPECT_FALSE(platform::AddressRange::Parse("10.1.2.3/33", range));
    EXPECT_FALSE(platform::AddressRange::Parse("10.1.2/8", range));
    EXPECT_FALSE(platform::AddressRange::Parse("10.1.2.3/", range));
}

TEST(RuntimeTransfer, WithASharedKeyOnlyPeersThatKnowItAreServed) {
    Runtime runtime({}, "s3cret-site-key");
    LogCapture log;
    for (const std::string& request :
         {std::string(ProjectBlock::kDownloadRequest),
          ProjectBlock::KeyPrefix("wrong-key") + ProjectBlock::kDownloadRequest,
          ProjectBlock::KeyPrefix("s3cret-site-ke") + ProjectBlock::kDownloadRequest}) {
        platform::TcpSocket peer = ConnectFrom("127.0.0.1");
        peer.SendAll(request);
        EXPECT_EQ(Answer(peer), "") << request;
    }
    EXPECT_TRUE(log.Contains("Transfer key missing or wrong: dropped"));
    Workstation station;
    EXPECT_EQ(station.Transfer(StartThread::kDownload).first, +ID_TRANSFER_FAILED);
    EXPECT_EQ(station.Transfer(StartThread::kDownload, "127.0.0.1", "s3cret-site-key").first,
              +ID_TRANSFER_DONE);
    EXPECT_EQ(ReadFileText(station.dir.File("TempPrj/default.tlr")),
              ReadFileText(runtime.served.File("runtime.tlr")));
}

TEST(RuntimeTransfer, SlowAndSilentPeersCostOnlyTheirOwnConnection) {
    Runtime runtime;
    LogCapture log;
    // Sixteen silent peers from one address hold four places; the rest are turned away.
    std::vector<platform::TcpSocket> silent;
    for (int i = 0; i < 16; ++i)
        silent.push_back(ConnectFrom("127.0.0.2"));
    std::thread dribbler([] {
        platform::TcpSocket slow = ConnectFrom("127.0.0.3");
        const std::string request = ProjectBlock::kDownloadRequest;
        for (size_t i = 0; i < 8; ++i) {
            slow.SendAll(request.substr(i, 1));
            std::this_thread::sleep_for(500ms);
        }
    });
    std::this_thread::sleep_for(300ms);
    Workstation station;
    const uint32_t started = platform::GetTickCount();
    EXPECT_EQ(station.Transfer(StartThread::kDownload).first, +ID_TRANSFER_DONE);
    EXPECT_LT(platform::ElapsedTicks(platform::GetTickCount(), started), 1500u);
    dribbler.join();
    EXPECT_TRUE(log.Contains("Transfer refused to 127.0.0.2: 4 transfers from this address"));

    // A stop does not wait for the silent ones.
    const uint32_t asked = platform::GetTickCount();
    runtime.server.Delete();
    EXPECT_LT(platform::ElapsedTicks(platform::GetTickCount(), asked), 2500u);
}

TEST(RuntimeTransfer, TheLastPlaceIsKeptForAWorkstationServedBefore) {
    Runtime runtime;
    Workstation station;
    ASSERT_EQ(station.Transfer(StartThread::kDownload).first, +ID_TRANSFER_DONE);
    // Strangers, two from each address, take every place but the last, and keep it by
    // sending a byte of a request now and then.
    std::vector<platform::TcpSocket> strangers;
    for (size_t i = 0; i + 1 < RuntimeServer::kMaxPeers; ++i)
        strangers.push_back(ConnectFrom(("127.0.1." + std::to_string(10 + i / 2)).c_str()));
    std::atomic<bool> dripping{true};
    std::thread drip([&] {
        const std::string request = ProjectBlock::kDownloadRequest;
        for (size_t at = 0; dripping && at + 1 < request.size(); ++at) {
            for (auto& stranger : strangers)
                stranger.SendAll(request.substr(at, 1));
            std::this_thread::sleep_for(300ms);
        }
    });
    for (int i = 0; i < 250 && runtime.server.PeersUnderWay() + 1 < RuntimeServer::kMaxPeers; ++i)
        std::this_thread::sleep_for(20ms);
    EXPECT_EQ(runtime.server.PeersUnderWay() + 1, RuntimeServer::kMaxPeers);
    LogCapture log;
    platform::TcpSocket newcomer = ConnectFrom("127.0.2.1");
    newcomer.SendAll(ProjectBlock::kDownloadRequest);
    EXPECT_EQ(Answer(newcomer), "");
    EXPECT_TRUE(log.Contains("Transfer refused to 127.0.2.1: 15 transfers already under way"))
        << Joined(log.Messages());
    const uint32_t started = platform::GetTickCount();
    EXPECT_EQ(station.Transfer(StartThread::kDownload).first, +ID_TRANSFER_DONE);
    EXPECT_LT(platform::ElapsedTicks(platform::GetTickCount(), started), 1500u);
    dripping = false;
    drip.join();
}

TEST(RuntimeTransfer, RebootsAreTakenOneEveryTenSeconds) {
    Runtime runtime;
    LogCapture log;
    for (int i = 0; i < 3; ++i) {
        platform::TcpSocket peer = ConnectFrom("127.0.0.1");
        peer.SendAll(ProjectBlock::kRebootRequest);
        EXPECT_EQ(Answer(peer), i == 0 ? ProjectBlock::kOk : "") << i;
    }
    EXPECT_EQ(runtime.Events(300ms), std::vector<int>{RuntimeServer::kRebootRequested});
    EXPECT_TRUE(log.Contains("Reboot refused: one every 10 s at most"));
}

TEST(RuntimeTransfer, AnUploadNamingALibraryOutsideThePluginFoldersLoadsNothing) {
    // The project file is a shared library that also holds a project, and a trigger names it
    // by a path out of the plug-in folder, cut by a NUL before the ending the loader would see.
    Runtime runtime;
    const std::string mark = runtime.dir.File("intruder-ran");
    ::setenv("CORVANE_INTRUDER_MARK", mark.c_str(), 1);
    using namespace std::string_literals;
    for (const std::string& name :
         {"../../incoming/upload-1/runtime.tlr\0"s, "../../elsewhere/Intruder"s,
          AppDir() + "/elsewhere/Intruder.dll"s, "..\\..\\elsewhere\\Intruder\0.dll"s}) {
        Workstation station;
        SaveSite(station.dir.Path(), "site", "Hostile");
        Project hostile;
        Trigger trigger;
        trigger.name = "T1";
        hostile.held.triggers.push_back({trigger, name});
        hostile.componentfolder = station.dir.Path();
        hostile.SaveTrigger();
        auto library = ReadFileBytes(AppDir() + "/elsewhere/Intruder.dll");
        const std::string project = "<PROJECT><PLACENAME>Hostile<\\PLACENAME><\\PROJECT>";
        library.insert(library.end(), project.begin(), project.end());
        WriteFileBytes(station.dir.File("site.tlr"), library);
        station.project.prjdir = station.dir.Path();
        station.project.prjname = "site";

        LogCapture log;
        EXPECT_EQ(station.Transfer(StartThread::kUpload).first, +ID_TRANSFER_FAILED) << name;
        EXPECT_TRUE(log.Contains("refused: not a bare library name")) << name;
        EXPECT_TRUE(runtime.server.TakeIncoming().empty());
    }
    EXPECT_FALSE(platform::FileExists(mark));
    ::unsetenv("CORVANE_INTRUDER_MARK");
}

TEST(RuntimeTransfer, AnUploadAnsweredOkIsOnDiskAndTakenAtTheNextStart) {
    Runtime runtime;
    Workstation station;
    SaveSite(station.dir.Path(), "site", "Answered");
    station.project.prjdir = station.dir.Path();
    station.project.prjname = "site";
    ASSERT_EQ(station.Transfer(StartThread::kUpload).first, +ID_TRANSFER_DONE);
    // The program is killed right after "<OK>": the upload is already complete on disk...
    const std::string ready = runtime.dir.File("incoming/ready");
    EXPECT_EQ(ReadFileBytes(ready + "/lanes.dat"), ReadFileBytes(station.dir.File("lanes.dat")));
    // ...and the next start swaps it in before it opens anything.
    RuntimeProjectStore store(runtime.dir.Path());
    EXPECT_FALSE(store.HasProject());
    ASSERT_TRUE(store.ReplayStaged());
    EXPECT_TRUE(store.HasProject());
    EXPECT_EQ(ReadFileBytes(store.CurrentFolder() + "/cameras.dat"),
              ReadFileBytes(station.dir.File("cameras.dat")));
    EXPECT_FALSE(platform::DirectoryExists(ready));
    EXPECT_FALSE(store.ReplayStaged());  // once
}

TEST(RuntimeTransfer, AFullDiskRefusesTheUploadAndSaysWhy) {
    // The runtime's folder on a file system of 256 KiB, nearly full.
    TempDir mount;
    if (::geteuid() != 0 ||
        std::system(
            ("mount -t tmpfs -o size=256k tmpfs " + mount.Path() + " 2>/dev/null").c_str()) != 0)
        GTEST_SKIP() << "cannot mount a small file system here (needs root)";
    struct Unmount {
        std::string path;
        ~Unmount() { std::system(("umount " + path).c_str()); }
    } unmount{mount.Path()};
    TempDir served;
    SaveSite(served.Path(), "runtime", "Running");
    const std::string plates(40000, 'T');  // plate templates larger than what is left
    WriteFileText(served.File("templates.xml"), plates);
    std::map<std::string, std::vector<uint8_t>> before;
    for (const auto& entry : std::filesystem::directory_iterator(served.Path()))
        before[entry.path().string()] = ReadFileBytes(entry.path().string());

    EventQueue events;
    RuntimeServer server(&events, "127.0.0.1", ProjectBlock::kRuntimePort,
                         mount.Path() + "/incoming");
    server.SetServedProject(served.Path(), "runtime.tlr");
    server.SetProjectCheck([](const std::string& folder, const std::string& file) {
        return CheckProject(folder, file, AppDir());
    });
    server.Run();
    for (int i = 0; i < 100 && !server.Listening(); ++i)
        platform::SleepMs(20);
    {
        // Fill all but about 48 KiB: the block's files fit, the plate templates do not.
        std::FILE* filler = std::fopen((mount.Path() + "/filler").c_str(), "wb");
        ASSERT_NE(filler, nullptr);
        const std::string block(4096, 'x');
        while (std::fwrite(block.data(), 1, block.size(), filler) == block.size() &&
               std::fflush(filler) == 0) {
        }
        std::fclose(filler);
        std::filesystem::resize_file(mount.Path() + "/filler",
                                     std::filesystem::file_size(mount.Path() + "/filler") - 49152);
    }
    Workstation station;
    SaveSite(station.dir.Path(), "site", "Uploaded");
    station.project.prjdir = station.dir.Path();
    station.project.prjname = "site";
    LogCapture log;
    EXPECT_EQ(station.Transfer(StartThread::kUpload).first, +ID_TRANSFER_FAILED);
    EXPECT_TRUE(log.Contains("Project refused, nothing replaced: cannot "));
    EXPECT_TRUE(log.Contains("No space left on device")) << Joined(log.Messages());
    EXPECT_TRUE(server.TakeIncoming().empty());
    for (const auto& [path, bytes] : before)
        EXPECT_EQ(ReadFileBytes(path), bytes) << path;
    server.Delete();
}

TEST(RuntimeTransfer, AnUploadThatEndsAfterTheTransferTimeIsRefused) {
    Runtime runtime;
    TempDir site;
    SaveSite(site.Path(), "site", "Late");
    const std::string block = ProjectBlock::Compose(site.Path(), "site.tlr");
    platform::TcpSocket late = ConnectFrom("127.0.0.1");
    late.SetTimeouts(3000, 1000);
    // Half now, a byte every 0.9 s (the server's one-second reads never time out) until just
    // before the limit, and the rest inside a read that began before it and ends after it.
    late.SendAll(block.substr(0, block.size() / 2));
    const uint32_t started = platform::GetTickCount();
    size_t at = block.size() / 2;
    while (platform::ElapsedTicks(platform::GetTickCount(), started) < 9500u) {
        late.SendAll(block.substr(at++, 1));
        std::this_thread::sleep_for(900ms);
    }
    while (platform::ElapsedTicks(platform::GetTickCount(), started) < 10400u)
        std::this_thread::sleep_for(20ms);
    late.SendAll(block.substr(at));
    EXPECT_EQ(Answer(late), "");
    EXPECT_TRUE(runtime.server.TakeIncoming().empty());
}

TEST(RuntimeProjectStore, KeepsThePreviousProjectAndRollsBackToIt) {
    TempDir root;
    RuntimeProjectStore store(root.Path());
    EXPECT_FALSE(store.HasProject());
    EXPECT_FALSE(store.Rollback());

    auto stage = [&](const std::string& place) {
        const std::string staged = root.File("staged-" + place);
        platform::MakeDirectory(staged);
        SaveSite(staged, "runtime", place);
        return staged;
    };
    ASSERT_TRUE(store.Replace(stage("First")));
    WriteFileText(store.CurrentFolder() + "/templates.xml", "<TEMPLATES>site<\\TEMPLATES>");
    ASSERT_TRUE(store.Replace(stage("Second")));
    auto placeOf = [](const std::string& folder) {
        Project project;
        LoadProjectSettings(folder + "/runtime.tlr", project);
        return project.place.placename;
    };
    EXPECT_EQ(placeOf(store.CurrentFolder()), "Second");
    EXPECT_EQ(placeOf(store.PreviousFolder()), "First");
    // The site's own templates stay with the project that runs.
    EXPECT_EQ(ReadFileText(store.CurrentFolder() + "/templates.xml"),
              "<TEMPLATES>site<\\TEMPLATES>");

    ASSERT_TRUE(store.Rollback());
    EXPECT_EQ(placeOf(store.CurrentFolder()), "First");
    EXPECT_EQ(placeOf(store.PreviousFolder()), "Second");
    ASSERT_TRUE(store.Rollback());  // and forward again
    EXPECT_EQ(placeOf(store.CurrentFolder()), "Second");

    // A staged folder that is not there replaces nothing.
    EXPECT_FALSE(store.Replace(root.File("nothing-staged")));
    EXPECT_EQ(placeOf(store.CurrentFolder()), "Second");
}

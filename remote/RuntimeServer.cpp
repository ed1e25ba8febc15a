#include "RuntimeServer.h"

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <filesystem>
#include <system_error>

#include "ProjectBlock.h"
#include "RuntimeProjectStore.h"
#include "core/EventSink.h"
#include "platform/FileSystem.h"
#include "platform/Log.h"
#include "platform/Ticks.h"

namespace {

bool Begins(const std::string& buffer, const char* request) {
    return buffer.compare(0, std::strlen(request), request) == 0;
}

// True while the bytes so far could still become request: they are a start of it, or all of it.
bool StartsLike(const std::string& buffer, const char* request) {
    const size_t length = std::min(buffer.size(), std::strlen(request));
    return buffer.compare(0, length, request, length) == 0;
}

// Compares without an early exit, so that the time taken tells nothing of the key.
bool SameKey(const std::string& a, const std::string& b) {
    if (a.size() != b.size())
        return false;
    unsigned char differ = 0;
    for (size_t i = 0; i < a.size(); ++i)
        differ |= static_cast<unsigned char>(a[i] ^ b[i]);
    return differ == 0;
}

// The line in the log context is the caller's: the place that found the problem.
void Warn(const std::string& message, int line = __builtin_LINE()) {
    platform::Log(platform::LogLevel::Warning, {__FILE__, "RuntimeServer::Serve", line}, message);
}

}  // namespace

RuntimeServer::RuntimeServer(EventSink* events, std::string address, int port,
                             std::string incomingFolder)
    : events_(events),
      address_(std::move(address)),
      port_(port),
      incoming_(std::move(incomingFolder)) {
    SetReportName("RuntimeServer");
}

RuntimeServer::~RuntimeServer() {
    Delete();
    ReapPeers(true);
}

void RuntimeServer::SetServedProject(const std::string& folder, const std::string& projectFile) {
    std::lock_guard<std::mutex> lock(mutex_);
    servedFolder_ = folder;
    servedFile_ = projectFile;
}

std::string RuntimeServer::TakeIncoming() {
    std::lock_guard<std::mutex> lock(mutex_);
    if (!ready_)
        return std::string();
    ready_ = false;
    const std::string taken = incoming_ + "/" + RuntimeProjectStore::kTaken;
    platform::RemoveTree(taken);
    std::error_code ec;
    std::filesystem::rename(incoming_ + "/" + RuntimeProjectStore::kReady, taken, ec);
    return ec ? std::string() : taken;
}

bool RuntimeServer::MayBeRequest(const std::string& buffer) {
    return StartsLike(buffer, ProjectBlock::kDownloadRequest) ||
           StartsLike(buffer, ProjectBlock::kRebootRequest) || StartsLike(buffer, "<FILEPROJECT>");
}

int RuntimeServer::TakeKey(std::string& buffer) const {
    const std::string expected = ProjectBlock::KeyPrefix(key_);
    if (!StartsLike(buffer, "<KEY>"))
        return -1;
    const size_t end = buffer.find("<\\KEY>");
    if (end == std::string::npos)
        return buffer.size() < expected.size() + 64 ? 0 : -1;
    const std::string given = buffer.substr(0, end + 6);
    if (!SameKey(given, expected))
        return -1;
    buffer.erase(0, given.size());
    return 1;
}

void RuntimeServer::Entry() {
    platform::TcpSocket listener;
    while (!TestDestroy()) {
        ReapPeers(false);
        if (!listener.IsOpen()) {
            listener = platform::TcpSocket::Listen(address_, port_);
            listening_ = listener.IsOpen();
            if (!listener.IsOpen()) {
                CORVANE_LOG_WARNING("RuntimeServer::Entry",
                                    "Cannot listen on TCP " + std::to_string(port_));
                Pause(kBindRetryMs);
                continue;
            }
            boundPort_ = listener.LocalPort();
        }
        platform::TcpSocket peer = listener.Accept(kAcceptPollMs);
        if (peer.IsOpen())
            Admit(std::move(peer));
    }
    listening_ = false;
    ReapPeers(true);
}

// Why a peer is not served now: empty when it may be. Slow peers from one address hold at most
// kMaxPeersPerAddress transfers, and the last place is kept for a workstation served before, so
// a crowd of strangers cannot lock the site's own workstation out.
std::string RuntimeServer::RefusalOf(uint32_t address) const {
    const size_t fromAddress = static_cast<size_t>(
        std::count_if(peers_.begin(), peers_.end(),
                      [address](const auto& peer) { return peer->address == address; }));
    if (fromAddress >= kMaxPeersPerAddress)
        return std::to_string(kMaxPeersPerAddress) + " transfers from this address under way";
    const bool servedBefore = servedAddresses_.count(address) != 0;
    if (peers_.size() >= kMaxPeers || (peers_.size() + 1 >= kMaxPeers && !servedBefore))
        return std::to_string(peers_.size()) + " transfers already under way";
    return std::string();
}

void RuntimeServer::Admit(platform::TcpSocket socket) {
    uint32_t address = 0;
    const bool known = socket.PeerAddress(address);
    const std::vector<platform::AddressRange> loopback{platform::LoopbackRange()};
    if (!known || !platform::AnyContains(allowed_.empty() ? loopback : allowed_, address)) {
        CORVANE_LOG_WARNING("RuntimeServer::Entry",
                            "Transfer refused to " +
                                (known ? platform::DottedAddress(address) : std::string("?")) +
                                ": not an allowed workstation");
        return;
    }
    ReapPeers(false);  // a peer that has just ended holds no place
    const std::string refusal = RefusalOf(address);
    if (!refusal.empty()) {
        CORVANE_LOG_WARNING(
            "RuntimeServer::Entry",
            "Transfer refused to " + platform::DottedAddress(address) + ": " + refusal);
        return;
    }
    auto peer = std::make_unique<Peer>();
    Peer* raw = peer.get();
    raw->address = address;
    const int number = ++connections_;
    raw->thread = std::thread([this, raw, number, held = std::move(socket)]() mutable {
        raw->served = Serve(held, number);
        held.Close();
        raw->done = true;
    });
    peers_.push_back(std::move(peer));
    underWay_ = peers_.size();
}

void RuntimeServer::ReapPeers(bool all) {
    for (auto it = peers_.begin(); it != peers_.end();) {
        if (all || (*it)->done) {
            (*it)->thread.join();  // a peer ends within its own transfer time
            if ((*it)->served)
                servedAddresses_.insert((*it)->address);
            it = peers_.erase(it);
        } else {
            ++it;
        }
    }
    underWay_ = peers_.size();
}

bool RuntimeServer::Serve(platform::TcpSocket& peer, int number) {
    std::string buffer;
    char piece[ProjectBlock::kReadSize];
    const uint32_t deadline = platform::GetTickCount() + ProjectBlock::kTransferMs;
    auto timeLeft = [deadline] {
        return static_cast<int32_t>(deadline - platform::GetTickCount());
    };
    bool keyed = key_.empty();
    for (;;) {
        const int32_t left = timeLeft();
        if (TestDestroy() || left <= 0) {
            Warn("Transfer request incomplete after " +
                 std::to_string(ProjectBlock::kTransferMs / 1000) + " s: dropped");
            return false;
        }
        peer.SetTimeouts(std::min(left, ProjectBlock::kSocketTimeoutMs),
                         ProjectBlock::kSocketTimeoutMs);
        const size_t got = peer.Receive(piece, sizeof piece);
        if (got == 0) {
            if (timeLeft() > 0 && !buffer.empty())
                Warn("Transfer request incomplete: dropped");
            return false;
        }
        if (timeLeft() <= 0)
            continue;  // too late: reported above on the next turn
        if (buffer.size() + got >= ProjectBlock::kMaxBlock) {
            Warn("Project block too large: dropped");
            return false;
        }
        buffer.append(piece, got);
        if (!keyed) {
            const int key = TakeKey(buffer);
            if (key < 0) {
                Warn("Transfer key missing or wrong: dropped");
                return false;
            }
            if (key == 0)
                continue;
            keyed = true;
        }
        if (!MayBeRequest(buffer)) {
            Warn("Unknown transfer request: dropped");
            return false;
        }
        if (Begins(buffer, ProjectBlock::kDownloadRequest)) {
            std::string folder;
            std::string file;
            {
                std::lock_guard<std::mutex> lock(mutex_);
                folder = servedFolder_;
                file = servedFile_;
            }
            // The files are read outside the lock: other peers and the main loop go on.
            std::string problem = "no project is open";
            const std::string block =
                file.empty() ? std::string() : ProjectBlock::Compose(folder, file, &problem);
            if (block.empty()) {
                Warn("Cannot send the project: " + problem);
                return false;
            }
            if (!peer.SendAllBefore(block, deadline)) {
                Warn("Project download not taken within the transfer time");
                return false;
            }
            return true;
        }
        if (Begins(buffer, ProjectBlock::kRebootRequest)) {
            if (!MayReboot()) {
                Warn("Reboot refused: one every " + std::to_string(kRebootSpacingMs / 1000) +
                     " s at most");
                return false;
            }
            // Posted before the answer: once the workstation hears <OK>, the request is queued.
            events_->PostCommand(kRebootRequested, 0, std::string());
            peer.SendAllBefore(ProjectBlock::kOk, deadline);
            return true;
        }
        if (buffer.find(ProjectBlock::ClosingTag(
                ProjectBlock::kSectionTable[ProjectBlock::kSections - 1])) != std::string::npos) {
            return Upload(peer, buffer, number);
        }
    }
}

bool RuntimeServer::MayReboot() {
    const uint32_t now = platform::GetTickCount();
    std::lock_guard<std::mutex> lock(mutex_);
    if (rebooted_ && platform::ElapsedTicks(now, lastReboot_) < kRebootSpacingMs)
        return false;
    rebooted_ = true;
    lastReboot_ = now;
    return true;
}

bool RuntimeServer::Stage(const std::string& block, const std::string& staged,
                          std::string& problem) {
    platform::MakeDirectory(platform::DirectoryOf(incoming_));
    platform::MakeDirectory(incoming_);
    platform::RemoveTree(staged);
    if (!platform::MakeDirectory(staged)) {
        problem = "cannot make " + staged + ": " + std::strerror(errno);
        return false;
    }
    if (!ProjectBlock::WriteSections(block, staged, kIncomingProjectFile, &problem)) {
        if (problem.empty())
            problem = "project block malformed";
        return false;
    }
    // The plate files do not travel: the running project's go with the new one, copied whole.
    std::string running;
    {
        std::lock_guard<std::mutex> lock(mutex_);
        running = servedFolder_;
    }
    for (const char* name : RuntimeProjectStore::kKeptFiles) {
        const std::string from = running + "/" + name;
        if (running.empty() || !platform::FileExists(from))
            continue;
        if (!platform::CopyFileWhole(from, staged + "/" + name, kMaxKeptFile)) {
            problem = std::string("cannot stage ") + name + ": " + std::strerror(errno);
            return false;
        }
    }
    if (!platform::SyncDirectory(staged)) {
        problem = "cannot sync " + staged + ": " + std::strerror(errno);
        return false;
    }
    return true;
}

bool RuntimeServer::Upload(platform::TcpSocket& peer, const std::string& block, int number) {
    const std::string staged = incoming_ + "/upload-" + std::to_string(number);
    std::string problem;
    if (!Stage(block, staged, problem)) {
        Warn("Project refused, nothing replaced: " + problem);
        platform::RemoveTree(staged);
        return false;
    }
    std::vector<std::string> problems;
    if (check_)
        problems = check_(staged, kIncomingProjectFile);
    if (!problems.empty()) {
        std::string message = "Project refused, nothing replaced: " + problems.front();
        if (problems.size() > 1)
            message += " (and " + std::to_string(problems.size() - 1) + " more)";
        Warn(message);
        platform::RemoveTree(staged);
        return false;
    }
    {
        // Ready: complete, checked and on disk. From here a start takes it even if this run
        // ends before the main loop does; a later upload supersedes one not yet taken.
        std::lock_guard<std::mutex> lock(mutex_);
        const std::string ready = incoming_ + "/" + RuntimeProjectStore::kReady;
        platform::RemoveTree(ready);
        std::error_code ec;
        std::filesystem::rename(staged, ready, ec);
        if (ec || !platform::SyncDirectory(incoming_)) {
            Warn("Project refused, nothing replaced: cannot keep it in " + ready + ": " +
                 ec.message());
            platform::RemoveTree(staged);
            return false;
        }
        ready_ = true;
    }
    events_->PostCommand(kProjectReceived, 0, std::string());
    peer.SendAllBefore(ProjectBlock::kOk,
                       platform::GetTickCount() + ProjectBlock::kSocketTimeoutMs);
    return true;
}

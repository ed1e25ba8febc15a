#pragma once
#include <atomic>
#include <functional>
#include <list>
#include <memory>
#include <mutex>
#include <set>
#include <string>
#include <thread>
#include <vector>

#include "platform/AddressRange.h"
#include "platform/TcpSocket.h"
#include "platform/WorkerThread.h"

class EventSink;

// The runtime's end of project transfer on TCP 14400, one request per connection. A download
// request is answered with the served project's block; an uploaded block is staged, checked
// whole and only then answered "<OK>"; a reboot request is answered "<OK>". Uploads and
// reboots reach the runtime's main loop as events.
//
// Peers are served side by side, each on a thread of its own and within its own 10 s, so a
// slow or silent peer costs only its own connection. Peers outside the allowed networks are
// closed at accept; with a shared key, a request that does not begin with it is dropped before
// any section is read.
class RuntimeServer : public platform::WorkerThread {
  public:
    static constexpr int kProjectReceived = 6200;  // a checked upload is waiting
    static constexpr int kRebootRequested = 6201;
    static constexpr int kAcceptPollMs = 200;
    static constexpr int kBindRetryMs = 5000;
    static constexpr size_t kMaxPeers = 16;
    static constexpr size_t kMaxPeersPerAddress = 4;
    static constexpr uint32_t kRebootSpacingMs = 10000;
    static constexpr size_t kMaxKeptFile = 16u << 20;  // a plate file copied into an upload
    static constexpr const char* kIncomingProjectFile = "runtime.tlr";

    // The problems of a staged project (its folder and project file); none means it is taken.
    using ProjectCheck =
        std::function<std::vector<std::string>(const std::string&, const std::string&)>;

    RuntimeServer(EventSink* events, std::string address, int port, std::string incomingFolder);
    ~RuntimeServer() override;

    // Before Run: the networks whose peers are served (loopback only when none are set), the
    // shared key (none: the plain wire format) and the check of uploads.
    void SetAllowed(std::vector<platform::AddressRange> allowed) { allowed_ = std::move(allowed); }
    void SetKey(std::string key) { key_ = std::move(key); }
    void SetProjectCheck(ProjectCheck check) { check_ = std::move(check); }

    // The project a download sends: its folder and project file name.
    void SetServedProject(const std::string& folder, const std::string& projectFile);
    // The folder of the last checked upload, handed over once (moved to incoming/taken);
    // empty when none is waiting.
    std::string TakeIncoming();
    bool Listening() const { return listening_; }
    // The transfers being served now.
    size_t PeersUnderWay() const { return underWay_; }
    int Port() const { return boundPort_; }

  protected:
    void Entry() override;

  private:
    struct Peer {
        std::thread thread;
        uint32_t address = 0;
        std::atomic<bool> served{false};  // a request was answered in full
        std::atomic<bool> done{false};
    };

    void Admit(platform::TcpSocket socket);
    std::string RefusalOf(uint32_t address) const;
    // True when the peer's request was answered in full.
    bool Serve(platform::TcpSocket& peer, int number);
    bool Upload(platform::TcpSocket& peer, const std::string& block, int number);
    // Writes the block into staged with the running project's plate files, all synced; false
    // with the problem when anything could not be written whole (a full disk says so).
    bool Stage(const std::string& block, const std::string& staged, std::string& problem);
    bool MayReboot();
    void ReapPeers(bool all);
    // Strips the key prefix from the front of buffer. 1 when it was there and right, 0 when
    // more bytes are needed to tell, -1 when it is wrong or missing.
    int TakeKey(std::string& buffer) const;
    // False when the bytes so far cannot begin any request: the peer is dropped.
    static bool MayBeRequest(const std::string& buffer);

    EventSink* events_;
    std::string address_;
    int port_;
    std::atomic<int> boundPort_{0};
    std::string incoming_;
    std::vector<platform::AddressRange> allowed_;
    std::string key_;
    ProjectCheck check_;
    std::mutex mutex_;  // the served project, the waiting upload and the last reboot
    std::string servedFolder_;
    std::string servedFile_;
    bool ready_ = false;  // incoming/ready holds a checked upload not yet taken
    bool rebooted_ = false;
    uint32_t lastReboot_ = 0;
    std::list<std::unique_ptr<Peer>> peers_;  // the accepting thread's alone
    std::set<uint32_t> servedAddresses_;      // the accepting thread's alone
    int connections_ = 0;
    std::atomic<bool> listening_{false};
    std::atomic<size_t> underWay_{0};  // peers_.size(), for other threads to read
};

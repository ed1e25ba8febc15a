#pragma once
#include <atomic>
#include <mutex>
#include <string>

#include "platform/TcpSocket.h"
#include "platform/WorkerThread.h"

class EventSink;

// The runtime's end of project transfer on TCP 14400, one request per connection, one
// connection at a time: a download request is answered with the served project's block, an
// uploaded block is kept in the incoming folder and answered "<OK>", a reboot request is
// answered "<OK>". Uploads and reboots are handed to the runtime's main loop as events.
class RuntimeServer : public platform::WorkerThread {
  public:
    static constexpr int kProjectReceived = 6200;  // the incoming folder holds a new project
    static constexpr int kRebootRequested = 6201;
    static constexpr int kAcceptPollMs = 1000;
    static constexpr int kBindRetryMs = 5000;

    RuntimeServer(EventSink* events, std::string address, int port, std::string incomingFolder);
    ~RuntimeServer() override;

    // The project a download sends: its folder and project file name.
    void SetServedProject(const std::string& folder, const std::string& projectFile);
    // Copies the last upload into folder, its project file as projectFile. False when no
    // complete upload is waiting.
    bool TakeIncoming(const std::string& folder, const std::string& projectFile);
    bool Listening() const { return listening_; }

    static constexpr const char* kIncomingProjectFile = "incoming.tlr";

  protected:
    void Entry() override;

  private:
    void Serve(platform::TcpSocket& peer);
    // False when the bytes so far cannot begin any request: the peer is dropped.
    static bool MayBeRequest(const std::string& buffer);

    EventSink* events_;
    std::string address_;
    int port_;
    std::string incoming_;
    std::mutex mutex_;  // the served project and the incoming folder
    std::string servedFolder_;
    std::string servedFile_;
    bool incomingReady_ = false;
    std::atomic<bool> listening_{false};
};

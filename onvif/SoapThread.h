#pragma once
#include <atomic>
#include <functional>
#include <list>
#include <memory>
#include <mutex>
#include <string>
#include <thread>

#include "OnvifDeviceData.h"
#include "platform/WorkerThread.h"

struct soap;

// The ONVIF device of one stream: answers SOAP requests over HTTP on the stream's port through
// the device, event, media and display services in that order. Each connection is served on a
// thread of its own (a few at once), within its own receive and transfer time-outs, so a slow or
// stalled client holds only its own connection; the accept wakes up regularly, and a stop cuts
// the connections still open, so it ends the device within a fraction of a second. Addresses
// told to a client are those of the interface its request came in on.
class SoapThread : public platform::WorkerThread {
  public:
    // The accept wakes every 100 ms (gSOAP takes a negative time-out in microseconds), so an
    // edit that stops the streams waits no more than that per device front.
    static constexpr int kAcceptPollMicroseconds = 100000;
    static constexpr int kIoTimeoutSeconds = 5;
    static constexpr int kTransferTimeoutSeconds = 10;  // a whole request, however it trickles
    static constexpr size_t kMaxConnections = 8;
    static constexpr size_t kMaxConnectionsPerClient = 2;  // of one client address
    static constexpr int kRetryRounds = 600;  // of 100 ms: a bind is retried every 60 s

    // bindAddress: empty for every local address.
    SoapThread(std::string name, int port, int bitrate, std::string bindAddress = std::string());
    ~SoapThread() override;

    // The picture size and rate told to clients; the source's thread reports every frame.
    void SetVideoFormat(int width, int height, int fps);
    OnvifDeviceData Data() const;
    // The addresses to tell every client, whatever address its request came in on (tests,
    // hosts behind address translation).
    void SetAddresses(std::vector<std::string> addresses);
    bool Serving() const { return serving_.load(); }
    // What a GET of kSnapshotPath answers: a JPEG picture, or empty when there is none yet.
    void SetSnapshotSource(std::function<std::string()> source);
    static constexpr const char* kSnapshotPath = "/onvif/snapshot.jpg";

  protected:
    void Entry() override;

  private:
    struct Connection;
    bool Bind(struct soap* context);
    void Serve(struct soap* context);
    void Admit(struct soap* context);
    static void Answer(Connection& connection);
    // Answers a GET of the snapshot; false when the request is not one.
    static bool AnswerSnapshot(Connection& connection, const std::string& request);
    // Joins the connections that ended; all: cuts and joins every one.
    void Reap(bool all);

    const std::string bindAddress_;
    mutable std::mutex datamutex_;
    OnvifDeviceData data_;
    bool explicitAddresses_ = false;
    std::function<std::string()> snapshot_;
    std::list<std::unique_ptr<Connection>> connections_;  // the accepting thread's own
    std::atomic<bool> serving_{false};
};

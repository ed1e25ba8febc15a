#pragma once
#include <mutex>
#include <string>

#include "OnvifDeviceData.h"
#include "platform/WorkerThread.h"

struct soap;

// The ONVIF device of one stream: answers SOAP requests over HTTP on the stream's port, one
// connection at a time, through the device, event, media and display services in that order.
// Receive and send time out, so a stalled client cannot hold the device for ever, and the
// accept wakes up regularly, so a stop ends the thread within a fraction of a second.
class SoapThread : public platform::WorkerThread {
  public:
    // The accept wakes every 100 ms (gSOAP takes a negative time-out in microseconds), so an
    // edit that stops the streams waits no more than that per device front.
    static constexpr int kAcceptPollMicroseconds = 100000;
    static constexpr int kIoTimeoutSeconds = 5;
    static constexpr int kRetryRounds = 600;  // of 100 ms: a bind is retried every 60 s

    // bindAddress: empty for every local address.
    SoapThread(std::string name, int port, int bitrate, std::string bindAddress = std::string());
    ~SoapThread() override;

    // The picture size and rate told to clients; the source's thread reports every frame.
    void SetVideoFormat(int width, int height, int fps);
    OnvifDeviceData Data() const;
    // Replaces the host's addresses told to clients (tests and hosts with several networks).
    void SetAddresses(std::vector<std::string> addresses);
    bool Serving() const { return serving_.load(); }

  protected:
    void Entry() override;

  private:
    bool Bind(struct soap* context);
    void Serve(struct soap* context);

    const std::string bindAddress_;
    mutable std::mutex datamutex_;
    OnvifDeviceData data_;
    OnvifDeviceData served_;  // the copy the handlers read, refreshed before each request
    std::atomic<bool> serving_{false};
};

#pragma once
#include <list>
#include <memory>
#include <string>

#include "platform/TcpSocket.h"
#include "platform/WorkerThread.h"

class EventSink;
class Project;

// One transfer with a remote runtime on TCP 14400, on a thread of its own so the window stays
// free: download its project into ./TempPrj/, upload the open project's files, or ask it to
// reboot. The outcome reaches the window as ID_TRANSFER_DONE or ID_TRANSFER_FAILED with the
// mode as the event's integer.
class StartThread : public platform::WorkerThread {
  public:
    enum Mode { kDownload = 0, kUpload = 1, kReboot = 2 };

    StartThread(Project* project, EventSink* frame, std::string ip, int mode);
    ~StartThread() override;

    // The folder, below the working directory, that receives a download.
    static constexpr const char* kTempFolder = "TempPrj";
    static constexpr int kConnectTimeoutMs = 5000;

    platform::TcpSocket socket;
    std::string ip;
    int mode;
    EventSink* frame;
    std::string key;  // the runtime's shared key; empty for the plain wire format

  protected:
    void Entry() override;

  private:
    bool Download();
    bool Reboot();
    bool ReplyHoldsOk();
    bool SendRequest(const std::string& request);
    void Post(int id);

    Project* project_;
};

// The transfers under way. Each runs to its end by itself; a finished one is let go when the
// next starts, and the rest are waited for when the owner goes (each is bounded by its
// time-outs).
class StartThreads {
  public:
    void Start(Project* project, EventSink* frame, const std::string& ip, int mode,
               const std::string& key);

  private:
    std::list<std::unique_ptr<StartThread>> threads_;
};

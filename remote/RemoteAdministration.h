#pragma once
#include <string>

#include "StartThread.h"

class EventSink;
class Project;
class ProjectHost;
class ProjectSession;

// The workstation's side of remote runtime administration: the Download and Upload actions
// and what the window does with the transfer results.
class RemoteAdministration {
  public:
    RemoteAdministration(Project& project, ProjectSession& session, ProjectHost& host,
                         EventSink* frame)
        : project_(project), session_(session), host_(host), frame_(frame) {}

    static constexpr const char* kDefaultAddress = "127.0.0.1";
    // The workstation's copy of a runtime's shared transfer key, in the application folder.
    static constexpr const char* kKeyFile = "runtime.key";

    // The runtime's shared key for the transfers that follow (empty: none).
    void SetKey(std::string key) { key_ = std::move(key); }
    void Download(const std::string& ip) { Start(ip, StartThread::kDownload); }
    void Upload(const std::string& ip) { Start(ip, StartThread::kUpload); }
    // Reaction to ID_TRANSFER_DONE and ID_TRANSFER_FAILED; the event's integer is the mode.
    void OnTransferEvent(int id, int mode);

  private:
    void Start(const std::string& ip, int mode);

    Project& project_;
    ProjectSession& session_;
    ProjectHost& host_;
    EventSink* frame_;
    std::string key_;
    StartThreads threads_;
};

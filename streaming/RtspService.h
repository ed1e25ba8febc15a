#pragma once
#include <atomic>
#include <memory>
#include <mutex>
#include <shared_mutex>
#include <string>
#include <thread>
#include <vector>

#include "onvif/DeviceFronts.h"
#include "pipeline/StreamServices.h"

struct _GMainContext;
struct _GMainLoop;
struct _GstRTSPServer;

// The one RTSP server of the process: every stream at rtsp://address:8554/<name>, no login, one
// shared media a stream. A stream encodes only while a client is connected; frames are encoded
// on the producer's thread and dropped, never queued, when the previous one has not left yet.
// The server runs a GLib main loop on its own thread; a taken port is tried again every 60 s.
class RtspService : public StreamServices {
  public:
    static constexpr int kPort = 8554;
    static constexpr int kRetryRounds = 600;  // of 100 ms: a retry every 60 seconds
    static constexpr int kIntervalMs = 5000;  // rate statistics written into the encoder
    static constexpr int kDefaultWidth = 640;
    static constexpr int kDefaultHeight = 480;
    // A client session without a request or receiver report for this long ends; looked at
    // every kReclaimPeriodSeconds.
    static constexpr unsigned kSessionTimeoutSeconds = 65;
    static constexpr unsigned kReclaimPeriodSeconds = 5;

    explicit RtspService(std::string address = "0.0.0.0", int port = kPort);
    ~RtspService() override;
    RtspService(const RtspService&) = delete;
    RtspService& operator=(const RtspService&) = delete;

    // Starts the server thread; RtspRunning() turns true once the port is bound.
    void Start();
    // Removes every stream and ends the server thread.
    void StopAllStreams();
    int Port() const { return port_; }

    bool RtspRunning() const override { return running_.load(); }
    void AddStream(const std::string& name, int bitrate) override;
    void RemoveStream(const std::string& name) override;
    bool HasStream(const std::string& name) const override;
    // True while the stream has a live source, that is while a client plays it: only then are
    // its frames encoded.
    bool IsStreamLive(const std::string& name) const;
    // Pictures of the stream dropped unencoded since it was added, because the picture before
    // had not yet been taken by the clients' pipeline (a live stream never queues).
    uint64_t DroppedStreamFrames(const std::string& name) const;
    void SetStreamSize(int width, int height, const std::string& name) override;
    void PushStreamFrame(const uint8_t* data, int width, int height, const std::string& name,
                         uint32_t captureTick) override;
    int StreamRate(const std::string& name, int fallback) const override;
    // The latest picture pushed to the stream as JPEG; empty before the first one.
    std::string Snapshot(const std::string& name) const;

    // The device front of a stream, when one is installed (SetDeviceFronts).
    void SetDeviceFronts(DeviceFronts* fronts) { fronts_ = fronts; }
    // The front also serves a JPEG snapshot of the stream's latest picture (Snapshot).
    void StartFront(const std::string& name, int port, int bitrate, bool autoDiscovery,
                    std::shared_ptr<SoapThread>& soap,
                    std::shared_ptr<WSDiscovery>& discovery) override;
    void StopFront(std::shared_ptr<SoapThread>& soap,
                   std::shared_ptr<WSDiscovery>& discovery) override {
        if (fronts_ != nullptr)
            fronts_->Stop(soap, discovery);
        soap.reset();
        discovery.reset();
    }
    void SetVideoFormat(SoapThread& soap, int width, int height, int fps) override {
        if (fronts_ != nullptr)
            fronts_->SetVideoFormat(soap, width, height, fps);
    }

    struct Stream;

  private:
    void Run();
    bool Attach();
    std::shared_ptr<Stream> Find(const std::string& name) const;

    const std::string address_;
    const int port_;
    DeviceFronts* fronts_ = nullptr;
    std::thread thread_;
    std::atomic<bool> running_{false};
    std::atomic<bool> stop_{false};
    _GMainContext* context_ = nullptr;
    _GMainLoop* loop_ = nullptr;
    _GstRTSPServer* server_ = nullptr;
    mutable std::shared_mutex streamsMutex_;
    std::vector<std::shared_ptr<Stream>> streams_;
    // Removed streams stay until the service ends: media of their last clients may still call.
    std::vector<std::shared_ptr<Stream>> retired_;
};

#include "RtspService.h"

#include <algorithm>

#include <gst/app/gstappsrc.h>
#include <gst/gst.h>
#include <gst/rtsp-server/rtsp-server.h>
#include <gst/sdp/sdp.h>
#include <sys/socket.h>

#include <chrono>
#include <cstdio>
#include <memory>
#include <mutex>

#include <opencv2/imgcodecs.hpp>
#include <opencv2/imgproc.hpp>

#include "H264Encoder.h"
#include "onvif/SoapThread.h"
#include "platform/Ticks.h"

// One stream: its mount, its live source (the media's appsrc, while a client is connected) and
// the encoder that exists while the source does.
struct RtspService::Stream {
    std::string name;
    int bitrate = 0;
    std::mutex mutex;  // guards everything below
    bool alive = false;
    GstElement* source = nullptr;
    std::unique_ptr<H264Encoder> encoder;
    int width = kDefaultWidth;
    int height = kDefaultHeight;
    int intervalFrames = 0;
    int intervalBytes = 0;
    uint32_t intervalStart = 0;
    std::vector<uint8_t> packet;
    // The producer's pace, counted over windows of two seconds whether or not a client
    // watches, so that an encoder made for a new client announces the rate its pictures really
    // come at; a burst after a stall evens out within a window.
    uint32_t windowStart = 0;
    uint32_t lastPush = 0;
    int windowPushes = 0;
    int measuredRate = 0;  // pictures a second of the last whole window; 0 before the first
    // Pictures dropped unencoded because the one before had not left yet.
    uint64_t dropped = 0;
    // The latest picture pushed, packed RGB, kept for snapshots whether anyone watches or not.
    std::vector<uint8_t> latest;
    int latestWidth = 0;
    int latestHeight = 0;
    // Timestamps of the source in play follow the pictures' capture times, so the stream
    // keeps the pace the pictures were taken at, whatever delay each met on its way here.
    bool stamped = false;
    uint32_t firstCaptureTick = 0;
    GstClockTimeDiff captureOffset = 0;  // source time minus capture time, the least seen
    GstClockTime lastTimestamp = 0;

    void NotePush(uint32_t now);
    int FrameRate() const;
    GstClockTime TimestampOf(uint32_t captureTick);
    void PushFrame(const uint8_t* data, int frameWidth, int frameHeight, uint32_t captureTick);
};

namespace {

// Pictures a second of pushes pushes over elapsed milliseconds: the intervals after the first.
int PushRate(int pushes, uint32_t elapsed) {
    return static_cast<int>((pushes - 1) * 1000.0 / elapsed + 0.5);
}

}  // namespace

void RtspService::Stream::NotePush(uint32_t now) {
    constexpr uint32_t kWindowMs = 2000;
    if (windowPushes == 0)
        windowStart = now;
    ++windowPushes;
    lastPush = now;
    const uint32_t elapsed = platform::ElapsedTicks(now, windowStart);
    if (elapsed >= kWindowMs) {
        measuredRate = PushRate(windowPushes, elapsed);
        windowStart = now;
        windowPushes = 1;
    }
}

int RtspService::Stream::FrameRate() const {
    int rate = measuredRate;
    // Before the first whole window, the part of it seen so far, once it holds a few pushes.
    const uint32_t elapsed = platform::ElapsedTicks(lastPush, windowStart);
    if (rate <= 0 && windowPushes >= 4 && elapsed > 0)
        rate = PushRate(windowPushes, elapsed);
    if (rate <= 0)
        return H264Encoder::kDefaultFrameRate;
    return std::max(1, std::min(rate, 60));
}

namespace {

// Byte stream, whole pictures, and the producer's rate as measured when a media is made (the
// encoder's time base follows it).
void SetSourceCaps(GstElement* source, int rate) {
    GstCaps* caps = gst_caps_new_simple("video/x-h264", "stream-format", G_TYPE_STRING,
                                        "byte-stream", "alignment", G_TYPE_STRING, "au",
                                        "framerate", GST_TYPE_FRACTION, rate, 1, nullptr);
    g_object_set(source, "caps", caps, nullptr);
    gst_caps_unref(caps);
}

// Every picture is an intra picture that carries its own parameter sets in band, in front of
// its slices, and ends with a delimiter. Nothing downstream may insert parameter sets again:
// the payloader would do so in front of every IDR slice, which puts them between the slices of
// one picture and makes FFmpeg-based players decode each half as a picture of its own; and no
// parser may sit in between, as it would carry the closing delimiter over to the next picture.
constexpr const char* kLaunch =
    "( appsrc name=src is-live=true format=time do-timestamp=false "
    "! rtph264pay name=pay0 pt=96 )";  // the source's caps are set as the media is configured

using StreamRef = std::shared_ptr<RtspService::Stream>;

// GLib objects call back with a stream long after the service may have let it go: a media is
// unprepared when its last client leaves, on the server's threads, even after the service is
// gone. Each connection therefore holds a reference of its own, released with the connection.
gpointer HoldStream(const StreamRef& stream) {
    return std::make_unique<StreamRef>(stream).release();
}

void DropStream(gpointer data) {
    std::unique_ptr<StreamRef> held(static_cast<StreamRef*>(data));
}

void ReleaseStream(gpointer data, GClosure*) {
    DropStream(data);
}

RtspService::Stream* StreamOf(gpointer data) {
    return static_cast<StreamRef*>(data)->get();
}

void OnUnprepared(GstRTSPMedia*, gpointer data) {
    RtspService::Stream* stream = StreamOf(data);
    std::lock_guard<std::mutex> lock(stream->mutex);
    stream->alive = false;
    if (stream->source != nullptr)
        gst_object_unref(stream->source);
    stream->source = nullptr;
    stream->encoder.reset();  // encoding stops until the next client
}

// The session description names the stream (s= and i=) and gives the estimated bit rate
// clients plan with (b=AS, kilobits a second), the same for every stream.
constexpr guint kAnnouncedBitRate = 150000;
constexpr const char* kStreamKey = "corvane-stream";

using CreateSdpFunction = GstSDPMessage* (*)(GstRTSPClient*, GstRTSPMedia*);
CreateSdpFunction libraryCreateSdp = nullptr;

// The rate a description announces is the stream's at the time of asking: a media made for a
// client that came before the pace was measured is shared by later clients.
void AnnounceFrameRate(GstSDPMessage* sdp, int rate) {
    for (guint m = 0; m < gst_sdp_message_medias_len(sdp); ++m) {
        auto* media = const_cast<GstSDPMedia*>(gst_sdp_message_get_media(sdp, m));
        for (guint a = 0; a < gst_sdp_media_attributes_len(media); ++a) {
            const GstSDPAttribute* attribute = gst_sdp_media_get_attribute(media, a);
            if (g_strcmp0(attribute->key, "framerate") != 0)
                continue;
            GstSDPAttribute measured{};
            gst_sdp_attribute_set(&measured, "framerate", std::to_string(rate).c_str());
            gst_sdp_media_replace_attribute(media, a, &measured);
        }
    }
}

GstSDPMessage* NamedSdp(GstRTSPClient* client, GstRTSPMedia* media) {
    GstSDPMessage* sdp = libraryCreateSdp(client, media);
    const auto* held =
        static_cast<const StreamRef*>(g_object_get_data(G_OBJECT(media), kStreamKey));
    if (sdp != nullptr && held != nullptr) {
        RtspService::Stream& stream = **held;
        gst_sdp_message_set_session_name(sdp, stream.name.c_str());
        gst_sdp_message_set_information(sdp, stream.name.c_str());
        int rate = 0;
        {
            std::lock_guard<std::mutex> lock(stream.mutex);
            rate = stream.FrameRate();
        }
        AnnounceFrameRate(sdp, rate);
    }
    return sdp;
}

// The server library has no setting for the session's name: its clients' description step is
// wrapped once for the process (the library's own step still builds the description).
void NameSessionsAfterStreams() {
    static std::once_flag once;
    std::call_once(once, [] {
        auto* client = static_cast<GstRTSPClientClass*>(g_type_class_ref(GST_TYPE_RTSP_CLIENT));
        libraryCreateSdp = client->create_sdp;
        client->create_sdp = NamedSdp;
    });
}

void OnMediaConfigure(GstRTSPMediaFactory*, GstRTSPMedia* media, gpointer data) {
    RtspService::Stream* stream = StreamOf(data);
    GstElement* element = gst_rtsp_media_get_element(media);
    GstElement* source = gst_bin_get_by_name_recurse_up(GST_BIN(element), "src");
    gst_object_unref(element);
    g_object_set_data_full(G_OBJECT(media), kStreamKey, HoldStream(*static_cast<StreamRef*>(data)),
                           DropStream);
    if (source != nullptr) {
        {
            std::lock_guard<std::mutex> lock(stream->mutex);
            SetSourceCaps(source, stream->FrameRate());
        }
        // Queued by the source and sent ahead of its first picture.
        gst_element_send_event(source, gst_event_new_tag(gst_tag_list_new(
                                           GST_TAG_MAXIMUM_BITRATE, kAnnouncedBitRate, nullptr)));
    }
    g_signal_connect_data(media, "unprepared", G_CALLBACK(OnUnprepared),
                          HoldStream(*static_cast<StreamRef*>(data)), ReleaseStream,
                          static_cast<GConnectFlags>(0));
    std::lock_guard<std::mutex> lock(stream->mutex);
    if (stream->source != nullptr)
        gst_object_unref(stream->source);
    stream->source = source;
    stream->encoder.reset();
    stream->stamped = false;
    stream->intervalFrames = 0;
    stream->intervalBytes = 0;
    stream->intervalStart = platform::GetTickCount();
    stream->alive = source != nullptr;
}

// A client that had a session is marked, so that once its sessions have expired its
// connection, and the media it still holds, can be let go.
constexpr const char* kHadSessionKey = "corvane-had-session";

void OnNewSession(GstRTSPClient* client, GstRTSPSession* session, gpointer) {
    gst_rtsp_session_set_timeout(session, RtspService::kSessionTimeoutSeconds);
    g_object_set_data(G_OBJECT(client), kHadSessionKey, GINT_TO_POINTER(1));
}

void OnClientConnected(GstRTSPServer*, GstRTSPClient* client, gpointer) {
    g_signal_connect(client, "new-session", G_CALLBACK(OnNewSession), nullptr);
}

GstRTSPFilterResult CountSession(GstRTSPClient*, GstRTSPSession*, gpointer count) {
    ++*static_cast<int*>(count);
    return GST_RTSP_FILTER_KEEP;
}

GstRTSPFilterResult DropClientWithoutSession(GstRTSPServer*, GstRTSPClient* client, gpointer) {
    if (g_object_get_data(G_OBJECT(client), kHadSessionKey) == nullptr)
        return GST_RTSP_FILTER_KEEP;  // still on its way to its first session
    int sessions = 0;
    gst_rtsp_client_session_filter(client, CountSession, &sessions);
    return sessions == 0 ? GST_RTSP_FILTER_REMOVE : GST_RTSP_FILTER_KEEP;
}

// A frozen client sends neither requests nor receiver reports: its session expires, and its
// connection, which would keep the stream's media (and so the encoder) alive, is closed.
gboolean ReclaimSilentClients(gpointer server) {
    auto* rtsp = static_cast<GstRTSPServer*>(server);
    GstRTSPSessionPool* pool = gst_rtsp_server_get_session_pool(rtsp);
    gst_rtsp_session_pool_cleanup(pool);
    g_object_unref(pool);
    gst_rtsp_server_client_filter(rtsp, DropClientWithoutSession, nullptr);
    return G_SOURCE_CONTINUE;
}

std::string MountPath(const std::string& name) {
    return "/" + name;
}

}  // namespace

GstClockTime RtspService::Stream::TimestampOf(uint32_t captureTick) {
    const GstClockTime now = gst_element_get_current_running_time(source);
    const GstClockTimeDiff running = GST_CLOCK_TIME_IS_VALID(now) ? GST_CLOCK_DIFF(0, now) : 0;
    if (!stamped) {
        stamped = true;
        firstCaptureTick = captureTick;
        captureOffset = running;
        lastTimestamp = static_cast<GstClockTime>(running);
        return lastTimestamp;
    }
    // The capture's time on the source's clock, through the shortest delay seen from capture
    // to here: a picture is never stamped ahead of the source's running time (the server's
    // sinks would hold it until then), and delays that vary leave the pace as captured.
    const GstClockTimeDiff captured =
        static_cast<GstClockTimeDiff>(static_cast<int32_t>(captureTick - firstCaptureTick)) *
        GST_MSECOND;
    captureOffset = std::min(captureOffset, running - captured);
    GstClockTimeDiff timestamp = captured + captureOffset;
    // Never standing still or going back.
    const auto last = static_cast<GstClockTimeDiff>(lastTimestamp);
    if (timestamp <= last)
        timestamp = last + GST_MSECOND;
    lastTimestamp = static_cast<GstClockTime>(timestamp);
    return lastTimestamp;
}

void RtspService::Stream::PushFrame(const uint8_t* data, int frameWidth, int frameHeight,
                                    uint32_t captureTick) {
    if (!encoder)
        encoder = std::make_unique<H264Encoder>(width, height, bitrate, FrameRate());
    // The earlier frame has not left yet: this one is dropped unencoded.
    const guint64 waiting = gst_app_src_get_current_level_bytes(GST_APP_SRC(source));
    if (waiting > 0) {
        ++dropped;
        return;
    }
    // Nothing is queued here, and the encoder hands out no packet of 300,000 bytes or more,
    // so every packet fits the staging limit.
    const int count = encoder->Encode(data, frameWidth, frameHeight, packet);
    if (count > 0) {
        // An access unit delimiter closes the picture: FFmpeg's parser hands a picture on
        // when the next unit begins, so without it every picture waits for the next one.
        static const uint8_t kDelimiter[] = {0, 0, 0, 1, 9, 0xF0};
        packet.resize(static_cast<size_t>(count));
        packet.insert(packet.end(), std::begin(kDelimiter), std::end(kDelimiter));
        GstBuffer* buffer = gst_buffer_new_memdup(packet.data(), packet.size());
        // Every picture is an intra picture: decoding order is presentation order.
        GST_BUFFER_PTS(buffer) = GST_BUFFER_DTS(buffer) = TimestampOf(captureTick);
        gst_app_src_push_buffer(GST_APP_SRC(source), buffer);  // takes the buffer
        intervalBytes += count;
        ++intervalFrames;
    }
    const uint32_t now = platform::GetTickCount();
    if (platform::ElapsedTicks(now, intervalStart) > kIntervalMs) {
        intervalStart = now;
        encoder->SetMeasuredRate(intervalFrames, intervalBytes, kIntervalMs / 1000);
        intervalFrames = 0;
        intervalBytes = 0;
    }
}

RtspService::RtspService(std::string address, int port)
    : address_(std::move(address)), port_(port) {
    gst_init(nullptr, nullptr);
    NameSessionsAfterStreams();
}

RtspService::~RtspService() {
    StopAllStreams();
    for (auto& stream : retired_) {
        std::lock_guard<std::mutex> lock(stream->mutex);
        if (stream->source != nullptr)
            gst_object_unref(stream->source);
        stream->source = nullptr;
    }
}

void RtspService::Start() {
    if (thread_.joinable())
        return;
    stop_ = false;
    // Made before the thread, so that a stop at any moment finds the loop it must end.
    context_ = g_main_context_new();
    loop_ = g_main_loop_new(context_, FALSE);
    thread_ = std::thread([this] { Run(); });
}

bool RtspService::Attach() {
    server_ = gst_rtsp_server_new();
    gst_rtsp_server_set_address(server_, address_.c_str());
    gst_rtsp_server_set_service(server_, std::to_string(port_).c_str());
    // The system's backlog: a burst of players connecting at once waits for no SYN retry.
    gst_rtsp_server_set_backlog(server_, SOMAXCONN);
    g_signal_connect(server_, "client-connected", G_CALLBACK(OnClientConnected), nullptr);
    if (gst_rtsp_server_attach(server_, context_) != 0) {
        // Sessions without a sign of life are ended, and so are connections left without one.
        GSource* reclaim = g_timeout_source_new_seconds(kReclaimPeriodSeconds);
        g_source_set_callback(reclaim, ReclaimSilentClients, server_, nullptr);
        g_source_attach(reclaim, context_);
        g_source_unref(reclaim);
        return true;
    }
    g_object_unref(server_);
    server_ = nullptr;
    return false;
}

void RtspService::Run() {
    while (!Attach()) {
        for (int round = 0; round < kRetryRounds; ++round) {
            if (stop_)
                return;
            platform::SleepMs(100);
        }
    }
    running_ = true;
    g_main_loop_run(loop_);
    std::printf("L555 LOOP END\n");
}

void RtspService::StopAllStreams() {
    if (!thread_.joinable())
        return;
    stop_ = true;
    if (running_) {
        std::vector<std::string> names;
        {
            std::shared_lock<std::shared_mutex> lock(streamsMutex_);
            for (const auto& stream : streams_)
                names.push_back(stream->name);
        }
        for (const auto& name : names)
            RemoveStream(name);
    }
    // A quit posted to the loop's context is seen even when the loop has not started yet; a
    // direct quit before g_main_loop_run would be lost and the join would wait for ever.
    GSource* quit = g_idle_source_new();
    g_source_set_callback(
        quit,
        [](gpointer loop) -> gboolean {
            g_main_loop_quit(static_cast<GMainLoop*>(loop));
            return G_SOURCE_REMOVE;
        },
        loop_, nullptr);
    g_source_attach(quit, context_);
    g_source_unref(quit);
    thread_.join();
    running_ = false;
    if (server_ != nullptr) {
        // The server's sessions go with their main context.
        GstRTSPSessionPool* pool = gst_rtsp_server_get_session_pool(server_);
        gst_rtsp_session_pool_cleanup(pool);
        g_object_unref(pool);
        g_object_unref(server_);
        server_ = nullptr;
    }
    if (loop_ != nullptr) {
        g_main_loop_unref(loop_);
        loop_ = nullptr;
    }
    if (context_ != nullptr) {
        g_main_context_unref(context_);
        context_ = nullptr;
    }
    std::printf("L555 END\n");
}

std::shared_ptr<RtspService::Stream> RtspService::Find(const std::string& name) const {
    std::shared_lock<std::shared_mutex> lock(streamsMutex_);
    for (const auto& stream : streams_)
        if (stream->name == name)
            return stream;
    return nullptr;
}

void RtspService::AddStream(const std::string& name, int bitrate) {
    if (!running_)
        return;
    auto stream = std::make_shared<Stream>();
    stream->name = name;
    stream->bitrate = bitrate;
    GstRTSPMediaFactory* factory = gst_rtsp_media_factory_new();
    gst_rtsp_media_factory_set_launch(factory, kLaunch);
    gst_rtsp_media_factory_set_shared(factory, TRUE);
    g_signal_connect_data(factory, "media-configure", G_CALLBACK(OnMediaConfigure),
                          HoldStream(stream), ReleaseStream, static_cast<GConnectFlags>(0));
    GstRTSPMountPoints* mounts = gst_rtsp_server_get_mount_points(server_);
    gst_rtsp_mount_points_add_factory(mounts, MountPath(name).c_str(), factory);
    g_object_unref(mounts);
    std::unique_lock<std::shared_mutex> lock(streamsMutex_);
    streams_.push_back(std::move(stream));
}

void RtspService::RemoveStream(const std::string& name) {
    if (!running_)
        return;
    std::unique_lock<std::shared_mutex> lock(streamsMutex_);
    for (auto it = streams_.begin(); it != streams_.end();) {
        if ((*it)->name != name) {
            ++it;
            continue;
        }
        GstRTSPMountPoints* mounts = gst_rtsp_server_get_mount_points(server_);
        gst_rtsp_mount_points_remove_factory(mounts, MountPath(name).c_str());
        g_object_unref(mounts);
        {
            std::lock_guard<std::mutex> streamLock((*it)->mutex);
            (*it)->alive = false;  // clients in play stay connected, without frames
        }
        retired_.push_back(*it);
        it = streams_.erase(it);
    }
}

bool RtspService::HasStream(const std::string& name) const {
    return Find(name) != nullptr;
}

bool RtspService::IsStreamLive(const std::string& name) const {
    const auto stream = Find(name);
    if (!stream)
        return false;
    std::lock_guard<std::mutex> lock(stream->mutex);
    return stream->alive;
}

uint64_t RtspService::DroppedStreamFrames(const std::string& name) const {
    const auto stream = Find(name);
    if (!stream)
        return 0;
    std::lock_guard<std::mutex> lock(stream->mutex);
    return stream->dropped;
}

void RtspService::SetStreamSize(int width, int height, const std::string& name) {
    const auto stream = Find(name);
    if (!stream)
        return;
    std::lock_guard<std::mutex> lock(stream->mutex);
    stream->width = width;
    stream->height = height;
}

std::string RtspService::Snapshot(const std::string& name) const {
    const auto stream = Find(name);
    if (!stream)
        return std::string();
    cv::Mat bgr;
    {
        std::lock_guard<std::mutex> lock(stream->mutex);
        if (stream->latest.empty())
            return std::string();
        const cv::Mat rgb(stream->latestHeight, stream->latestWidth, CV_8UC3,
                          stream->latest.data());
        cv::cvtColor(rgb, bgr, cv::COLOR_RGB2BGR);
    }
    std::vector<uchar> jpeg;
    cv::imencode(".jpg", bgr, jpeg, {cv::IMWRITE_JPEG_QUALITY, 85});
    return std::string(jpeg.begin(), jpeg.end());
}

void RtspService::StartFront(const std::string& name, int port, int bitrate, bool autoDiscovery,
                             std::shared_ptr<SoapThread>& soap,
                             std::shared_ptr<WSDiscovery>& discovery) {
    if (fronts_ == nullptr)
        return;
    fronts_->Start(name, port, bitrate, autoDiscovery, soap, discovery);
    // The front is stopped before the service goes (sources and regions stop first).
    if (soap)
        soap->SetSnapshotSource([this, name] { return Snapshot(name); });
}

int RtspService::StreamRate(const std::string& name, int fallback) const {
    const auto stream = Find(name);
    if (!stream)
        return fallback;
    std::lock_guard<std::mutex> lock(stream->mutex);
    return stream->measuredRate > 0 ? std::min(stream->measuredRate, 60) : fallback;
}

void RtspService::PushStreamFrame(const uint8_t* data, int width, int height,
                                  const std::string& name, uint32_t captureTick) {
    if (!running_ || data == nullptr || width <= 0 || height <= 0)
        return;
    const auto stream = Find(name);
    if (!stream)
        return;
    std::lock_guard<std::mutex> lock(stream->mutex);
    stream->NotePush(platform::GetTickCount());
    stream->latest.assign(data, data + static_cast<size_t>(width) * height * 3);
    stream->latestWidth = width;
    stream->latestHeight = height;
    if (stream->alive && stream->source != nullptr)
        stream->PushFrame(data, width, height, captureTick);
}

#include "CameraStream.h"

#include <chrono>
#include <cstdio>
#include <mutex>

extern "C" {
#include <libavcodec/avcodec.h>
#include <libavformat/avformat.h>
#include <libavutil/opt.h>
#include <libswscale/swscale.h>
}

namespace {

std::string ErrorText(int code) {
    char text[AV_ERROR_MAX_STRING_SIZE] = {0};
    av_strerror(code, text, sizeof text);
    return text;
}

std::string Seconds(int ms) {
    char text[32];
    std::snprintf(text, sizeof text, "%g s", ms / 1000.0);
    return text;
}

// A camera sending corrupt packets makes the decoder complain several times a picture; the
// plug-in says what matters in its own lines instead. This is process-wide, so only the
// library's chatter below errors that end a stream is kept quiet.
void QuietenFfmpeg() {
    static std::once_flag once;
    std::call_once(once, [] {
        if (av_log_get_level() > AV_LOG_FATAL)
            av_log_set_level(AV_LOG_FATAL);
        avformat_network_init();
    });
}

bool Unreserved(char c) {
    return (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z') || (c >= '0' && c <= '9') || c == '-' ||
           c == '.' || c == '_' || c == '~';
}

std::string PercentEncoded(const std::string& text) {
    static const char* hex = "0123456789ABCDEF";
    std::string encoded;
    for (const char c : text) {
        if (Unreserved(c)) {
            encoded += c;
        } else {
            const auto byte = static_cast<unsigned char>(c);
            encoded += '%';
            encoded += hex[byte >> 4];
            encoded += hex[byte & 15];
        }
    }
    return encoded;
}

// Where the authority of "scheme://[userinfo@]host..." begins and ends; npos when the URL has
// no "://".
bool Authority(const std::string& url, size_t& begin, size_t& end) {
    const size_t scheme = url.find("://");
    if (scheme == std::string::npos)
        return false;
    begin = scheme + 3;
    end = url.find_first_of("/?#", begin);
    if (end == std::string::npos)
        end = url.size();
    return true;
}

}  // namespace

std::string UrlWithCredentials(const std::string& url, const std::string& user,
                               const std::string& password) {
    size_t begin = 0;
    size_t end = 0;
    if (user.empty() || !Authority(url, begin, end))
        return url;
    const std::string bare = UrlForLog(url);
    Authority(bare, begin, end);
    std::string userinfo = PercentEncoded(user);
    if (!password.empty())
        userinfo += ":" + PercentEncoded(password);
    return bare.substr(0, begin) + userinfo + "@" + bare.substr(begin);
}

std::string UrlForLog(const std::string& url) {
    size_t begin = 0;
    size_t end = 0;
    if (!Authority(url, begin, end))
        return url;
    const size_t at = url.rfind('@', end - 1);
    if (at == std::string::npos || at < begin)
        return url;
    return url.substr(0, begin) + url.substr(at + 1);
}

CameraStream::CameraStream(const std::atomic<bool>& stop) : stop_(stop) {
    QuietenFfmpeg();
}

CameraStream::~CameraStream() {
    Close();
}

int64_t CameraStream::NowMs() const {
    return std::chrono::duration_cast<std::chrono::milliseconds>(
               std::chrono::steady_clock::now().time_since_epoch())
        .count();
}

int CameraStream::Interrupted(void* self) {
    auto* stream = static_cast<CameraStream*>(self);
    return stream->stop_ || stream->NowMs() > stream->deadlineMs_ ? 1 : 0;
}

std::string CameraStream::Open(const Options& options) {
    Close();
    options_ = options;
    format_ = avformat_alloc_context();
    if (format_ == nullptr)
        return "out of memory";
    format_->interrupt_callback.callback = &CameraStream::Interrupted;
    format_->interrupt_callback.opaque = this;
    AVDictionary* settings = nullptr;
    if (options.transport == "TCP")
        av_dict_set(&settings, "rtsp_transport", "tcp", 0);
    else if (options.transport == "UDP")
        av_dict_set(&settings, "rtsp_transport", "udp", 0);
    av_dict_set(&settings, "allowed_media_types", "video", 0);
    av_dict_set(&settings, "reorder_queue_size", "0", 0);  // newest picture over late packets
    deadlineMs_ = NowMs() + options.stallMs;
    const int opened = avformat_open_input(&format_, options.url.c_str(), nullptr, &settings);
    av_dict_free(&settings);
    if (opened < 0) {
        format_ = nullptr;  // freed by FFmpeg on failure
        if (stop_)
            return "stopped";
        if (NowMs() > deadlineMs_)
            return "no answer within " + Seconds(options.stallMs);
        return ErrorText(opened);
    }
    return OpenDecoder();
}

std::string CameraStream::OpenDecoder() {
    videoIndex_ = av_find_best_stream(format_, AVMEDIA_TYPE_VIDEO, -1, -1, nullptr, 0);
    if (videoIndex_ < 0 || format_->streams[videoIndex_]->codecpar->codec_id == AV_CODEC_ID_NONE) {
        // Some inputs name their codec only once packets have been looked at.
        if (avformat_find_stream_info(format_, nullptr) < 0)
            return stop_ ? "stopped" : "no video found within " + Seconds(options_.stallMs);
        videoIndex_ = av_find_best_stream(format_, AVMEDIA_TYPE_VIDEO, -1, -1, nullptr, 0);
    }
    if (videoIndex_ < 0)
        return "no video in the stream";
    for (unsigned i = 0; i < format_->nb_streams; ++i)
        if (static_cast<int>(i) != videoIndex_)
            format_->streams[i]->discard = AVDISCARD_ALL;
    const AVCodecParameters* parameters = format_->streams[videoIndex_]->codecpar;
    const AVCodec* codec = avcodec_find_decoder(parameters->codec_id);
    if (codec == nullptr)
        return std::string("no decoder for ") + avcodec_get_name(parameters->codec_id);
    decoder_ = avcodec_alloc_context3(codec);
    packet_ = av_packet_alloc();
    frame_ = av_frame_alloc();
    if (decoder_ == nullptr || packet_ == nullptr || frame_ == nullptr ||
        avcodec_parameters_to_context(decoder_, parameters) < 0)
        return "out of memory";
    decoder_->thread_type = FF_THREAD_SLICE;  // frame threads would add pictures of delay
    decoder_->thread_count = 0;
    decoder_->max_pixels = options_.maxPixels;
    decoder_->flags |= AV_CODEC_FLAG_LOW_DELAY;
    const int opened = avcodec_open2(decoder_, codec, nullptr);
    if (opened < 0)
        return "cannot decode " + std::string(codec->name) + ": " + ErrorText(opened);
    lastPictureMs_ = NowMs();
    dropped_ = 0;
    draining_ = false;
    return std::string();
}

std::string CameraStream::Next(std::vector<uint8_t>& rgb, int& width, int& height) {
    if (format_ == nullptr || decoder_ == nullptr)
        return "not open";
    for (;;) {
        // Pictures come out as soon as the decoder has them; a read is only needed when not.
        const int received = avcodec_receive_frame(decoder_, frame_);
        if (received == 0) {
            const bool converted = Convert(rgb, width, height);
            av_frame_unref(frame_);
            if (converted) {
                lastPictureMs_ = NowMs();
                return std::string();
            }
            ++dropped_;
        } else if (received != AVERROR(EAGAIN)) {
            if (received == AVERROR_EOF)
                return "end of stream";
            ++dropped_;  // a damaged picture: the next one may be whole
        }
        deadlineMs_ = lastPictureMs_ + options_.stallMs;
        const int read = av_read_frame(format_, packet_);
        if (stop_)
            return "stopped";
        if (NowMs() > deadlineMs_)
            return "no picture for " + Seconds(options_.stallMs);
        if (read == AVERROR_EOF && !draining_) {
            // A stream that ends (a file, a camera that says goodbye): the decoder still holds
            // its last pictures.
            draining_ = avcodec_send_packet(decoder_, nullptr) == 0;
            if (draining_)
                continue;
        }
        if (read < 0)
            return read == AVERROR_EOF ? "end of stream" : ErrorText(read);
        if (packet_->stream_index == videoIndex_ && avcodec_send_packet(decoder_, packet_) < 0)
            ++dropped_;
        av_packet_unref(packet_);
    }
}

bool CameraStream::Convert(std::vector<uint8_t>& rgb, int& width, int& height) {
    if (frame_->width <= 0 || frame_->height <= 0 ||
        static_cast<int64_t>(frame_->width) * frame_->height > options_.maxPixels)
        return false;
    scaler_ = sws_getCachedContext(
        scaler_, frame_->width, frame_->height, static_cast<AVPixelFormat>(frame_->format),
        frame_->width, frame_->height, AV_PIX_FMT_RGB24, SWS_BILINEAR, nullptr, nullptr, nullptr);
    if (scaler_ == nullptr)
        return false;
    width = frame_->width;
    height = frame_->height;
    rgb.resize(static_cast<size_t>(width) * height * 3);
    uint8_t* planes[4] = {rgb.data(), nullptr, nullptr, nullptr};
    int strides[4] = {width * 3, 0, 0, 0};
    return sws_scale(scaler_, frame_->data, frame_->linesize, 0, height, planes, strides) == height;
}

void CameraStream::Close() {
    deadlineMs_ = NowMs() + 1000;  // closing an RTSP session says goodbye, briefly
    sws_freeContext(scaler_);
    scaler_ = nullptr;
    av_frame_free(&frame_);
    av_packet_free(&packet_);
    avcodec_free_context(&decoder_);
    if (format_ != nullptr)
        avformat_close_input(&format_);
    videoIndex_ = -1;
}

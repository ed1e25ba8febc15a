#include "H264Encoder.h"

#include <cstdio>

extern "C" {
#include <libavcodec/avcodec.h>
#include <libavutil/imgutils.h>
#include <libavutil/log.h>
#include <libavutil/opt.h>
}

#include "platform/Ticks.h"

H264Encoder::H264Encoder(int width, int height, int bitRate, int frameRate)
    : frameRate_(frameRate > 0 ? frameRate : kDefaultFrameRate), bitRate_(bitRate) {
    av_log_set_level(AV_LOG_ERROR);  // libx264's statistics are not for the operator's console
    codec_ = avcodec_find_encoder(AV_CODEC_ID_H264);
    if (codec_ == nullptr) {
        std::fputs("Codec not found\n", stderr);
        return;
    }
    packet_ = av_packet_alloc();
    Open(width, height);
}

H264Encoder::~H264Encoder() {
    Close();
    av_packet_free(&packet_);
}

bool H264Encoder::Open(int width, int height) {
    width_ = width;
    height_ = height;
    ++attempts_;
    failed_ = true;  // until the end is reached
    failedAt_ = platform::GetTickCount();
    context_ = avcodec_alloc_context3(codec_);
    if (context_ == nullptr)
        return false;
    context_->codec_type = AVMEDIA_TYPE_VIDEO;
    context_->codec_id = AV_CODEC_ID_H264;
    context_->bit_rate = bitRate_;
    context_->width = width;
    context_->height = height;
    context_->time_base = AVRational{1, frameRate_};
    context_->gop_size = 0;
    context_->max_b_frames = 0;
    context_->pix_fmt = AV_PIX_FMT_YUV420P;
    av_opt_set(context_->priv_data, "preset", "ultrafast", 0);
    av_opt_set(context_->priv_data, "tune", "zerolatency", 0);
    av_opt_set(context_->priv_data, "x264opts", "no-mbtree:sliced-threads:sync-lookahead=0", 0);
    if (avcodec_open2(context_, codec_, nullptr) < 0) {
        std::fprintf(stderr, "Could not open codec: H.264 at %dx%d, %d b/s; tried again in %u s\n",
                     width, height, bitRate_, kRetryMs / 1000);
        avcodec_free_context(&context_);
        return false;
    }
    picture_ = av_frame_alloc();
    if (picture_ == nullptr) {
        std::fputs("Could not allocate video frame\n", stderr);
        return false;
    }
    picture_->format = context_->pix_fmt;
    picture_->width = width;
    picture_->height = height;
    if (av_frame_get_buffer(picture_, 32) < 0) {
        std::fputs("Could not allocate raw picture buffer\n", stderr);
        av_frame_free(&picture_);
        return false;
    }
    failed_ = false;
    return true;
}

void H264Encoder::Close() {
    avcodec_free_context(&context_);
    av_frame_free(&picture_);
}

void H264Encoder::RgbToYuv420(const uint8_t* rgb, int width, int height, uint8_t* y, int yStride,
                              uint8_t* cb, int cbStride, uint8_t* cr, int crStride) {
    for (int row = 0; row < height; ++row) {
        const uint8_t* in = rgb + static_cast<size_t>(row) * width * 3;
        uint8_t* yRow = y + static_cast<ptrdiff_t>(row) * yStride;
        uint8_t* cbRow = cb + static_cast<ptrdiff_t>(row / 2) * cbStride;
        uint8_t* crRow = cr + static_cast<ptrdiff_t>(row / 2) * crStride;
        // Luma for every pixel; chroma only from the last pixel of each 2 x 2 block in scan
        // order (odd row and column, or the picture's last), whose values are the ones that stay.
        const bool chromaRow = (row & 1) == 1 || row == height - 1;
        for (int x = 0; x < width; ++x, in += 3) {
            const int r = in[0];
            const int g = in[1];
            const int b = in[2];
            yRow[x] = static_cast<uint8_t>(((129 * g + 66 * r + 25 * b) >> 8) + 16);
            if (chromaRow && ((x & 1) == 1 || x == width - 1)) {
                cbRow[x / 2] = static_cast<uint8_t>(((112 * b - 74 * g - 38 * r) >> 8) + 128);
                crRow[x / 2] = static_cast<uint8_t>(((112 * r - 94 * g - 18 * b) >> 8) + 128);
            }
        }
    }
}

int H264Encoder::Encode(const uint8_t* rgb, int width, int height, std::vector<uint8_t>& packet) {
    packet.clear();
    if (codec_ == nullptr || rgb == nullptr || width <= 0 || height <= 0)
        return 0;
    const bool resized = width != width_ || height != height_;
    if (resized || context_ == nullptr) {
        if (!resized && failed_ &&
            platform::ElapsedTicks(platform::GetTickCount(), failedAt_) < kRetryMs)
            return 0;  // tried a moment ago: not at every picture
        Close();
        if (resized)
            std::fputs("Restart avcodec\n", stderr);
        if (!Open(width, height))
            return 0;
    }
    if (!Ready() || av_frame_make_writable(picture_) < 0)
        return 0;
    RgbToYuv420(rgb, width, height, picture_->data[0], picture_->linesize[0], picture_->data[1],
                picture_->linesize[1], picture_->data[2], picture_->linesize[2]);
    picture_->pts = 0;  // time reaches the client through the stream's own time stamps
    if (avcodec_send_frame(context_, picture_) < 0)
        return 0;
    bool tooLarge = false;
    while (avcodec_receive_packet(context_, packet_) == 0) {
        if (packet.size() + static_cast<size_t>(packet_->size) >= kMaxPacket)
            tooLarge = true;
        else
            packet.insert(packet.end(), packet_->data, packet_->data + packet_->size);
        av_packet_unref(packet_);
    }
    if (tooLarge)
        packet.clear();
    return static_cast<int>(packet.size());
}

void H264Encoder::SetMeasuredRate(int frames, int bytes, int seconds) {
    if (context_ == nullptr || frames <= 0 || seconds <= 0)
        return;
    context_->time_base = AVRational{seconds, frames};
    context_->bit_rate = static_cast<int64_t>(bytes * 8 / static_cast<double>(seconds));
}

int H264Encoder::TimeBaseNum() const {
    return context_ != nullptr ? context_->time_base.num : 0;
}

int H264Encoder::TimeBaseDen() const {
    return context_ != nullptr ? context_->time_base.den : 0;
}

int64_t H264Encoder::BitRate() const {
    return context_ != nullptr ? context_->bit_rate : 0;
}

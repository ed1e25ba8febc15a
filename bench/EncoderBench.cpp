// Encode cost per frame of the stream encoder (colour conversion included) at three sizes,
// against the ffmpeg command line with libx264 on the same raw frames:
//   ffmpeg -f rawvideo -pix_fmt rgb24 -s WxH -i frames.rgb -c:v libx264 -preset ultrafast
//          -tune zerolatency -f null -
// The command's figure includes its start-up, spread over the frames. Run by hand.
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <string>

#include <opencv2/imgproc.hpp>

#include "TrafficScene.h"
#include "streaming/H264Encoder.h"

namespace {

constexpr int kFrames = 100;

std::vector<std::vector<uint8_t>> Frames(cv::Size size) {
    TrafficSettings traffic;
    traffic.size = size;
    traffic.charHeight = std::max(12, size.height * 26 / 720);
    TrafficScene scene(traffic);
    std::vector<std::vector<uint8_t>> frames;
    cv::Mat bgr;
    cv::Mat rgb;
    for (int i = 0; i < kFrames; ++i) {
        scene.Render(i * 40, bgr);
        cv::cvtColor(bgr, rgb, cv::COLOR_BGR2RGB);
        frames.emplace_back(rgb.data, rgb.data + rgb.total() * 3);
    }
    return frames;
}

double OwnMsPerFrame(const std::vector<std::vector<uint8_t>>& frames, cv::Size size) {
    H264Encoder encoder(size.width, size.height, 2000000);
    std::vector<uint8_t> packet;
    encoder.Encode(frames[0].data(), size.width, size.height, packet);  // warm up
    const auto start = std::chrono::steady_clock::now();
    for (const auto& frame : frames)
        encoder.Encode(frame.data(), size.width, size.height, packet);
    return std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now() - start)
               .count() /
           frames.size();
}

double FfmpegMsPerFrame(const std::vector<std::vector<uint8_t>>& frames, cv::Size size,
                        const std::string& extra) {
    const std::string path = "/tmp/corvane-encoder-bench.rgb";
    {
        std::ofstream out(path, std::ios::binary);
        for (const auto& frame : frames)
            out.write(reinterpret_cast<const char*>(frame.data()),
                      static_cast<std::streamsize>(frame.size()));
    }
    const std::string command =
        "ffmpeg -v error -f rawvideo -pix_fmt rgb24 -s " + std::to_string(size.width) + "x" +
        std::to_string(size.height) + " -i " + path +
        " -c:v libx264 -preset ultrafast -tune zerolatency " + extra + " -f null - ";
    const auto start = std::chrono::steady_clock::now();
    const int status = std::system(command.c_str());
    const double ms =
        std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now() - start).count();
    std::remove(path.c_str());
    return status == 0 ? ms / frames.size() : -1.0;
}

}  // namespace

int main() {
    std::printf("%-10s %12s %14s %8s %18s %8s\n", "size", "own ms/frame", "ffmpeg ms/frm", "ratio",
                "ffmpeg -g 1 ms/frm", "ratio");
    for (const cv::Size size : {cv::Size(640, 480), cv::Size(1280, 720), cv::Size(1920, 1080)}) {
        const auto frames = Frames(size);
        const double own = OwnMsPerFrame(frames, size);
        const double reference = FfmpegMsPerFrame(frames, size, "");
        const double intra = FfmpegMsPerFrame(frames, size, "-g 1");
        std::printf("%4dx%-5d %12.2f %14.2f %8.2f %18.2f %8.2f\n", size.width, size.height, own,
                    reference, own / reference, intra, own / intra);
    }
    return 0;
}

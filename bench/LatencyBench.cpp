// Latency from a frame handed to a stream to the same frame decoded by a client: the producer
// pushes flat pictures whose grey level names the frame, an ffmpeg client on loopback decodes
// the stream to raw grey pictures on a pipe, and each picture's level is matched to the push
// it came from. Run by hand; prints the median and the 90th percentile.
#include <algorithm>
#include <array>
#include <atomic>
#include <chrono>
#include <cstdio>
#include <map>
#include <mutex>
#include <thread>
#include <vector>

#include "streaming/RtspService.h"

namespace {

using Clock = std::chrono::steady_clock;
constexpr int kWidth = 640;
constexpr int kHeight = 480;
constexpr int kLevels = 16;  // grey levels 16, 30, ... 226 tell the frames apart
constexpr int kPort = 18990;

int LevelOf(int frame) {
    return 16 + (frame % kLevels) * 14;
}

}  // namespace

int main() {
    RtspService service("127.0.0.1", kPort);
    service.Start();
    for (int i = 0; i < 100 && !service.RtspRunning(); ++i)
        std::this_thread::sleep_for(std::chrono::milliseconds(20));
    service.AddStream("Latency", 2000000);

    std::mutex mutex;
    std::map<int, Clock::time_point> pushed;  // level -> time of its latest push
    std::atomic<bool> stop{false};
    std::thread producer([&] {
        std::vector<uint8_t> picture(kWidth * kHeight * 3);
        for (int frame = 0; !stop; ++frame) {
            std::fill(picture.begin(), picture.end(), static_cast<uint8_t>(LevelOf(frame)));
            {
                std::lock_guard<std::mutex> lock(mutex);
                pushed[LevelOf(frame)] = Clock::now();
            }
            service.SetStreamSize(kWidth, kHeight, "Latency");
            service.PushStreamFrame(picture.data(), kWidth, kHeight, "Latency");
            std::this_thread::sleep_for(std::chrono::milliseconds(100));
        }
    });

    const std::string command =
        "timeout 20 ffmpeg -v error -rtsp_transport tcp -fflags nobuffer -flags low_delay "
        "-max_delay 0 -reorder_queue_size 0 -probesize 32 -analyzeduration 0 -threads 1 -i "
        "rtsp://127.0.0.1:" +
        std::to_string(kPort) + "/Latency -frames:v 120 -f rawvideo -pix_fmt gray -";
    FILE* client = ::popen(command.c_str(), "r");
    std::vector<double> latencies;
    std::vector<uint8_t> grey(kWidth * kHeight);
    while (client != nullptr && std::fread(grey.data(), 1, grey.size(), client) == grey.size()) {
        const auto arrived = Clock::now();
        // Decoded to full-range grey, a flat picture of level L comes back as about L; the
        // nearest pushed level is taken.
        long sum = 0;
        for (const uint8_t value : grey)
            sum += value;
        const double luma = static_cast<double>(sum) / grey.size();
        int best = LevelOf(0);
        for (int k = 0; k < kLevels; ++k)
            if (std::abs(LevelOf(k) - luma) < std::abs(best - luma))
                best = LevelOf(k);
        std::lock_guard<std::mutex> lock(mutex);
        latencies.push_back(
            std::chrono::duration<double, std::milli>(arrived - pushed[best]).count());
    }
    if (client != nullptr)
        ::pclose(client);
    stop = true;
    producer.join();
    service.StopAllStreams();
    if (latencies.size() < 20) {
        std::fprintf(stderr, "too few frames arrived: %zu\n", latencies.size());
        return 1;
    }
    latencies.erase(latencies.begin(), latencies.begin() + 10);  // the start-up frames
    std::sort(latencies.begin(), latencies.end());
    std::printf(
        "frames %zu  median %.1f ms  90%% %.1f ms (640x480, 10 fps, loopback, ffmpeg "
        "client decoding)\n",
        latencies.size(), latencies[latencies.size() / 2], latencies[latencies.size() * 9 / 10]);
    return 0;
}

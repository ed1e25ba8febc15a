// Latency from a frame handed to a stream to the same frame decoded by a client: the producer
// pushes pictures whose top rows spell the frame's number; ffmpeg (as it comes, and with a live
// player's flags) and GStreamer clients on loopback decode the stream to raw grey pictures on a
// pipe, and each picture's number is matched to the push it came from. Run by hand; prints the
// median and the 90th percentile of each client.
#include <algorithm>
#include <array>
#include <atomic>
#include <chrono>
#include <cstdio>
#include <map>
#include <mutex>
#include <string>
#include <thread>
#include <utility>
#include <vector>

#include "platform/Ticks.h"
#include "streaming/RtspService.h"

namespace {

using Clock = std::chrono::steady_clock;
constexpr int kWidth = 640;
constexpr int kHeight = 480;
constexpr int kPort = 18990;
constexpr int kBits = 8;  // the frame number, modulo 256, in eight black or white blocks
constexpr int kBitRows = 32;

// A mid-grey picture whose top rows spell the frame number, one block of 80 pixels a bit.
void DrawNumber(std::vector<uint8_t>& rgb, int frame) {
    std::fill(rgb.begin(), rgb.end(), static_cast<uint8_t>(128));
    for (int y = 0; y < kBitRows; ++y)
        for (int x = 0; x < kWidth; ++x) {
            const bool set = ((frame % 256) >> (x * kBits / kWidth) & 1) != 0;
            uint8_t* pixel = &rgb[(static_cast<size_t>(y) * kWidth + x) * 3];
            pixel[0] = pixel[1] = pixel[2] = set ? 235 : 16;
        }
}

// The number a decoded grey picture spells, from the middle of each block.
int NumberOf(const std::vector<uint8_t>& grey) {
    int number = 0;
    const int block = kWidth / kBits;
    for (int bit = 0; bit < kBits; ++bit) {
        long sum = 0;
        for (int y = 8; y < kBitRows - 8; ++y)
            for (int x = bit * block + 20; x < bit * block + block - 20; ++x)
                sum += grey[static_cast<size_t>(y) * kWidth + x];
        if (sum / ((kBitRows - 16) * (block - 40)) > 128)
            number |= 1 << bit;
    }
    return number;
}

// Runs a client that writes decoded grey pictures to its standard output and matches each
// picture's level to the time it was pushed.
std::vector<double> Measure(const std::string& command, std::mutex& mutex,
                            std::map<int, Clock::time_point>& pushed) {
    FILE* client = ::popen(command.c_str(), "r");
    std::vector<double> latencies;
    std::vector<uint8_t> grey(kWidth * kHeight);
    while (client != nullptr && std::fread(grey.data(), 1, grey.size(), client) == grey.size()) {
        const auto arrived = Clock::now();
        const int number = NumberOf(grey);
        std::lock_guard<std::mutex> lock(mutex);
        latencies.push_back(
            std::chrono::duration<double, std::milli>(arrived - pushed[number]).count());
        if (latencies.size() >= 120)
            break;
    }
    if (client != nullptr)
        ::pclose(client);
    return latencies;
}

}  // namespace

int main(int argc, char** argv) {
    // Optional: the RTSP transport (tcp or udp) and further client input options.
    const std::string transport = argc > 1 ? argv[1] : "tcp";
    const std::string options = argc > 2 ? argv[2] : "";
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
            DrawNumber(picture, frame);
            {
                std::lock_guard<std::mutex> lock(mutex);
                pushed[frame % 256] = Clock::now();
            }
            service.SetStreamSize(kWidth, kHeight, "Latency");
            service.PushStreamFrame(picture.data(), kWidth, kHeight, "Latency",
                                    platform::GetTickCount());
            std::this_thread::sleep_for(std::chrono::milliseconds(100));
        }
    });

    const std::string url = "rtsp://127.0.0.1:" + std::to_string(kPort) + "/Latency";
    // The client's own output: raw grey pictures on a pipe, as they leave its decoder. Its
    // rawvideo encoder would otherwise run frame threads and hold a picture back per thread.
    const std::string output =
        " -frames:v 120 -vsync passthrough -threads 1 -f rawvideo -pix_fmt gray -";
    const std::vector<std::pair<std::string, std::string>> clients = {
        {"ffmpeg", "timeout 20 ffmpeg -v error -rtsp_transport " + transport + " " + options +
                       " -i " + url + output},
        {"ffmpeg, low-delay flags",
         "timeout 20 ffmpeg -v error -rtsp_transport " + transport + " " + options +
             " -fflags nobuffer -flags low_delay -max_delay 0 -reorder_queue_size 0 -probesize 32 "
             "-analyzeduration 0 -threads 1 -i " +
             url + output},
        {"GStreamer", "timeout 15 gst-launch-1.0 -q rtspsrc location=" + url +
                          " latency=0 protocols=" + transport +
                          " ! rtph264depay ! avdec_h264 max-threads=1 ! videoconvert ! "
                          "video/x-raw,format=GRAY8 ! fdsink fd=1 sync=false"}};
    int status = 0;
    for (const auto& [name, command] : clients) {
        std::vector<double> latencies = Measure(command, mutex, pushed);
        if (latencies.size() < 40) {
            std::fprintf(stderr, "%s: too few frames arrived: %zu\n", name.c_str(),
                         latencies.size());
            status = 1;
            continue;
        }
        // The start-up: a client that probes the stream first shows its first two seconds of
        // pictures in a burst once it begins.
        latencies.erase(latencies.begin(), latencies.begin() + 20);
        std::sort(latencies.begin(), latencies.end());
        std::printf(
            "%-24s frames %zu  median %.1f ms  90%% %.1f ms (640x480, 10 fps, loopback, %s)\n",
            name.c_str(), latencies.size(), latencies[latencies.size() / 2],
            latencies[latencies.size() * 9 / 10], transport.c_str());
    }
    stop = true;
    producer.join();
    service.StopAllStreams();
    return status;
}

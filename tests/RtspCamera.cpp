// A network camera for the tests, in a process of its own so that a test can kill it, freeze it
// and start it again: the program's RTSP service on 127.0.0.1 serving rendered traffic with
// readable plates. Prints "ready" once it listens; ends by itself after its lifetime.
//   rtsp_camera PORT NAME WIDTH HEIGHT FPS PLATES LIFETIME_S
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <thread>

#include <opencv2/imgproc.hpp>

#include "TrafficScene.h"
#include "platform/Ticks.h"
#include "streaming/RtspService.h"

int main(int argc, char** argv) {
    if (argc != 8) {
        std::fprintf(stderr, "usage: rtsp_camera PORT NAME WIDTH HEIGHT FPS PLATES LIFETIME_S\n");
        return 2;
    }
    const int port = std::atoi(argv[1]);
    const std::string name = argv[2];
    TrafficSettings traffic;
    traffic.size = cv::Size(std::atoi(argv[3]), std::atoi(argv[4]));
    const int fps = std::max(1, std::atoi(argv[5]));
    for (std::string plates = argv[6]; !plates.empty();) {
        const size_t comma = plates.find(',');
        traffic.plates.push_back(plates.substr(0, comma));
        plates = comma == std::string::npos ? std::string() : plates.substr(comma + 1);
    }
    traffic.crossingMs = 2000;
    traffic.gapMs = 900;
    const auto lifetime = std::chrono::seconds(std::atoi(argv[7]));

    RtspService service("127.0.0.1", port);
    service.Start();
    for (int i = 0; i < 200 && !service.RtspRunning(); ++i)
        std::this_thread::sleep_for(std::chrono::milliseconds(10));
    if (!service.RtspRunning()) {
        std::fprintf(stderr, "rtsp_camera: port %d not free\n", port);
        return 1;
    }
    service.AddStream(name, 8000000);  // plates stay sharp at any tested size
    std::printf("ready\n");
    std::fflush(stdout);

    const TrafficScene scene(traffic);
    const auto started = std::chrono::steady_clock::now();
    cv::Mat bgr;
    cv::Mat rgb;
    for (int frame = 0; std::chrono::steady_clock::now() - started < lifetime; ++frame) {
        scene.Render(static_cast<int64_t>(frame) * 1000 / fps, bgr);
        cv::cvtColor(bgr, rgb, cv::COLOR_BGR2RGB);
        service.SetStreamSize(rgb.cols, rgb.rows, name);
        service.PushStreamFrame(rgb.data, rgb.cols, rgb.rows, name, platform::GetTickCount());
        std::this_thread::sleep_until(started +
                                      (frame + 1) * std::chrono::microseconds(1000000 / fps));
    }
    service.StopAllStreams();
    return 0;
}

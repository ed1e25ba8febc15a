#pragma once
// A producer thread that pushes moving test pictures into a stream at 10 frames a second
// while it lives, as a source's or region's thread does.
#include <atomic>
#include <chrono>
#include <string>
#include <thread>
#include <vector>

#include "pipeline/StreamServices.h"
#include "platform/Ticks.h"

class StreamProducer {
  public:
    StreamProducer(StreamServices& streams, std::string name, int width, int height)
        : thread_([&streams, this, name, width, height] {
              std::vector<uint8_t> picture(static_cast<size_t>(width) * height * 3);
              for (int frame = 0; !stop_; ++frame) {
                  for (size_t i = 0; i < picture.size(); ++i)
                      picture[i] = static_cast<uint8_t>(i / 3 + frame * 5);
                  streams.SetStreamSize(width, height, name);
                  streams.PushStreamFrame(picture.data(), width, height, name,
                                          platform::GetTickCount());
                  ++pushed_;
                  // On a fixed beat, so that the time a push takes does not slow the rate.
                  std::this_thread::sleep_until(started_ +
                                                (frame + 1) * std::chrono::milliseconds(100));
              }
          }) {}
    // The pictures a second pushed so far (slower than 10 where encoding takes long).
    double FramesPerSecond() const {
        const double seconds =
            std::chrono::duration<double>(std::chrono::steady_clock::now() - started_).count();
        return seconds > 0 && pushed_ > 1 ? (pushed_ - 1) / seconds : 0;
    }
    ~StreamProducer() {
        stop_ = true;
        thread_.join();
    }
    StreamProducer(const StreamProducer&) = delete;
    StreamProducer& operator=(const StreamProducer&) = delete;

  private:
    const std::chrono::steady_clock::time_point started_ = std::chrono::steady_clock::now();
    std::atomic<int> pushed_{0};
    std::atomic<bool> stop_{false};
    std::thread thread_;
};

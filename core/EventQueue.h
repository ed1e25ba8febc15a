#pragma once
#include <chrono>
#include <condition_variable>
#include <deque>
#include <functional>
#include <mutex>
#include <string>

#include "EventSink.h"

// Posted command events waiting for the thread that handles them: the headless program's main
// loop, and tests that watch what the workers report.
class EventQueue : public EventSink {
  public:
    struct Event {
        int id = 0;
        int value = 0;
        std::string text;
    };

    static constexpr size_t kMaxEvents = 10000;  // a stalled handler must not eat the memory

    void PostCommand(int id, int value, const std::string& text) override {
        {
            std::lock_guard<std::mutex> lock(mutex_);
            if (events_.size() >= kMaxEvents)
                events_.pop_front();
            events_.push_back({id, value, text});
        }
        posted_.notify_all();
    }

    // Hands every waiting event to handle, in order of posting, waiting up to timeout for the
    // first. Returns the number handled.
    size_t Drain(const std::function<void(const Event&)>& handle,
                 std::chrono::milliseconds timeout = std::chrono::milliseconds(0)) {
        std::deque<Event> taken;
        {
            std::unique_lock<std::mutex> lock(mutex_);
            posted_.wait_for(lock, timeout, [this] { return !events_.empty(); });
            taken.swap(events_);
        }
        for (const auto& event : taken)
            handle(event);
        return taken.size();
    }

  private:
    std::mutex mutex_;
    std::condition_variable posted_;
    std::deque<Event> events_;
};

#include "WorkerThread.h"

#include <chrono>

namespace platform {

WorkerThread::~WorkerThread() {
    Delete();
}

bool WorkerThread::Run() {
    if (thread_.joinable())
        return false;
    stop_.store(false, std::memory_order_release);
    running_.store(true, std::memory_order_release);
    thread_ = std::thread([this] {
        Entry();
        running_.store(false, std::memory_order_release);
    });
    return true;
}

void WorkerThread::Delete() {
    {
        std::lock_guard<std::mutex> lock(wake_mutex_);
        stop_.store(true, std::memory_order_release);
    }
    wake_.notify_all();
    if (thread_.joinable() && thread_.get_id() != std::this_thread::get_id())
        thread_.join();
}

bool WorkerThread::Pause(int milliseconds) {
    std::unique_lock<std::mutex> lock(wake_mutex_);
    wake_.wait_for(lock, std::chrono::milliseconds(milliseconds), [this] { return TestDestroy(); });
    return !TestDestroy();
}

}  // namespace platform

#include "WorkerThread.h"

#include <chrono>

#include "Log.h"

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
        std::lock_guard<std::mutex> lock(wake_mutex_);
        running_.store(false, std::memory_order_release);
        ended_.notify_all();
    });
    return true;
}

void WorkerThread::Delete() {
    {
        std::lock_guard<std::mutex> lock(wake_mutex_);
        stop_.store(true, std::memory_order_release);
    }
    wake_.notify_all();
    if (!thread_.joinable() || thread_.get_id() == std::this_thread::get_id())
        return;
    std::unique_lock<std::mutex> lock(wake_mutex_);
    int waited = 0;
    while (!ended_.wait_for(lock, std::chrono::milliseconds(kStopReportMs),
                            [this] { return !IsRunning(); })) {
        waited += kStopReportMs;
        CORVANE_LOG_WARNING("WorkerThread::Delete", report_name_ + " has not stopped after " +
                                                        std::to_string(waited / 1000) +
                                                        " s: a plug-in call has not returned");
    }
    lock.unlock();
    thread_.join();
}

namespace {
std::atomic<bool> g_abandoned{false};
}  // namespace

bool AnyWorkerAbandoned() {
    return g_abandoned.load();
}

bool WorkerThread::StopWithin(int timeoutMs) {
    {
        std::lock_guard<std::mutex> lock(wake_mutex_);
        stop_.store(true, std::memory_order_release);
    }
    wake_.notify_all();
    if (!thread_.joinable() || thread_.get_id() == std::this_thread::get_id())
        return true;
    {
        std::unique_lock<std::mutex> lock(wake_mutex_);
        if (!ended_.wait_for(lock, std::chrono::milliseconds(timeoutMs),
                             [this] { return !IsRunning(); }))
            return false;
    }
    thread_.join();
    return true;
}

void WorkerThread::Abandon() {
    if (!thread_.joinable())
        return;
    CORVANE_LOG_WARNING("WorkerThread::Abandon",
                        report_name_ +
                            " did not stop in time (a driver or plug-in call has not "
                            "returned): left behind at exit");
    g_abandoned = true;
    thread_.detach();
}

void WorkerThread::Wake() {
    {
        std::lock_guard<std::mutex> lock(wake_mutex_);
        woken_ = true;
    }
    wake_.notify_all();
}

bool WorkerThread::Pause(int milliseconds) {
    std::unique_lock<std::mutex> lock(wake_mutex_);
    wake_.wait_for(lock, std::chrono::milliseconds(milliseconds),
                   [this] { return TestDestroy() || woken_; });
    woken_ = false;
    return !TestDestroy();
}

}  // namespace platform

#include "WorkerThread.h"

#include <algorithm>
#include <chrono>

#include "Log.h"

namespace platform {

namespace {
std::atomic<bool> g_abandoned{false};
std::atomic<int> g_exitStopLimitMs{0};  // 0: stops wait without bound
}  // namespace

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

bool WorkerThread::RequestStop() {
    {
        std::lock_guard<std::mutex> lock(wake_mutex_);
        stop_.store(true, std::memory_order_release);
    }
    wake_.notify_all();
    return thread_.joinable() && thread_.get_id() != std::this_thread::get_id();
}

bool WorkerThread::WaitForEnd(int milliseconds) {
    std::unique_lock<std::mutex> lock(wake_mutex_);
    return ended_.wait_for(lock, std::chrono::milliseconds(milliseconds),
                           [this] { return !IsRunning(); });
}

void WorkerThread::Delete() {
    if (!RequestStop())
        return;
    int waited = 0;
    for (;;) {
        // On the way out of the program the wait is bounded; before that it is not, since a
        // thread cannot be abandoned safely while it may still touch the model.
        const int limit = g_exitStopLimitMs.load();
        const int step =
            limit > 0 ? std::min(kStopReportMs, std::max(limit - waited, 1)) : kStopReportMs;
        if (WaitForEnd(step))
            break;
        waited += step;
        if (limit > 0 && waited >= limit) {
            Abandon();
            return;
        }
        CORVANE_LOG_WARNING("WorkerThread::Delete", report_name_ + " has not stopped after " +
                                                        std::to_string(waited / 1000) +
                                                        " s: a plug-in call has not returned");
    }
    thread_.join();
}

bool WorkerThread::StopWithin(int timeoutMs) {
    if (!RequestStop())
        return true;
    if (!WaitForEnd(timeoutMs))
        return false;
    thread_.join();
    return true;
}

void SetExitStopLimit(int milliseconds) {
    g_exitStopLimitMs = milliseconds;
}

bool AnyWorkerAbandoned() {
    return g_abandoned.load();
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

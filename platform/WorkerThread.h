#pragma once
#include <atomic>
#include <condition_variable>
#include <mutex>
#include <string>
#include <thread>

namespace platform {

// Base of the worker threads. A worker loops until TestDestroy() says so; Delete() asks it to
// stop, wakes it from its pause and waits for it to end. A derived class calls Delete() in its
// own destructor, while its Entry() can still run safely.
class WorkerThread {
  public:
    WorkerThread() = default;
    WorkerThread(const WorkerThread&) = delete;
    WorkerThread& operator=(const WorkerThread&) = delete;
    virtual ~WorkerThread();

    bool Run();
    // Asks the thread to stop and waits for its end. A thread that hangs in a plug-in call is
    // reported every kStopReportMs under its name while the wait goes on: a thread cannot be
    // abandoned safely while it may still touch the model.
    void Delete();
    // Ends a Pause early without asking for a stop: new work has arrived.
    void Wake();
    void SetReportName(std::string name) { report_name_ = std::move(name); }

    static constexpr int kStopReportMs = 5000;
    bool TestDestroy() const { return stop_.load(std::memory_order_acquire); }
    bool IsRunning() const { return running_.load(std::memory_order_acquire); }

  protected:
    virtual void Entry() = 0;
    // Pauses for up to the given time; returns false at once when a stop was asked.
    bool Pause(int milliseconds);

  private:
    std::thread thread_;
    std::atomic<bool> stop_{false};
    std::atomic<bool> running_{false};
    bool woken_ = false;  // guarded by wake_mutex_
    std::mutex wake_mutex_;
    std::condition_variable wake_;
    std::condition_variable ended_;
    std::string report_name_ = "worker thread";
};

}  // namespace platform

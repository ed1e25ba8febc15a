#pragma once
#include <atomic>
#include <condition_variable>
#include <memory>
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
    // abandoned safely while it may still touch the model. On the way out of the program
    // (SetExitStopLimit) the wait is bounded and a stuck thread is abandoned.
    void Delete();
    // Asks the thread to stop and waits at most timeoutMs for its end; true when it ended (it is
    // then joined). A thread that has not ended keeps running and may be waited for again.
    bool StopWithin(int timeoutMs);
    // The way out for a thread stuck in a driver or plug-in call: it is reported and detached.
    // Its object must then never be destroyed, since the thread may still use it.
    void Abandon();
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
    // Asks for the stop and wakes the thread; false when there is no thread to wait for (never
    // started, already joined, or the caller is the thread itself).
    bool RequestStop();
    // True once the thread's Entry has returned, within the time given.
    bool WaitForEnd(int milliseconds);

    std::thread thread_;
    std::atomic<bool> stop_{false};
    std::atomic<bool> running_{false};
    bool woken_ = false;  // guarded by wake_mutex_
    std::mutex wake_mutex_;
    std::condition_variable wake_;
    std::condition_variable ended_;
    std::string report_name_ = "worker thread";
};

// Stops a worker on the way out of the program: it gets timeoutMs to end, and one that has not
// ended by then is abandoned and its object left alive for the rest of the process.
template <typename Worker>
void StopOrAbandon(std::unique_ptr<Worker>& worker, int timeoutMs) {
    if (worker && !worker->StopWithin(timeoutMs)) {
        worker->Abandon();
        worker.release();  // deliberately leaked: the detached thread may still touch it
    }
    worker.reset();
}

// True once any worker was abandoned: the process must then end without running destructors.
bool AnyWorkerAbandoned();

// The close path of the program sets a limit on every stop that follows: a worker that has not
// ended by then (stuck in a driver or plug-in call) is reported and left behind, and the process
// ends without waiting for it. 0 restores stops without bound.
void SetExitStopLimit(int milliseconds);
constexpr int kExitStopLimitMs = 3000;

}  // namespace platform

#pragma once
#include "platform/WorkerThread.h"

class Project;

// Moves pin values between the boards and the gates and post processors every 25 ms: all of
// them get the same status text first, then their commands act on the boards.
class BoardThread : public platform::WorkerThread {
  public:
    static constexpr int kPauseMs = 25;

    explicit BoardThread(Project& project) : project_(project) {}
    ~BoardThread() override { Delete(); }

    // One pass; public so that tests can drive a pass without the thread.
    void Pass();

  protected:
    void Entry() override;

  private:
    Project& project_;
};

#pragma once
#include "platform/WorkerThread.h"

class EventSink;
class Project;

// Keeps the operator informed whether the site's database can be reached: each pass connects
// afresh with the open project's settings and posts the state (-1 not defined, 0 not
// connected, 1 connected) to the window when it changes; "not defined" is posted every pass.
class CheckDBThread : public platform::WorkerThread {
  public:
    CheckDBThread(EventSink* frame, Project* project);
    ~CheckDBThread() override;

    static constexpr int kSteps = 100;
    static constexpr int kConnectedStepMs = 1200;  // a live connection is tried every 120 s
    static constexpr int kFailedStepMs = 50;       // a failed or missing one every 5 s

    // The label text of a state, as the list of readings shows it.
    static const char* StatusText(int state);

  protected:
    void Entry() override;

  private:
    int CheckOnce(int lastState);

    EventSink* frame_;
    Project* project_;
};

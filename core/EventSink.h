#pragma once
#include <string>

// Command event ids that workers and flows post to the main window.
enum EventId {
    ID_LPR_TRANSIT = 6000,     // a gate's transit line
    ID_ROI_FRAME = 6090,       // a new picture in the result ring
    ID_CAMERA_FRAME = 6091,    // a new picture in the source ring
    ID_CAMERA_BUTTONS = 6098,  // Start/Stop Sampling follow the sampling flags
};

// Target of posted command events. The window implements it by queueing an event for its own
// thread; tests and the headless runtime implement it as they need. Post never blocks.
class EventSink {
  public:
    virtual ~EventSink() = default;
    virtual void PostCommand(int id, int value, const std::string& text) = 0;
};

#pragma once
#include <string>

// Command event ids that workers and flows post to the main window.
enum EventId {
    ID_LPR_RESULT = 6000,           // a gate's transit line
    ID_VIEW_REFRESH = 6090,         // value 0: new source picture, 1: new result picture
    ID_CAMERAS_CHANGED = 6091,      // the source dialog changed the list
    ID_INTEGRATORS_CHANGED = 6092,  // the gate dialog changed the list
    ID_CAMERA_RESTART = 6093,       // value: the id of a source a plug-in wants reloaded
    ID_LANES_CHANGED = 6094,
    ID_DB_STATUS = 6095,
    ID_TRIGGERS_CHANGED = 6097,
    ID_CAMERA_BUTTONS = 6098,  // Start/Stop Sampling follow the sampling flags
    ID_SOURCES_CHANGED = 6099,
    ID_TRANSFER_FAILED = 6100,
    ID_TRANSFER_DONE = 6101,
};

// Target of posted command events. The window implements it by queueing an event for its own
// thread; tests and the headless runtime implement it as they need. Post never blocks.
class EventSink {
  public:
    virtual ~EventSink() = default;
    virtual void PostCommand(int id, int value, const std::string& text) = 0;
};

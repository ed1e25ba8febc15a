#include "UiEvents.h"

wxDEFINE_EVENT(wxEVT_CORVANE_POSTED, wxCommandEvent);

extern "C" {
__attribute__((visibility("default"))) wxEventType EVT_BROADCAST_ROI_UPDATE = wxNewEventType();
__attribute__((visibility("default"))) wxEventType EVT_BROADCAST_ROI_CHANGED = wxNewEventType();
__attribute__((visibility("default"))) wxEventType EVT_LANE_UPDATE = wxNewEventType();
__attribute__((visibility("default"))) wxEventType EVT_WBLIST_UPDATE = wxNewEventType();
}

void UiContext::Post(wxEventType type, int id, int value) const {
    if (frame == nullptr)
        return;
    auto* event = new wxCommandEvent(type, id);
    event->SetInt(value);
    wxQueueEvent(frame, event);
}

#pragma once
#include <wx/event.h>

// Command events that workers post to the main window, told apart by id (EventId).
wxDECLARE_EVENT(wxEVT_CORVANE_POSTED, wxCommandEvent);

// The four event types the program exports to plug-ins, given their values at start.
extern "C" {
extern wxEventType EVT_BROADCAST_ROI_UPDATE;
extern wxEventType EVT_BROADCAST_ROI_CHANGED;
extern wxEventType EVT_LANE_UPDATE;
extern wxEventType EVT_WBLIST_UPDATE;
}

// The gate list record carried by EVT_WBLIST_UPDATE.
struct GateListRecord {
    wxString gate;
    wxString whitelist;
    wxString blacklist;
    wxString direction;
    wxString whitelistTolerance;
    wxString blacklistTolerance;
};

class Project;

// What every management pane and dialog needs: the model and the main window to post to.
struct UiContext {
    Project* project = nullptr;
    wxEvtHandler* frame = nullptr;
    void Post(wxEventType type, int id, int value) const;
};

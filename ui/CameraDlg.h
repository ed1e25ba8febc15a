#pragma once
#include <wx/panel.h>

#include "UiEvents.h"

class LaneControl;
class wxButton;
class wxListCtrl;
class wxListEvent;
class wxPropertyGrid;

// The pane "Video Sources Management": sources are added, configured, removed and sampled.
class CameraDlg : public wxPanel {
  public:
    CameraDlg(wxWindow* parent, const UiContext& context, LaneControl& control);

    void Refill();
    void RefillTypes();
    void UpdateButtons();
    // The list's rows of sources that do not sample, greyed.
    void MarkStopped();
    static inline const wxColour kStoppedColour{128, 128, 128};
    void Select(int cameraId);

    // The button actions, also reached by the tests.
    void OnAddCamera();
    void OnModifyCameraPars();
    void OnModifyStreaming();
    void OnRemoveCamera();
    void OnStartSampling();
    void OnStopSampling();

    wxPropertyGrid* Grid() const { return grid_; }
    wxListCtrl* List() const { return list_; }
    wxButton* StartButton() const { return start_; }
    wxButton* StopButton() const { return stop_; }

    int selected = -1;

  private:
    void Sample(bool start);
    void Layout(const wxSize& client);
    void OnSelected(wxListEvent& event);

    UiContext context_;
    LaneControl& control_;
    wxPropertyGrid* grid_ = nullptr;
    wxListCtrl* list_ = nullptr;
    wxButton* add_ = nullptr;
    wxButton* start_ = nullptr;
    wxButton* stop_ = nullptr;
    wxButton* streaming_ = nullptr;
    wxButton* settings_ = nullptr;
    wxButton* remove_ = nullptr;
};

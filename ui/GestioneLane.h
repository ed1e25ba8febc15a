#pragma once
#include <wx/panel.h>

#include "UiEvents.h"

class wxButton;
class wxListCtrl;
class wxListEvent;
class wxPropertyGrid;

// The pane "ROIs Management": the regions, and the change or removal of the selected one.
class GestioneLane : public wxPanel {
  public:
    enum Choice { kGateChoice, kTriggerChoice, kCameraChoice };

    GestioneLane(wxWindow* parent, const UiContext& context);

    void Refill();
    void RefreshUnderLock();
    void RebuildChoice(Choice choice);
    void Select(int laneId);
    // "Save Changes" and "Remove ROI"; true when the change was made.
    bool OnModifyLane();
    bool OnRemoveLane();

    wxPropertyGrid* Grid() const { return grid_; }
    wxListCtrl* List() const { return list_; }
    int selected = -1;

  private:
    bool Fail(const char* message, const char* restartText = "Restart all lane\n");
    void OnSelected(wxListEvent& event);

    UiContext context_;
    wxListCtrl* list_ = nullptr;
    wxPropertyGrid* grid_ = nullptr;
    wxButton* save_ = nullptr;
    wxButton* remove_ = nullptr;
};

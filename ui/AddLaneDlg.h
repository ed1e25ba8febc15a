#pragma once
#include <wx/dialog.h>

#include "UiEvents.h"

class wxPropertyGrid;

// The modal ROI insertion dialog.
class AddLaneDlg : public wxDialog {
  public:
    AddLaneDlg(wxWindow* parent, const UiContext& context);
    // "Add ROI": true when the region was added and the dialog ended.
    bool OnAddLane();
    wxPropertyGrid* Grid() const { return grid_; }

  private:
    UiContext context_;
    wxPropertyGrid* grid_ = nullptr;
};

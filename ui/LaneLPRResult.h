#pragma once
#include <wx/panel.h>

#include "UiEvents.h"

class wxComboBox;

// The pane "ROI LPR Result": the picture of one region with the plates found on it.
class LaneLPRResult : public wxPanel {
  public:
    LaneLPRResult(wxWindow* parent, const UiContext& context);
    void RefillRegions();
    void SelectRegion(const wxString& name);

  private:
    void OnPaint(wxPaintEvent& event);
    void OnRegion(wxCommandEvent& event);

    UiContext context_;
    wxComboBox* choice_ = nullptr;
};

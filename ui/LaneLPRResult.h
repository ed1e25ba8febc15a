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
    // Renews the live view's 20-minute watch and the operator's activity.
    void RenewWatch();

    UiContext context_;
    wxComboBox* choice_ = nullptr;
};

#pragma once
#include <wx/panel.h>

#include "UiEvents.h"

// The pane "Video Sources": an older layout of the region lists that no menu shows; its
// controls only record the operator's activity.
class LaneDlg : public wxPanel {
  public:
    LaneDlg(wxWindow* parent, const UiContext& context);
};

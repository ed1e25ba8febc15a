#pragma once
#include <wx/panel.h>

// The hidden display parent handed to camera plug-ins; it paints nothing of its own.
class Viewer : public wxPanel {
  public:
    explicit Viewer(wxWindow* parent);
};

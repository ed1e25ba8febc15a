#include "Viewer.h"

#include <wx/dcclient.h>

Viewer::Viewer(wxWindow* parent) : wxPanel(parent, wxID_ANY) {
    SetBackgroundStyle(wxBG_STYLE_PAINT);
    Bind(wxEVT_PAINT, [this](wxPaintEvent&) { wxPaintDC dc(this); });
    Bind(wxEVT_ERASE_BACKGROUND, [](wxEraseEvent&) {});
}

#pragma once
#include <wx/panel.h>

#include "ShapeEditor.h"
#include "UiEvents.h"

class wxComboBox;

// The pane "Video Source View": the frames of the chosen source with its regions, and the
// polygon editor of the selected region.
class ViewFrame : public wxPanel {
  public:
    static constexpr const char* kStoppedText = "Stopped";
    ViewFrame(wxWindow* parent, const UiContext& context);

    void RefillSources();
    void SelectSource(const wxString& name);
    void SetSelectedRoi(int id);
    ShapeEditor& Editor() { return editor; }

    int selectedroi = -1;
    ShapeEditor editor;

    // A point of the picture (thousandths) on the window, as last painted.
    wxPoint OnView(const ShapePoint& point) const;

  private:
    void OnPaint(wxPaintEvent& event);
    void OnSource(wxCommandEvent& event);
    void OnMouse(wxMouseEvent& event);
    void DrawRegions(wxDC& dc);
    void DrawPolygon(wxDC& dc, const std::vector<ShapePoint>& points, bool closed);
    // A closed shape's lines only, as a region that is not selected shows it.
    void DrawOutline(wxDC& dc, const std::vector<ShapePoint>& points, const wxPen& pen);

    UiContext context_;
    wxComboBox* choice_ = nullptr;
};

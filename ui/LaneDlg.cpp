#include "LaneDlg.h"

#include <wx/button.h>
#include <wx/listctrl.h>
#include <wx/propgrid/propgrid.h>
#include <wx/sizer.h>

#include "ListColumns.h"
#include "PropertyGridLayout.h"
#include "core/Project.h"

LaneDlg::LaneDlg(wxWindow* parent, const UiContext& context) : wxPanel(parent, wxID_ANY) {
    auto* regions = new wxListCtrl(this, 6003, wxDefaultPosition, wxDefaultSize, wxLC_REPORT);
    for (const char* header : {"ROI ID", "ROI Name", "Video Source", "Lane", "Trigger"})
        regions->AppendColumn(header);
    FitColumnHeaders(*regions);
    auto* boxes = new wxListCtrl(this, 6006, wxDefaultPosition, wxDefaultSize, wxLC_REPORT);
    for (const char* header : {"ROI", "X1 (%)", "Y1 (%)", "X2 (%)", "Y2 (%)"})
        boxes->AppendColumn(header);
    FitColumnHeaders(*boxes);
    auto* grid = new wxPropertyGrid(this, wxID_ANY);
    KeepLabelsReadable(grid);
    grid->Append(new wxPropertyCategory("New ROI"));
    grid->Append(new wxStringProperty("ROI Name"));
    grid->Append(new wxIntProperty("ID"));
    // The lists and the grid side by side, the buttons in a row beneath: the pane docks at the
    // bottom, wide and low, and every list keeps its rows.
    auto* panes = new wxBoxSizer(wxHORIZONTAL);
    panes->Add(regions, 1, wxEXPAND);
    panes->Add(boxes, 1, wxEXPAND);
    panes->Add(grid, 1, wxEXPAND);
    auto* buttons = new wxBoxSizer(wxHORIZONTAL);
    buttons->Add(new wxButton(this, 6033, "Add ROI"), 1);
    buttons->Add(new wxButton(this, 6034, "Remove ROI"), 1);
    buttons->Add(new wxButton(this, 6037, "Remove ROI"), 1);
    auto* sizer = new wxBoxSizer(wxVERTICAL);
    sizer->Add(panes, 1, wxEXPAND);
    sizer->Add(buttons, 0, wxEXPAND);
    SetSizer(sizer);
    Project* project = context.project;
    auto touch = [project](wxEvent& event) {
        project->TouchActivity();
        event.Skip();
    };
    Bind(wxEVT_BUTTON, touch);
    Bind(wxEVT_LIST_ITEM_SELECTED, touch);
}

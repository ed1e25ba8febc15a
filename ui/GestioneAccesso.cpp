#include "GestioneAccesso.h"

#include <wx/button.h>
#include <wx/propgrid/propgrid.h>
#include <wx/sizer.h>

#include "PropertyGridLayout.h"
#include "core/Project.h"

GestioneAccesso::GestioneAccesso(wxWindow* parent, Project& project)
    : wxDialog(parent, wxID_ANY, "User Access", wxDefaultPosition, wxSize(320, 260)),
      project_(project) {
    grid_ = new wxPropertyGrid(this, wxID_ANY);
    KeepLabelsReadable(grid_);
    grid_->Append(new wxPropertyCategory("Selected Transit"));
    grid_->Append(
        new wxStringProperty("Username", "Username", wxString::FromUTF8(project.username)));
    grid_->Append(
        new wxStringProperty("Password", "Password", wxString::FromUTF8(project.password)));
    wxPGChoices modes;
    modes.Add("Request password", 1);
    modes.Add("Do not request password", 0);
    grid_->Append(
        new wxEnumProperty("Lane Access Mode", "Lane Access Mode", modes, project.accessmode));
    grid_->Append(new wxIntProperty("Timeout", "Timeout", project.timeout));
    auto* sizer = new wxBoxSizer(wxVERTICAL);
    sizer->Add(grid_, 1, wxEXPAND);
    auto* confirm = new wxButton(this, 6061, "Confirm");
    auto* cancel = new wxButton(this, 6051, "Cancel");
    sizer->Add(confirm, 0, wxEXPAND);
    sizer->Add(cancel, 0, wxEXPAND);
    SetSizer(sizer);
    confirm->Bind(wxEVT_BUTTON, [this](wxCommandEvent&) { EndModal(1); });
    cancel->Bind(wxEVT_BUTTON, [this](wxCommandEvent&) { EndModal(0); });
}

void GestioneAccesso::CopyToProject() {
    project_.username = grid_->GetPropertyValueAsString("Username").utf8_str().data();
    project_.password = grid_->GetPropertyValueAsString("Password").utf8_str().data();
    project_.accessmode = static_cast<int>(grid_->GetPropertyValueAsLong("Lane Access Mode"));
    project_.timeout = static_cast<int>(grid_->GetPropertyValueAsLong("Timeout"));
}

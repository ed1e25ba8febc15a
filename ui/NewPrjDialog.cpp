#include "NewPrjDialog.h"

#include <wx/button.h>
#include <wx/msgdlg.h>
#include <wx/propgrid/advprops.h>
#include <wx/propgrid/propgrid.h>

#include <mutex>

#include "PropertyGridLayout.h"
#include "core/Project.h"
#include "platform/FileSystem.h"

namespace {
constexpr int kConfirmId = 6055;
constexpr int kCancelId = 6056;

std::string TextOf(wxPropertyGrid* grid, const char* key) {
    return std::string(grid->GetPropertyValueAsString(key).utf8_str());
}
}  // namespace

NewPrjDialog::NewPrjDialog(wxWindow* parent, Project& project, int modifyMode)
    : wxDialog(parent, wxID_ANY, modifyMode ? "Modify Project" : "New Project", wxDefaultPosition,
               wxSize(520, 460), wxDEFAULT_DIALOG_STYLE | wxRESIZE_BORDER),
      modify(modifyMode),
      project_(project) {
    grid_ = new wxPropertyGrid(this, wxID_ANY);
    KeepLabelsReadable(grid_);
    grid_->Append(new wxPropertyCategory("New Project"));
    grid_->Append(new wxStringProperty("Project Name", "Project Name", ""));
    grid_->Append(new wxDirProperty("Project Folder", "Project Folder", ""));
    grid_->Append(new wxPropertyCategory("Site Properties"));
    grid_->Append(new wxStringProperty("Site Name", "Site Name", ""));
    grid_->Append(new wxIntProperty("Site ID", "ID", 1));
    // The letters of names in the site's binary files.
    wxPGChoices codePages;
    codePages.Add("1252 Western European", 1252);
    codePages.Add("1250 Central European", 1250);
    codePages.Add("1251 Cyrillic", 1251);
    grid_->Append(new wxEnumProperty("Code Page", "CODEPAGE", codePages, 1252));
    grid_->Append(new wxPropertyCategory("Database Settings", "DBSettings"));
    grid_->Append(new wxStringProperty("IP", "IP", ""));
    grid_->Append(new wxStringProperty("Name", "Name", ""));
    grid_->Append(new wxStringProperty("Username", "Username", ""));
    wxPGProperty* password = grid_->Append(new wxStringProperty("Password", "Password", ""));
    password->SetAttribute(wxPG_STRING_PASSWORD, true);
    grid_->Append(new wxIntProperty("Syncronization Period (Min)", "SYNCROTIME", 5));
    grid_->Append(new wxIntProperty("Local DB Storage", "DBTIME", 5));
    grid_->Append(new wxPropertyCategory("Auto remove", "DBUpdateInfo"));
    wxPGChoices noYes;
    noYes.Add("No", 0);
    noYes.Add("Yes", 1);
    grid_->Append(new wxEnumProperty("Whitelist", "WHITELIST", noYes, 0));
    auto* confirm =
        new wxButton(this, kConfirmId, modifyMode ? "Modify Project" : "Create Project");
    auto* cancel = new wxButton(this, kCancelId, "Cancel");
    confirm->Bind(wxEVT_BUTTON, [this](wxCommandEvent&) { Confirm(); });
    cancel->Bind(wxEVT_BUTTON, [this](wxCommandEvent&) {
        project_.TouchActivity();
        EndModal(0);
    });
    Bind(wxEVT_CLOSE_WINDOW, [this](wxCloseEvent&) {
        project_.TouchActivity();
        EndModal(0);
    });
    Bind(wxEVT_SIZE, [this, confirm, cancel](wxSizeEvent&) {
        const wxSize client = GetClientSize();
        grid_->SetSize(0, 0, client.x, client.y - 52);
        confirm->SetSize(5, client.y - 51, client.x - 10, 24);
        cancel->SetSize(5, client.y - 26, client.x - 10, 24);
    });
}

void NewPrjDialog::FillFromProject() {
    std::lock_guard<std::mutex> lock(project_.settingsmutex);
    const PlaceSettings& place = project_.place;
    grid_->SetPropertyValue("Project Name", wxString::FromUTF8(project_.prjname));
    grid_->SetPropertyValue("Project Folder", wxString::FromUTF8(project_.prjdir));
    grid_->SetPropertyValue("Site Name", wxString::FromUTF8(place.placename));
    grid_->SetPropertyValue("ID", place.placeid);
    grid_->SetPropertyValue("IP", wxString::FromUTF8(place.placedbip));
    grid_->SetPropertyValue("Name", wxString::FromUTF8(place.placedbname));
    grid_->SetPropertyValue("Username", wxString::FromUTF8(place.placedbusername));
    grid_->SetPropertyValue("Password", wxString::FromUTF8(place.placedbpassword));
    grid_->SetPropertyValue("SYNCROTIME", place.syncrotime);
    grid_->SetPropertyValue("DBTIME", place.dbstorage);
    grid_->SetPropertyValue("WHITELIST", place.whitelist ? 1 : 0);
    grid_->SetPropertyValue("CODEPAGE", place.codepage);
    grid_->EnableProperty("Project Name", false);
    grid_->EnableProperty("Project Folder", false);
}

bool NewPrjDialog::Confirm() {
    project_.TouchActivity();
    if (modify == 0) {
        name = TextOf(grid_, "Project Name");
        folder = TextOf(grid_, "Project Folder");
        if (name.empty()) {
            wxMessageBox("Project name not specified", wxMessageBoxCaptionStr, wxOK, this);
            return false;
        }
        if (!platform::DirectoryExists(folder) &&
            wxMessageBox("Destination directory does not exists, create it?", "Warning", wxYES_NO,
                         this) == wxYES &&
            !platform::MakeDirectory(folder)) {
            wxMessageBox("Cannot create destination directory", wxMessageBoxCaptionStr, wxOK, this);
            return false;
        }
    }
    {
        std::lock_guard<std::mutex> lock(project_.settingsmutex);
        PlaceSettings& place = project_.place;
        place.placeid = static_cast<int>(grid_->GetPropertyValueAsLong("ID"));
        place.placename = TextOf(grid_, "Site Name");
        place.placedbip = TextOf(grid_, "IP");
        place.placedbname = TextOf(grid_, "Name");
        place.placedbusername = TextOf(grid_, "Username");
        place.placedbpassword = TextOf(grid_, "Password");
        place.uselocaldb = 1;
        place.syncrotime = static_cast<int>(grid_->GetPropertyValueAsLong("SYNCROTIME"));
        place.dbstorage = static_cast<int>(grid_->GetPropertyValueAsLong("DBTIME"));
        place.whitelist = grid_->GetPropertyValueAsLong("WHITELIST") == 1;
        place.codepage = static_cast<int>(grid_->GetPropertyValueAsLong("CODEPAGE"));
    }
    if (IsModal())
        EndModal(1);
    return true;
}

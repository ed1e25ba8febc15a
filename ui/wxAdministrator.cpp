#include "wxAdministrator.h"

#include <algorithm>
#include <utility>

#include <wx/button.h>
#include <wx/msgdlg.h>
#include <wx/stattext.h>
#include <wx/textctrl.h>

#include "core/Project.h"

namespace {
constexpr int kUserId = 6008;
constexpr int kPasswordId = 6007;
constexpr int kConfirmId = 6061;
constexpr int kCancelId = 6056;
}  // namespace

wxAdministrator::wxAdministrator(wxWindow* parent, Project& project)
    : wxDialog(parent, wxID_ANY, "Please insert administrator access information"),
      project_(project) {
    auto* userLabel = new wxStaticText(this, wxID_ANY, "Username");
    userField_ = new wxTextCtrl(this, kUserId);
    auto* passwordLabel = new wxStaticText(this, wxID_ANY, "Password");
    passwordField_ =
        new wxTextCtrl(this, kPasswordId, "", wxDefaultPosition, wxDefaultSize, wxTE_PASSWORD);
    auto* confirm = new wxButton(this, kConfirmId, "Confirm");
    auto* cancel = new wxButton(this, kCancelId, "Cancel");
    confirm->Bind(wxEVT_BUTTON, [this](wxCommandEvent&) { Confirm(); });
    cancel->Bind(wxEVT_BUTTON, [this](wxCommandEvent&) { Cancel(); });
    // Rows as high as the toolkit draws their text: a label, its field, a label, its field and
    // the buttons, in a window of at least 250 pixels.
    const int label = userLabel->GetBestSize().y;
    const int field = userField_->GetBestSize().y;
    const int button = std::max(confirm->GetBestSize().y, cancel->GetBestSize().y);
    const int buttonWidth = std::max(confirm->GetBestSize().x, cancel->GetBestSize().x);
    SetClientSize(std::max(250, 2 * buttonWidth + 15), 2 * (label + field) + button + 25);
    Bind(wxEVT_SIZE, [=](wxSizeEvent&) {
        const wxSize client = GetClientSize();
        int y = 5;
        for (const auto& [caption, entry] : {std::pair<wxWindow*, wxWindow*>{userLabel, userField_},
                                             {passwordLabel, passwordField_}}) {
            caption->SetSize(5, y, client.x - 10, label);
            entry->SetSize(5, y + label + 2, client.x - 10, field);
            y += label + field + 8;
        }
        confirm->SetSize(5, client.y - button - 5, client.x / 2 - 8, button);
        cancel->SetSize(client.x / 2 + 3, client.y - button - 5, client.x / 2 - 8, button);
    });
    CentreOnScreen();
}

void wxAdministrator::SetEntries(const wxString& user, const wxString& password_) {
    userField_->SetValue(user);
    passwordField_->SetValue(password_);
}

bool wxAdministrator::Confirm() {
    const std::string user = userField_->GetValue().utf8_str().data();
    const std::string entered = passwordField_->GetValue().utf8_str().data();
    if (user.empty()) {
        wxMessageBox("Insert user name", wxMessageBoxCaptionStr, wxOK, this);
        return false;
    }
    if (entered.empty()) {
        wxMessageBox("Insert user password", wxMessageBoxCaptionStr, wxOK, this);
        return false;
    }
    if (user == username && entered == password) {
        result = 1;
        End(1);
        return true;
    }
    result = 0;
    wxMessageBox("Administrator not found or access not sufficient to perform the operation",
                 wxMessageBoxCaptionStr, wxOK, this);
    ++attempts;
    if (attempts >= 4 && wxMessageBox("Administrator not found, close the application?", "Warning",
                                      wxYES_NO, this) == wxYES)
        End(0);
    return false;
}

void wxAdministrator::Cancel() {
    if (wxMessageBox("The application will be closed, continue?", "Warning", wxYES_NO, this) ==
        wxYES) {
        result = 0;
        End(0);
    }
}

void wxAdministrator::End(int code) {
    if (IsModal())
        EndModal(code);
    else
        SetReturnCode(code);
}

#include "IpCameraDialog.h"

#include <wx/button.h>
#include <wx/choice.h>
#include <wx/dialog.h>
#include <wx/listbox.h>
#include <wx/sizer.h>
#include <wx/spinctrl.h>
#include <wx/stattext.h>
#include <wx/textctrl.h>
#include <wx/utils.h>

#include "OnvifFinder.h"

namespace {

constexpr int kProbeMs = 3000;
constexpr int kRequestMs = 4000;

wxString Utf8(const std::string& text) {
    return wxString::FromUTF8(text.c_str());
}

std::string Utf8(const wxString& text) {
    return std::string(text.utf8_str());
}

class IpCameraDialog : public wxDialog {
  public:
    IpCameraDialog(wxWindow* parent, const ParameterSheet& sheet)
        : wxDialog(parent, wxID_ANY, "IP Camera", wxDefaultPosition, wxDefaultSize,
                   wxDEFAULT_DIALOG_STYLE | wxRESIZE_BORDER) {
        auto* fields = new wxFlexGridSizer(2, 6, 8);
        fields->AddGrowableCol(1, 1);
        url_ = AddText(fields, "URL", sheet.Text("URL"), 0);
        user_ = AddText(fields, "User", sheet.Text("User"), 0);
        password_ = AddText(fields, "Password", sheet.Text("Password"), wxTE_PASSWORD);
        fields->Add(new wxStaticText(this, wxID_ANY, "Transport"), 0, wxALIGN_CENTER_VERTICAL);
        transport_ = new wxChoice(this, wxID_ANY);
        for (const char* choice : {"TCP", "UDP", "Automatic"})
            transport_->Append(choice);
        transport_->SetStringSelection(Utf8(sheet.Text("Transport")));
        if (transport_->GetSelection() == wxNOT_FOUND)
            transport_->SetSelection(0);
        fields->Add(transport_, 1, wxEXPAND);
        fields->Add(new wxStaticText(this, wxID_ANY, "Stall time (s)"), 0, wxALIGN_CENTER_VERTICAL);
        stall_ = new wxSpinCtrl(this, wxID_ANY);
        stall_->SetRange(1, 600);
        stall_->SetValue(sheet.Int("Stall time (s)") > 0 ? sheet.Int("Stall time (s)") : 5);
        fields->Add(stall_, 1, wxEXPAND);

        auto* find = new wxButton(this, wxID_ANY, "Find cameras");
        find->Bind(wxEVT_BUTTON, [this](wxCommandEvent&) { FindCameras(); });
        cameras_ = new wxListBox(this, wxID_ANY, wxDefaultPosition, wxSize(-1, 110));
        cameras_->Bind(wxEVT_LISTBOX, [this](wxCommandEvent&) { ReadProfiles(); });
        profiles_ = new wxChoice(this, wxID_ANY);
        profiles_->Bind(wxEVT_CHOICE, [this](wxCommandEvent&) { UseProfile(); });
        status_ = new wxStaticText(this, wxID_ANY, "");

        auto* column = new wxBoxSizer(wxVERTICAL);
        column->Add(fields, 0, wxEXPAND | wxALL, 10);
        column->Add(find, 0, wxLEFT | wxRIGHT, 10);
        column->Add(cameras_, 1, wxEXPAND | wxALL, 10);
        column->Add(profiles_, 0, wxEXPAND | wxLEFT | wxRIGHT, 10);
        column->Add(status_, 0, wxEXPAND | wxALL, 10);
        column->Add(CreateButtonSizer(wxOK | wxCANCEL), 0, wxEXPAND | wxALL, 10);
        SetSizerAndFit(column);
        SetSize(wxSize(std::max(GetSize().x, 560), GetSize().y));
    }

    void Store(ParameterSheet& sheet) const {
        sheet.Set("URL", Utf8(url_->GetValue()));
        sheet.Set("User", Utf8(user_->GetValue()));
        sheet.Set("Password", Utf8(password_->GetValue()));
        sheet.Set("Transport", Utf8(transport_->GetStringSelection()));
        sheet.Set("Stall time (s)", std::to_string(stall_->GetValue()));
    }

  private:
    wxTextCtrl* AddText(wxFlexGridSizer* fields, const char* label, const std::string& value,
                        long style) {
        fields->Add(new wxStaticText(this, wxID_ANY, label), 0, wxALIGN_CENTER_VERTICAL);
        auto* text =
            new wxTextCtrl(this, wxID_ANY, Utf8(value), wxDefaultPosition, wxSize(380, -1), style);
        fields->Add(text, 1, wxEXPAND);
        return text;
    }

    void FindCameras() {
        wxBusyCursor busy;
        status_->SetLabel("Looking for cameras...");
        status_->Update();
        found_ = OnvifFinder::Probe(kProbeMs);
        cameras_->Clear();
        profiles_->Clear();
        for (const auto& camera : found_)
            cameras_->Append(Utf8(camera.name + "  (" + camera.address + ")"));
        status_->SetLabel(found_.empty() ? "No camera answered"
                                         : wxString::Format("%zu camera(s) found", found_.size()));
    }

    void ReadProfiles() {
        const int chosen = cameras_->GetSelection();
        if (chosen < 0 || static_cast<size_t>(chosen) >= found_.size())
            return;
        wxBusyCursor busy;
        std::string problem;
        profileList_ = OnvifFinder::Profiles(found_[chosen].address, Utf8(user_->GetValue()),
                                             Utf8(password_->GetValue()), problem, kRequestMs);
        profiles_->Clear();
        for (const auto& profile : profileList_)
            profiles_->Append(Utf8(profile.name + "  " + std::to_string(profile.width) + "x" +
                                   std::to_string(profile.height)));
        if (profileList_.empty()) {
            status_->SetLabel(Utf8(problem));
            return;
        }
        profiles_->SetSelection(0);
        UseProfile();
    }

    void UseProfile() {
        const int chosen = profiles_->GetSelection();
        if (chosen < 0 || static_cast<size_t>(chosen) >= profileList_.size())
            return;
        url_->SetValue(Utf8(profileList_[chosen].uri));
        status_->SetLabel("Stream address taken from the camera");
    }

    wxTextCtrl* url_;
    wxTextCtrl* user_;
    wxTextCtrl* password_;
    wxChoice* transport_;
    wxSpinCtrl* stall_;
    wxListBox* cameras_;
    wxChoice* profiles_;
    wxStaticText* status_;
    std::vector<FoundCamera> found_;
    std::vector<CameraProfile> profileList_;
};

}  // namespace

bool ShowIpCameraDialog(NativeWindow parent, ParameterSheet& sheet) {
    IpCameraDialog dialog(static_cast<wxWindow*>(parent), sheet);
    if (dialog.ShowModal() != wxID_OK)
        return false;
    dialog.Store(sheet);
    return true;
}

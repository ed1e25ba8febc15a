#pragma once
#include <wx/dialog.h>

#include <string>

class Project;
class wxTextCtrl;

// The login: the one operator account's user name and password.
class wxAdministrator : public wxDialog {
  public:
    wxAdministrator(wxWindow* parent, Project& project);
    // "Confirm" with what the fields hold: true when it ended the dialog with 1.
    bool Confirm();
    void Cancel();
    void SetEntries(const wxString& user, const wxString& password);

    std::string username;
    std::string password;
    int result = 0;
    int attempts = 0;

  private:
    // Ends a shown dialog; one driven without showing keeps the code for its caller.
    void End(int code);

    Project& project_;
    wxTextCtrl* userField_ = nullptr;
    wxTextCtrl* passwordField_ = nullptr;
};

#pragma once
#include <wx/dialog.h>

class Project;
class wxPropertyGrid;

// "User Access": the operator account and the lock settings.
class GestioneAccesso : public wxDialog {
  public:
    GestioneAccesso(wxWindow* parent, Project& project);
    void CopyToProject();
    wxPropertyGrid* Grid() const { return grid_; }

  private:
    Project& project_;
    wxPropertyGrid* grid_ = nullptr;
};

#pragma once
#include <wx/dialog.h>

#include <string>

class Project;
class wxPropertyGrid;

// The project's name, folder, site and database settings; create and modify mode.
class NewPrjDialog : public wxDialog {
  public:
    NewPrjDialog(wxWindow* parent, Project& project, int modifyMode);
    void FillFromProject();
    // The confirm button: true when the dialog ended with 1.
    bool Confirm();
    wxPropertyGrid* Grid() const { return grid_; }

    int modify = 0;
    std::string name;
    std::string folder;

  private:
    Project& project_;
    wxPropertyGrid* grid_ = nullptr;
};

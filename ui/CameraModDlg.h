#pragma once
#include <wx/dialog.h>

struct Camera;
class Project;
class wxPropertyGrid;

// The streaming values of one source.
class CameraModDlg : public wxDialog {
  public:
    CameraModDlg(wxWindow* parent, Project& project, Camera& camera);
    // "Update Camera": false when the port is another source's and the dialog stays.
    bool UpdateCamera();
    wxPropertyGrid* Grid() const { return grid_; }

  private:
    Project& project_;
    Camera& camera_;
    wxPropertyGrid* grid_ = nullptr;
};

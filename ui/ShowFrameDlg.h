#pragma once
#include <wx/dialog.h>
#include <wx/image.h>

#include <mutex>
#include <string>
#include <vector>

#include "core/LPRPackage.h"

class Project;
class wxStaticText;

// A stored reading with its pictures: the transit's own image, then the plate and scene images
// the site database holds for it; zoom with the mouse, browse with the buttons.
class ShowFrameDlg : public wxDialog {
  public:
    ShowFrameDlg(wxWindow* parent, Project& project, const LPRPackage& reading);

    void Browse(int step);
    int ImageIndex() const { return imageindex; }
    int ImageCount() const { return imagecount; }

  private:
    void LoadImage(const std::string& path);
    void OnPaint(wxPaintEvent& event);
    void OnMouseUp(wxMouseEvent& event);

    LPRPackage record;
    std::string imagefile;
    uint32_t opentick = 0;
    int imagecount = 1;
    int imageindex = 0;
    std::vector<std::string> plateimages;
    std::vector<std::string> sceneimages;
    int focusx = 500;
    int focusy = 500;
    float zoom = 1.0f;
    wxImage image;
    wxImage plate;
    int imagex = 0;
    int imagey = 0;
    int imagew = 0;
    int imageh = 0;
    std::mutex imagemutex;
    wxStaticText* label_ = nullptr;
};

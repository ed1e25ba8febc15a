#pragma once
#include <wx/arrstr.h>
#include <wx/dialog.h>

#include "templates/TemplateSet.h"

class Project;
class wxButton;
class wxChoice;
class wxListCtrl;
class wxStaticText;
class wxTextCtrl;

// Which countries of the project's templates are in use, and the five global settings.
class TemplatesDlg : public wxDialog {
  public:
    TemplatesDlg(wxWindow* parent, Project& project);

    bool AddCountry();
    bool RemoveCountry();
    void SelectAvailable(int row);
    void SelectUsed(int row);
    // Asks "Save changes?" and saves on Yes.
    void AskAndSave();
    const wxArrayString& Available() const { return available; }
    const wxArrayString& Used() const { return used; }
    std::string FilePath() const;
    wxTextCtrl* DiscardThreshold() const { return discardPerc_; }

    TemplateSet templateSet;
    wxArrayString available;
    wxArrayString used;
    int selAvailable = -1;
    int selUsed = -1;

  private:
    void FillLists();
    void EnableControls();
    void LayoutControls();

    Project& project_;
    wxChoice* useTemplate_ = nullptr;
    wxChoice* discard_ = nullptr;
    wxTextCtrl* discardPerc_ = nullptr;
    wxChoice* force_ = nullptr;
    wxTextCtrl* forcePerc_ = nullptr;
    wxStaticText* labels_[5] = {};
    wxListCtrl* availableList_ = nullptr;
    wxListCtrl* usedList_ = nullptr;
    wxButton* add_ = nullptr;
    wxButton* remove_ = nullptr;
    wxButton* exit_ = nullptr;
    wxButton* save_ = nullptr;
};

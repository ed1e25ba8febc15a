#pragma once
#include <wx/panel.h>

#include "UiEvents.h"

class wxListCtrl;
class wxListEvent;
class wxStaticText;

// The centre pane: the recent readings, newest first, and the database connection state.
class LPRList : public wxPanel {
  public:
    LPRList(wxWindow* parent, const UiContext& context);
    void Refill();
    void SetStatus(int state);
    wxListCtrl* List() const { return list_; }
    wxString StatusText() const;

  private:
    void OnActivated(wxListEvent& event);
    void LayoutControls();

    UiContext context_;
    wxStaticText* title_ = nullptr;
    wxStaticText* status_ = nullptr;
    wxString statusText_;  // as the database thread told it, before any wrapping
    wxListCtrl* list_ = nullptr;
};

#pragma once
#include "ComponentPane.h"

// The pane "Triggers Management".
class TriggerDlg : public ComponentPane {
  public:
    TriggerDlg(wxWindow* parent, const UiContext& context);
    void RefillTypes();
    void Refill() override;
    void OnAdd() override;
    void OnModify() override;
    void OnRemove() override;

  private:
    // The regions and the board thread start again, and the ROI pane hears of the list.
    void RestartAfterEdit();
};

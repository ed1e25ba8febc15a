#pragma once
#include "ComponentPane.h"

// The pane "Boards Management".
class BoardDlg : public ComponentPane {
  public:
    BoardDlg(wxWindow* parent, const UiContext& context);
    void RefillTypes();
    void Refill() override;
    void OnAdd() override;
    void OnModify() override;
    void OnRemove() override;
};

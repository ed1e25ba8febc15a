#pragma once
#include "ComponentPane.h"

// The pane "Post Processor Management".
class ProcessorDlg : public ComponentPane {
  public:
    ProcessorDlg(wxWindow* parent, const UiContext& context);
    // The grid anew: the types and the gates to refer to.
    void RebuildGrid();
    void Refill() override;
    void OnAdd() override;
    void OnModify() override;
    void OnRemove() override;
    // Carries a gate's list settings into the post processors that refer to it.
    void ApplyGateListSettings(const GateListRecord& record);
};

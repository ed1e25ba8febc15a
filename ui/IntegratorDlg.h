#pragma once
#include "ComponentPane.h"

struct GateListRecord;

// The pane "Lanes Management": the gates, shown to the operator as lanes.
class IntegratorDlg : public ComponentPane {
  public:
    IntegratorDlg(wxWindow* parent, const UiContext& context);
    void RefillTypes();
    void Refill() override;
    void OnAdd() override;
    void OnModify() override;
    void OnRemove() override;

    static std::string WithName(const std::string& settings, const std::string& name);
};

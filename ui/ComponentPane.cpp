#include "ComponentPane.h"

#include <wx/button.h>
#include <wx/listctrl.h>
#include <wx/propgrid/propgrid.h>

#include "ListColumns.h"
#include "PropertyGridLayout.h"
#include "core/Project.h"

namespace {
constexpr int kBoardStatusRequest = 15999;
}

ComponentPane::ComponentPane(wxWindow* parent, const UiContext& context, const Buttons& buttons,
                             const std::vector<const char*>& columns)
    : wxPanel(parent, wxID_ANY), context_(context) {
    grid_ = new wxPropertyGrid(this, wxID_ANY);
    KeepLabelsReadable(grid_);
    grid_->AddActionTrigger(wxPG_ACTION_NEXT_PROPERTY, WXK_RETURN);
    grid_->DedicateKey(WXK_RETURN);
    add_ = new wxButton(this, buttons.addId, buttons.add);
    list_ = new wxListCtrl(this, buttons.listId, wxDefaultPosition, wxDefaultSize, wxLC_REPORT,
                           wxDefaultValidator, "list");
    for (const char* column : columns)
        list_->AppendColumn(column);
    FitColumnHeaders(*list_);
    modify_ = new wxButton(this, buttons.modifyId, buttons.modify);
    remove_ = new wxButton(this, buttons.removeId, buttons.remove);
    add_->Bind(wxEVT_BUTTON, [this](wxCommandEvent&) { OnAdd(); });
    modify_->Bind(wxEVT_BUTTON, [this](wxCommandEvent&) { OnModify(); });
    remove_->Bind(wxEVT_BUTTON, [this](wxCommandEvent&) { OnRemove(); });
    list_->Bind(wxEVT_LIST_ITEM_SELECTED, &ComponentPane::OnSelected, this);
    Bind(wxEVT_SIZE, [this](wxSizeEvent&) {
        const wxSize client = GetClientSize();
        const int t = client.y * 35 / 100;
        grid_->SetSize(0, 0, client.x, t);
        add_->SetSize(0, t + 2, client.x, 25);
        list_->SetSize(0, t + 30, client.x, client.y - t - 78);
        modify_->SetSize(0, client.y - 46, client.x, 22);
        remove_->SetSize(0, client.y - 23, client.x, 22);
    });
}

void ComponentPane::SetTypeChoices(const std::vector<std::string>& guiNames) {
    wxPGChoices choices;
    for (size_t i = 0; i < guiNames.size(); ++i)
        choices.Add(wxString::FromUTF8(guiNames[i]), static_cast<int>(i));
    wxPGProperty* row = grid_->GetProperty("Type");
    row->SetChoices(choices);
    if (!guiNames.empty())
        row->SetValue(0);
}

void ComponentPane::BeginRefill() {
    list_->DeleteAllItems();
    selected = -1;
}

void ComponentPane::AddRow(int id, const std::vector<wxString>& cells) {
    const long row = list_->InsertItem(list_->GetItemCount(), cells.empty() ? "" : cells[0]);
    list_->SetItemData(row, id);
    for (size_t i = 1; i < cells.size(); ++i)
        list_->SetItem(row, static_cast<long>(i), cells[i]);
}

void ComponentPane::Select(int id) {
    for (long row = 0; row < list_->GetItemCount(); ++row)
        if (static_cast<int>(list_->GetItemData(row)) == id)
            list_->SetItemState(row, wxLIST_STATE_SELECTED, wxLIST_STATE_SELECTED);
    selected = id;
}

void ComponentPane::OnSelected(wxListEvent& event) {
    context_.project->TouchActivity();
    selected = static_cast<int>(event.GetData());
}

void ComponentPane::AnswerBoardStatus(wxCommandEvent& event) {
    auto* asker = static_cast<wxEvtHandler*>(event.GetClientData());
    if (asker == nullptr)
        return;
    auto* answer = new wxCommandEvent(wxEVT_MENU, kBoardStatusRequest);
    answer->SetString(wxString::FromUTF8(context_.project->GetBoardPins()));
    wxQueueEvent(asker, answer);
}

std::string NameProblem(const Project& project, const std::string& name, const std::string& what,
                        const std::string& oldName) {
    if (name.empty())
        return what + " name not specified";
    if (!Project::IsValidName(name))
        return what + " name cannot contain spaces";
    if (name != oldName && project.NameInUse(name))
        return what + " name needs to be unique";
    return std::string();
}

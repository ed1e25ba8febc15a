#pragma once
#include <wx/panel.h>

#include <string>
#include <vector>

#include "UiEvents.h"

class wxButton;
class wxListCtrl;
class wxListEvent;
class wxPropertyGrid;

// The common shape of the board, trigger, gate and post-processor panes: a grid for the new
// record, an add button, the list, a modify and a remove button. The subclasses act.
class ComponentPane : public wxPanel {
  public:
    struct Buttons {
        const char* add;
        int addId;
        const char* modify;
        int modifyId;
        const char* remove;
        int removeId;
        int listId;
    };

    ComponentPane(wxWindow* parent, const UiContext& context, const Buttons& buttons,
                  const std::vector<const char*>& columns);

    virtual void OnAdd() = 0;
    virtual void OnModify() = 0;
    virtual void OnRemove() = 0;
    virtual void Refill() = 0;

    void Select(int id);
    wxPropertyGrid* Grid() const { return grid_; }
    wxListCtrl* List() const { return list_; }
    int selected = -1;

  protected:
    // The Type row's choices: one entry for each listed plug-in by its menu name.
    void SetTypeChoices(const std::vector<std::string>& guiNames);
    // Clears the list and adds one row a record, its item data the id.
    void BeginRefill();
    void AddRow(int id, const std::vector<wxString>& cells);
    // The answer to a plug-in dialog's board status request (event 15999).
    void AnswerBoardStatus(wxCommandEvent& event);

    UiContext context_;
    wxPropertyGrid* grid_ = nullptr;
    wxListCtrl* list_ = nullptr;
    wxButton* add_ = nullptr;
    wxButton* modify_ = nullptr;
    wxButton* remove_ = nullptr;

  private:
    void OnSelected(wxListEvent& event);
};

// What the name checks of the panes answer: empty when the name is fine.
std::string NameProblem(const Project& project, const std::string& name, const std::string& what,
                        const std::string& oldName = std::string());

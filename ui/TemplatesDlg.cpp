#include "TemplatesDlg.h"

#include <algorithm>
#include "ListColumns.h"

#include <wx/button.h>
#include <wx/choice.h>
#include <wx/listctrl.h>
#include <wx/msgdlg.h>
#include <wx/stattext.h>
#include <wx/textctrl.h>
#include <wx/valnum.h>

#include <cstdlib>

#include "core/Project.h"
#include "platform/Log.h"

namespace {

wxChoice* YesNoChoice(wxWindow* parent, int id, int value) {
    auto* choice = new wxChoice(parent, id);
    choice->Append("No");
    choice->Append("Yes");
    choice->SetSelection(value != 0 ? 1 : 0);
    return choice;
}

}  // namespace

TemplatesDlg::TemplatesDlg(wxWindow* parent, Project& project)
    : wxDialog(parent, wxID_ANY, "Templates Manager", wxDefaultPosition, wxSize(800, 600),
               wxDEFAULT_DIALOG_STYLE | wxRESIZE_BORDER),
      project_(project) {
    templateSet.LoadTemplates(FilePath());
    for (const PlateTemplate& plate : templateSet.templates) {
        const wxString iso = wxString::FromUTF8(plate.isoCountry);
        if (available.Index(iso) == wxNOT_FOUND)
            available.Add(iso);
        if (plate.use != 0 && used.Index(iso) == wxNOT_FOUND)
            used.Add(iso);
    }
    const char* texts[] = {"Use Template", "Discard res. if templ. not found",
                           "Discard Min. Th. (%)", "Force character substitution",
                           "Substitution Min. Th. (%)"};
    for (int i = 0; i < 5; ++i)
        labels_[i] = new wxStaticText(this, wxID_ANY, texts[i]);
    useTemplate_ = YesNoChoice(this, 6111, templateSet.useTempl);
    discard_ = YesNoChoice(this, 6112, templateSet.discard);
    discardPerc_ = new wxTextCtrl(this, wxID_ANY, wxString::Format("%d", templateSet.discardPerc));
    force_ = YesNoChoice(this, 6113, templateSet.forceSub);
    forcePerc_ = new wxTextCtrl(this, wxID_ANY, wxString::Format("%d", templateSet.forceSubPerc));
    // Percentages only: the fields take digits, and a value beyond 100 is refused on save.
    for (wxTextCtrl* percent : {discardPerc_, forcePerc_}) {
        wxIntegerValidator<int> digits;
        digits.SetRange(0, 100);
        percent->SetValidator(digits);
    }
    availableList_ = new wxListCtrl(this, 6088, wxDefaultPosition, wxDefaultSize, wxLC_REPORT);
    availableList_->AppendColumn("Country");
    usedList_ = new wxListCtrl(this, 6089, wxDefaultPosition, wxDefaultSize, wxLC_REPORT);
    usedList_->AppendColumn("Country");
    FitColumnHeaders(*availableList_);
    FitColumnHeaders(*usedList_);
    add_ = new wxButton(this, 6072, "-->");
    remove_ = new wxButton(this, 6073, "<--");
    exit_ = new wxButton(this, 6057, "Exit");
    save_ = new wxButton(this, 6069, "Save Changes");
    EnableControls();
    FillLists();
    for (wxChoice* choice : {useTemplate_, discard_, force_})
        choice->Bind(wxEVT_CHOICE, [this](wxCommandEvent&) { EnableControls(); });
    availableList_->Bind(wxEVT_LIST_ITEM_SELECTED,
                         [this](wxListEvent& event) { SelectAvailable(event.GetIndex()); });
    usedList_->Bind(wxEVT_LIST_ITEM_SELECTED,
                    [this](wxListEvent& event) { SelectUsed(event.GetIndex()); });
    add_->Bind(wxEVT_BUTTON, [this](wxCommandEvent&) { AddCountry(); });
    remove_->Bind(wxEVT_BUTTON, [this](wxCommandEvent&) { RemoveCountry(); });
    exit_->Bind(wxEVT_BUTTON, [this](wxCommandEvent&) {
        AskAndSave();
        EndModal(0);
    });
    save_->Bind(wxEVT_BUTTON, [this](wxCommandEvent&) { AskAndSave(); });
    Bind(wxEVT_CLOSE_WINDOW, [this](wxCloseEvent&) {
        AskAndSave();
        EndModal(0);
    });
    Bind(wxEVT_SIZE, [this](wxSizeEvent&) { LayoutControls(); });
    CentreOnScreen();
}

std::string TemplatesDlg::FilePath() const {
    std::string folder = project_.prjdir;
    if (!folder.empty() && folder.back() != '/')
        folder += '/';
    return folder + "templates.xml";
}

void TemplatesDlg::EnableControls() {
    const bool use = useTemplate_->GetSelection() == 1;
    discard_->Enable(use);
    force_->Enable(use);
    labels_[1]->Enable(use);
    labels_[3]->Enable(use);
    const bool discardOn = use && discard_->GetSelection() == 1;
    const bool forceOn = use && force_->GetSelection() == 1;
    discardPerc_->Enable(discardOn);
    labels_[2]->Enable(discardOn);
    forcePerc_->Enable(forceOn);
    labels_[4]->Enable(forceOn);
}

void TemplatesDlg::FillLists() {
    availableList_->DeleteAllItems();
    usedList_->DeleteAllItems();
    for (size_t i = 0; i < available.size(); ++i)
        availableList_->SetItemData(availableList_->InsertItem(static_cast<long>(i), available[i]),
                                    static_cast<long>(i));
    for (size_t i = 0; i < used.size(); ++i)
        usedList_->SetItemData(usedList_->InsertItem(static_cast<long>(i), used[i]),
                               static_cast<long>(i));
    selAvailable = -1;
    selUsed = -1;
    add_->Enable(false);
    remove_->Enable(false);
}

void TemplatesDlg::SelectAvailable(int row) {
    selAvailable = row;
    add_->Enable(true);
}

void TemplatesDlg::SelectUsed(int row) {
    selUsed = row;
    remove_->Enable(true);
}

bool TemplatesDlg::AddCountry() {
    if (selAvailable < 0 || static_cast<size_t>(selAvailable) >= available.size()) {
        wxMessageBox("Please select a country before", "Warning", wxOK, this);
        return false;
    }
    const wxString iso = available[static_cast<size_t>(selAvailable)];
    if (used.Index(iso) != wxNOT_FOUND) {
        wxMessageBox("Country already in use", wxMessageBoxCaptionStr, wxOK, this);
        return false;
    }
    used.Add(iso);
    FillLists();
    return true;
}

bool TemplatesDlg::RemoveCountry() {
    if (selUsed < 0 || static_cast<size_t>(selUsed) >= used.size()) {
        wxMessageBox("Please select a country before", "Warning", wxOK, this);
        return false;
    }
    used.RemoveAt(static_cast<size_t>(selUsed));
    FillLists();
    return true;
}

void TemplatesDlg::AskAndSave() {
    if (wxMessageBox("Save changes?", "Warning", wxYES_NO, this) != wxYES)
        return;
    for (wxTextCtrl* percent : {discardPerc_, forcePerc_}) {
        long value = -1;
        if (!percent->GetValue().ToLong(&value) || value < 0 || value > 100) {
            CORVANE_LOG_WARNING("TemplatesDlg::AskAndSave",
                                "Thresholds are percentages from 0 to 100");
            return;
        }
    }
    templateSet.useTempl = useTemplate_->GetSelection() == 1 ? 1 : 0;
    templateSet.discard = discard_->GetSelection() == 1 ? 1 : 0;
    templateSet.discardPerc = std::atoi(discardPerc_->GetValue().utf8_str());
    templateSet.forceSub = force_->GetSelection() == 1 ? 1 : 0;
    templateSet.forceSubPerc = std::atoi(forcePerc_->GetValue().utf8_str());
    std::vector<std::string> countries;
    for (const wxString& iso : used)
        countries.push_back(std::string(iso.utf8_str()));
    templateSet.SaveTemplates(FilePath(), countries);
}

void TemplatesDlg::LayoutControls() {
    const wxSize client = GetClientSize();
    const int w = client.x;
    const int h = client.y;
    // A form: each setting's label whole on the left, its control beside it, then the two
    // country lists with the move buttons between them and the two buttons at the foot.
    wxWindow* controls[] = {useTemplate_, discard_, discardPerc_, force_, forcePerc_};
    int labelWidth = 0;
    int row = 0;
    for (int i = 0; i < 5; ++i) {
        labelWidth = std::max(labelWidth, labels_[i]->GetBestSize().x);
        row = std::max({row, controls[i]->GetBestSize().y, labels_[i]->GetBestSize().y});
    }
    const int controlWidth = std::max(120, std::min(240, w - labelWidth - 20));
    for (int i = 0; i < 5; ++i) {
        const int y = 5 + i * (row + 4);
        labels_[i]->SetSize(5, y + (row - labels_[i]->GetBestSize().y) / 2, labelWidth, -1);
        controls[i]->SetSize(labelWidth + 15, y, controlWidth, row);
    }
    const int button = std::max(25, save_->GetBestSize().y);
    const int top = 5 + 5 * (row + 4) + 10;
    const int listHeight = h - top - button - 10;
    availableList_->SetSize(5, top, w / 2 - 50, listHeight);
    usedList_->SetSize(w / 2 + 45, top, w / 2 - 50, listHeight);
    availableList_->SetColumnWidth(0, w / 2 - 50);
    usedList_->SetColumnWidth(0, w / 2 - 50);
    add_->SetSize(w / 2 - 40, top + 20, 80, button);
    remove_->SetSize(w / 2 - 40, top + 25 + button, 80, button);
    save_->SetSize(5, h - button - 2, w / 2 - 10, button);
    exit_->SetSize(w / 2 + 5, h - button - 2, w / 2 - 10, button);
}

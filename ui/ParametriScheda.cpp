#include "ParametriScheda.h"

#include <wx/button.h>
#include <wx/propgrid/advprops.h>
#include <wx/propgrid/propgrid.h>
#include <wx/sizer.h>

#include <cstdlib>

#include "PropertyGridLayout.h"
#include "core/Project.h"

namespace {

constexpr int kGridId = 6075;
constexpr int kUpdateId = 99;
constexpr int kCancelId = 100;

std::vector<int> PinClassesOf(int type) {
    if (type == kParamPinOut)
        return {kPinOutputs2, kPinOutputs3};
    if (type == kParamPinInp)
        return {kPinInputs0, kPinInputs1};
    return {kPinAll};
}

}  // namespace

ParametriScheda::ParametriScheda(wxWindow* parent, Project& project, const std::string& description)
    : wxDialog(parent, wxID_ANY, "Impostazioni scheda", wxDefaultPosition, wxSize(420, 480),
               wxCAPTION | wxSYSTEM_MENU | wxCLOSE_BOX | wxRESIZE_BORDER, "name"),
      project_(project) {
    Build(description);
}

ParametriScheda::ParametriScheda(wxWindow* parent, Project& project, const std::string& description,
                                 const std::string& nameLabel, const std::string& nameValue)
    : wxDialog(parent, wxID_ANY, "Impostazioni scheda", wxDefaultPosition, wxSize(420, 480),
               wxCAPTION | wxSYSTEM_MENU | wxCLOSE_BOX | wxRESIZE_BORDER, "name"),
      namerow(true),
      namelabel(nameLabel),
      namevalue(nameValue),
      project_(project) {
    Build(description);
}

void ParametriScheda::Build(const std::string& description) {
    const ParameterDescription parsed = ReadParameterDescription(description);
    parametri = parsed.parameters;
    if (!parsed.title.empty())
        SetTitle(wxString::FromUTF8(parsed.title));
    grid_ = new wxPropertyGrid(this, kGridId, wxDefaultPosition, wxDefaultSize,
                               wxPG_SPLITTER_AUTO_CENTER | wxPG_DEFAULT_STYLE);
    KeepLabelsReadable(grid_);
    grid_->AddActionTrigger(wxPG_ACTION_NEXT_PROPERTY, WXK_RETURN);
    grid_->DedicateKey(WXK_RETURN);
    if (namerow)
        grid_->Append(new wxStringProperty(wxString::FromUTF8(namelabel),
                                           wxString::FromUTF8(namelabel),
                                           wxString::FromUTF8(namevalue)));
    int pinIndex = 0;
    for (const Parametro& parameter : parametri) {
        const wxString name = wxString::FromUTF8(parameter.name);
        switch (parameter.type) {
            case kParamInt:
                grid_->Append(new wxIntProperty(name, name, parameter.defaultInt));
                break;
            case kParamPassword: {
                wxPGProperty* row = grid_->Append(
                    new wxStringProperty(name, name, wxString::FromUTF8(parameter.defaultText)));
                row->SetAttribute(wxPG_STRING_PASSWORD, true);
                break;
            }
            case kParamFile: {
                wxPGProperty* row = grid_->Append(
                    new wxFileProperty(name, name, wxString::FromUTF8(parameter.defaultText)));
                row->SetAttribute(wxPG_FILE_WILDCARD,
                                  "AVI files (*.avi)|*.avi| MPG files (*.mpg)|*.mpg");
                break;
            }
            case kParamFolder: {
                wxPGProperty* row = grid_->Append(
                    new wxDirProperty(name, name, wxString::FromUTF8(parameter.defaultText)));
                row->SetAttribute(wxPG_DIALOG_TITLE, "Choose a folder");
                break;
            }
            case kParamChoice: {
                wxPGChoices choices;
                for (size_t i = 0; i < parameter.choices.size(); ++i)
                    choices.Add(wxString::FromUTF8(parameter.choices[i]), static_cast<int>(i));
                wxPGProperty* row = grid_->Append(new wxEnumProperty(name, name, choices));
                row->SetValueFromString(wxString::FromUTF8(parameter.defaultText));
                break;
            }
            case kParamHeader:
                grid_->Append(new wxPropertyCategory(name, name));
                break;
            case kParamPin:
            case kParamPinOut:
            case kParamPinInp:
                AddPinRows(parameter, pinIndex++);
                break;
            default:
                grid_->Append(
                    new wxStringProperty(name, name, wxString::FromUTF8(parameter.defaultText)));
                break;
        }
    }
    auto* sizer = new wxBoxSizer(wxVERTICAL);
    sizer->Add(grid_, 1, wxEXPAND | wxALL, 10);
    sizer->Add(new wxButton(this, kUpdateId, "Update"), 0, wxEXPAND | wxLEFT | wxRIGHT, 10);
    sizer->Add(new wxButton(this, kCancelId, "Cancel"), 0, wxEXPAND | wxALL, 10);
    SetSizer(sizer);
    Bind(wxEVT_PG_CHANGED, &ParametriScheda::OnChanged, this);
    Bind(wxEVT_BUTTON, &ParametriScheda::OnButton, this);
    Bind(wxEVT_CLOSE_WINDOW, &ParametriScheda::OnClose, this);
}

void ParametriScheda::AddPinRows(const Parametro& parameter, int index) {
    pintypes.push_back(parameter.type);
    // The default is read as the model reads it: "board;pin", a board that exists, a pin it has.
    const std::string& text = parameter.defaultText;
    std::vector<std::string> boardNames;
    const Board* named = nullptr;
    for (const Board& board : project_.boards) {
        boardNames.push_back(board.name);
        if (named == nullptr && board.name == text.substr(0, text.find(';')))
            named = &board;
    }
    std::vector<int> pinIds;
    if (named != nullptr)
        PinsOf(*named, parameter.type, nullptr, &pinIds);
    const ParameterValue chosen = ParsePinDefault(text, boardNames, pinIds);
    const int pin = chosen.pin;
    grid_->Append(new wxPropertyCategory(wxString::FromUTF8(parameter.name)));
    wxPGChoices boards;
    boards.Add(kNoBoard, -1);
    for (const Board& board : project_.boards)
        boards.Add(wxString::FromUTF8(board.name), board.id);
    // The parser names a board only when the default named one that exists: the one found above.
    const int boardId = chosen.board.empty() || named == nullptr ? -1 : named->id;
    wxPGProperty* boardRow =
        grid_->Append(new wxEnumProperty("Board", wxString::Format("Board%d", index), boards));
    boardRow->SetValue(boardId);
    wxPGChoices none;
    none.Add(kNoPin, -1);
    grid_->Append(new wxEnumProperty("Pins", wxString::Format("Pins%d", index), none));
    FillPins(index, boardId, pin);
}

void ParametriScheda::PinsOf(const Board& board, int type, std::vector<std::string>* names,
                             std::vector<int>* ids) {
    if (board.plugin == nullptr)
        return;
    std::vector<std::string> allNames;
    std::vector<int> allIds;
    for (const int pinClass : PinClassesOf(type))
        board.plugin->GetPins(allNames, allIds, pinClass);
    if (names != nullptr)
        *names = std::move(allNames);
    if (ids != nullptr)
        *ids = std::move(allIds);
}

void ParametriScheda::FillPins(int index, int boardId, int selectedPin) {
    wxPGProperty* pinRow = grid_->GetProperty(wxString::Format("Pins%d", index));
    if (pinRow == nullptr)
        return;
    wxPGChoices pins;
    pins.Add(kNoPin, -1);
    const Board* board = project_.GetBoard(boardId);
    bool known = false;
    if (board != nullptr) {
        const int type = index < static_cast<int>(pintypes.size()) ? pintypes[index] : kParamPin;
        std::vector<std::string> names;
        std::vector<int> ids;
        PinsOf(*board, type, &names, &ids);
        for (size_t i = 0; i < names.size() && i < ids.size(); ++i) {
            pins.Add(wxString::FromUTF8(names[i]), ids[i]);
            known = known || ids[i] == selectedPin;
        }
    }
    pinRow->SetChoices(pins);
    pinRow->SetValue(known ? selectedPin : -1);
}

void ParametriScheda::OnChanged(wxPropertyGridEvent& event) {
    wxPGProperty* row = event.GetProperty();
    if (row == nullptr || (namerow && row->GetName() == wxString::FromUTF8(namelabel)))
        return;
    const wxString key = row->GetName();
    if (!key.StartsWith("Board"))
        return;
    const int index = std::atoi(key.Mid(5).utf8_str());
    if (index < 0)
        return;
    FillPins(index, row->GetValue().GetLong(), -1);
}

bool ParametriScheda::SetRowValue(const std::string& label, const std::string& value) {
    wxPGProperty* row = grid_->GetProperty(wxString::FromUTF8(label));
    if (row == nullptr)
        return false;
    return row->SetValueFromString(wxString::FromUTF8(value));
}

void ParametriScheda::Update() {
    project_.TouchActivity();
    if (namerow) {
        wxPGProperty* row = grid_->GetProperty(wxString::FromUTF8(namelabel));
        newname = row != nullptr ? std::string(row->GetValueAsString().utf8_str()) : "";
    }
    std::vector<ParameterValue> values;
    int pinIndex = 0;
    for (const Parametro& parameter : parametri) {
        ParameterValue value;
        wxPGProperty* row = grid_->GetProperty(wxString::FromUTF8(parameter.name));
        switch (parameter.type) {
            case kParamInt:
                value.number = row != nullptr ? static_cast<int>(row->GetValue().GetLong()) : 0;
                break;
            case kParamChoice:
                value.choiceIndex = row != nullptr ? row->GetChoiceSelection() : -1;
                break;
            case kParamPin:
            case kParamPinOut:
            case kParamPinInp: {
                wxPGProperty* board = grid_->GetProperty(wxString::Format("Board%d", pinIndex));
                wxPGProperty* pin = grid_->GetProperty(wxString::Format("Pins%d", pinIndex));
                ++pinIndex;
                const wxString boardLabel =
                    board != nullptr ? board->GetValueAsString() : wxString(kNoBoard);
                value.board =
                    boardLabel == kNoBoard ? std::string() : std::string(boardLabel.utf8_str());
                value.pin = pin != nullptr ? static_cast<int>(pin->GetValue().GetLong()) : -1;
                break;
            }
            default:
                if (row != nullptr && !row->IsCategory())
                    value.text = row->GetValueAsString().utf8_str();
                break;
        }
        values.push_back(value);
    }
    returntext = WriteValueReturn(parametri, values);
    if (IsModal())
        EndModal(1);
    else
        SetReturnCode(1);
}

void ParametriScheda::OnButton(wxCommandEvent& event) {
    if (event.GetId() == kUpdateId) {
        Update();
    } else if (event.GetId() == kCancelId) {
        project_.TouchActivity();
        EndModal(0);
    } else {
        event.Skip();
    }
}

void ParametriScheda::OnClose(wxCloseEvent&) {
    project_.TouchActivity();
    if (IsModal())
        EndModal(0);
    else
        Hide();
}

#pragma once
#include <wx/dialog.h>

#include <string>
#include <vector>

#include "plugins/Parametro.h"

struct Board;

class Project;
class wxPropertyGrid;
class wxPropertyGridEvent;

// The generic settings dialog of a plug-in: its parameter description as property rows, the
// operator's entries as the value return. Also run hidden, to edit a description by program.
class ParametriScheda : public wxDialog {
  public:
    ParametriScheda(wxWindow* parent, Project& project, const std::string& description);
    ParametriScheda(wxWindow* parent, Project& project, const std::string& description,
                    const std::string& nameLabel, const std::string& nameValue);

    // Builds returntext (and newname) from the rows; ends the dialog with 1 when it is shown.
    void Update();
    // Sets a row by its label: a choice by the text of an entry, others by their value text.
    bool SetRowValue(const std::string& label, const std::string& value);
    wxPropertyGrid* Grid() const { return grid_; }

    std::string returntext;
    ArrayParametro parametri;
    bool namerow = false;
    std::string namelabel;
    std::string namevalue;
    std::string newname;
    std::vector<int> pintypes;

  private:
    void Build(const std::string& description);
    void AddPinRows(const Parametro& parameter, int index);
    void FillPins(int index, int boardId, int selectedPin);
    // The names and ids of the pins a board offers for a pin parameter's type.
    static void PinsOf(const Board& board, int type, std::vector<std::string>* names,
                       std::vector<int>* ids);
    void OnChanged(wxPropertyGridEvent& event);
    void OnButton(wxCommandEvent& event);
    void OnClose(wxCloseEvent& event);

    Project& project_;
    wxPropertyGrid* grid_ = nullptr;
};

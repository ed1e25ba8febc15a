#include "BoardDlg.h"

#include <wx/msgdlg.h>
#include <wx/propgrid/propgrid.h>

#include "NativeWindowOf.h"
#include "ParametriScheda.h"
#include "core/Project.h"
#include "corvane/BoardPlugin.h"
#include "platform/Log.h"

BoardDlg::BoardDlg(wxWindow* parent, const UiContext& context)
    : ComponentPane(parent, context,
                    {"Add Board", 6039, "Modify Board", 6038, "Remove Board", 6040, 6081},
                    {"Name", "Type", "ID"}) {
    grid_->Append(new wxPropertyCategory("New Board", "Board"));
    grid_->Append(new wxStringProperty("Name", "Name", ""));
    grid_->Append(new wxEnumProperty("Type", "Type"));
    RefillTypes();
}

void BoardDlg::RefillTypes() {
    std::vector<std::string> names;
    for (const auto& plugin : context_.project->boardplugins.Prototypes())
        names.push_back(plugin->GetGuiName());
    SetTypeChoices(names);
}

void BoardDlg::Refill() {
    BeginRefill();
    for (const Board& board : context_.project->boards)
        AddRow(board.id, {wxString::FromUTF8(board.name),
                          board.plugin ? wxString::FromUTF8(board.plugin->GetGuiName()) : "",
                          wxString::Format("%d", board.id)});
}

void BoardDlg::OnAdd() {
    Project& project = *context_.project;
    project.TouchActivity();
    const char* origin = "BoardDlg::OnAddBoard";
    const std::string name = grid_->GetPropertyValueAsString("Name").utf8_str().data();
    const std::string problem = NameProblem(project, name, "Board");
    if (!problem.empty())
        return CORVANE_LOG_WARNING(origin, problem);
    const std::string type = grid_->GetPropertyValueAsString("Type").utf8_str().data();
    if (type.empty())
        return CORVANE_LOG_WARNING(origin, "Board not specified");
    const int id = project.NewBoardId();
    if (id < 1)
        return CORVANE_LOG_WARNING(origin, "ID not valid");
    if (project.GetBoard(id) != nullptr)
        return CORVANE_LOG_WARNING(origin, "ID already assigned");
    project.EditBracket([&] {
        BoardPlugin* listed = project.boardplugins.FindByGuiName(type);
        if (listed == nullptr)
            return CORVANE_LOG_WARNING(origin, "Cannot create plugin");
        const std::string library = listed->GetLibName();
        Board board;
        board.name = name;
        board.id = id;
        if (listed->HasDialog() != 0) {
            BoardPlugin* instance = project.boardplugins.CreaBoardPlugin(library);
            if (instance == nullptr)
                return CORVANE_LOG_WARNING(origin, "Plugin error");
            if (instance->ShowDialog(NativeWindowOf(this), project.GetProjectText()) == 0) {
                instance->Close(0);
                project.boardplugins.Destroy(instance);  // cancelled: nothing holds it
                return;
            }
            board.settings = instance->GetParameters(0);
            board.plugin = instance;
        } else {
            listed->SetParameters("<RESET>");
            ParametriScheda dialog(this, project, listed->GetParameters(0));
            if (dialog.ShowModal() != 1)
                return;
            board.plugin = project.boardplugins.CreaBoardPlugin(library);
            if (board.plugin == nullptr)
                return CORVANE_LOG_WARNING(origin, "Plugin error");
            board.settings = dialog.returntext;
            board.plugin->SetParameters(board.settings);
        }
        board.plugin->Open(project.mainwindow, board.name, board.id);
        {
            std::lock_guard<std::mutex> lock(project.boardsmutex);
            project.boards.Add(board);
        }
        Refill();
    });
}

void BoardDlg::OnModify() {
    Project& project = *context_.project;
    // The bracket has stopped the board thread, the only other walker of the boards.
    project.EditBracket([&] {
        Board* board = project.GetBoard(selected);
        if (board == nullptr || board->plugin == nullptr) {
            wxMessageBox("Error: cannot find board plugin", wxMessageBoxCaptionStr, wxOK, this);
            return;
        }
        if (board->plugin->HasDialog() != 0) {
            board->plugin->Close(0);
            if (board->plugin->ShowDialog(NativeWindowOf(this), project.GetProjectText()) != 0) {
                board->settings = board->plugin->GetParameters(0);
                board->plugin->Open(project.mainwindow, board->name, board->id);
            }
            return;
        }
        ParametriScheda dialog(this, project, board->plugin->GetParameters(0), "Board name",
                               board->name);
        for (;;) {
            if (dialog.ShowModal() != 1)
                return;
            const std::string problem = NameProblem(project, dialog.newname, "Board", board->name);
            if (problem.empty())
                break;
            CORVANE_LOG_WARNING("BoardDlg::OnModify", problem);
        }
        board->plugin->Close(0);
        board->settings = dialog.returntext;
        board->plugin->SetParameters(board->settings);
        if (dialog.newname != board->name) {
            board->name = dialog.newname;
            Refill();
        }
        board->plugin->Open(project.mainwindow, board->name, board->id);
    });
}

void BoardDlg::OnRemove() {
    Project& project = *context_.project;
    project.EditBracket([&] {
        if (selected >= 0 && project.GetBoard(selected) != nullptr) {
            project.RemoveBoard(selected);
            Refill();
        }
    });
}

#include "IntegratorDlg.h"

#include <wx/msgdlg.h>
#include <wx/propgrid/propgrid.h>

#include <cstdio>
#include <memory>

#include "NativeWindowOf.h"
#include "ParametriScheda.h"
#include "core/Project.h"
#include "corvane/IntegratorPlugin.h"
#include "platform/Log.h"

namespace {

const char* ModeText(int mode) {
    return mode == 0 ? "Unattended" : mode == 1 ? "Attended" : "UNDEFINED";
}

// The value of a settings row by its label, empty when the plug-in did not describe it.
wxString RowText(ParametriScheda& dialog, const char* label) {
    wxPGProperty* row = dialog.Grid()->GetProperty(label);
    return row != nullptr ? row->GetValueAsString() : wxString();
}

}  // namespace

IntegratorDlg::IntegratorDlg(wxWindow* parent, const UiContext& context)
    : ComponentPane(parent, context,
                    {"Add Lane", 6048, "Modify Lane", 6049, "Remove Lane", 6050, 6084},
                    {"Name", "Type", "ID", "Mode"}) {
    grid_->Append(new wxPropertyCategory("New Lane", "NEWGATE"));
    grid_->Append(new wxStringProperty("Name", "Name", ""));
    grid_->Append(new wxEnumProperty("Type", "Type"));
    wxPGChoices modes;
    modes.Add("Attended", 1);
    modes.Add("Unattended", 0);
    grid_->Append(new wxEnumProperty("Operative Mode", "OpMode", modes, 0));
    RefillTypes();
    Bind(wxEVT_MENU, &IntegratorDlg::AnswerBoardStatus, this, 15999);
}

std::string IntegratorDlg::WithName(const std::string& settings, const std::string& name) {
    return settings + "<INTNAME>" + name + "<\\INTNAME>";
}

void IntegratorDlg::RefillTypes() {
    std::vector<std::string> names;
    for (const auto& plugin : context_.project->integratorplugins.Prototypes())
        names.push_back(plugin->GetGuiName());
    SetTypeChoices(names);
}

void IntegratorDlg::Refill() {
    BeginRefill();
    for (const Integrator& gate : context_.project->integrators)
        AddRow(gate.id, {wxString::FromUTF8(gate.name),
                         gate.plugin ? wxString::FromUTF8(gate.plugin->GetGuiName()) : "",
                         wxString::Format("%d", gate.id), ModeText(gate.OpMode)});
    context_.project->PostEvent(ID_INTEGRATORS_CHANGED, 0);
}

void IntegratorDlg::OnAdd() {
    Project& project = *context_.project;
    project.TouchActivity();
    const char* origin = "IntegratorDlg::OnAddIntegrator";
    const std::string name = grid_->GetPropertyValueAsString("Name").utf8_str().data();
    const std::string problem = NameProblem(project, name, "Lane");
    if (!problem.empty())
        return CORVANE_LOG_WARNING(origin, problem);
    const std::string type = grid_->GetPropertyValueAsString("Type").utf8_str().data();
    if (type.empty())
        return CORVANE_LOG_WARNING(origin, "Lane type not specified");
    const int id = project.NewIntegratorId();
    if (id < 1)
        return CORVANE_LOG_WARNING(origin, "ID not valid");
    if (project.GetIntegrator(id) != nullptr)
        return CORVANE_LOG_WARNING(origin, "ID already assigned");
    const int mode = static_cast<int>(grid_->GetPropertyValueAsLong("OpMode"));
    project.EditBracket([&] {
        std::lock_guard<std::mutex> lock(project.integratorsmutex);
        IntegratorPlugin* listed = project.integratorplugins.FindByGuiName(type);
        if (listed == nullptr)
            return CORVANE_LOG_WARNING(origin, "Lane not found");
        const std::string library = listed->GetLibName();
        Integrator gate;
        gate.name = name;
        gate.id = id;
        gate.OpMode = mode;
        if (listed->HasDialog() != 0) {
            IntegratorPlugin* instance = project.integratorplugins.CreaIntegratorPlugin(library);
            if (instance == nullptr)
                return CORVANE_LOG_WARNING(origin, "Error, cannot create Lane plugin");
            instance->SetParameters("<RESET><\\RESET>");
            if (instance->ShowDialog(NativeWindowOf(this), project.GetProjectText()) == 0) {
                instance->Close(" ", 0);
                project.integratorplugins.Destroy(instance);  // cancelled: nothing holds it
                return;
            }
            gate.settings = WithName(instance->GetParameters(0), name);
            gate.plugin = instance;
        } else {
            listed->SetParameters("<RESET><\\RESET>");
            ParametriScheda dialog(this, project, listed->GetParameters(0));
            if (dialog.ShowModal() != 1)
                return;
            gate.plugin = project.integratorplugins.CreaIntegratorPlugin(library);
            if (gate.plugin == nullptr)
                return CORVANE_LOG_WARNING(origin, "Error, cannot create Lane plugin");
            gate.settings = WithName(dialog.returntext, name);
        }
        gate.plugin->SetParameters(gate.settings);
        OpenWith(gate.plugin, gate.id, project.OpenArgs());
        project.integrators.Add(gate);
        Refill();
    });
}

void IntegratorDlg::OnModify() {
    Project& project = *context_.project;
    project.EditBracket([&] {
        Integrator* gate = project.GetIntegrator(selected);
        if (gate == nullptr || gate->plugin == nullptr)
            return;
        if (gate->plugin->HasDialog() != 0) {
            if (gate->plugin->ShowDialog(NativeWindowOf(this), project.GetProjectText()) == 0)
                std::fprintf(stderr, "Parameters not saved\n");
            else
                gate->settings = gate->plugin->GetParameters(0);
            return;
        }
        ParametriScheda dialog(this, project, gate->plugin->GetParameters(0), "Lane name",
                               gate->name);
        for (;;) {
            if (dialog.ShowModal() != 1 || dialog.returntext.empty())
                return;
            const std::string problem = NameProblem(project, dialog.newname, "Lane", gate->name);
            if (problem.empty())
                break;
            CORVANE_LOG_WARNING("IntegratorDlg::OnModifyIntegrator", problem);
        }
        {
            std::lock_guard<std::mutex> lock(project.integratorsmutex);
            gate->plugin->Close(gate->name, gate->id);
            if (dialog.newname != gate->name) {
                project.RenameIntegrator(gate->name, dialog.newname);
                context_.Post(EVT_LANE_UPDATE, -1, 0);
            }
            gate->settings = WithName(dialog.returntext, gate->name);
            gate->plugin->SetParameters(gate->settings);
            OpenWith(gate->plugin, gate->id, project.OpenArgs());
            Refill();
        }
        auto record = std::make_unique<GateListRecord>();
        record->gate = wxString::FromUTF8(gate->name);
        record->direction = RowText(dialog, "Transit Direction:");
        record->whitelist = RowText(dialog, "Check Whitelist:");
        record->blacklist = RowText(dialog, "Check Blacklist:");
        record->whitelistTolerance = RowText(dialog, "Whitelist tolerance:");
        record->blacklistTolerance = RowText(dialog, "Blacklist tolerance:");
        auto* event = new wxCommandEvent(EVT_WBLIST_UPDATE, -1);
        event->SetClientData(record.release());
        wxQueueEvent(context_.frame, event);
    });
}

void IntegratorDlg::OnRemove() {
    Project& project = *context_.project;
    project.EditBracket([&] {
        if (wxMessageBox("Remove Lane?", "Warning!", wxYES_NO, this) != wxYES)
            return;
        std::lock_guard<std::mutex> lock(project.integratorsmutex);
        project.RemoveIntegrator(selected);
        Refill();
    });
}

#include "TriggerDlg.h"

#include <wx/propgrid/propgrid.h>

#include "NativeWindowOf.h"
#include "ParametriScheda.h"
#include "core/Project.h"
#include "corvane/TriggerPlugin.h"
#include "platform/Log.h"

TriggerDlg::TriggerDlg(wxWindow* parent, const UiContext& context)
    : ComponentPane(parent, context,
                    {"Add Trigger", 6041, "Modify Trigger", 6042, "Remove Trigger", 6043, 6082},
                    {"Name", "Type", "ID"}) {
    grid_->Append(new wxPropertyCategory("New Trigger", "Trigger"));
    grid_->Append(new wxStringProperty("Name", "Name", ""));
    grid_->Append(new wxEnumProperty("Type", "Type"));
    grid_->Append(new wxIntProperty("ID", "ID", 1));
    RefillTypes();
    Bind(wxEVT_MENU, &TriggerDlg::AnswerBoardStatus, this, 15999);
}

void TriggerDlg::RefillTypes() {
    std::vector<std::string> names;
    for (const auto& plugin : context_.project->triggerplugins.Prototypes())
        names.push_back(plugin->GetGuiName());
    SetTypeChoices(names);
}

void TriggerDlg::Refill() {
    BeginRefill();
    for (const Trigger& trigger : context_.project->triggers)
        AddRow(trigger.id, {wxString::FromUTF8(trigger.name),
                            trigger.plugin ? wxString::FromUTF8(trigger.plugin->GetGuiName()) : "",
                            wxString::Format("%d", trigger.id)});
    context_.project->PostEvent(ID_TRIGGERS_CHANGED, 0);
}

void TriggerDlg::OnAdd() {
    Project& project = *context_.project;
    project.TouchActivity();
    const char* origin = "TriggerDlg::OnAddTrigger";
    const std::string name = grid_->GetPropertyValueAsString("Name").utf8_str().data();
    const std::string problem = NameProblem(project, name, "Trigger");
    if (!problem.empty())
        return CORVANE_LOG_WARNING(origin, problem);
    const std::string type = grid_->GetPropertyValueAsString("Type").utf8_str().data();
    if (type.empty())
        return CORVANE_LOG_WARNING(origin, "Trigger type not specified");
    const int id = static_cast<int>(grid_->GetPropertyValueAsLong("ID"));
    if (id < 1)
        return CORVANE_LOG_WARNING(origin, "ID not valid");
    if (project.GetTrigger(id) != nullptr)
        return CORVANE_LOG_WARNING(origin, "ID already assigned");
    project.StopBoardThread();
    project.StopCameras();
    project.StopLanes();
    bool added = false;
    TriggerPlugin* listed = project.triggerplugins.FindByGuiName(type);
    TriggerPlugin* instance = listed != nullptr
                                  ? project.triggerplugins.CreaTriggerPlugin(listed->GetLibName())
                                  : nullptr;
    if (instance == nullptr) {
        CORVANE_LOG_WARNING(origin, "Cannot create trigger plugin");
    } else {
        Trigger trigger;
        trigger.name = name;
        trigger.id = id;
        trigger.plugin = instance;
        instance->SetParameters("<RESET><\\RESET>");
        if (instance->HasDialog() != 0) {
            if (instance->ShowDialog(NativeWindowOf(this), project.GetProjectText()) != 0) {
                trigger.settings = instance->GetParameters(0);
                added = true;
            }
        } else {
            ParametriScheda dialog(this, project, instance->GetParameters(0));
            if (dialog.ShowModal() == 1) {
                trigger.settings = dialog.returntext;
                instance->SetParameters(trigger.settings);
                added = true;
            }
        }
        if (added) {
            instance->Open(trigger.name, trigger.id);
            project.triggers.Add(trigger);
            Refill();
            grid_->SetPropertyValue("ID", id + 1);
            grid_->SetPropertyValue("Name", " ");
        } else {
            project.triggerplugins.Destroy(instance);  // cancelled: nothing holds it
        }
    }
    RestartAfterEdit();
}

void TriggerDlg::OnModify() {
    Project& project = *context_.project;
    project.TouchActivity();
    project.StopBoardThread();
    project.StopCameras();
    project.StopLanes();
    Trigger* trigger = project.GetTrigger(selected);
    if (trigger != nullptr && trigger->plugin != nullptr) {
        if (trigger->plugin->HasDialog() != 0) {
            trigger->plugin->ShowDialog(NativeWindowOf(this), project.GetProjectText());
            trigger->settings = trigger->plugin->GetParameters(0);
        } else {
            ParametriScheda dialog(this, project, trigger->plugin->GetParameters(0), "Trigger name",
                                   trigger->name);
            bool accepted = false;
            while (dialog.ShowModal() == 1) {
                const std::string problem =
                    NameProblem(project, dialog.newname, "Trigger", trigger->name);
                if (problem.empty()) {
                    accepted = true;
                    break;
                }
                CORVANE_LOG_WARNING("TriggerDlg::OnModifyTrigger", problem);
            }
            if (accepted) {
                if (dialog.newname != trigger->name) {
                    trigger->name = dialog.newname;
                    Refill();
                }
                trigger->settings = dialog.returntext;
                trigger->plugin->SetParameters(trigger->settings);
                trigger->plugin->Open(trigger->name, trigger->id);
            }
        }
    }
    RestartAfterEdit();
}

void TriggerDlg::RestartAfterEdit() {
    Project& project = *context_.project;
    project.PostEvent(ID_TRIGGERS_CHANGED, 0);
    project.StartLanes();
    project.StartBoardThread();
    project.PostEvent(ID_CAMERA_BUTTONS, 0);
}

void TriggerDlg::OnRemove() {
    Project& project = *context_.project;
    project.EditBracket([&] {
        project.RemoveTrigger(selected);
        Refill();
        project.PostEvent(ID_TRIGGERS_CHANGED, 0);
    });
}

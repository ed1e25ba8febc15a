#include "ProcessorDlg.h"

#include <wx/msgdlg.h>
#include <wx/propgrid/propgrid.h>

#include <cstdio>

#include "NativeWindowOf.h"
#include "ParametriScheda.h"
#include "core/Project.h"
#include "corvane/PostProcessorPlugin.h"
#include "platform/Log.h"

ProcessorDlg::ProcessorDlg(wxWindow* parent, const UiContext& context)
    : ComponentPane(parent, context,
                    {"Add Post Processor", 6048, "Modify Post Processor", 6049,
                     "Remove Post Processor", 6050, 6084},
                    {"ID", "Name", "Type", "Ref. Integrator"}) {
    RebuildGrid();
    Bind(wxEVT_MENU, &ProcessorDlg::AnswerBoardStatus, this, 15999);
}

void ProcessorDlg::RebuildGrid() {
    Project& project = *context_.project;
    grid_->Clear();
    grid_->Append(new wxPropertyCategory("New Post Processor", "Post Processor"));
    grid_->Append(new wxStringProperty("Name", "Name", ""));
    grid_->Append(new wxEnumProperty("Type", "Type"));
    wxPGChoices gates;
    gates.Add("No Integrator", -1);
    for (const Integrator& gate : project.integrators) {
        std::printf("Add integrator %s %d\n", gate.name.c_str(), gate.id);
        gates.Add(wxString::FromUTF8(gate.name), gate.id);
    }
    grid_->Append(new wxEnumProperty("Reference Lane", "Reference Gate", gates, -1));
    std::vector<std::string> names;
    for (const auto& plugin : project.processorplugins.Prototypes())
        names.push_back(plugin->GetGuiName());
    SetTypeChoices(names);
}

void ProcessorDlg::Refill() {
    BeginRefill();
    for (const PostProcessor& processor : context_.project->processors)
        AddRow(processor.id,
               {wxString::Format("%d", processor.id), wxString::FromUTF8(processor.name),
                processor.plugin ? wxString::FromUTF8(processor.plugin->GetGuiName()) : "",
                wxString::FromUTF8(processor.refintegrator)});
}

void ProcessorDlg::OnAdd() {
    Project& project = *context_.project;
    project.TouchActivity();
    const char* origin = "ProcessorDlg::OnAddProcessor";
    const std::string name = grid_->GetPropertyValueAsString("Name").utf8_str().data();
    const std::string problem = NameProblem(project, name, "Post Processor");
    if (!problem.empty())
        return CORVANE_LOG_WARNING(origin, problem);
    const std::string type = grid_->GetPropertyValueAsString("Type").utf8_str().data();
    if (type.empty())
        return CORVANE_LOG_WARNING(origin, "Post Processor type not specified");
    const int id = project.NewProcessorId();
    if (id < 1)
        return CORVANE_LOG_WARNING(origin, "ID not valid");
    if (project.GetProcessor(id) != nullptr)
        return CORVANE_LOG_WARNING(origin, "ID already assigned");
    const std::string reference =
        grid_->GetPropertyValueAsString("Reference Gate").utf8_str().data();
    project.EditBracket([&] {
        std::lock_guard<std::mutex> lock(project.processorsmutex);
        PostProcessorPlugin* listed = project.processorplugins.FindByGuiName(type);
        if (listed == nullptr)
            return CORVANE_LOG_WARNING(origin, "Post processor not present");
        const std::string library = listed->GetLibName();
        PostProcessor processor;
        processor.name = name;
        processor.id = id;
        processor.refintegrator = reference;
        listed->SetParameters("<RESET><\\RESET>");
        if (listed->HasDialog() != 0) {
            PostProcessorPlugin* instance = project.processorplugins.CreaProcessorPlugin(library);
            if (instance == nullptr)
                return CORVANE_LOG_WARNING(origin, "Error, cannot create post processor plugin");
            instance->SetParameters("<RESET><\\RESET>");
            if (instance->ShowDialog(NativeWindowOf(this), project.GetProjectText()) == 0) {
                instance->Close(" ", 0);
                project.processorplugins.Destroy(instance);  // cancelled: nothing holds it
                return;
            }
            processor.settings = instance->GetParameters(0);
            processor.plugin = instance;
        } else {
            ParametriScheda dialog(this, project, listed->GetParameters(0));
            if (dialog.ShowModal() != 1)
                return;
            processor.plugin = project.processorplugins.CreaProcessorPlugin(library);
            if (processor.plugin == nullptr)
                return CORVANE_LOG_WARNING(origin, "Error, cannot create post processor plugin");
            processor.settings = dialog.returntext;
        }
        processor.plugin->SetParameters(processor.settings);
        OpenWith(processor.plugin, processor.id, project.OpenArgs());
        project.processors.Add(processor);
        Refill();
    });
}

void ProcessorDlg::OnModify() {
    Project& project = *context_.project;
    project.EditBracket([&] {
        PostProcessor* processor = project.GetProcessor(selected);
        if (processor == nullptr || processor->plugin == nullptr)
            return;
        if (processor->plugin->HasDialog() != 0) {
            {
                std::lock_guard<std::mutex> lock(project.processorsmutex);
                processor->plugin->Close(processor->name, processor->id);
            }
            processor->plugin->ShowDialog(NativeWindowOf(this), project.GetProjectText());
            std::lock_guard<std::mutex> lock(project.processorsmutex);
            OpenWith(processor->plugin, processor->id, project.OpenArgs());
            return;
        }
        ParametriScheda dialog(this, project, processor->plugin->GetParameters(0),
                               "Post Processor name", processor->name);
        for (;;) {
            if (dialog.ShowModal() != 1 || dialog.returntext.empty())
                return;
            const std::string problem =
                NameProblem(project, dialog.newname, "Post Processor", processor->name);
            if (problem.empty())
                break;
            CORVANE_LOG_WARNING("ProcessorDlg::OnModifyProcessor", problem);
        }
        std::lock_guard<std::mutex> lock(project.processorsmutex);
        processor->plugin->Close(processor->name, processor->id);
        if (dialog.newname != processor->name) {
            processor->name = dialog.newname;
            Refill();
        }
        processor->settings = dialog.returntext;
        processor->plugin->SetParameters(processor->settings);
        OpenWith(processor->plugin, processor->id, project.OpenArgs());
    });
}

void ProcessorDlg::OnRemove() {
    Project& project = *context_.project;
    project.EditBracket([&] {
        if (wxMessageBox("Remove Post Processor?", "Warning!", wxYES_NO, this) != wxYES)
            return;
        std::lock_guard<std::mutex> lock(project.processorsmutex);
        project.RemoveProcessor(selected);
        Refill();
    });
}

void ProcessorDlg::ApplyGateListSettings(const GateListRecord& record) {
    Project& project = *context_.project;
    const std::string gate = record.gate.utf8_str().data();
    for (PostProcessor& processor : project.processors) {
        if (processor.refintegrator != gate || processor.plugin == nullptr)
            continue;
        ParametriScheda hidden(this, project, processor.plugin->GetParameters(0));
        hidden.SetRowValue("Transit Direction", record.direction.utf8_str().data());
        hidden.SetRowValue("Check Whitelist", record.whitelist.utf8_str().data());
        hidden.SetRowValue("Check Blacklist", record.blacklist.utf8_str().data());
        hidden.SetRowValue("Whitelist Tolerance", record.whitelistTolerance.utf8_str().data());
        hidden.SetRowValue("Blacklist Tolerance", record.blacklistTolerance.utf8_str().data());
        hidden.Update();
        std::lock_guard<std::mutex> lock(project.processorsmutex);
        processor.plugin->Close(processor.name, processor.id);
        processor.settings = hidden.returntext;
        processor.plugin->SetParameters(processor.settings);
        OpenWith(processor.plugin, processor.id, project.OpenArgs());
    }
}

#include "LaneGrid.h"

#include <wx/propgrid/propgrid.h>

#include "core/Project.h"
#include "core/ShapeText.h"
#include "corvane/LPRPlugin.h"

namespace LaneGrid {

namespace {

wxPGChoices YesNo() {
    wxPGChoices choices;
    choices.Add("Yes", 1);
    choices.Add("No", 0);
    return choices;
}

void Replace(wxPropertyGrid* grid, const char* key, const wxPGChoices& choices) {
    wxPGProperty* row = grid->GetProperty(key);
    if (row == nullptr)
        return;
    const long value = row->GetValue().IsNull() ? -1 : row->GetValue().GetLong();
    row->SetChoices(choices);
    if (choices.GetCount() > 0)
        row->SetValue(choices.Index(static_cast<int>(value)) != wxNOT_FOUND
                          ? value
                          : static_cast<long>(choices.GetValue(0)));
}

}  // namespace

void Build(wxPropertyGrid* grid, Project& project, Form form) {
    const bool add = form == Form::Add;
    grid->AddActionTrigger(wxPG_ACTION_NEXT_PROPERTY, WXK_RETURN);
    grid->DedicateKey(WXK_RETURN);
    grid->Append(
        new wxPropertyCategory(add ? "Add New ROI" : "Modify ROI Parameters", "PROPADDROI"));
    grid->Append(new wxPropertyCategory("ROI Settings"));
    grid->Append(new wxStringProperty("ROI Name", "ROI Name", ""));
    grid->Append(new wxIntProperty("ID", "ROI ID", project.NewLaneId()));
    grid->Append(
        new wxIntProperty(add ? "Images Buffer Length" : "Images Buffer Len", "BufferLen", 5));
    grid->Append(new wxPropertyCategory("ROI"));
    grid->Append(new wxStringProperty("Shape", "Shape", ShapeText::kDefault));
    StreamingLabels labels;
    labels.portKey = "STRPORT";
    labels.portLabel = "Port (-1 not streaming)";
    labels.discoveryLabel = "Autodiscovery";
    AppendStreamingRows(grid, labels, 1000);
    grid->GetProperty("Streaming")->SetLabel("Streaming Port");
    grid->Append(new wxPropertyCategory("LPR Settings"));
    grid->Append(new wxIntProperty(add ? "Char Min Height" : "Min Char Height", "MinCar", 18));
    grid->Append(new wxIntProperty(add ? "Char Max Height" : "Max Char Height", "MaxCar", 50));
    grid->Append(new wxIntProperty("Delta ROI X (%)", "DROIX", 10));
    grid->Append(new wxIntProperty("Delta ROI Y (%)", "DROIY", 20));
    wxPGChoices yesNo = YesNo();
    grid->Append(new wxEnumProperty("Generate LPR Log File", "CREATELOG", yesNo, 0));
    grid->Append(new wxPropertyCategory("LPR_Type", "LPRTYPE"));
    wxPGChoices engines;
    int index = 0;
    for (const auto& plugin : project.lprplugins.Prototypes())
        engines.Add(wxString::FromUTF8(plugin->GetLibName()), index++);
    grid->Append(new wxEnumProperty("LPR Type", "LPR Type", engines, 0));
    grid->Append(new wxPropertyCategory("Camera", add ? "CAMERA_" : "CAMERAPROP"));
    grid->Append(new wxEnumProperty("Camera", "CAMERASEL"));
    RebuildCameras(grid, project, form);
    grid->Append(new wxPropertyCategory("Trigger", "TRIGGER"));
    grid->Append(new wxEnumProperty("Trigger", "Trigger"));
    RebuildTriggers(grid, project, form);
    grid->Append(new wxPropertyCategory("Lane", "GATE"));
    grid->Append(new wxEnumProperty("Lane", "Gate"));
    RebuildGates(grid, project);
}

void RebuildCameras(wxPropertyGrid* grid, Project& project, Form form) {
    wxPGChoices choices;
    if (form == Form::Modify)
        choices.Add("No camera", -1);
    for (const Camera& camera : project.cameras)
        choices.Add(wxString::FromUTF8(camera.name), camera.id);
    Replace(grid, "CAMERASEL", choices);
}

void RebuildTriggers(wxPropertyGrid* grid, Project& project, Form form) {
    wxPGChoices choices;
    choices.Add(form == Form::Add ? "No trigger" : "No Trigger", -1);
    for (const Trigger& trigger : project.triggers)
        choices.Add(wxString::FromUTF8(trigger.name), trigger.id);
    Replace(grid, "Trigger", choices);
}

void RebuildGates(wxPropertyGrid* grid, Project& project) {
    wxPGChoices choices;
    choices.Add("No Lane", -1);
    for (const Integrator& gate : project.integrators)
        choices.Add(wxString::FromUTF8(gate.name), gate.id);
    Replace(grid, "Gate", choices);
}

void Fill(wxPropertyGrid* grid, Project& project, const Lane& lane) {
    RebuildCameras(grid, project, Form::Modify);
    RebuildTriggers(grid, project, Form::Modify);
    RebuildGates(grid, project);
    SetText(grid, "ROI Name", lane.name);
    grid->GetProperty("ROI ID")->SetValue(lane.id);
    grid->GetProperty("BufferLen")->SetValue(lane.BufferLen);
    SetText(grid, "Shape", ShapeText::Normal(lane.shape));
    WriteStreamingRows(grid, StreamingValuesOf(lane), "STRPORT");
    grid->GetProperty("MinCar")->SetValue(lane.MinCar);
    grid->GetProperty("MaxCar")->SetValue(lane.MaxCar);
    grid->GetProperty("DROIX")->SetValue(lane.DROIX);
    grid->GetProperty("DROIY")->SetValue(lane.DROIY);
    grid->GetProperty("CREATELOG")->SetValue(lane.CreateLogs);
    grid->GetProperty("LPR Type")->SetValueFromString(wxString::FromUTF8(lane.lprlib));
    grid->GetProperty("CAMERASEL")->SetValueFromString(wxString::FromUTF8(lane.camname));
    grid->GetProperty("Trigger")->SetValueFromString(wxString::FromUTF8(lane.trigname));
    grid->GetProperty("Gate")->SetValueFromString(wxString::FromUTF8(lane.intname));
}

int Int(wxPropertyGrid* grid, const char* key) {
    return GridInt(grid, key);
}

std::string Text(wxPropertyGrid* grid, const char* key) {
    wxPGProperty* row = grid->GetProperty(key);
    return row != nullptr ? std::string(row->GetValueAsString().utf8_str()) : std::string();
}

void SetText(wxPropertyGrid* grid, const char* key, const std::string& value) {
    if (wxPGProperty* row = grid->GetProperty(key))
        row->SetValueFromString(wxString::FromUTF8(value));
}

std::string LprLibrary(wxPropertyGrid* grid, Project& project) {
    const int index = Int(grid, "LPR Type");
    const auto& engines = project.lprplugins.Prototypes();
    if (index < 0 || static_cast<size_t>(index) >= engines.size() || !engines[index])
        return "PlateCore";
    return engines[static_cast<size_t>(index)]->GetLibName();
}

}  // namespace LaneGrid

#include "CameraDlg.h"

#include <wx/button.h>
#include <wx/listctrl.h>
#include <wx/msgdlg.h>
#include <wx/propgrid/propgrid.h>

#include <cstdio>

#include "CameraModDlg.h"
#include "ListColumns.h"
#include "NativeWindowOf.h"
#include "ParametriScheda.h"
#include "PropertyGridLayout.h"
#include "StreamingRows.h"
#include "core/Project.h"
#include "corvane/CameraPlugin.h"
#include "pipeline/LaneControl.h"
#include "platform/Log.h"

namespace {

constexpr int kAddId = 6044;
constexpr int kStreamingId = 6045;
constexpr int kSettingsId = 6046;
constexpr int kRemoveId = 6047;
constexpr int kStartId = 6059;
constexpr int kStopId = 6060;
constexpr int kListId = 6080;

}  // namespace

CameraDlg::CameraDlg(wxWindow* parent, const UiContext& context, LaneControl& control)
    : wxPanel(parent, wxID_ANY), context_(context), control_(control) {
    grid_ = new wxPropertyGrid(this, wxID_ANY);
    KeepLabelsReadable(grid_);
    grid_->AddActionTrigger(wxPG_ACTION_NEXT_PROPERTY, WXK_RETURN);
    grid_->DedicateKey(WXK_RETURN);
    grid_->Append(new wxPropertyCategory("New Camera", "NEWCAMERA"));
    grid_->Append(new wxStringProperty("Name", "Name", ""));
    grid_->Append(new wxEnumProperty("Type", "Type"));
    AppendStreamingRows(grid_, "AutoDiscovery", 1024);
    add_ = new wxButton(this, kAddId, "Add Camera");
    list_ = new wxListCtrl(this, kListId, wxDefaultPosition, wxDefaultSize, wxLC_REPORT,
                           wxDefaultValidator, "list");
    for (const char* header : {"ID", "Name", "Type", "Port"})
        list_->AppendColumn(header);
    FitColumnHeaders(*list_);
    start_ = new wxButton(this, kStartId, "Start Sampling");
    stop_ = new wxButton(this, kStopId, "Stop Sampling");
    streaming_ = new wxButton(this, kStreamingId, "Modify Streaming Parameters");
    settings_ = new wxButton(this, kSettingsId, "Modify Camera Parameters");
    remove_ = new wxButton(this, kRemoveId, "Remove Camera");
    RefillTypes();
    Bind(
        wxEVT_BUTTON, [this](wxCommandEvent&) { OnAddCamera(); }, kAddId);
    Bind(
        wxEVT_BUTTON, [this](wxCommandEvent&) { OnModifyStreaming(); }, kStreamingId);
    Bind(
        wxEVT_BUTTON, [this](wxCommandEvent&) { OnModifyCameraPars(); }, kSettingsId);
    Bind(
        wxEVT_BUTTON, [this](wxCommandEvent&) { OnRemoveCamera(); }, kRemoveId);
    Bind(
        wxEVT_BUTTON, [this](wxCommandEvent&) { OnStartSampling(); }, kStartId);
    Bind(
        wxEVT_BUTTON, [this](wxCommandEvent&) { OnStopSampling(); }, kStopId);
    Bind(wxEVT_LIST_ITEM_SELECTED, &CameraDlg::OnSelected, this, kListId);
    Bind(wxEVT_SIZE, [this](wxSizeEvent&) { Layout(GetClientSize()); });
}

void CameraDlg::Layout(const wxSize& client) {
    const int t = client.y * 35 / 100;
    grid_->SetSize(0, 0, client.x, t);
    add_->SetSize(0, t + 2, client.x, 25);
    list_->SetSize(0, t + 30, client.x, client.y - t - 148);
    start_->SetSize(0, client.y - 115, client.x, 22);
    stop_->SetSize(0, client.y - 92, client.x, 22);
    streaming_->SetSize(0, client.y - 69, client.x, 22);
    settings_->SetSize(0, client.y - 46, client.x, 22);
    remove_->SetSize(0, client.y - 23, client.x, 22);
}

void CameraDlg::RefillTypes() {
    wxPGChoices types;
    int index = 0;
    for (const auto& plugin : context_.project->cameraplugins.Prototypes())
        types.Add(wxString::FromUTF8(plugin->GetGuiName(nullptr)), index++);
    wxPGProperty* row = grid_->GetProperty("Type");
    row->SetChoices(types);
    if (types.GetCount() > 0)
        row->SetValue(0);
}

void CameraDlg::Refill() {
    list_->DeleteAllItems();
    selected = -1;
    for (const Camera& camera : context_.project->cameras) {
        const long row =
            list_->InsertItem(list_->GetItemCount(), wxString::Format("%d", camera.id));
        list_->SetItemData(row, camera.id);
        list_->SetItem(row, 1, wxString::FromUTF8(camera.name));
        list_->SetItem(row, 2,
                       camera.plugin ? wxString::FromUTF8(camera.plugin->GetGuiName(nullptr)) : "");
        list_->SetItem(row, 3, wxString::Format("%d", camera.port));
    }
    UpdateButtons();
}

// Start Sampling only for a chosen source that is not sampling yet.
void CameraDlg::UpdateButtons() {
    const Camera* camera = context_.project->GetCamera(selected);
    const bool sampling = camera != nullptr && camera->sampling != 0;
    start_->Enable(camera != nullptr && !sampling);
    stop_->Enable(sampling);
    MarkStopped();
}

// A source that does not sample is listed greyed.
void CameraDlg::MarkStopped() {
    for (long row = 0; row < list_->GetItemCount(); ++row) {
        const Camera* camera =
            context_.project->GetCamera(static_cast<int>(list_->GetItemData(row)));
        const bool sampling = camera != nullptr && camera->sampling != 0;
        list_->SetItemTextColour(row, sampling ? list_->GetForegroundColour() : kStoppedColour);
    }
}

void CameraDlg::Select(int cameraId) {
    for (long row = 0; row < list_->GetItemCount(); ++row)
        if (static_cast<int>(list_->GetItemData(row)) == cameraId)
            list_->SetItemState(row, wxLIST_STATE_SELECTED, wxLIST_STATE_SELECTED);
    selected = cameraId;
    UpdateButtons();
}

void CameraDlg::OnSelected(wxListEvent& event) {
    context_.project->TouchActivity();
    selected = static_cast<int>(event.GetData());
    UpdateButtons();
}

void CameraDlg::OnAddCamera() {
    Project& project = *context_.project;
    project.TouchActivity();
    const char* origin = "CameraDlg::OnAddCamera";
    const std::string name = grid_->GetPropertyValueAsString("Name").utf8_str().data();
    if (name.empty())
        return CORVANE_LOG_WARNING(origin, "Camera name not specified");
    if (!Project::IsValidName(name))
        return CORVANE_LOG_WARNING(origin, "Camera name cannot contain spaces");
    if (project.NameInUse(name))
        return CORVANE_LOG_WARNING(origin, "Camera name needs to be unique");
    const std::string type = grid_->GetPropertyValueAsString("Type").utf8_str().data();
    if (type.empty())
        return CORVANE_LOG_WARNING(origin, "Camera type not specified");
    const int id = project.NewCameraId();
    if (id < 1)
        return CORVANE_LOG_WARNING(origin, "ID not valid");
    if (project.GetCamera(id) != nullptr)
        return CORVANE_LOG_WARNING(origin, "ID already assigned");
    const StreamingValues streaming = ReadStreamingRows(grid_);
    if (streaming.port == 0)
        return CORVANE_LOG_WARNING(origin, "Streaming port not valid");
    if (streaming.port > 0)
        for (const Camera& other : project.cameras)
            if (other.port == streaming.port)
                return CORVANE_LOG_WARNING(origin, "Streaming Port already assigned");

    project.EditBracket([&] {
        const std::string library = project.cameraplugins.GuiNameToLibName(type);
        CameraPlugin* listed = project.cameraplugins.FindByLibName(library);
        if (listed == nullptr)
            return CORVANE_LOG_WARNING(origin, "Camera not present");
        Camera camera;
        camera.name = name;
        camera.id = id;
        camera.sampling = 0;
        ApplyStreamingValues(streaming, camera);
        if (listed->HasDialog() != 0) {
            CameraPlugin* instance = project.cameraplugins.CreateCamera(library);
            if (instance == nullptr)
                return;
            if (instance->ShowDialog(NativeWindowOf(this), project.GetProjectText()) == 0) {
                instance->Close();
                instance->FreeMemory();
                project.cameraplugins.Destroy(instance);  // cancelled: nothing holds it
                return;
            }
            camera.settings = instance->GetParameters(0);
            camera.plugin = instance;
        } else {
            ParametriScheda dialog(this, project, listed->GetParameters(0));
            if (dialog.ShowModal() != 1)
                return;
            camera.plugin = project.cameraplugins.CreateCamera(library);
            if (camera.plugin == nullptr) {
                std::fprintf(stderr, "Cannot create camera plugin\n");
                return;
            }
            camera.settings = dialog.returntext;
            camera.plugin->SetParameters(camera.settings);
        }
        project.cameras.Add(camera);
        Refill();
        project.PostEvent(ID_CAMERAS_CHANGED, 0);
        project.PostEvent(ID_SOURCES_CHANGED, 0);
    });
}

void CameraDlg::OnModifyCameraPars() {
    Project& project = *context_.project;
    project.EditBracket([&] {
        Camera* camera = project.GetCamera(selected);
        if (camera == nullptr || camera->plugin == nullptr)
            return;
        if (camera->plugin->HasDialog() != 0) {
            camera->sampling = 0;
            camera->plugin->Close();
            camera->plugin->FreeMemory();
            UpdateButtons();
            if (camera->plugin->ShowDialog(NativeWindowOf(this), project.GetProjectText()) != 0)
                camera->settings = camera->plugin->GetParameters(0);
            return;
        }
        ParametriScheda dialog(this, project, camera->plugin->GetParameters(0), "Camera name",
                               camera->name);
        for (;;) {
            if (dialog.ShowModal() != 1 || dialog.returntext.empty())
                return;
            const char* origin = "CameraDlg::OnModifyCameraPars";
            if (dialog.newname.empty())
                CORVANE_LOG_WARNING(origin, "Camera name not specified");
            else if (!Project::IsValidName(dialog.newname))
                CORVANE_LOG_WARNING(origin, "Camera name cannot contain spaces");
            else if (dialog.newname != camera->name && project.NameInUse(dialog.newname))
                CORVANE_LOG_WARNING(origin, "Camera name needs to be unique");
            else
                break;
        }
        camera->plugin->Close();
        camera->plugin->FreeMemory();
        camera->sampling = 0;
        if (dialog.newname != camera->name) {
            project.RenameCamera(camera->name, dialog.newname);
            context_.Post(EVT_BROADCAST_ROI_UPDATE, 1, 0);
        }
        camera->settings = dialog.returntext;
        camera->plugin->SetParameters(camera->settings);
        const int id = camera->id;
        Refill();
        selected = id;
        UpdateButtons();
        project.PostEvent(ID_CAMERAS_CHANGED, 0);
    });
}

void CameraDlg::OnModifyStreaming() {
    Project& project = *context_.project;
    project.EditBracket([&] {
        Camera* camera = project.GetCamera(selected);
        if (camera == nullptr)
            return;
        CameraModDlg dialog(this, project, *camera);
        dialog.ShowModal();
        Refill();
    });
}

void CameraDlg::OnRemoveCamera() {
    Project& project = *context_.project;
    project.EditBracket([&] {
        if (wxMessageBox("Remove Camera?", "Warning!", wxYES_NO, this) != wxYES)
            return;
        {
            std::lock_guard<std::mutex> lock(project.selectionmutex);
            project.selcamera = -1;
        }
        project.RemoveCamera(selected);
        Refill();
        project.PostEvent(ID_CAMERAS_CHANGED, 0);
    });
    project.PostEvent(ID_SOURCES_CHANGED, 0);
}

void CameraDlg::OnStartSampling() {
    Sample(true);
}

void CameraDlg::OnStopSampling() {
    Sample(false);
}

void CameraDlg::Sample(bool start) {
    Project& project = *context_.project;
    project.TouchActivity();
    Camera* camera = project.GetCamera(selected);
    if (camera == nullptr) {
        wxMessageBox("Camera nont selected", wxMessageBoxCaptionStr, wxOK, this);
        return;
    }
    if (start)
        control_.StartSampling(*camera);
    else
        control_.StopSampling(*camera);
    UpdateButtons();
    project.PostEvent(ID_CAMERA_BUTTONS, 0);  // the live view shows the change as well
}

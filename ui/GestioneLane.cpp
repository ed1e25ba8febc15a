#include "GestioneLane.h"

#include <wx/button.h>
#include <wx/listctrl.h>
#include <wx/msgdlg.h>
#include <wx/propgrid/propgrid.h>

#include <algorithm>
#include <cstdio>

#include "LaneGrid.h"
#include "ListColumns.h"
#include "PropertyGridLayout.h"
#include "core/Project.h"
#include "core/ShapeText.h"
#include "platform/Log.h"

namespace {
constexpr int kListId = 6083;
constexpr int kGridId = 6076;
constexpr int kSaveId = 6052;
constexpr int kRemoveId = 6053;
constexpr const char* kOrigin = "GestioneLane::OnModifyLane";
}  // namespace

GestioneLane::GestioneLane(wxWindow* parent, const UiContext& context)
    : wxPanel(parent, wxID_ANY), context_(context) {
    list_ = new wxListCtrl(this, kListId, wxDefaultPosition, wxDefaultSize, wxLC_REPORT,
                           wxDefaultValidator, "list");
    for (const char* header :
         {"ID", "Name", "Video Source", "Lane", "Trigger", "Streaming Port", "Autodiscovery"})
        list_->AppendColumn(header);
    FitColumnHeaders(*list_);
    grid_ = new wxPropertyGrid(this, kGridId);
    KeepLabelsReadable(grid_);
    LaneGrid::Build(grid_, *context.project, LaneGrid::Form::Modify);
    save_ = new wxButton(this, kSaveId, "Save Changes");
    remove_ = new wxButton(this, kRemoveId, "Remove ROI");
    Refill();
    Bind(wxEVT_LIST_ITEM_SELECTED, &GestioneLane::OnSelected, this, kListId);
    Bind(
        wxEVT_BUTTON, [this](wxCommandEvent&) { OnModifyLane(); }, kSaveId);
    Bind(
        wxEVT_BUTTON, [this](wxCommandEvent&) { OnRemoveLane(); }, kRemoveId);
    Bind(wxEVT_SIZE, [this](wxSizeEvent&) {
        const wxSize client = GetClientSize();
        const int body = client.y - 50;
        if (client.x > client.y * 3 / 2) {  // docked wide and low: list and grid side by side
            list_->SetSize(0, 0, client.x / 2, body);
            grid_->SetSize(client.x / 2, 0, client.x - client.x / 2, body);
        } else {
            list_->SetSize(0, 0, client.x, body / 3);
            grid_->SetSize(0, body / 3, client.x, body - body / 3);
        }
        save_->SetSize(0, client.y - 49, client.x, 24);
        remove_->SetSize(0, client.y - 24, client.x, 24);
    });
}

void GestioneLane::Refill() {
    list_->DeleteAllItems();
    selected = -1;
    grid_->Enable(false);
    save_->Enable(false);
    remove_->Enable(false);
    // A closed project leaves nothing of its regions behind in the grid.
    if (context_.project->prjopen == 0)
        LaneGrid::Fill(grid_, *context_.project, Lane());
    for (const Lane& lane : context_.project->lanes) {
        const long row = list_->InsertItem(list_->GetItemCount(), wxString::Format("%d", lane.id));
        list_->SetItemData(row, lane.id);
        list_->SetItem(row, 1, wxString::FromUTF8(lane.name));
        list_->SetItem(row, 2, wxString::FromUTF8(lane.camname));
        list_->SetItem(row, 3, wxString::FromUTF8(lane.intname));
        list_->SetItem(row, 4, wxString::FromUTF8(lane.trigname));
        list_->SetItem(row, 5, wxString::Format("%d", lane.port));
        list_->SetItem(row, 6, lane.AutoDiscovery != 0 ? "Yes" : "No");
    }
}

void GestioneLane::RefreshUnderLock() {
    std::lock_guard<std::mutex> lock(context_.project->lanesmutex);
    Refill();
}

void GestioneLane::RebuildChoice(Choice choice) {
    Project& project = *context_.project;
    const char* row = choice == kGateChoice      ? "Gate"
                      : choice == kTriggerChoice ? "Trigger"
                                                 : "CAMERASEL";
    // The row's editor must not be open while its choices change: the selection moves to the
    // name first and comes back afterwards.
    const wxPGProperty* selection = grid_->GetSelection();
    const bool rowSelected = selection != nullptr && selection->GetName() == row;
    if (rowSelected)
        grid_->SelectProperty("ROI Name");
    if (choice == kGateChoice)
        LaneGrid::RebuildGates(grid_, project);
    else if (choice == kTriggerChoice)
        LaneGrid::RebuildTriggers(grid_, project, LaneGrid::Form::Modify);
    else
        LaneGrid::RebuildCameras(grid_, project, LaneGrid::Form::Modify);
    if (rowSelected)
        grid_->SelectProperty(row);
    grid_->Refresh();
}

void GestioneLane::Select(int laneId) {
    for (long row = 0; row < list_->GetItemCount(); ++row)
        if (static_cast<int>(list_->GetItemData(row)) == laneId) {
            list_->SetItemState(row, wxLIST_STATE_SELECTED, wxLIST_STATE_SELECTED);
            return;
        }
}

void GestioneLane::OnSelected(wxListEvent& event) {
    Project& project = *context_.project;
    project.TouchActivity();
    selected = static_cast<int>(event.GetData());
    grid_->Enable(true);
    save_->Enable(true);
    remove_->Enable(true);
    if (const Lane* lane = project.GetLane(selected))
        LaneGrid::Fill(grid_, project, *lane);
    context_.Post(EVT_BROADCAST_ROI_CHANGED, wxID_ANY, selected);
}

bool GestioneLane::Fail(const char* message, const char* restartText) {
    Project& project = *context_.project;
    CORVANE_LOG_WARNING(kOrigin, message);
    std::printf("%s", restartText);
    project.StartLanes();
    project.StartBoardThread();
    project.PostEvent(ID_CAMERA_BUTTONS, 0);
    return false;
}

bool GestioneLane::OnModifyLane() {
    Project& project = *context_.project;
    project.TouchActivity();
    std::printf("Stop all lane\n");
    project.StopBoardThread();
    project.StopCameras();
    project.StopLanes();
    Lane* record = project.GetLane(selected);
    if (record == nullptr)
        return Fail("ROI not valid");
    Lane lane;
    lane.name = LaneGrid::Text(grid_, "ROI Name");
    lane.id = LaneGrid::Int(grid_, "ROI ID");
    lane.BufferLen = LaneGrid::Int(grid_, "BufferLen");
    if (lane.BufferLen < 2 || lane.BufferLen > Lane::kMaxBufferLen)
        return Fail("Invalid images buffer length");
    if (lane.name.empty())
        return Fail("ROI Name not specified");
    if (!Project::IsValidName(lane.name))
        return Fail("ROI Name cannot contain spaces");
    if (project.GetBoardCopy(lane.name).id != -1 || project.GetCameraId(lane.name) != -1 ||
        project.GetIntegratorByName(lane.name) != nullptr ||
        project.GetTriggerByName(lane.name) != nullptr ||
        project.GetProcessorByName(lane.name) != nullptr)
        return Fail("ROI Name needs to be unique");
    if (lane.id < 0)
        return Fail("ID not specified");
    // Every region's id first, then every region's name: an id clash is reported first.
    for (const Lane& other : project.lanes)
        if (&other != record && other.id == lane.id)
            return Fail("Id already exists");
    for (const Lane& other : project.lanes)
        if (&other != record && other.name == lane.name)
            return Fail("Name already exists");
    const auto shape = ShapeText::Parse(LaneGrid::Text(grid_, "Shape"));
    if (!shape)
        return Fail("ROI shape not valid");
    lane.shape = *shape;
    ShapeText::BoundingBox(lane.shape, lane.roi);
    LaneGrid::SetText(grid_, "Shape", ShapeText::Normal(lane.shape));
    if (!(0 <= lane.roi[0] && lane.roi[0] < lane.roi[2] && lane.roi[2] <= 1000 &&
          0 <= lane.roi[1] && lane.roi[1] < lane.roi[3] && lane.roi[3] <= 1000))
        return Fail("ROI not valid");
    lane.MinCar = LaneGrid::Int(grid_, "MinCar");
    lane.MaxCar = LaneGrid::Int(grid_, "MaxCar");
    lane.DROIX = LaneGrid::Int(grid_, "DROIX");
    lane.DROIY = LaneGrid::Int(grid_, "DROIY");
    if (lane.MinCar < 10 || lane.MaxCar < lane.MinCar || lane.DROIX < 0 || lane.DROIY < 0)
        return Fail("LPR Configuration not valid", "Resart all lane\n");
    const StreamingValues streaming = LaneGrid::ReadStreaming(grid_);
    int kept;
    {
        std::lock_guard<std::mutex> lock(project.selectionmutex);
        kept = project.selroi;
        project.selroi = -1;
    }
    std::printf("Reset lane2show\n");
    {
        std::lock_guard<std::mutex> lock(project.lanesmutex);
        std::printf("Update lane\n");
        record->name = lane.name;
        record->id = lane.id;
        record->BufferLen = lane.BufferLen;
        std::copy(lane.roi, lane.roi + 4, record->roi);
        record->shape = lane.shape;
        ApplyStreamingValues(streaming, *record);
        record->MinCar = lane.MinCar;
        record->MaxCar = lane.MaxCar;
        record->DROIX = lane.DROIX;
        record->DROIY = lane.DROIY;
        record->CreateLogs = LaneGrid::Int(grid_, "CREATELOG");
        record->camname = LaneGrid::Text(grid_, "CAMERASEL");
        record->trigname = LaneGrid::Text(grid_, "Trigger");
        record->intname = LaneGrid::Text(grid_, "Gate");
        record->lprlib = LaneGrid::LprLibrary(grid_, project);
        record->UseTemplate = 0;
    }
    std::printf("Check lane2show\n");
    {
        std::lock_guard<std::mutex> lock(project.selectionmutex);
        project.selroi = project.GetLane(kept) != nullptr ? kept : -1;
    }
    std::printf("Start all lanes\n");
    project.StartLanes();
    project.StartBoardThread();
    std::printf("Send event set video source\n");
    project.PostEvent(ID_CAMERA_BUTTONS, 0);
    std::printf("Send event new lane\n");
    project.PostEvent(ID_LANES_CHANGED, 0);
    std::printf("End modify\n");
    return true;
}

bool GestioneLane::OnRemoveLane() {
    Project& project = *context_.project;
    project.TouchActivity();
    if (selected < 0)
        return false;
    if (wxMessageBox("Remove selected ROI?", "Warning", wxYES_NO, this) != wxYES)
        return false;
    project.StopBoardThread();
    project.StopCameras();
    project.StopLanes();
    if (project.GetLane(selected) == nullptr)
        return false;
    {
        std::lock_guard<std::mutex> lock(project.selectionmutex);
        project.selroi = -1;
    }
    {
        std::lock_guard<std::mutex> lock(project.lanesmutex);
        project.RemoveLane(selected);
        Refill();
    }
    project.PostEvent(ID_LANES_CHANGED, 0);
    project.StartLanes();
    project.StartBoardThread();
    project.PostEvent(ID_CAMERA_BUTTONS, 0);
    return true;
}

#include "AddLaneDlg.h"

#include <wx/button.h>
#include <wx/msgdlg.h>
#include <wx/propgrid/propgrid.h>
#include <wx/sizer.h>

#include "LaneGrid.h"
#include "PropertyGridLayout.h"
#include "core/Project.h"
#include "core/ShapeText.h"
#include "platform/Log.h"

AddLaneDlg::AddLaneDlg(wxWindow* parent, const UiContext& context)
    : wxDialog(parent, wxID_ANY, "Add ROI", wxDefaultPosition, wxSize(320, 700),
               wxDEFAULT_DIALOG_STYLE | wxRESIZE_BORDER),
      context_(context) {
    grid_ = new wxPropertyGrid(this, wxID_ANY);
    KeepLabelsReadable(grid_);
    LaneGrid::Build(grid_, *context.project, LaneGrid::Form::Add);
    auto* add = new wxButton(this, wxID_ANY, "Add ROI");
    auto* cancel = new wxButton(this, wxID_ANY, "Cancel");
    auto* sizer = new wxBoxSizer(wxVERTICAL);
    sizer->Add(grid_, 1, wxEXPAND);
    sizer->Add(add, 0, wxEXPAND);
    sizer->Add(cancel, 0, wxEXPAND);
    SetSizer(sizer);
    add->Bind(wxEVT_BUTTON, [this](wxCommandEvent&) { OnAddLane(); });
    cancel->Bind(wxEVT_BUTTON, [this](wxCommandEvent&) { EndModal(0); });
}

bool AddLaneDlg::OnAddLane() {
    Project& project = *context_.project;
    project.TouchActivity();
    const char* origin = "AddLaneDlg::OnAddLane";
    const StreamingValues streaming = LaneGrid::ReadStreaming(grid_);
    if (streaming.port > 0) {
        for (const Camera& camera : project.cameras)
            if (camera.port == streaming.port) {
                wxMessageBox(wxString::Format("Streaming port already assigned to %s",
                                              wxString::FromUTF8(camera.name)),
                             wxMessageBoxCaptionStr, wxOK, this);
                return false;
            }
        for (const Lane& other : project.lanes)
            if (other.port == streaming.port) {
                wxMessageBox("Streaming port already assigned to another lane",
                             wxMessageBoxCaptionStr, wxOK, this);
                return false;
            }
        if (streaming.fps < 1) {
            wxMessageBox("Unvalid Streaming Frame Rate", wxMessageBoxCaptionStr, wxOK, this);
            return false;
        }
    }
    Lane lane;
    ApplyStreamingValues(streaming, lane);
    lane.name = LaneGrid::Text(grid_, "ROI Name");
    lane.id = LaneGrid::Int(grid_, "ROI ID");
    lane.BufferLen = LaneGrid::Int(grid_, "BufferLen");
    lane.CreateLogs = LaneGrid::Int(grid_, "CREATELOG");
    const auto shape = ShapeText::Parse(LaneGrid::Text(grid_, "Shape"));
    if (!shape) {
        CORVANE_LOG_WARNING(origin, "ROI shape not valid");
        return false;
    }
    lane.shape = *shape;
    if (lane.BufferLen < 0 || lane.BufferLen > Lane::kMaxBufferLen) {
        CORVANE_LOG_WARNING(origin, "Invalid images buffer length");
        return false;
    }
    ShapeText::BoundingBox(lane.shape, lane.roi);
    LaneGrid::SetText(grid_, "Shape", ShapeText::Normal(lane.shape));
    if (lane.name.empty()) {
        CORVANE_LOG_WARNING(origin, "ROI Name not specified");
        return false;
    }
    if (!Project::IsValidName(lane.name)) {
        CORVANE_LOG_WARNING(origin, "ROI Name cannot contain spaces");
        return false;
    }
    if (project.NameInUse(lane.name)) {
        CORVANE_LOG_WARNING(origin, "ROI Name needs to be unique");
        return false;
    }
    if (lane.id < 0) {
        CORVANE_LOG_WARNING(origin, "ID not specified");
        return false;
    }
    if (project.GetLane(lane.id) != nullptr) {
        CORVANE_LOG_WARNING(origin, "Id already exists");
        return false;
    }
    if (!(0 <= lane.roi[0] && lane.roi[0] < lane.roi[2] && lane.roi[2] <= 1000 &&
          0 <= lane.roi[1] && lane.roi[1] < lane.roi[3] && lane.roi[3] <= 1000)) {
        CORVANE_LOG_WARNING(origin, "ROI not valid");
        return false;
    }
    lane.camname = LaneGrid::Text(grid_, "CAMERASEL");
    lane.trigname = LaneGrid::Text(grid_, "Trigger");
    lane.intname = LaneGrid::Text(grid_, "Gate");
    lane.MinCar = LaneGrid::Int(grid_, "MinCar");
    lane.MaxCar = LaneGrid::Int(grid_, "MaxCar");
    lane.DROIX = LaneGrid::Int(grid_, "DROIX");
    lane.DROIY = LaneGrid::Int(grid_, "DROIY");
    if (lane.MinCar < 0 || lane.MaxCar < lane.MinCar || lane.DROIX < 0 || lane.DROIY < 0) {
        CORVANE_LOG_WARNING(origin, "LPR Configuration not valid");
        return false;
    }
    project.StopBoardThread();
    project.StopCameras();
    project.StopLanes();
    int kept;
    {
        std::lock_guard<std::mutex> lock(project.selectionmutex);
        kept = project.selroi;
        project.selroi = -1;
    }
    {
        std::lock_guard<std::mutex> lock(project.lanesmutex);
        {
            std::lock_guard<std::mutex> settings(project.settingsmutex);
            lane.place = project.place.placename;
        }
        lane.lprlib = LaneGrid::LprLibrary(grid_, project);
        project.lanes.Add(lane);
    }
    {
        std::lock_guard<std::mutex> lock(project.selectionmutex);
        project.selroi = kept;
    }
    project.PostEvent(ID_LANES_CHANGED, 0);
    project.StartLanes();
    project.StartBoardThread();
    project.PostEvent(ID_CAMERA_BUTTONS, 0);
    if (IsModal())
        EndModal(1);
    return true;
}

#include "CameraModDlg.h"

#include <wx/button.h>
#include <wx/propgrid/propgrid.h>
#include <wx/sizer.h>

#include "PropertyGridLayout.h"
#include "StreamingRows.h"
#include "core/Project.h"
#include "platform/Log.h"

namespace {
constexpr int kUpdateId = 6045;
constexpr int kExitId = 6051;
}  // namespace

CameraModDlg::CameraModDlg(wxWindow* parent, Project& project, Camera& camera)
    : wxDialog(parent, wxID_ANY, "noname", wxDefaultPosition, wxSize(320, 320)),
      project_(project),
      camera_(camera) {
    grid_ = new wxPropertyGrid(this, wxID_ANY);
    KeepLabelsReadable(grid_);
    AppendStreamingRows(grid_, "Autodiscovery", 1024);
    WriteStreamingRows(grid_, StreamingValuesOf(camera));
    auto* sizer = new wxBoxSizer(wxVERTICAL);
    sizer->Add(grid_, 1, wxEXPAND);
    sizer->Add(new wxButton(this, kUpdateId, "Update Camera"), 0, wxEXPAND);
    sizer->Add(new wxButton(this, kExitId, "Exit"), 0, wxEXPAND);
    SetSizer(sizer);
    Bind(
        wxEVT_BUTTON, [this](wxCommandEvent&) { EndModal(0); }, kExitId);
    Bind(
        wxEVT_BUTTON,
        [this](wxCommandEvent&) {
            if (UpdateCamera())
                EndModal(1);
        },
        kUpdateId);
}

bool CameraModDlg::UpdateCamera() {
    const StreamingValues values = ReadStreamingRows(grid_);
    if (values.port > 0)
        for (const Camera& other : project_.cameras)
            if (other.name != camera_.name && other.port == values.port) {
                CORVANE_LOG_WARNING("CameraModDlg::OnButton", "Streaming Port already assigned");
                return false;
            }
    ApplyStreamingValues(values, camera_);
    return true;
}

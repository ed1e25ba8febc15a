#include "LaneLPRResult.h"

#include <wx/combobox.h>
#include <wx/dcbuffer.h>

#include <algorithm>

#include "MatImage.h"
#include "core/Project.h"
#include "platform/Ticks.h"

namespace {
constexpr int kRegionChoiceId = 6005;
constexpr int kChoiceHeight = 25;
}  // namespace

LaneLPRResult::LaneLPRResult(wxWindow* parent, const UiContext& context)
    : wxPanel(parent, wxID_ANY), context_(context) {
    SetBackgroundStyle(wxBG_STYLE_PAINT);
    choice_ = new wxComboBox(this, kRegionChoiceId, "None", wxPoint(0, 0), wxDefaultSize, 0,
                             nullptr, wxCB_READONLY, wxDefaultValidator, "comboBox");
    RefillRegions();
    Bind(wxEVT_PAINT, &LaneLPRResult::OnPaint, this);
    Bind(wxEVT_COMBOBOX, &LaneLPRResult::OnRegion, this, kRegionChoiceId);
    // The operator is watching: the live view keeps its pictures coming, the lock stays away.
    Bind(wxEVT_MOTION, [this](wxMouseEvent&) { RenewWatch(); });
    Bind(wxEVT_SIZE, [this](wxSizeEvent&) {
        choice_->SetSize(0, 0, GetClientSize().x, kChoiceHeight);
        Refresh(false);
    });
}

void LaneLPRResult::RefillRegions() {
    Project& project = *context_.project;
    choice_->Clear();
    choice_->Append("None");
    wxString selected = "None";
    int selroi;
    {
        std::lock_guard<std::mutex> lock(project.selectionmutex);
        selroi = project.selroi;
    }
    for (const Lane& lane : project.lanes) {
        choice_->Append(wxString::FromUTF8(lane.name));
        if (lane.id == selroi)
            selected = wxString::FromUTF8(lane.name);
    }
    choice_->SetValue(selected);
}

void LaneLPRResult::SelectRegion(const wxString& name) {
    choice_->SetValue(name);
    wxCommandEvent event(wxEVT_COMBOBOX, kRegionChoiceId);
    OnRegion(event);
}

void LaneLPRResult::RenewWatch() {
    Project& project = *context_.project;
    project.TouchActivity();
    std::lock_guard<std::mutex> lock(project.framemutex);
    project.viewtick = platform::GetTickCount();
}

void LaneLPRResult::OnRegion(wxCommandEvent&) {
    Project& project = *context_.project;
    RenewWatch();
    const std::string name = choice_->GetValue().utf8_str().data();
    std::lock_guard<std::mutex> lock(project.selectionmutex);
    project.selroi = name == "None" ? -1 : project.GetLaneId(name);
}

void LaneLPRResult::OnPaint(wxPaintEvent&) {
    Project& project = *context_.project;
    std::lock_guard<std::mutex> viewLock(project.roiviewmutex);
    wxAutoBufferedPaintDC dc(this);
    dc.SetBackground(*wxBLACK_BRUSH);
    dc.Clear();
    const std::shared_ptr<const RoiView> view = project.roiframes.Latest();
    int selroi;
    {
        std::lock_guard<std::mutex> lock(project.selectionmutex);
        selroi = project.selroi;
    }
    if (selroi < 0 || !view || view->image.empty())
        return;
    const wxSize client = GetClientSize();
    if (client.x < 1 || client.y < 1)
        return;
    const double aspect = view->image.rows < 1 ? 1.0
                                               : static_cast<double>(view->image.cols) /
                                                     static_cast<double>(view->image.rows);
    int width;
    int height;
    if (static_cast<double>(client.x) / client.y > aspect) {
        height = client.y;
        width = static_cast<int>(aspect * height);
    } else {
        width = client.x;
        height = static_cast<int>(client.x / aspect);
    }
    if (width < 1 || height < 1)
        return;
    const int x0 = (client.x - width) / 2;
    const int y0 = (client.y - height - kChoiceHeight) / 2 + kChoiceHeight;
    dc.DrawBitmap(wxBitmap(ToWxImage(view->image).Scale(width, height)), x0, y0);
    for (int i = 0; i < RoiView::kReadings; ++i) {
        if (view->valid[i] == 0)
            continue;
        const int bx = x0 + view->rect[i][0] * width / view->image.cols;
        const int by = y0 + view->rect[i][1] * height / view->image.rows;
        const int bw = view->rect[i][2] * width / view->image.cols;
        const int bh = view->rect[i][3] * height / view->image.rows;
        dc.SetPen(wxPen(wxColour(205, 0, 0), 3));
        dc.SetBrush(*wxTRANSPARENT_BRUSH);
        dc.DrawRectangle(bx, by, bw, bh);
        const int barY = by - y0 < height / 2 ? by + bh : by - bh;
        dc.SetPen(*wxBLACK_PEN);
        dc.SetBrush(*wxBLACK_BRUSH);
        dc.DrawRectangle(bx, barY, bw, bh);
        const wxString text =
            wxString::Format("%s-%d", wxString::FromUTF8(view->text[i]), view->score[i]);
        wxFont font(14, wxFONTFAMILY_DEFAULT, wxFONTSTYLE_NORMAL, wxFONTWEIGHT_NORMAL);
        dc.SetFont(font);
        wxCoord tw = 0;
        wxCoord th = 0;
        dc.GetTextExtent(text, &tw, &th);
        const int size =
            std::max(1, std::min(static_cast<int>(12.6 * bw / std::max<wxCoord>(tw, 1)),
                                 static_cast<int>(12.6 * bh / std::max<wxCoord>(th, 1))));
        font.SetPointSize(size);
        dc.SetFont(font);
        dc.GetTextExtent(text, &tw, &th);
        dc.SetTextForeground(*wxWHITE);
        dc.DrawText(text, bx + (bw - tw) / 2, barY + (bh - th) / 2);
    }
}

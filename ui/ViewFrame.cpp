#include "ViewFrame.h"

#include <wx/combobox.h>
#include <wx/dcbuffer.h>

#include "MatImage.h"
#include "core/Project.h"
#include "core/ShapeText.h"
#include "platform/Ticks.h"

namespace {
constexpr int kSourceChoiceId = 6004;
}

ViewFrame::ViewFrame(wxWindow* parent, const UiContext& context)
    : wxPanel(parent, wxID_ANY), context_(context) {
    SetBackgroundStyle(wxBG_STYLE_PAINT);
    choice_ = new wxComboBox(this, kSourceChoiceId, "None", wxPoint(0, 0), wxDefaultSize, 0,
                             nullptr, wxCB_READONLY, wxDefaultValidator, "comboBox");
    RefillSources();
    Bind(wxEVT_PAINT, &ViewFrame::OnPaint, this);
    Bind(wxEVT_COMBOBOX, &ViewFrame::OnSource, this, kSourceChoiceId);
    Bind(wxEVT_LEFT_DOWN, &ViewFrame::OnMouse, this);
    Bind(wxEVT_LEFT_UP, &ViewFrame::OnMouse, this);
    Bind(wxEVT_MOTION, &ViewFrame::OnMouse, this);
    Bind(wxEVT_SIZE, [this](wxSizeEvent&) {
        choice_->SetSize(0, 0, GetClientSize().x, 25);  // the text whole under GTK
        Refresh(false);
    });
}

void ViewFrame::RefillSources() {
    choice_->Clear();
    choice_->Append("None");
    for (const Camera& camera : context_.project->cameras)
        choice_->Append(wxString::FromUTF8(camera.name));
    choice_->SetValue("None");
}

void ViewFrame::SelectSource(const wxString& name) {
    choice_->SetValue(name);
    wxCommandEvent event(wxEVT_COMBOBOX, kSourceChoiceId);
    event.SetString(name);
    OnSource(event);
}

void ViewFrame::OnSource(wxCommandEvent&) {
    Project& project = *context_.project;
    project.TouchActivity();
    const std::string name = choice_->GetValue().utf8_str().data();
    {
        std::lock_guard<std::mutex> lock(project.selectionmutex);
        project.selcamera = name == "None" ? -1 : project.GetCameraId(name);
    }
    {
        std::lock_guard<std::mutex> lock(project.camviewmutex);
        project.camframes.Clear();
    }
    // A choice here also renews the live-view tick, so the source sends pictures again.
    {
        std::lock_guard<std::mutex> lock(project.framemutex);
        project.viewtick = platform::GetTickCount();
    }
    Refresh(false);
}

void ViewFrame::SetSelectedRoi(int id) {
    context_.project->TouchActivity();
    selectedroi = id;
    if (editor.state == ShapeEditor::kDrawing)
        editor.state = ShapeEditor::kReady;
    Refresh(false);
}

void ViewFrame::OnPaint(wxPaintEvent&) {
    wxAutoBufferedPaintDC dc(this);
    const wxSize client = GetClientSize();
    dc.SetBackground(*wxBLACK_BRUSH);
    dc.Clear();
    if (client.x < 1)
        return;
    std::shared_ptr<const cv::Mat> frame;
    {
        std::lock_guard<std::mutex> lock(context_.project->camviewmutex);
        frame = context_.project->camframes.Latest();
    }
    if (!frame || frame->empty())
        return;
    const int maxW = client.x - 6;
    const int maxH = client.y - 6;
    if (maxW < 1 || maxH < 1)
        return;
    const float ratio = static_cast<float>(frame->cols) / static_cast<float>(frame->rows);
    int width;
    int height;
    if (ratio > static_cast<float>(maxW) / static_cast<float>(maxH)) {
        width = maxW;
        height = static_cast<int>(static_cast<float>(maxW) / ratio);
    } else {
        height = maxH;
        width = static_cast<int>(ratio * static_cast<float>(maxH));
    }
    if (width < 1 || height < 1)
        return;
    wxImage image = ToWxImage(*frame).Scale(width, height);
    // A source that does not sample (stopped by the operator or by an edit) shows its last
    // picture greyed, under the word "Stopped".
    const Camera* camera = context_.project->GetCamera(context_.project->selcamera);
    const bool stopped = camera != nullptr && camera->sampling == 0;
    if (stopped)
        image = image.ConvertToGreyscale().ConvertToDisabled(255);
    editor.ox = (client.x - width) / 2;
    editor.oy = (client.y - height) / 2;
    editor.imgw = width;
    editor.imgh = height;
    dc.DrawBitmap(wxBitmap(image), editor.ox, editor.oy);
    if (stopped) {
        dc.SetFont(wxFontInfo(18).Bold());
        dc.SetTextForeground(wxColour(160, 0, 0));
        const wxSize text = dc.GetTextExtent(kStoppedText);
        dc.DrawText(kStoppedText, editor.ox + (width - text.x) / 2, editor.oy + 8);
    }
    if (editor.state == ShapeEditor::kNoImage)
        editor.state = ShapeEditor::kReady;
    DrawRegions(dc);
    if (editor.state == ShapeEditor::kDrawing) {
        DrawPolygon(dc, editor.points, false);
    } else if (const Lane* lane = context_.project->GetLane(selectedroi)) {
        if (lane->shape.size() > 2)
            DrawPolygon(dc, lane->shape, true);
    }
}

void ViewFrame::DrawRegions(wxDC& dc) {
    Project& project = *context_.project;
    const Camera* camera = project.GetCamera(project.selcamera);
    if (camera == nullptr)
        return;
    std::lock_guard<std::mutex> lock(project.lanesmutex);
    for (const Lane& lane : project.lanes) {
        if (lane.camname != camera->name)
            continue;
        dc.SetPen(wxPen(lane.TriggerStatus == 1 ? wxColour(200, 0, 0) : wxColour(0, 0, 200), 3));
        const int x1 = lane.roi[0] * editor.imgw / 1000 + editor.ox;
        const int y1 = lane.roi[1] * editor.imgh / 1000 + editor.oy;
        const int x2 = lane.roi[2] * editor.imgw / 1000 + editor.ox;
        const int y2 = lane.roi[3] * editor.imgh / 1000 + editor.oy;
        dc.DrawLine(x1, y1, x2, y1);
        dc.DrawLine(x2, y1, x2, y2);
        dc.DrawLine(x2, y2, x1, y2);
        dc.DrawLine(x1, y2, x1, y1);
        // Every region shows its polygon; the selected one is drawn over it with its corners.
        if (lane.shape.size() > 2 && lane.id != selectedroi)
            DrawOutline(dc, lane.shape, wxPen(wxColour(0, 200, 0), 2));
    }
}

wxPoint ViewFrame::OnView(const ShapePoint& point) const {
    return wxPoint(point.x * editor.imgw / 1000 + editor.ox,
                   point.y * editor.imgh / 1000 + editor.oy);
}

void ViewFrame::DrawOutline(wxDC& dc, const std::vector<ShapePoint>& points, const wxPen& pen) {
    dc.SetPen(pen);
    for (size_t i = 1; i < points.size(); ++i)
        dc.DrawLine(OnView(points[i - 1]), OnView(points[i]));
    if (points.size() > 2)
        dc.DrawLine(OnView(points.back()), OnView(points.front()));
}

void ViewFrame::DrawPolygon(wxDC& dc, const std::vector<ShapePoint>& points, bool closed) {
    dc.SetPen(wxPen(wxColour(0, 255, 0), 2));
    dc.SetBrush(*wxTRANSPARENT_BRUSH);
    for (const ShapePoint& point : points)
        dc.DrawCircle(OnView(point), 5);
    dc.SetPen(wxPen(wxColour(0, 200, 0), 2));
    for (size_t i = 1; i < points.size(); ++i)
        dc.DrawLine(OnView(points[i - 1]), OnView(points[i]));
    if (closed && points.size() > 1)
        dc.DrawLine(OnView(points.back()), OnView(points.front()));
}

void ViewFrame::OnMouse(wxMouseEvent& event) {
    context_.project->TouchActivity();
    const wxPoint at = event.GetPosition();
    if (event.LeftDown()) {
        if (editor.Click(at.x, at.y)) {
            if (Lane* lane = context_.project->GetLane(selectedroi)) {
                // The source's thread cuts the region under this lock, frame by frame.
                std::lock_guard<std::mutex> lock(context_.project->lanesmutex);
                ShapeText::BoundingBox(editor.points, lane->roi);
                lane->shape = editor.points;
                context_.Post(EVT_BROADCAST_ROI_UPDATE, 1, 0);
            }
        }
        Refresh(false);
    } else if (editor.Move(at.x, at.y)) {
        Refresh(false);
    }
}

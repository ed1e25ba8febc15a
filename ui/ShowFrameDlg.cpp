#include "ShowFrameDlg.h"

#include <wx/button.h>
#include <wx/dcbuffer.h>
#include <wx/stattext.h>

#include <algorithm>
#include <cstdio>

#include "core/Project.h"
#include "database/TransitStore.h"
#include "platform/FileSystem.h"
#include "platform/Ticks.h"

namespace {

constexpr int kNextId = 6000;
constexpr int kPreviousId = 6001;
constexpr uint32_t kClickGuardMs = 1000;

wxSize FitInto(const wxImage& image, int width, int height) {
    if (!image.IsOk() || width < 1 || height < 1)
        return wxSize(0, 0);
    const double aspect = static_cast<double>(image.GetWidth()) / image.GetHeight();
    if (static_cast<double>(width) / height > aspect)
        return wxSize(static_cast<int>(aspect * height), height);
    return wxSize(width, static_cast<int>(width / aspect));
}

}  // namespace

ShowFrameDlg::ShowFrameDlg(wxWindow* parent, Project& project, const LPRPackage& reading)
    : wxDialog(parent, wxID_ANY, "Frame", wxDefaultPosition, wxSize(500, 500),
               wxDEFAULT_DIALOG_STYLE | wxRESIZE_BORDER | wxMINIMIZE_BOX | wxMAXIMIZE_BOX),
      record(reading) {
    SetBackgroundStyle(wxBG_STYLE_PAINT);
    opentick = platform::GetTickCount();
    PlaceSettings place;
    {
        std::lock_guard<std::mutex> lock(project.settingsmutex);
        place = project.place;
    }
    TransitStore::LoadTransitImages(place, record.plate,
                                    std::chrono::system_clock::to_time_t(record.time), plateimages,
                                    sceneimages);
    imagecount = static_cast<int>(plateimages.size() + sceneimages.size() + 1);
    imagefile = record.image;
    LoadImage(imagefile);
    if (image.IsOk()) {
        const wxRect box(record.rect[0], record.rect[1], record.rect[2], record.rect[3]);
        if (box.width > 0 && box.height > 0 &&
            wxRect(0, 0, image.GetWidth(), image.GetHeight()).Contains(box))
            plate = image.GetSubImage(box);
        std::printf("ROIIMG %d %d %d %d W:%d H:%d\n", box.x, box.y + image.GetHeight() / 10,
                    box.width, box.height, image.GetWidth(), image.GetHeight());
    }
    auto* previous = new wxButton(this, kPreviousId, "<<");
    auto* next = new wxButton(this, kNextId, ">>");
    label_ = new wxStaticText(this, wxID_ANY, "", wxDefaultPosition, wxDefaultSize,
                              wxALIGN_CENTRE_HORIZONTAL | wxST_NO_AUTORESIZE);
    label_->SetForegroundColour(*wxWHITE);
    label_->SetBackgroundColour(*wxBLACK);
    label_->SetLabel(wxString::Format("IMAGES: %02d/%02d", imageindex + 1, imagecount));
    previous->Bind(wxEVT_BUTTON, [this](wxCommandEvent&) { Browse(-1); });
    next->Bind(wxEVT_BUTTON, [this](wxCommandEvent&) { Browse(1); });
    Bind(wxEVT_PAINT, &ShowFrameDlg::OnPaint, this);
    Bind(wxEVT_LEFT_UP, &ShowFrameDlg::OnMouseUp, this);
    Bind(wxEVT_RIGHT_UP, &ShowFrameDlg::OnMouseUp, this);
    Bind(wxEVT_SIZE, [this, previous, next](wxSizeEvent&) {
        const wxSize client = GetClientSize();
        previous->SetSize(5, 5, 50, 25);
        next->SetSize(client.x - 60, 5, 50, 25);
        label_->SetSize(client.x / 2 - 100, 10, 200, 20);
        Refresh(false);
    });
    CentreOnScreen();
}

void ShowFrameDlg::LoadImage(const std::string& path) {
    std::lock_guard<std::mutex> lock(imagemutex);
    image.Destroy();
    if (platform::FileExists(path))
        image.LoadFile(wxString::FromUTF8(path), wxBITMAP_TYPE_ANY);
}

void ShowFrameDlg::Browse(int step) {
    imageindex += step;
    if (imageindex >= imagecount)
        imageindex = 0;
    if (imageindex < 0)
        imageindex = imagecount - 1;
    zoom = 1.0f;
    label_->SetLabel(wxString::Format("IMAGES: %02d/%02d", imageindex + 1, imagecount));
    const size_t index = static_cast<size_t>(imageindex);
    std::string path = record.image;
    if (index >= 1 && index <= plateimages.size())
        path = plateimages[index - 1];
    else if (index > plateimages.size())
        path = sceneimages[index - plateimages.size() - 1];
    LoadImage(path);
    Refresh(false);
}

void ShowFrameDlg::OnMouseUp(wxMouseEvent& event) {
    if (platform::ElapsedTicks(platform::GetTickCount(), opentick) < kClickGuardMs)
        return;
    if (event.LeftUp())
        zoom *= 2.0f;
    else
        zoom = zoom < 1.9f ? 1.0f : zoom / 2.0f;
    if (imagew > 0 && imageh > 0) {
        focusx = ((event.GetX() - imagex) * 1000) / imagew;
        focusy = ((event.GetY() - imagey) * 1000) / imageh;
    }
    std::printf("ZOOMF:%.2f WIMG:%d HIMG:%d STX:%d STY:%d PX:%d PY:%d XIMGST:%d YIMGST:%d\n",
                static_cast<double>(zoom), imagew, imageh, focusx, focusy, event.GetX(),
                event.GetY(), imagex, imagey);
    Refresh(false);
}

void ShowFrameDlg::OnPaint(wxPaintEvent&) {
    wxAutoBufferedPaintDC dc(this);
    dc.SetBackground(*wxBLACK_BRUSH);
    dc.Clear();
    const wxSize client = GetClientSize();
    const int zoneTop = 35;
    const int zoneBottom = static_cast<int>(0.8 * client.y);
    const int zoneHeight = zoneBottom - zoneTop;
    std::lock_guard<std::mutex> lock(imagemutex);
    if (image.IsOk() && zoneHeight > 0) {
        const wxSize fit = FitInto(image, client.x, zoneHeight);
        imagew = static_cast<int>(fit.x * zoom);
        imageh = static_cast<int>(fit.y * zoom);
        if (imagew > 0 && imageh > 0) {
            const wxImage scaled = image.Scale(imagew, imageh);
            if (zoom < 1.5f) {
                imagex = (client.x - imagew) / 2;
                imagey = zoneTop + (zoneHeight - imageh) / 2;
                dc.DrawBitmap(wxBitmap(scaled), imagex, imagey);
            } else {
                imagex = std::min(0, client.x / 2 - focusx * imagew / 1000);
                imagey = std::min(zoneTop, (zoneBottom + zoneTop) / 2 - focusy * imageh / 1000);
                wxRect window(-imagex, zoneTop - imagey, client.x, zoneHeight);
                window.Intersect(wxRect(0, 0, imagew - 1, imageh - 1));
                if (window.width > 0 && window.height > 0)
                    dc.DrawBitmap(wxBitmap(scaled.GetSubImage(window)),
                                  (client.x - window.width) / 2,
                                  zoneTop + (zoneHeight - window.height) / 2);
            }
        }
    }
    const int plateTop = zoneBottom + 5;
    const int plateHeight = client.y - 5 - plateTop;
    if (plate.IsOk() && plateHeight > 0) {
        const wxSize fit = FitInto(plate, client.x, plateHeight);
        if (fit.x > 0 && fit.y > 0)
            dc.DrawBitmap(wxBitmap(plate.Scale(fit.x, fit.y)), (client.x - fit.x) / 2,
                          plateTop + (plateHeight - fit.y) / 2);
    }
}

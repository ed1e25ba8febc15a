#include "LPRList.h"

#include <algorithm>

#include <wx/listctrl.h>
#include <wx/stattext.h>

#include <cstdio>

#include "ListColumns.h"
#include "ShowFrameDlg.h"
#include "core/Project.h"
#include "database/CheckDBThread.h"
#include "platform/FileSystem.h"

namespace {

constexpr int kListId = 6002;

wxString ReadingTime(const std::chrono::system_clock::time_point& time) {
    const std::time_t seconds = std::chrono::system_clock::to_time_t(time);
    std::tm local{};
    localtime_r(&seconds, &local);
    char text[32];
    std::strftime(text, sizeof text, "%d/%m/%y %H:%M:%S", &local);
    return text;
}

}  // namespace

LPRList::LPRList(wxWindow* parent, const UiContext& context)
    : wxPanel(parent, wxID_ANY), context_(context) {
    title_ = new wxStaticText(this, wxID_ANY, "LPR Output", wxDefaultPosition, wxDefaultSize,
                              wxALIGN_CENTRE_HORIZONTAL, "staticText");
    statusText_ = CheckDBThread::StatusText(2);
    status_ = new wxStaticText(this, wxID_ANY, statusText_, wxDefaultPosition, wxDefaultSize,
                               wxALIGN_CENTRE_HORIZONTAL | wxST_NO_AUTORESIZE, "staticText2");
    list_ = new wxListCtrl(this, kListId, wxDefaultPosition, wxDefaultSize, wxLC_REPORT,
                           wxDefaultValidator, "list");
    const char* headers[] = {"Time",  "Lane",       "Plate",      "Direction",
                             "Image", "ID Country", "ISO Country"};
    for (int i = 0; i < 7; ++i)
        list_->AppendColumn(headers[i]);
    list_->SetColumnWidth(0, 130);
    list_->SetColumnWidth(2, 100);
    list_->SetColumnWidth(4, 260);
    FitColumnHeaders(*list_);
    Bind(wxEVT_LIST_ITEM_ACTIVATED, &LPRList::OnActivated, this, kListId);
    Bind(wxEVT_SIZE, [this](wxSizeEvent&) { LayoutControls(); });
}

void LPRList::Refill() {
    Project& project = *context_.project;
    std::lock_guard<std::mutex> lock(project.resultsmutex);
    list_->DeleteAllItems();
    for (size_t n = project.lprresults.size(); n-- > 0;) {
        const LPRPackage& record = project.lprresults[n];
        const long row = list_->InsertItem(list_->GetItemCount(), ReadingTime(record.time));
        list_->SetItemData(row, static_cast<long>(n));
        list_->SetItem(row, 1, wxString::FromUTF8(record.lane));
        list_->SetItem(row, 2, wxString::FromUTF8(record.plate));
        list_->SetItem(row, 3, record.direction == 0 ? "Incoming" : "Outgoing");
        list_->SetItem(row, 4, wxString::FromUTF8(record.image));
        list_->SetItem(row, 5, wxString::Format("%03d", record.countryid));
        list_->SetItem(row, 6, wxString::FromUTF8(record.iso));
    }
}

void LPRList::LayoutControls() {
    const wxSize client = GetClientSize();
    const int line = std::max(20, title_->GetCharHeight() + 4);
    title_->SetSize(5, 2, client.x - 10, line);
    // A narrow pane takes the database state on two lines rather than cutting it.
    status_->SetLabel(statusText_);
    const bool wide = status_->GetTextExtent(statusText_).x <= client.x;
    if (!wide)
        status_->Wrap(client.x);
    const int lines = wide ? 1 : 2;
    status_->SetSize(0, 2 + line, client.x, lines * line);
    const int top = 4 + (1 + lines) * line;
    list_->SetSize(0, top, client.x, client.y - top);
}

void LPRList::SetStatus(int state) {
    if (state < -1 || state > 1)
        return;
    statusText_ = CheckDBThread::StatusText(state);
    LayoutControls();
}

wxString LPRList::StatusText() const {
    return statusText_;
}

void LPRList::OnActivated(wxListEvent& event) {
    Project& project = *context_.project;
    const long index = static_cast<long>(list_->GetItemData(event.GetIndex()));
    std::printf("POS:%ld NUM:%zu\n", index, project.lprresults.size());
    if (index < 0 || static_cast<size_t>(index) >= project.lprresults.size())
        return;
    const LPRPackage record = project.lprresults[static_cast<size_t>(index)];
    if (!platform::FileExists(record.image)) {
        std::printf("File %s does not exist\n", record.image.c_str());
        return;
    }
    ShowFrameDlg dialog(this, project, record);
    dialog.ShowModal();
}

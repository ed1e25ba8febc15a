#include "StreamingRows.h"

#include <wx/propgrid/propgrid.h>

namespace {

void SetInt(wxPropertyGrid* grid, const char* key, int value) {
    if (wxPGProperty* row = grid->GetProperty(key))
        row->SetValue(value);
}

}  // namespace

int GridInt(wxPropertyGrid* grid, const char* key) {
    wxPGProperty* row = grid->GetProperty(key);
    return row != nullptr && !row->GetValue().IsNull() ? static_cast<int>(row->GetValue().GetLong())
                                                       : 0;
}

void AppendStreamingRows(wxPropertyGrid* grid, const StreamingLabels& labels, int bitrateKb) {
    grid->Append(new wxPropertyCategory("Streaming", "Streaming"));
    grid->Append(new wxIntProperty(labels.portLabel, labels.portKey, -1));
    wxPGChoices yesNo;
    yesNo.Add("Yes", 1);
    yesNo.Add("No", 0);
    grid->Append(new wxEnumProperty(labels.discoveryLabel, "AUTODISC", yesNo, 0));
    grid->Append(new wxIntProperty("FPS", "STREAMFPS", 10));
    grid->Append(new wxIntProperty("Bitrate (Kb/s)", "BITRATE", bitrateKb));
    wxPGChoices sizes;
    sizes.Add("Full frame", 0);
    sizes.Add("Half", 1);
    sizes.Add("Quarter", 2);
    grid->Append(new wxEnumProperty("Frame Dimension", "STREAMFRAMEDIM", sizes, 1));
}

StreamingValues ReadStreamingRows(wxPropertyGrid* grid, const char* portKey) {
    StreamingValues values;
    values.port = GridInt(grid, portKey);
    values.autoDiscovery = GridInt(grid, "AUTODISC");
    values.fps = GridInt(grid, "STREAMFPS");
    values.bitrate = GridInt(grid, "BITRATE") * 1000;
    values.frameDim = GridInt(grid, "STREAMFRAMEDIM");
    return values;
}

void WriteStreamingRows(wxPropertyGrid* grid, const StreamingValues& values, const char* portKey) {
    SetInt(grid, portKey, values.port);
    SetInt(grid, "AUTODISC", values.autoDiscovery);
    SetInt(grid, "STREAMFPS", values.fps);
    SetInt(grid, "BITRATE", values.bitrate / 1000);
    SetInt(grid, "STREAMFRAMEDIM", values.frameDim);
}

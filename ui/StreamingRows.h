#pragma once
#include <wx/string.h>

class wxPropertyGrid;

// The streaming rows that sources and regions share: port, discovery, rate, bit rate (Kb/s in
// the grid, bits per second in the record) and frame size.
struct StreamingValues {
    int port = -1;
    int autoDiscovery = 0;
    int fps = 10;
    int bitrate = 1024000;
    int frameDim = 1;
};

struct StreamingLabels {
    const char* portKey = "Port";
    const char* portLabel = "Port (-1 do not stream)";
    const char* discoveryLabel = "AutoDiscovery";
};

void AppendStreamingRows(wxPropertyGrid* grid, const StreamingLabels& labels, int bitrateKb);
inline void AppendStreamingRows(wxPropertyGrid* grid, const char* discoveryLabel, int bitrateKb) {
    StreamingLabels labels;
    labels.discoveryLabel = discoveryLabel;
    AppendStreamingRows(grid, labels, bitrateKb);
}
// The integer of a row (an enumerated row's value); 0 for a missing or empty row.
int GridInt(wxPropertyGrid* grid, const char* key);

StreamingValues ReadStreamingRows(wxPropertyGrid* grid, const char* portKey = "Port");
void WriteStreamingRows(wxPropertyGrid* grid, const StreamingValues& values,
                        const char* portKey = "Port");

template <typename Record>
void ApplyStreamingValues(const StreamingValues& values, Record& record) {
    record.port = values.port;
    record.AutoDiscovery = values.autoDiscovery;
    record.FPS = values.fps;
    record.bitrate = values.bitrate;
    record.FrameDim = values.frameDim;
}

template <typename Record>
StreamingValues StreamingValuesOf(const Record& record) {
    return {record.port, record.AutoDiscovery, record.FPS, record.bitrate, record.FrameDim};
}

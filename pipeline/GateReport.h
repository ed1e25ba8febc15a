#pragma once
#include <string>

#include "corvane/PluginTypes.h"

class Project;
struct Integrator;
struct Lane;

// A reading as the region's thread hands it on: rectangle already in region coordinates and
// score already the mean per character.
struct GateReading {
    std::string plate;
    PluginRect box;
    int charHeight = 0;
    unsigned mean = 0;
    std::string tags;
};

// What becomes of a region's reading or empty frame at its gate: the gate's answer goes to the
// post processors of the gate and, as event 6000, to the main window.
class GateReport {
  public:
    // The gate of a region when both exist and the gate has a plug-in, else null; the region
    // itself through lane when asked for.
    static Integrator* GateOf(Project& project, int laneId, const Lane** lane = nullptr);

    // found: a reading (reading is used) or an empty frame (reading is ignored). The caller
    // holds lprmutex. Returns the gate's answer, empty for none.
    static std::string ReportToGate(Project& project, int laneId, const GateReading& reading,
                                    bool found, int position);

    // Hands a transit line to every post processor that refers to gateName. Lines with fewer
    // than two separators reach nobody.
    static void DispatchTransit(Project& project, const std::string& line,
                                const std::string& gateName, int laneId);
};

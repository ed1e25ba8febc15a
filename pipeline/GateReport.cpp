#include "GateReport.h"

#include "TransitLine.h"
#include "core/Project.h"
#include "corvane/IntegratorPlugin.h"
#include "corvane/PostProcessorPlugin.h"

Integrator* GateReport::GateOf(Project& project, int laneId, const Lane** lane) {
    const Lane* region = project.GetLane(laneId);
    if (lane != nullptr)
        *lane = region;
    if (region == nullptr)
        return nullptr;
    Integrator* gate = project.GetIntegratorByName(region->intname);
    return gate != nullptr && gate->plugin != nullptr ? gate : nullptr;
}

std::string GateReport::ReportToGate(Project& project, int laneId, const GateReading& reading,
                                     bool found, int position) {
    Integrator* gate = GateOf(project, laneId);
    if (gate == nullptr)
        return std::string();
    const std::string answer =
        found ? gate->plugin->NewResult(reading.plate, reading.box, reading.charHeight, position,
                                        static_cast<int>(reading.mean), reading.tags)
              : gate->plugin->NewResult(" ", PluginRect{}, 0, position, 0, "NOPAR");
    if (answer.empty())
        return answer;
    DispatchTransit(project, answer, gate->name, laneId);
    project.PostEvent(ID_LPR_RESULT, found ? 0 : gate->id, answer);
    return answer;
}

void GateReport::DispatchTransit(Project& project, const std::string& line,
                                 const std::string& gateName, int laneId) {
    const TransitLine transit = TransitLine::Split(line);
    if (transit.separators < 2)
        return;
    const WallClock::time_point now = WallClock::now();
    WallClock::time_point time = now;
    std::string image;
    if (transit.separators >= 3)
        ParseLocalTime(transit.field[2], now, time);
    if (transit.separators >= 4)
        image = transit.field[3];
    const PluginDateTime stamp = ToPluginDateTime(time);
    std::string placeName;
    int placeId = 0;
    {
        std::lock_guard<std::mutex> lock(project.settingsmutex);
        placeName = project.place.placename;
        placeId = project.place.placeid;
    }
    std::lock_guard<std::mutex> lock(project.processorsmutex);
    for (auto& processor : project.processors)
        if (processor.plugin != nullptr && processor.refintegrator == gateName)
            processor.plugin->NewTransit(transit.field[0], image, stamp, processor.refintegrator,
                                         placeName, laneId, placeId);
}

// The six component files of a project: cameras.dat, boards.dat, triggers.dat, lanes.dat,
// integrators.dat and processors.dat, in the working directory. Loading one also creates and
// configures the plug-in instance of each record.
#include <functional>
#include <mutex>
#include <optional>

#include "BinaryFile.h"
#include "Project.h"
#include "corvane/CameraPlugin.h"
#include "corvane/IntegratorPlugin.h"
#include "corvane/PostProcessorPlugin.h"
#include "corvane/TriggerPlugin.h"
#include "platform/FileSystem.h"

namespace {

constexpr int kCameraVersion = 6;
constexpr int kBoardVersion = 2;
constexpr int kTriggerVersion = 1;
constexpr int kIntegratorVersion = 2;
constexpr int kProcessorVersion = 2;
constexpr int kLaneVersion = 12;

constexpr int kMinimumBitrate = 50000;
constexpr int kReplacementBitrate = 1000000;

struct ComponentFile {
    const char* fileName;
    const char* loadFunction;
    const char* cannotLoad;
    const char* saveFunction;
    const char* cannotSave;
};

const ComponentFile kCameras = {"cameras.dat", "Project::LoadCamera", "Cannot load cameras file",
                                "Project::SaveCamera", "Cannot save cameras file"};
const ComponentFile kBoards = {"boards.dat", "Project::LoadBoard", "Cannot load ROIs file",
                               "Project::SaveBoard", "Cannot save ROIs file"};
const ComponentFile kTriggers = {"triggers.dat", "Project::LoadTrigger",
                                 "Cannot load triggers file", "Project::SaveTrigger",
                                 "Cannot save triggers file"};
const ComponentFile kLanes = {"lanes.dat", "Project::LoadLane", "Cannot load ROIs file",
                              "Project::SaveLane", "Cannot save lanes file"};
const ComponentFile kIntegrators = {"integrators.dat", "Project::LoadIntegrator",
                                    "Cannot load integrators file", "Project::SaveIntegrator",
                                    "Cannot save integrators file"};
const ComponentFile kProcessors = {"processors.dat", "Project::LoadProcessor",
                                   "Cannot load processors file", "Project::SaveProcessor",
                                   "Cannot save processors file"};

// The line in the log context is the caller's: the place that found the fault.
void Warn(const char* function, const std::string& message, int line = __builtin_LINE()) {
    platform::Log(platform::LogLevel::Warning, {__FILE__, function, line}, message);
}

// Reads the whole file, its strings in the project's code page. Empty when the file is missing
// (silently) or unreadable (warned).
std::optional<BinaryReader> OpenComponentFile(const ComponentFile& file, const std::string& folder,
                                              int codePage) {
    std::vector<uint8_t> bytes;
    const std::string path = folder.empty() ? file.fileName : folder + "/" + file.fileName;
    switch (platform::ReadWholeFile(path, bytes, kMaxBinaryFileSize)) {
        case platform::ReadResult::Missing:
            return std::nullopt;
        case platform::ReadResult::CannotOpen:
            Warn(file.loadFunction, file.cannotLoad);
            return std::nullopt;
        case platform::ReadResult::TooLarge:
            Warn(file.loadFunction, std::string(file.fileName) + " is damaged: larger than " +
                                        std::to_string(kMaxBinaryFileSize) + " bytes, not loaded");
            return std::nullopt;
        case platform::ReadResult::Ok:
            break;
    }
    return BinaryReader(std::move(bytes), codePage);
}

void ReportDamage(const ComponentFile& file, const std::string& why, int line = __builtin_LINE()) {
    Warn(file.loadFunction, std::string(file.fileName) + " is damaged: " + why, line);
}

// Reads count records with readRecord, which returns false when the data ran out. Records read
// whole are kept; the rest of a damaged file is reported and skipped.
void ReadRecords(const ComponentFile& file, int32_t count,
                 const std::function<bool()>& readRecord) {
    if (count < 0) {
        ReportDamage(file, "negative record count " + std::to_string(count) + ", nothing loaded");
        return;
    }
    for (int32_t i = 0; i < count; ++i) {
        if (!readRecord()) {
            ReportDamage(file, "only " + std::to_string(i) + " of " + std::to_string(count) +
                                   " records could be read");
            return;
        }
    }
}

// Version and record count. False when the file has none, or a version the kind does not load
// (silently: the count of such a file is not even read).
bool ReadHeader(const ComponentFile& file, BinaryReader& reader, bool (*loads)(int32_t version),
                int32_t& version, int32_t& count) {
    if (!reader.ReadInt(version)) {
        ReportDamage(file, "no version");
        return false;
    }
    if (!loads(version))
        return false;
    if (!reader.ReadInt(count)) {
        ReportDamage(file, "no record count");
        return false;
    }
    return true;
}

bool FromVersion1(int32_t version) {
    return version >= 1;
}
bool FromVersion3(int32_t version) {
    return version >= 3;
}
bool Version1Or2(int32_t version) {
    return version == 1 || version == 2;
}
bool Version1Only(int32_t version) {
    return version == 1;
}

// While a project is only checked, the plug-in a record names is noted (its path below the
// application folder) and not created: true then, and the record goes no further.
template <typename Manager>
bool NotedOnly(std::vector<std::string>* noted, const Manager& manager,
               const std::string& library) {
    if (noted == nullptr)
        return false;
    noted->push_back(manager.PathOf(library));
    return true;
}

void Save(const ComponentFile& file, const BinaryWriter& writer) {
    if (!platform::WriteWholeFile(file.fileName, writer.Bytes()))
        Warn(file.saveFunction, file.cannotSave);
}

int ApplyBitrateRule(int bitrate) {
    return bitrate < kMinimumBitrate ? kReplacementBitrate : bitrate;
}

// Reads an integer field present since a version, or gives the default.
bool ReadSince(BinaryReader& reader, int version, int since, int fallback, int& value) {
    if (version < since) {
        value = fallback;
        return true;
    }
    int32_t read = 0;
    if (!reader.ReadInt(read))
        return false;
    value = read;
    return true;
}

bool ReadStringSince(BinaryReader& reader, int version, int since, const char* fallback,
                     std::string& value) {
    if (version < since) {
        value = fallback;
        return true;
    }
    return reader.ReadString(value);
}

// The common head of the plug-in-backed records: id, name, library, settings.
struct RecordHead {
    int32_t id = 0;
    std::string name;
    std::string library;
    std::string settings;
};

bool ReadHead(BinaryReader& reader, RecordHead& head, bool hasSettings) {
    return reader.ReadInt(head.id) && reader.ReadString(head.name) &&
           reader.ReadString(head.library) && (!hasSettings || reader.ReadString(head.settings));
}

void WriteHead(BinaryWriter& writer, int id, const std::string& name, const std::string& library,
               const std::string& settings) {
    writer.WriteInt(id);
    writer.WriteString(name);
    writer.WriteString(library);
    writer.WriteString(settings);
}

template <typename Plugin>
std::string LibraryOf(Plugin* plugin) {
    return plugin != nullptr ? plugin->GetLibName() : std::string();
}

}  // namespace

void Project::SaveCamera() {
    BinaryWriter writer(place.codepage);
    writer.WriteInt(kCameraVersion);
    writer.WriteInt(static_cast<int32_t>(cameras.GetCount()));
    for (const auto& camera : cameras) {
        WriteHead(writer, camera.id, camera.name, LibraryOf(camera.plugin), camera.settings);
        writer.WriteInt(camera.port);
        writer.WriteInt(camera.FrameDim);
        writer.WriteInt(camera.AutoDiscovery);
        writer.WriteInt(camera.FPS);
        writer.WriteInt(camera.bitrate);
    }
    Save(kCameras, writer);
}

void Project::LoadCamera() {
    auto reader = OpenComponentFile(kCameras, loadfolder, place.codepage);
    int32_t version = 0;
    int32_t count = 0;
    if (!reader || !ReadHeader(kCameras, *reader, FromVersion1, version, count))
        return;
    ReadRecords(kCameras, count, [&] {
        RecordHead head;
        Camera camera;
        if (!ReadHead(*reader, head, true) || !ReadSince(*reader, version, 2, -1, camera.port) ||
            !ReadSince(*reader, version, 3, 0, camera.FrameDim) ||
            !ReadSince(*reader, version, 4, 0, camera.AutoDiscovery) ||
            !ReadSince(*reader, version, 5, 10, camera.FPS) ||
            !ReadSince(*reader, version, 6, kMinimumBitrate, camera.bitrate))
            return false;
        // The default of older files meets the rule as it is and stays at 50,000.
        camera.bitrate = ApplyBitrateRule(camera.bitrate);
        camera.id = head.id;
        camera.name = head.name;
        camera.settings = head.settings;
        camera.sampling = 0;
        if (NotedOnly(namedplugins, cameraplugins, head.library))
            return true;
        {
            platform::ScopedWorkingDirectory inAppDir(appdir);
            camera.plugin = cameraplugins.CreateCamera(head.library);
            if (camera.plugin != nullptr)
                camera.plugin->SetParameters(camera.settings);
        }
        if (camera.plugin != nullptr)
            cameras.Add(camera);
        return true;
    });
}

void Project::SaveBoard() {
    BinaryWriter writer(place.codepage);
    writer.WriteInt(kBoardVersion);
    writer.WriteInt(static_cast<int32_t>(boards.GetCount()));
    for (const auto& board : boards)
        WriteHead(writer, board.id, board.name, LibraryOf(board.plugin), board.settings);
    Save(kBoards, writer);
}

void Project::LoadBoard() {
    auto reader = OpenComponentFile(kBoards, loadfolder, place.codepage);
    int32_t version = 0;
    int32_t count = 0;
    if (!reader || !ReadHeader(kBoards, *reader, Version1Or2, version, count))
        return;
    ReadRecords(kBoards, count, [&] {
        RecordHead head;
        if (!ReadHead(*reader, head, version >= 2))
            return false;
        if (version < 2)
            head.settings = " ";
        if (NotedOnly(namedplugins, boardplugins, head.library))
            return true;
        platform::ScopedWorkingDirectory inAppDir(appdir);
        AddBoard(head.name, head.library, head.settings, head.id);
        return true;
    });
}

void Project::SaveTrigger() {
    BinaryWriter writer(place.codepage);
    writer.WriteInt(kTriggerVersion);
    writer.WriteInt(static_cast<int32_t>(triggers.GetCount()));
    for (const auto& trigger : triggers)
        WriteHead(writer, trigger.id, trigger.name, LibraryOf(trigger.plugin), trigger.settings);
    Save(kTriggers, writer);
}

void Project::LoadTrigger() {
    auto reader = OpenComponentFile(kTriggers, loadfolder, place.codepage);
    int32_t version = 0;
    int32_t count = 0;
    if (!reader || !ReadHeader(kTriggers, *reader, Version1Only, version, count))
        return;
    ReadRecords(kTriggers, count, [&] {
        RecordHead head;
        if (!ReadHead(*reader, head, true))
            return false;
        if (NotedOnly(namedplugins, triggerplugins, head.library))
            return true;
        platform::ScopedWorkingDirectory inAppDir(appdir);
        AddTrigger(head.name, head.library, head.settings, head.id);
        return true;
    });
}

void Project::SaveIntegrator() {
    BinaryWriter writer(place.codepage);
    writer.WriteInt(kIntegratorVersion);
    writer.WriteInt(static_cast<int32_t>(integrators.GetCount()));
    for (const auto& gate : integrators) {
        WriteHead(writer, gate.id, gate.name, LibraryOf(gate.plugin), gate.settings);
        writer.WriteInt(gate.OpMode);
    }
    Save(kIntegrators, writer);
}

void Project::LoadIntegrator() {
    auto reader = OpenComponentFile(kIntegrators, loadfolder, place.codepage);
    int32_t version = 0;
    int32_t count = 0;
    if (!reader || !ReadHeader(kIntegrators, *reader, FromVersion1, version, count))
        return;
    const PluginOpenArgs args = OpenArgs();
    ReadRecords(kIntegrators, count, [&] {
        RecordHead head;
        Integrator gate;
        if (!ReadHead(*reader, head, true) || !ReadSince(*reader, version, 2, 0, gate.OpMode))
            return false;
        gate.id = head.id;
        gate.name = head.name;
        gate.settings = head.settings;
        if (NotedOnly(namedplugins, integratorplugins, head.library))
            return true;
        {
            platform::ScopedWorkingDirectory inAppDir(appdir);
            gate.plugin = integratorplugins.CreaIntegratorPlugin(head.library);
            if (gate.plugin != nullptr) {
                // The plug-in learns its gate's name from the suffix; the record keeps the
                // stored text, so the file does not grow.
                gate.plugin->SetParameters(gate.settings + "<INTNAME>" + gate.name + "<\\INTNAME>");
                OpenWith(gate.plugin, gate.id, args);
            }
        }
        if (gate.plugin != nullptr)
            integrators.Add(gate);
        return true;
    });
}

void Project::SaveProcessor() {
    BinaryWriter writer(place.codepage);
    writer.WriteInt(kProcessorVersion);
    writer.WriteInt(static_cast<int32_t>(processors.GetCount()));
    for (const auto& processor : processors) {
        WriteHead(writer, processor.id, processor.name, LibraryOf(processor.plugin),
                  processor.settings);
        writer.WriteString(processor.refintegrator);
    }
    Save(kProcessors, writer);
}

void Project::LoadProcessor() {
    auto reader = OpenComponentFile(kProcessors, loadfolder, place.codepage);
    if (!reader)
        return;
    {
        // An existing file replaces the array.
        std::lock_guard<std::mutex> lock(processorsmutex);
        for (auto& processor : processors)
            if (processor.plugin != nullptr)
                processor.plugin->Close(processor.name, processor.id);
        processors.Clear();
    }
    int32_t version = 0;
    int32_t count = 0;
    if (!ReadHeader(kProcessors, *reader, FromVersion1, version, count))
        return;
    const PluginOpenArgs args = OpenArgs();
    ReadRecords(kProcessors, count, [&] {
        RecordHead head;
        PostProcessor processor;
        if (!ReadHead(*reader, head, true) || !reader->ReadString(processor.refintegrator))
            return false;
        processor.id = head.id;
        processor.name = head.name;
        processor.settings = head.settings;
        if (NotedOnly(namedplugins, processorplugins, head.library))
            return true;
        {
            platform::ScopedWorkingDirectory inAppDir(appdir);
            processor.plugin = processorplugins.CreaProcessorPlugin(head.library);
            if (processor.plugin != nullptr) {
                processor.plugin->SetParameters(processor.settings);
                OpenWith(processor.plugin, processor.id, args);
            }
        }
        if (processor.plugin != nullptr)
            processors.Add(processor);
        return true;
    });
}

void Project::SaveLane() {
    BinaryWriter writer(place.codepage);
    writer.WriteInt(kLaneVersion);
    writer.WriteInt(static_cast<int32_t>(lanes.GetCount()));
    for (auto& lane : lanes) {
        if (lane.shape.empty())
            lane.shape = lane.RoiCorners();
        writer.WriteString(lane.camname);
        writer.WriteInt(lane.id);
        writer.WriteString(lane.intname);
        writer.WriteString(lane.name);
        writer.WriteString(lane.place);
        for (int corner : lane.roi)
            writer.WriteInt(corner);
        writer.WriteString(lane.trigname);
        writer.WriteInt(lane.DROIX);
        writer.WriteInt(lane.DROIY);
        writer.WriteInt(lane.MinCar);
        writer.WriteInt(lane.MaxCar);
        writer.WriteInt(lane.BufferLen);
        writer.WriteString(lane.lprlib);
        writer.WriteInt(lane.UseTemplate);
        writer.WriteInt(lane.port);
        writer.WriteInt(lane.AutoDiscovery);
        writer.WriteInt(lane.FPS);
        writer.WriteInt(lane.FrameDim);
        writer.WriteInt(lane.CreateLogs);
        writer.WriteInt(lane.bitrate);
        writer.WriteInt(static_cast<int32_t>(lane.shape.size() * 8));
        for (const auto& point : lane.shape) {
            writer.WriteInt(point.x);
            writer.WriteInt(point.y);
        }
    }
    Save(kLanes, writer);
}

namespace {

bool ReadShape(BinaryReader& reader, std::vector<ShapePoint>& shape) {
    int32_t size = 0;
    if (!reader.ReadInt(size) || size < 0 || static_cast<size_t>(size) > reader.Remaining())
        return false;
    shape.clear();
    for (int32_t i = 0; i < size / 8; ++i) {
        ShapePoint point;
        if (!reader.ReadInt(point.x) || !reader.ReadInt(point.y))
            return false;
        shape.push_back(point);
    }
    std::vector<uint8_t> padding;
    return reader.ReadBytes(static_cast<size_t>(size % 8), padding);
}

bool ReadLane(BinaryReader& reader, int version, Lane& lane) {
    if (!reader.ReadString(lane.camname) || !reader.ReadInt(lane.id) ||
        !reader.ReadString(lane.intname) || !reader.ReadString(lane.name) ||
        !reader.ReadString(lane.place))
        return false;
    for (int& corner : lane.roi)
        if (!reader.ReadInt(corner))
            return false;
    if (!reader.ReadString(lane.trigname) || !reader.ReadInt(lane.DROIX) ||
        !reader.ReadInt(lane.DROIY) || !reader.ReadInt(lane.MinCar) ||
        !reader.ReadInt(lane.MaxCar) || !ReadSince(reader, version, 4, 20, lane.BufferLen) ||
        !ReadStringSince(reader, version, 5, "PlateCore", lane.lprlib) ||
        !ReadSince(reader, version, 6, 1, lane.UseTemplate) ||
        !ReadSince(reader, version, 7, -1, lane.port) ||
        !ReadSince(reader, version, 8, 0, lane.AutoDiscovery) ||
        !ReadSince(reader, version, 9, 10, lane.FPS) ||
        !ReadSince(reader, version, 9, 0, lane.FrameDim) ||
        !ReadSince(reader, version, 10, 0, lane.CreateLogs) ||
        !ReadSince(reader, version, 11, 512, lane.bitrate))
        return false;
    lane.bitrate = ApplyBitrateRule(lane.bitrate);
    if (version >= 12)
        return ReadShape(reader, lane.shape);
    lane.shape = lane.RoiCorners();
    return true;
}

}  // namespace

void Project::LoadLane() {
    auto reader = OpenComponentFile(kLanes, loadfolder, place.codepage);
    int32_t version = 0;
    int32_t count = 0;
    // Versions below 3 load nothing; their record count is not even read.
    if (!reader || !ReadHeader(kLanes, *reader, FromVersion3, version, count))
        return;
    ReadRecords(kLanes, count, [&] {
        Lane lane;
        if (!ReadLane(*reader, version, lane))
            return false;
        if (NotedOnly(namedplugins, lprplugins, lane.lprlib))
            return true;
        lanes.Add(lane);
        return true;
    });
}

void Project::LoadComponents() {
    LoadTrigger();
    LoadIntegrator();
    LoadProcessor();
    LoadLane();
    LoadBoard();
    LoadCamera();
}

void Project::SaveComponents() {
    SaveBoard();
    SaveCamera();
    SaveIntegrator();
    SaveProcessor();
    SaveLane();
    SaveTrigger();
}

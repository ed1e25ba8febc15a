// The six component files of a project: cameras.dat, boards.dat, triggers.dat, lanes.dat,
// integrators.dat and processors.dat, in the project's component folder. Loading one also creates
// and configures the plug-in instance of each record.
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

// A component file of the folder; the name alone where no folder is set.
std::string PathIn(const std::string& folder, const char* fileName) {
    return folder.empty() ? fileName : folder + "/" + fileName;
}

// Reads the whole file, its strings in the project's code page. Empty when the file is missing
// (silently) or unreadable (warned).
std::optional<BinaryReader> OpenComponentFile(const ComponentFile& file, const std::string& folder,
                                              int codePage) {
    std::vector<uint8_t> bytes;
    const std::string path = PathIn(folder, file.fileName);
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
void ReadRecords(const ComponentFile& file, const BinaryReader& reader, int32_t count,
                 const std::function<bool(int32_t)>& readRecord) {
    if (count < 0) {
        ReportDamage(file, "negative record count " + std::to_string(count) + ", nothing loaded");
        return;
    }
    for (int32_t i = 0; i < count; ++i) {
        if (!readRecord(i)) {
            ReportDamage(file, "only " + std::to_string(i) + " of " + std::to_string(count) +
                                   " records could be read");
            return;
        }
    }
    if (reader.Remaining() > 0)
        ReportDamage(file, std::to_string(reader.Remaining()) + " bytes after the last of " +
                               std::to_string(count) + " records");
}

// Version and record count. False when the file has none, or a version the kind does not load
// (said; the count of such a file is not even read). A version newer than the one this program
// writes is read as far as this program knows it, and said.
bool ReadHeader(const ComponentFile& file, BinaryReader& reader, bool (*loads)(int32_t version),
                int32_t written, int32_t& version, int32_t& count) {
    if (!reader.ReadInt(version)) {
        ReportDamage(file, "no version");
        return false;
    }
    if (!loads(version)) {
        ReportDamage(file, "version " + std::to_string(version) +
                               " is not one this program reads, no record loaded");
        return false;
    }
    if (version > written)
        ReportDamage(file, "version " + std::to_string(version) + " is newer than this program's " +
                               std::to_string(written) + ", read as " + std::to_string(written));
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

// While a project is only checked, the plug-in a record names is looked up and not created
// (what is wrong with it is noted): true then, and the record goes no further.
template <typename Manager>
bool NotedOnly(std::vector<std::string>* problems, const Manager& manager,
               const std::string& library) {
    if (problems == nullptr)
        return false;
    std::string why;
    if (manager.Locate(library, &why).empty())
        problems->push_back(why);
    return true;
}

void Save(const ComponentFile& file, const std::string& folder, const BinaryWriter& writer) {
    if (!platform::WriteWholeFile(PathIn(folder, file.fileName), writer.Bytes()))
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

// A record whose plug-in cannot be had is kept, not dropped: said once, naming file and record.
void ReportHeld(const ComponentFile& file, int32_t index, const std::string& name,
                const std::string& why, int line = __builtin_LINE()) {
    Warn(file.loadFunction,
         std::string(file.fileName) + " record " + std::to_string(index + 1) + " \"" + name +
             "\": " + why + "; kept out of this run and written back as read",
         line);
}

// True when the record's library can be loaded; otherwise the record is held and reported.
template <typename Manager, typename Record>
bool Loadable(const ComponentFile& file, int32_t index, const Manager& manager,
              const RecordHead& head, const Record& record, std::vector<HeldRecord<Record>>& held) {
    std::string why;
    if (!manager.Locate(head.library, &why).empty())
        return true;
    ReportHeld(file, index, head.name, why);
    held.push_back({record, head.library});
    return false;
}

template <typename Record>
void Hold(const ComponentFile& file, int32_t index, const RecordHead& head, const Record& record,
          std::vector<HeldRecord<Record>>& held) {
    ReportHeld(file, index, head.name, "plug-in " + head.library + " could not be created");
    held.push_back({record, head.library});
}

// True when the record's plug-in is to be created now: the project is opened, not only checked,
// and the library can be loaded (else the record is held and said).
template <typename Manager, typename Record>
bool ToCreate(const ComponentFile& file, int32_t index, const Manager& manager,
              const RecordHead& head, const Record& record, std::vector<HeldRecord<Record>>& held,
              std::vector<std::string>* problems) {
    return !NotedOnly(problems, manager, head.library) &&
           Loadable(file, index, manager, head, record, held);
}

// The record's plug-in, created; null when the record is only checked, or is held (and said).
template <typename Manager, typename Record>
auto PluginFor(const ComponentFile& file, int32_t index, Manager& manager, const RecordHead& head,
               const Record& record, std::vector<HeldRecord<Record>>& held,
               std::vector<std::string>* problems) -> decltype(manager.Create(head.library)) {
    if (!ToCreate(file, index, manager, head, record, held, problems))
        return nullptr;
    auto* plugin = manager.Create(head.library);
    if (plugin == nullptr)
        Hold(file, index, head, record, held);
    return plugin;
}

template <typename Record>
int32_t CountWithHeld(const OwningArray<Record>& loaded,
                      const std::vector<HeldRecord<Record>>& held) {
    return static_cast<int32_t>(loaded.GetCount() + held.size());
}

// Boards and triggers are their record head alone.
template <typename Record>
Record FromHead(const RecordHead& head) {
    Record record;
    record.id = head.id;
    record.name = head.name;
    record.settings = head.settings;
    return record;
}

// The count, then each loaded record and each held one, for kinds that are their head alone.
template <typename Record>
void WriteHeadsOnly(BinaryWriter& writer, const OwningArray<Record>& loaded,
                    const std::vector<HeldRecord<Record>>& held) {
    writer.WriteInt(CountWithHeld(loaded, held));
    for (const auto& record : loaded)
        WriteHead(writer, record.id, record.name, LibraryOf(record.plugin), record.settings);
    for (const auto& kept : held)
        WriteHead(writer, kept.record.id, kept.record.name, kept.library, kept.record.settings);
}

}  // namespace

void Project::SaveCamera() {
    BinaryWriter writer(place.codepage);
    writer.WriteInt(kCameraVersion);
    writer.WriteInt(CountWithHeld(cameras, held.cameras));
    auto write = [&writer](const Camera& camera, const std::string& library) {
        WriteHead(writer, camera.id, camera.name, library, camera.settings);
        writer.WriteInt(camera.port);
        writer.WriteInt(camera.FrameDim);
        writer.WriteInt(camera.AutoDiscovery);
        writer.WriteInt(camera.FPS);
        writer.WriteInt(camera.bitrate);
    };
    for (const auto& camera : cameras)
        write(camera, LibraryOf(camera.plugin));
    for (const auto& kept : held.cameras)
        write(kept.record, kept.library);
    Save(kCameras, componentfolder, writer);
}

void Project::LoadCamera() {
    auto reader = OpenComponentFile(kCameras, componentfolder, place.codepage);
    int32_t version = 0;
    int32_t count = 0;
    if (!reader || !ReadHeader(kCameras, *reader, FromVersion1, kCameraVersion, version, count))
        return;
    ReadRecords(kCameras, *reader, count, [&](int32_t index) {
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
        camera.plugin =
            PluginFor(kCameras, index, cameraplugins, head, camera, held.cameras, pluginproblems);
        if (camera.plugin == nullptr)
            return true;
        camera.plugin->SetParameters(camera.settings);
        cameras.Add(camera);
        return true;
    });
}

void Project::SaveBoard() {
    BinaryWriter writer(place.codepage);
    writer.WriteInt(kBoardVersion);
    WriteHeadsOnly(writer, boards, held.boards);
    Save(kBoards, componentfolder, writer);
}

void Project::LoadBoard() {
    auto reader = OpenComponentFile(kBoards, componentfolder, place.codepage);
    int32_t version = 0;
    int32_t count = 0;
    if (!reader || !ReadHeader(kBoards, *reader, Version1Or2, kBoardVersion, version, count))
        return;
    ReadRecords(kBoards, *reader, count, [&](int32_t index) {
        RecordHead head;
        if (!ReadHead(*reader, head, version >= 2))
            return false;
        if (version < 2)
            head.settings = " ";
        const Board board = FromHead<Board>(head);
        if (!ToCreate(kBoards, index, boardplugins, head, board, held.boards, pluginproblems))
            return true;
        const size_t before = boards.GetCount();
        AddBoard(head.name, head.library, head.settings, head.id);
        if (boards.GetCount() == before)
            Hold(kBoards, index, head, board, held.boards);
        return true;
    });
}

void Project::SaveTrigger() {
    BinaryWriter writer(place.codepage);
    writer.WriteInt(kTriggerVersion);
    WriteHeadsOnly(writer, triggers, held.triggers);
    Save(kTriggers, componentfolder, writer);
}

void Project::LoadTrigger() {
    auto reader = OpenComponentFile(kTriggers, componentfolder, place.codepage);
    int32_t version = 0;
    int32_t count = 0;
    if (!reader || !ReadHeader(kTriggers, *reader, Version1Only, kTriggerVersion, version, count))
        return;
    ReadRecords(kTriggers, *reader, count, [&](int32_t index) {
        RecordHead head;
        if (!ReadHead(*reader, head, true))
            return false;
        const Trigger trigger = FromHead<Trigger>(head);
        if (!ToCreate(kTriggers, index, triggerplugins, head, trigger, held.triggers,
                      pluginproblems))
            return true;
        if (AddTrigger(head.name, head.library, head.settings, head.id) < 0)
            Hold(kTriggers, index, head, trigger, held.triggers);
        return true;
    });
}

void Project::SaveIntegrator() {
    BinaryWriter writer(place.codepage);
    writer.WriteInt(kIntegratorVersion);
    writer.WriteInt(CountWithHeld(integrators, held.integrators));
    auto write = [&writer](const Integrator& gate, const std::string& library) {
        WriteHead(writer, gate.id, gate.name, library, gate.settings);
        writer.WriteInt(gate.OpMode);
    };
    for (const auto& gate : integrators)
        write(gate, LibraryOf(gate.plugin));
    for (const auto& kept : held.integrators)
        write(kept.record, kept.library);
    Save(kIntegrators, componentfolder, writer);
}

void Project::LoadIntegrator() {
    auto reader = OpenComponentFile(kIntegrators, componentfolder, place.codepage);
    int32_t version = 0;
    int32_t count = 0;
    if (!reader ||
        !ReadHeader(kIntegrators, *reader, FromVersion1, kIntegratorVersion, version, count))
        return;
    const PluginOpenArgs args = OpenArgs();
    ReadRecords(kIntegrators, *reader, count, [&](int32_t index) {
        RecordHead head;
        Integrator gate;
        if (!ReadHead(*reader, head, true) || !ReadSince(*reader, version, 2, 0, gate.OpMode))
            return false;
        gate.id = head.id;
        gate.name = head.name;
        gate.settings = head.settings;
        gate.plugin = PluginFor(kIntegrators, index, integratorplugins, head, gate,
                                held.integrators, pluginproblems);
        if (gate.plugin == nullptr)
            return true;
        // The plug-in learns its gate's name from the suffix; the record keeps the stored text,
        // so the file does not grow.
        gate.plugin->SetParameters(gate.settings + "<INTNAME>" + gate.name + "<\\INTNAME>");
        OpenWith(gate.plugin, gate.id, args);
        integrators.Add(gate);
        return true;
    });
}

void Project::SaveProcessor() {
    BinaryWriter writer(place.codepage);
    writer.WriteInt(kProcessorVersion);
    writer.WriteInt(CountWithHeld(processors, held.processors));
    auto write = [&writer](const PostProcessor& processor, const std::string& library) {
        WriteHead(writer, processor.id, processor.name, library, processor.settings);
        writer.WriteString(processor.refintegrator);
    };
    for (const auto& processor : processors)
        write(processor, LibraryOf(processor.plugin));
    for (const auto& kept : held.processors)
        write(kept.record, kept.library);
    Save(kProcessors, componentfolder, writer);
}

void Project::LoadProcessor() {
    auto reader = OpenComponentFile(kProcessors, componentfolder, place.codepage);
    if (!reader)
        return;
    {
        // An existing file replaces the array.
        std::lock_guard<std::mutex> lock(processorsmutex);
        for (auto& processor : processors)
            if (processor.plugin != nullptr)
                processor.plugin->Close(processor.name, processor.id);
        processors.Clear();
        held.processors.clear();
    }
    int32_t version = 0;
    int32_t count = 0;
    if (!ReadHeader(kProcessors, *reader, FromVersion1, kProcessorVersion, version, count))
        return;
    const PluginOpenArgs args = OpenArgs();
    ReadRecords(kProcessors, *reader, count, [&](int32_t index) {
        RecordHead head;
        PostProcessor processor;
        if (!ReadHead(*reader, head, true) || !reader->ReadString(processor.refintegrator))
            return false;
        processor.id = head.id;
        processor.name = head.name;
        processor.settings = head.settings;
        processor.plugin = PluginFor(kProcessors, index, processorplugins, head, processor,
                                     held.processors, pluginproblems);
        if (processor.plugin == nullptr)
            return true;
        processor.plugin->SetParameters(processor.settings);
        OpenWith(processor.plugin, processor.id, args);
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
    Save(kLanes, componentfolder, writer);
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
    auto reader = OpenComponentFile(kLanes, componentfolder, place.codepage);
    int32_t version = 0;
    int32_t count = 0;
    // Versions below 3 load nothing; their record count is not even read.
    if (!reader || !ReadHeader(kLanes, *reader, FromVersion3, kLaneVersion, version, count))
        return;
    ReadRecords(kLanes, *reader, count, [&](int32_t) {
        Lane lane;
        if (!ReadLane(*reader, version, lane))
            return false;
        if (NotedOnly(pluginproblems, lprplugins, lane.lprlib))
            return true;
        lanes.Add(lane);
        return true;
    });
}

void Project::LoadComponents(const std::string& folder) {
    componentfolder = folder;
    LoadTrigger();
    LoadIntegrator();
    LoadProcessor();
    LoadLane();
    LoadBoard();
    LoadCamera();
}

void Project::SaveComponents(const std::string& folder) {
    componentfolder = folder;
    SaveBoard();
    SaveCamera();
    SaveIntegrator();
    SaveProcessor();
    SaveLane();
    SaveTrigger();
}

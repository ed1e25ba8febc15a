#include "Project.h"

#include <algorithm>
#include <cstdio>

#include "corvane/BoardPlugin.h"
#include "corvane/CameraPlugin.h"
#include "corvane/IntegratorPlugin.h"
#include "corvane/PostProcessorPlugin.h"
#include "corvane/TagText.h"
#include "platform/FileSystem.h"
#include "platform/Ticks.h"

namespace {

template <typename Array, typename Match>
auto FindIn(Array& array, Match match) -> decltype(&array[0]) {
    for (auto& record : array)
        if (match(record))
            return &record;
    return nullptr;
}

template <typename Array>
int NextId(const Array& array) {
    int largest = 0;
    for (const auto& record : array)
        largest = std::max(largest, record.id);
    return largest + 1;
}

// Closes the record's plug-in, if any, then removes the first record with the id.
template <typename Array, typename Close>
void RemoveFirstWithId(Array& array, int id, Close close) {
    for (size_t i = 0; i < array.GetCount(); ++i)
        if (array[i].id == id) {
            close(array[i]);
            array.RemoveAt(i);
            return;
        }
}

template <typename Record>
void CloseWithNameAndId(Record& record) {
    if (record.plugin != nullptr)
        record.plugin->Close(record.name, record.id);
}

template <typename Array, typename Match>
void RemoveWhere(Array& array, Match match) {
    for (size_t i = array.GetCount(); i-- > 0;)
        if (match(array[i]))
            array.RemoveAt(i);
}

}  // namespace

Project::Project() = default;

Project::~Project() {
    StopBoardThread();
}

Lane* Project::GetLane(int id) {
    return FindIn(lanes, [id](const Lane& lane) { return lane.id == id; });
}

int Project::GetLaneId(const std::string& name) const {
    for (const auto& lane : lanes)
        if (lane.name == name)
            return lane.id;
    return -1;
}

Camera* Project::GetCamera(int id) {
    return FindIn(cameras, [id](const Camera& camera) { return camera.id == id; });
}

Camera* Project::GetCameraByName(const std::string& name) {
    return FindIn(cameras, [&name](const Camera& camera) { return camera.name == name; });
}

int Project::GetCameraId(const std::string& name) const {
    for (const auto& camera : cameras)
        if (camera.name == name)
            return camera.id;
    return -1;
}

Board* Project::GetBoard(int id) {
    return FindIn(boards, [id](const Board& board) { return board.id == id; });
}

Board* Project::GetBoardByName(const std::string& name) {
    return FindIn(boards, [&name](const Board& board) { return board.name == name; });
}

namespace {
Board MissingBoard() {
    Board board;
    board.id = -1;
    board.name = "--";
    return board;
}
}  // namespace

Board Project::GetBoardCopy(int id) const {
    for (const auto& board : boards)
        if (board.id == id)
            return board;
    return MissingBoard();
}

Board Project::GetBoardCopy(const std::string& name) const {
    for (const auto& board : boards)
        if (board.name == name)
            return board;
    return MissingBoard();
}

Trigger* Project::GetTrigger(int id) {
    return FindIn(triggers, [id](const Trigger& trigger) { return trigger.id == id; });
}

Trigger* Project::GetTriggerByName(const std::string& name) {
    return FindIn(triggers, [&name](const Trigger& trigger) { return trigger.name == name; });
}

Integrator* Project::GetIntegrator(int id) {
    return FindIn(integrators, [id](const Integrator& gate) { return gate.id == id; });
}

Integrator* Project::GetIntegratorByName(const std::string& name) {
    return FindIn(integrators, [&name](const Integrator& gate) { return gate.name == name; });
}

PostProcessor* Project::GetProcessor(int id) {
    return FindIn(processors, [id](const PostProcessor& processor) { return processor.id == id; });
}

PostProcessor* Project::GetProcessorByName(const std::string& name) {
    return FindIn(processors,
                  [&name](const PostProcessor& processor) { return processor.name == name; });
}

bool Project::NameInUse(const std::string& name) const {
    auto& self = const_cast<Project&>(*this);
    return GetBoardCopy(name).id != -1 || GetCameraId(name) != -1 ||
           self.GetIntegratorByName(name) != nullptr || GetLaneId(name) != -1 ||
           self.GetTriggerByName(name) != nullptr || self.GetProcessorByName(name) != nullptr;
}

bool Project::IsValidName(const std::string& name) {
    return !name.empty() && name.find(' ') == std::string::npos;
}

int Project::NewLaneId() const {
    return NextId(lanes);
}
int Project::NewBoardId() const {
    return NextId(boards);
}
int Project::NewCameraId() const {
    return NextId(cameras);
}
int Project::NewIntegratorId() const {
    return NextId(integrators);
}
int Project::NewProcessorId() const {
    return NextId(processors);
}

int Project::RenameCamera(const std::string& oldName, const std::string& newName) {
    std::lock_guard<std::mutex> lock(renamemutex);
    Camera* camera = GetCameraByName(oldName);
    if (camera == nullptr)
        return 0;
    camera->name = newName;
    for (auto& lane : lanes)
        if (lane.camname == oldName)
            lane.camname = newName;
    return 1;
}

int Project::RenameIntegrator(const std::string& oldName, const std::string& newName) {
    std::lock_guard<std::mutex> lock(renamemutex);
    Integrator* gate = GetIntegratorByName(oldName);
    if (gate == nullptr)
        return 0;
    gate->name = newName;
    for (auto& lane : lanes)
        if (lane.intname == oldName)
            lane.intname = newName;
    for (auto& processor : processors)
        if (processor.refintegrator == oldName)
            processor.refintegrator = newName;
    return 1;
}

void Project::RemoveLane(int id) {
    RemoveFirstWithId(lanes, id, [](Lane&) {});
}

void Project::RemoveCamera(int id) {
    for (size_t i = 0; i < cameras.GetCount(); ++i) {
        Camera& camera = cameras[i];
        if (camera.id != id)
            continue;
        {
            std::lock_guard<std::mutex> lock(lanesmutex);
            RemoveWhere(lanes, [&camera](const Lane& lane) { return lane.camname == camera.name; });
        }
        if (camera.plugin != nullptr) {
            camera.plugin->Close();
            camera.plugin->FreeMemory();
        }
        cameras.RemoveAt(i);
        return;
    }
}

void Project::RemoveIntegrator(int id) {
    RemoveFirstWithId(integrators, id, CloseWithNameAndId<Integrator>);
}

void Project::RemoveTrigger(int id) {
    RemoveFirstWithId(triggers, id, CloseWithNameAndId<Trigger>);
}

void Project::RemoveProcessor(int id) {
    // Every post processor with that id goes, not only the first.
    RemoveWhere(processors, [id](PostProcessor& processor) {
        if (processor.id != id)
            return false;
        CloseWithNameAndId(processor);
        return true;
    });
}

void Project::RemoveBoard(int id) {
    std::lock_guard<std::mutex> lock(boardsmutex);
    RemoveFirstWithId(boards, id, [](Board& board) {
        if (board.plugin != nullptr)
            board.plugin->Close(0);
    });
}

std::string Project::GetBoardPins() {
    std::lock_guard<std::mutex> lock(boardsmutex);
    std::string text;
    for (auto& board : boards) {
        TagOpen("BOARD", text);
        TagString("NAME", board.name, text);
        if (board.plugin != nullptr) {
            std::vector<std::string> names;
            std::vector<int> ids;
            board.plugin->GetPins(names, ids, kPinAll);
            for (int pin : ids) {
                TagOpen("PIN", text);
                TagInt("ID", pin, text);
                TagInt("VALUE", board.plugin->ReadPin(pin, kPinAll), text);
                TagClose("PIN", text);
            }
        }
        TagClose("BOARD", text);
    }
    return text;
}

void Project::SetBoardPins(const std::string& commands) {
    std::lock_guard<std::mutex> lock(boardsmutex);
    std::string rest = commands;
    size_t begin = 0;
    size_t end = 0;
    while (FindTag(rest, "BOARD", begin, end)) {
        const std::string block = rest.substr(begin, end - begin);
        std::string name = "--";
        ReadTagString(block, "NAME", name);
        const int pin = GetTagInt(block, "PINID");
        const int value = GetTagInt(block, "VALUE");
        Board* board = GetBoardByName(name);
        if (board != nullptr && board->plugin != nullptr &&
            board->plugin->ReadPin(pin, kPinAll) != value)
            board->plugin->WritePin(pin, value);
        rest.erase(0, end + 8);  // behind "<\BOARD>"
    }
}

int Project::AddBoard(const std::string& name, const std::string& library,
                      const std::string& settings, int id) {
    BoardPlugin* plugin = boardplugins.CreaBoardPlugin(library);
    if (plugin == nullptr)
        return static_cast<int>(boards.GetCount());
    Board board;
    board.name = name;
    board.settings = settings;
    board.id = id;
    board.plugin = plugin;
    std::lock_guard<std::mutex> lock(boardsmutex);
    boards.Add(board);
    plugin->SetParameters(settings.empty() ? plugin->GetParameters(0) : settings);
    plugin->Open(mainwindow, name, id);
    return static_cast<int>(boards.GetCount());
}

int Project::AddTrigger(const std::string& name, const std::string& library,
                        const std::string& settings, int id) {
    TriggerPlugin* plugin = triggerplugins.CreaTriggerPlugin(library);
    if (plugin == nullptr) {
        CORVANE_LOG_WARNING("Project::AddTrigger", "Cannot found trigger plugin");
        return -1;
    }
    plugin->SetParameters(settings);
    plugin->Open(name, id);
    Trigger trigger;
    trigger.name = name;
    trigger.settings = settings;
    trigger.id = id;
    trigger.plugin = plugin;
    triggers.Add(trigger);
    return static_cast<int>(triggers.GetCount());
}

std::string Project::GetProjectText() const {
    std::string text;
    TagOpen("PROJECT_CAMERAS", text);
    for (const auto& camera : cameras) {
        TagOpen("NEWCAMERA", text);
        TagString("CAMNAME", camera.name, text);
        TagString("CAMPLUGIN", camera.plugin ? camera.plugin->GetLibName() : std::string(), text);
        TagString("CAMSETTINGS", camera.settings, text);
        TagClose("NEWCAMERA", text);
    }
    TagClose("PROJECT_CAMERAS", text);
    TagOpen("PROJECT_BOARDS", text);
    for (const auto& board : boards) {
        TagOpen("NEWBOARD", text);
        TagString("BNAME", board.name, text);
        TagString("BPLUG", board.plugin ? board.plugin->GetLibName() : std::string(), text);
        TagClose("NEWBOARD", text);
    }
    TagClose("PROJECT_BOARDS", text);
    TagOpen("PROJECT_LANES", text);
    for (const auto& lane : lanes) {
        TagOpen("NEWLANE", text);
        TagString("LANENAME", lane.name, text);
        TagString("LANECAMNAME", lane.camname, text);
        TagInt("LANEX1", lane.roi[0], text);
        TagInt("LANEY1", lane.roi[1], text);
        TagInt("LANEX2", lane.roi[2], text);
        TagInt("LANEY2", lane.roi[3], text);
        TagInt("HMIN", lane.MinCar, text);
        TagInt("HMAX", lane.MaxCar, text);
        TagInt("USETEMPL", lane.UseTemplate, text);
        TagClose("NEWLANE", text);
    }
    TagClose("PROJECT_LANES", text);
    return text;
}

void Project::AddResult(const LPRPackage& record) {
    std::lock_guard<std::mutex> lock(resultsmutex);
    lprresults.push_back(record);
    while (lprresults.size() > kMaxResults)
        lprresults.pop_front();
}

PluginOpenArgs Project::OpenArgs() const {
    PluginOpenArgs args;
    args.mainWindow = mainwindow;
    args.placeName = place.placename;
    args.placeId = place.placeid;
    args.dbAddress = place.placedbip;
    args.dbName = place.placedbname;
    args.dbUser = place.placedbusername;
    args.dbPassword = place.placedbpassword;
    return args;
}

void Project::LoadPluginDirectories() {
    cameraplugins.InitList();
    integratorplugins.LoadPlugin();
    processorplugins.LoadPlugin();
    boardplugins.LoadPlugin();
    triggerplugins.LoadPlugin();
    lprplugins.InitList();
}

void Project::StartLanes() {
    if (runner_ == nullptr)
        return;
    for (auto& lane : lanes)
        runner_->StartLane(lane);
}

void Project::StopLanes() {
    for (auto& lane : lanes)
        if (runner_ != nullptr)
            runner_->StopLane(lane);
}

void Project::StopCameras() {
    for (auto& camera : cameras) {
        if (!camera.sampling)
            continue;
        if (runner_ != nullptr)
            runner_->StopCamera(camera);
        camera.sampling = 0;
    }
}

void Project::StopBoardThread() {
    boardthread.reset();  // the destructor asks the thread to stop and waits for its end
}

void Project::CloseAll() {
    // Every camera plug-in is closed, also those whose sampling the edit bracket already
    // stopped: the contract allows Close after a stop, and devices are released at once.
    std::printf("Close cameras\n");
    for (auto& camera : cameras)
        if (camera.plugin != nullptr) {
            camera.plugin->Close();
            camera.plugin->FreeMemory();
        }
    std::printf("Close integrators\n");
    for (auto& gate : integrators)
        if (gate.plugin != nullptr)
            gate.plugin->Close(" ", -1);
    std::printf("Close boards\n");
    for (auto& board : boards)
        if (board.plugin != nullptr)
            board.plugin->Close(0);
    std::printf("Close triggers\n");
    for (auto& trigger : triggers)
        if (trigger.plugin != nullptr)
            trigger.plugin->Close(trigger.name, trigger.id);
    std::printf("Close postprocs\n");
    for (auto& processor : processors)
        if (processor.plugin != nullptr)
            processor.plugin->Close(processor.name, processor.id);
}

void Project::ClearAll() {
    lanes.Clear();
    triggers.Clear();
    cameras.Clear();
    integrators.Clear();
    processors.Clear();
    boards.Clear();
    held.Clear();
    std::lock_guard<std::mutex> lock(resultsmutex);
    lprresults.clear();
}

void Project::TouchActivity() {
    std::lock_guard<std::mutex> lock(activitymutex);
    lastactivity = platform::GetTickCount();
}

void Project::EditBracket(const std::function<void()>& change) {
    if (editDepth_ > 0) {
        change();
        return;
    }
    TouchActivity();
    StopBoardThread();
    StopCameras();
    StopLanes();
    {
        struct Open {
            int& depth;
            explicit Open(int& d) : depth(++d) {}
            ~Open() { --depth; }
        } open(editDepth_);
        change();
    }
    StartLanes();
    StartBoardThread();
    PostEvent(ID_CAMERA_BUTTONS, 0);
}

void Project::PostEvent(int id, int value, const std::string& text) {
    if (mainframe != nullptr)
        mainframe->PostCommand(id, value, text);
}

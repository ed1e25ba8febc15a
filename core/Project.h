#pragma once
#include <atomic>
#include <cstdint>
#include <deque>
#include <functional>
#include <memory>
#include <mutex>
#include <string>
#include <vector>

#include "Board.h"
#include "Camera.h"
#include "EventSink.h"
#include "FrameRing.h"
#include "Integrator.h"
#include "LPRPackage.h"
#include "Lane.h"
#include "PlaceSettings.h"
#include "PostProcessor.h"
#include "Trigger.h"
#include "platform/WorkerThread.h"
#include "plugins/CameraPluginManager.h"
#include "plugins/PluginBoardManager.h"
#include "plugins/PluginIntegratorManager.h"
#include "plugins/PluginLPRManager.h"
#include "plugins/PluginOpenArgs.h"
#include "plugins/PluginProcessorManager.h"
#include "plugins/PluginTriggerManager.h"

// What the result view shows of one recognition cycle of the selected region.
struct RoiView {
    static constexpr int kReadings = 10;
    cv::Mat image;
    std::string text[kReadings];
    int rect[kReadings][4] = {};
    int valid[kReadings] = {};
    int score[kReadings] = {};
};

// Starts and stops the per-region and per-source work. The recognition pipeline installs the
// real one; without it the model only keeps its flags.
class LaneRunner {
  public:
    virtual ~LaneRunner() = default;
    virtual void StartLane(Lane& lane) = 0;
    virtual void StopLane(Lane& lane) = 0;
    virtual void StopCamera(Camera& camera) = 0;
};

// The one description of the site that the workstation configures and runs. Only the GUI thread
// changes the arrays, and only inside the edit bracket, while no worker that reads them runs.
// A record whose plug-in could not be had when the project was opened: out of the run, and
// written back as it was read when the project is saved.
template <typename Record>
struct HeldRecord {
    Record record;
    std::string library;
};

struct HeldRecords {
    std::vector<HeldRecord<Camera>> cameras;
    std::vector<HeldRecord<Board>> boards;
    std::vector<HeldRecord<Trigger>> triggers;
    std::vector<HeldRecord<Integrator>> integrators;
    std::vector<HeldRecord<PostProcessor>> processors;
    void Clear() { *this = HeldRecords(); }
};

class Project {
  public:
    static constexpr size_t kMaxResults = 20;

    Project();
    Project(const Project&) = delete;
    Project& operator=(const Project&) = delete;
    ~Project();

    // Operator access (apar.dat).
    std::string username;
    std::string password;
    int accessmode = 1;
    uint32_t lastactivity = 0;
    int timeout = 1;
    std::mutex activitymutex;

    int prjopen = 0;
    EventSink* mainframe = nullptr;     // target of posted events
    NativeWindow mainwindow = nullptr;  // handed to plug-ins as the main window
    NativeWindow viewer = nullptr;      // hidden display parent of camera plug-ins
    EventSink* lprsink = nullptr;
    std::unique_ptr<platform::WorkerThread> boardthread;  // the board thread; null when stopped
    std::string appdir;
    std::string prjname;
    std::string prjfile;  // the open project's file, absolute, as its name is written on disk
    std::string prjdir;
    std::string runtimeip;
    // The folder the component files are read from and written to (absolute; set by
    // LoadComponents and SaveComponents).
    std::string componentfolder;
    // Set only while a project is checked without being opened (a runtime checks a received
    // one): each plug-in a record names is checked and not created, and what is wrong with it
    // is noted in pluginproblems.
    std::vector<std::string>* pluginproblems = nullptr;
    std::mutex settingsmutex;
    PlaceSettings place;

    std::atomic<int> selcamera{-1};  // read by the source threads without a lock
    FrameRing<cv::Mat> camframes;
    std::mutex framemutex;
    uint32_t viewtick = 0;
    int selroi = -1;
    FrameRing<RoiView> roiframes;

    ArrayLane lanes;
    ArrayTrigger triggers;
    ArrayCamera cameras;
    ArrayIntegrator integrators;
    ArrayPostProcessor processors;
    ArrayBoard boards;
    HeldRecords held;  // read and written with the component files, never run
    std::deque<LPRPackage> lprresults;
    std::mutex renamemutex;

    // Each manager loads only from the plug-in folders of appdir (set before any load).
    CameraPluginManager cameraplugins{AppDirSource()};
    PluginBoardManager boardplugins{AppDirSource()};
    PluginTriggerManager triggerplugins{AppDirSource()};
    PluginIntegratorManager integratorplugins{AppDirSource()};
    PluginLPRManager lprplugins{AppDirSource()};
    PluginProcessorManager processorplugins{AppDirSource()};

    // Process-wide locks of the model; where two are taken together, in this order:
    // lprmutex before processorsmutex.
    std::mutex lprmutex;  // serialises every region's calls into the gates
    std::mutex selectionmutex;
    std::mutex lanesmutex;
    std::mutex boardsmutex;
    std::mutex integratorsmutex;
    std::mutex processorsmutex;
    std::mutex resultsmutex;
    std::mutex camviewmutex;
    std::mutex roiviewmutex;

    // Lookups: pointers to live records or null; ids -1 when absent.
    Lane* GetLane(int id);
    int GetLaneId(const std::string& name) const;
    Camera* GetCamera(int id);
    Camera* GetCameraByName(const std::string& name);
    int GetCameraId(const std::string& name) const;
    Board* GetBoard(int id);
    Board* GetBoardByName(const std::string& name);
    Board GetBoardCopy(int id) const;
    Board GetBoardCopy(const std::string& name) const;
    Trigger* GetTrigger(int id);
    Trigger* GetTriggerByName(const std::string& name);
    Integrator* GetIntegrator(int id);
    Integrator* GetIntegratorByName(const std::string& name);
    PostProcessor* GetProcessor(int id);
    PostProcessor* GetProcessorByName(const std::string& name);

    // True when any component of any kind already has this name (boards, cameras,
    // integrators, lanes, triggers, post processors are asked in that order).
    bool NameInUse(const std::string& name) const;
    // A name is usable when it is not empty and has no blank.
    static bool IsValidName(const std::string& name);

    int NewLaneId() const;
    int NewBoardId() const;
    int NewCameraId() const;
    int NewIntegratorId() const;
    int NewProcessorId() const;

    int RenameCamera(const std::string& oldName, const std::string& newName);
    int RenameIntegrator(const std::string& oldName, const std::string& newName);

    void RemoveLane(int id);
    void RemoveCamera(int id);
    void RemoveIntegrator(int id);
    void RemoveTrigger(int id);
    void RemoveProcessor(int id);
    void RemoveBoard(int id);

    // Board status text of all boards, and the application of a board command text.
    std::string GetBoardPins();
    void SetBoardPins(const std::string& commands);

    int AddBoard(const std::string& name, const std::string& library, const std::string& settings,
                 int id);
    int AddTrigger(const std::string& name, const std::string& library, const std::string& settings,
                   int id);

    // The project description given to plug-ins that bring their own dialog.
    std::string GetProjectText() const;

    // Appends a reading record, dropping the oldest beyond 20.
    void AddResult(const LPRPackage& record);

    // Site identity and database access for the Open of gates and post processors.
    PluginOpenArgs OpenArgs() const;

    // Component files in componentfolder.
    void SaveCamera();
    void SaveBoard();
    void SaveTrigger();
    void SaveLane();
    void SaveIntegrator();
    void SaveProcessor();
    void LoadCamera();
    void LoadBoard();
    void LoadTrigger();
    void LoadLane();
    void LoadIntegrator();
    void LoadProcessor();
    // All six in the load order: triggers, integrators, post processors, lanes, boards, cameras.
    void LoadComponents(const std::string& folder);
    // All six in the save order: boards, cameras, integrators, processors, lanes, triggers.
    void SaveComponents(const std::string& folder);

    // Scans every plug-in directory below ./plugin/, in the start-up order.
    void LoadPluginDirectories();

    // Run control.
    void SetLaneRunner(LaneRunner* runner) { runner_ = runner; }
    void StartLanes();
    void StopLanes();
    void StopCameras();
    // Defined with the board thread in the pipeline: the model only holds it.
    void StartBoardThread();
    void StopBoardThread();
    void CloseAll();
    void ClearAll();
    void TouchActivity();

    // The edit bracket around every structural change: workers stop, the change is applied on
    // the calling (GUI) thread, regions and the board thread start again, and the window is
    // told to refresh its sampling buttons. Sources stay stopped. A bracket inside a bracket
    // only applies its change: the outermost one stops and starts.
    void EditBracket(const std::function<void()>& change);

    void PostEvent(int id, int value, const std::string& text = std::string());

  private:
    FolderSource AppDirSource() {
        return [this] { return appdir; };
    }

    LaneRunner* runner_ = nullptr;
    int editDepth_ = 0;  // brackets open on the editing thread, the only one that edits
};

// The region and source threads with real test plug-ins loaded from disk: queueing, trigger and
// search area, acceptance, gate reports, transit dispatch, logs, views, start and stop order.
#include <unistd.h>

#include <chrono>
#include <thread>

#include <gtest/gtest.h>

#include "TestSupport.h"
#include "core/EventQueue.h"
#include "core/Project.h"
#include "corvane/CameraPlugin.h"
#include "corvane/IntegratorPlugin.h"
#include "corvane/PostProcessorPlugin.h"
#include "pipeline/GrabThread.h"
#include "pipeline/LPRThread.h"
#include "pipeline/LaneControl.h"
#include "pipeline/StreamServices.h"
#include "platform/FileSystem.h"
#include "platform/Ticks.h"

namespace {

template <typename Condition>
bool WaitFor(Condition condition, int milliseconds = 5000) {
    const auto deadline =
        std::chrono::steady_clock::now() + std::chrono::milliseconds(milliseconds);
    while (!condition()) {
        if (std::chrono::steady_clock::now() > deadline)
            return false;
        std::this_thread::sleep_for(std::chrono::milliseconds(5));
    }
    return true;
}

bool Has(const std::string& text, const std::string& part) {
    return text.find(part) != std::string::npos;
}

// Records what the pipeline asks of the streaming side, in order.
class StreamRecorder : public StreamServices {
  public:
    bool RtspRunning() const override { return true; }
    void AddStream(const std::string& name, int bitrate) override {
        Note("AddStream:" + name + ":" + std::to_string(bitrate));
    }
    void RemoveStream(const std::string& name) override { Note("RemoveStream:" + name); }
    bool HasStream(const std::string&) const override { return true; }
    void SetStreamSize(int width, int height, const std::string& name) override {
        Note("SetStreamSize:" + std::to_string(width) + "x" + std::to_string(height) + ":" + name);
    }
    void PushStreamFrame(const uint8_t*, int, int, const std::string& name, uint32_t) override {
        Note("Push:" + name);
    }
    int StreamRate(const std::string&, int fallback) const override { return fallback; }
    void StartFront(const std::string& name, int port, int, bool discovery,
                    std::shared_ptr<SoapThread>&, std::shared_ptr<WSDiscovery>&) override {
        Note("StartFront:" + name + ":" + std::to_string(port) + (discovery ? ":wsd" : ""));
    }
    void StopFront(std::shared_ptr<SoapThread>&, std::shared_ptr<WSDiscovery>&) override {
        Note("StopFront");
    }
    void SetVideoFormat(SoapThread&, int, int, int) override {}
    std::string Calls() const {
        std::lock_guard<std::mutex> lock(mutex_);
        return calls_;
    }

  private:
    void Note(const std::string& call) {
        std::lock_guard<std::mutex> lock(mutex_);
        calls_ += call + "\n";
    }
    mutable std::mutex mutex_;
    std::string calls_;
};

class RecognitionThreads : public ::testing::Test {
  protected:
    RecognitionThreads() : cwd_(dir_.Path()) {
        EXPECT_EQ(::symlink((AppDir() + "/plugin").c_str(), dir_.File("plugin").c_str()), 0);
        project_.prjdir = dir_.Path();
        project_.mainframe = &events_;
        project_.place.placename = "Site";
        project_.cameraplugins.InitList();
        project_.integratorplugins.LoadPlugin();
        project_.processorplugins.LoadPlugin();
        project_.lprplugins.InitList();
        for (const auto& library : {PluginPath("lpr", "ScriptLPR"), Gate(), Processor()}) {
            SetScript(library, "");
            ClearJournal(library);
        }
    }
    ~RecognitionThreads() override {
        project_.StopCameras();
        project_.StopLanes();
    }

    static std::string Gate() { return PluginPath("integrator", "TestGate"); }
    static std::string Processor() { return PluginPath("postprocessor", "TestPostProcessor"); }
    static std::string Reader() { return PluginPath("lpr", "ScriptLPR"); }

    Lane& AddLane(const std::string& name, const std::string& reader) {
        Lane lane;
        lane.name = name;
        lane.id = project_.NewLaneId();
        lane.place = "Place1";
        lane.camname = "Cam1";
        lane.lprlib = reader;
        lane.intname = "Gate1";
        lane.DROIX = 0;  // whole picture: a still test picture has no motion to search
        lane.DROIY = 0;
        lane.shape = lane.RoiCorners();
        project_.lanes.Add(lane);
        return project_.lanes.Item(project_.lanes.GetCount() - 1);
    }

    void AddGateAndProcessor() {
        Integrator gate;
        gate.name = "Gate1";
        gate.id = 4;
        gate.plugin = project_.integratorplugins.CreaIntegratorPlugin("TestGate");
        project_.integrators.Add(gate);
        PostProcessor processor;
        processor.name = "Post1";
        processor.refintegrator = "Gate1";
        processor.plugin = project_.processorplugins.CreaProcessorPlugin("TestPostProcessor");
        project_.processors.Add(processor);
    }

    Camera& AddCamera() {
        Camera camera;
        camera.name = "Cam1";
        camera.id = 3;
        camera.plugin = project_.cameraplugins.CreateCamera("TestCamera");
        project_.cameras.Add(camera);
        return project_.cameras.Item(project_.cameras.GetCount() - 1);
    }

    // Queues one 64 x 48 picture into the region and waits until its cycle is done.
    void Feed(Lane& lane, int count = 1) {
        const cv::Mat picture(48, 64, CV_8UC3, cv::Scalar(90, 120, 150));
        for (int i = 0; i < count; ++i) {
            ASSERT_TRUE(WaitFor([&] { return lane.lprthread->QueueLength() == 0; }));
            ASSERT_EQ(lane.lprthread->AddLPRPackage(picture.data, 64, 48), 1);
        }
        ASSERT_TRUE(WaitFor([&] { return lane.lprthread->QueueLength() == 0; }));
    }

    std::vector<EventQueue::Event> Events() {
        std::vector<EventQueue::Event> seen;
        events_.Drain([&](const EventQueue::Event& event) { seen.push_back(event); });
        return seen;
    }

    TempDir dir_;
    platform::ScopedWorkingDirectory cwd_;
    EventQueue events_;
    Project project_;
    LaneControl control_{project_, nullptr};
};

}  // namespace

TEST_F(RecognitionThreads, QueueRefusesBeyondBufferLenAndTooSmallPictures) {
    // Without a plug-in the thread idles and the queue fills up to its limit.
    Lane& lane = AddLane("Lane1", "NoSuchReader");
    lane.BufferLen = 5;
    Lane& none = AddLane("Lane2", "NoSuchReader");
    none.BufferLen = 0;
    project_.StartLanes();
    const std::vector<uint8_t> pixels(64 * 48 * 3, 7);
    for (int i = 0; i < 5; ++i)
        EXPECT_EQ(lane.lprthread->AddLPRPackage(pixels.data(), 64, 48), 1);
    EXPECT_EQ(lane.lprthread->AddLPRPackage(pixels.data(), 64, 48), 0);
    EXPECT_EQ(none.lprthread->AddLPRPackage(pixels.data(), 64, 48), 0);

    project_.StopLanes();
    project_.StartLanes();
    LogCapture log;
    EXPECT_EQ(lane.lprthread->AddLPRPackage(pixels.data(), 15, 48), 0);
    EXPECT_TRUE(log.Contains("Cannot create pack image"));
    EXPECT_EQ(lane.lprthread->AddLPRPackage(pixels.data(), 9, 48), 0);
    EXPECT_EQ(log.Messages().size(), 1u);
    EXPECT_EQ(lane.lprthread->AddLPRPackage(nullptr, 64, 48), 0);
}

TEST_F(RecognitionThreads, AcceptedReadingsAreLoggedReportedAndDispatched) {
    AddGateAndProcessor();
    Lane& lane = AddLane("Lane1", "ScriptLPR");
    lane.CreateLogs = 1;
    lane.UseTemplate = 1;
    project_.StartLanes();
    // Four characters: score 160 is a mean of 40 and not accepted, 164 is 41 and accepted.
    SetScript(Reader(),
              "reading0=ABCD|160|1|2|3|4|5|\nreading1=EFGH|164|10|20|30|8|12|<ORIG>EFGH<\\ORIG>\n");
    Feed(lane);

    const std::string reader = JournalOf(Reader());
    EXPECT_TRUE(Has(reader, "Init:18:50:" + dir_.Path() + "/templates.xml:1")) << reader;
    EXPECT_TRUE(Has(reader, "Process:60x46:1")) << reader;  // whole picture: 62 -> 60, 46
    const std::string gate = JournalOf(Gate());
    EXPECT_TRUE(Has(gate, "NewFrame:64x48:8:Lane1:Place1")) << gate;
    EXPECT_TRUE(Has(gate, "NewResult:EFGH:10,20,30,8:12:-1:41:<ORIG>EFGH<\\ORIG>")) << gate;
    EXPECT_FALSE(Has(gate, "NewResult:ABCD"));
    EXPECT_FALSE(Has(gate, "NewResult: :"));  // the frame had a reading
    // Three separators: the path behind the last one is field 11, so the image stays empty.
    EXPECT_TRUE(Has(JournalOf(Processor()), "NewTransit:EFGH::Gate1:" + std::to_string(lane.id)));
    const auto events = Events();
    ASSERT_EQ(events.size(), 1u);
    EXPECT_EQ(events[0].id, ID_LPR_RESULT);
    EXPECT_EQ(events[0].value, 0);
    EXPECT_EQ(events[0].text, "EFGH::gate::01-01-2026 10:00:00::img.jpg");

    std::vector<std::string> logs;
    ASSERT_TRUE(platform::ListDirectory("LPR_Logs", logs));
    ASSERT_EQ(logs.size(), 1u);
    const std::string log = ReadFileText("LPR_Logs/" + logs[0]);
    EXPECT_TRUE(Has(log, ";EFGH;12;1;EFGH;NORES;NORES;0;0;0;NORES\n")) << log;
    EXPECT_FALSE(Has(log, "ABCD"));
}

TEST_F(RecognitionThreads, EmptyFramesGoToTheGateAndItsLineCarriesTheGateId) {
    AddGateAndProcessor();
    Lane& lane = AddLane("Lane1", "ScriptLPR");
    project_.StartLanes();
    SetScript(Gate(), "empty=GATHERED::lane::nothing");
    Feed(lane);
    EXPECT_TRUE(Has(JournalOf(Gate()), "NewResult: :0,0,0,0:0:-1:0:NOPAR"));
    // Two separators: the processors hear of it, with the present time and no image.
    EXPECT_TRUE(Has(JournalOf(Processor()), "NewTransit:GATHERED::Gate1:"));
    const auto events = Events();
    ASSERT_EQ(events.size(), 1u);
    EXPECT_EQ(events[0].value, 4);

    // A line with one separator reaches no post processor but still the window.
    ClearJournal(Processor());
    SetScript(Gate(), "empty=ONLY::ONE");
    Feed(lane);
    EXPECT_FALSE(Has(JournalOf(Processor()), "NewTransit"));
    EXPECT_EQ(Events().size(), 1u);
}

TEST_F(RecognitionThreads, SceneModeKeepsReadingsFromTheGate) {
    AddGateAndProcessor();
    SetScript(Reader(), "init=1\nreading0=WXYZ|400|1|1|10|5|9|\n");
    Lane& lane = AddLane("Lane1", "ScriptLPR");
    project_.StartLanes();
    Feed(lane);
    std::string gate = JournalOf(Gate());
    EXPECT_TRUE(Has(gate, "NewFrame:64x48:8:Lane1:<SCENELANE>")) << gate;
    EXPECT_FALSE(Has(gate, "NewResult")) << gate;

    SetScript(Reader(), "init=1\n");
    Feed(lane);
    EXPECT_FALSE(Has(JournalOf(Gate()), "NewResult"));
    SetScript(Gate(), "scene=1");
    SetScript(Reader(), "init=1\n");
    Feed(lane);
    EXPECT_TRUE(Has(JournalOf(Gate()), "NewResult: :"));
}

TEST_F(RecognitionThreads, GarbageReadingsNeitherCrashNorReachTheGate) {
    AddGateAndProcessor();
    Lane& lane = AddLane("Lane1", "ScriptLPR");
    project_.selroi = lane.id;  // the result view walks the readings too
    project_.StartLanes();
    LogCapture log;
    SetScript(Reader(),
              "count=100000\n"
              "reading0=|4294967295|0|0|10|10|1|\n"
              "reading1=\xC3\x84\xC3\x96|4294967295|2000000000|-2000000000|2000000000|"
              "2000000000|-5|<ORIG>\n"
              "reading2=Q|99|-50|-50|-1|-1|0|\n");
    Feed(lane, 3);
    EXPECT_TRUE(log.Contains("readings in one picture"));
    const std::string gate = JournalOf(Gate());
    // The empty plate is skipped whatever its score; the two-character plate's mean counts
    // characters, not bytes.
    EXPECT_TRUE(Has(gate,
                    "NewResult:\xC3\x84\xC3\x96:1000000,-1000000,1000000,1000000:-5:-1:"
                    "2147483647:<ORIG>"))
        << gate;
    EXPECT_TRUE(Has(gate, "NewResult:Q:-50,-50,-1,-1:0:-1:99:"));
    const auto view = project_.roiframes.Latest();
    ASSERT_TRUE(view);
    EXPECT_EQ(view->valid[0], 1);
    EXPECT_EQ(view->text[1], "Q");
    EXPECT_EQ(view->image.size(), cv::Size(64, 48));
}

TEST_F(RecognitionThreads, SettingsAreForcedIntoRangeOnTheWayUp) {
    Lane lane;
    lane.DROIX = 301;
    lane.DROIY = 300;
    lane.MinCar = -3;
    lane.MaxCar = 10;
    LaneControl::CorrectLaneSettings(lane);
    EXPECT_EQ(lane.DROIX, 20);
    EXPECT_EQ(lane.DROIY, 300);
    EXPECT_EQ(lane.MinCar, 10);
    EXPECT_EQ(lane.MaxCar, 20);
    lane.MinCar = 11;
    lane.MaxCar = 11;
    LaneControl::CorrectLaneSettings(lane);
    EXPECT_EQ(lane.MinCar, 11);
    EXPECT_EQ(lane.MaxCar, 22);
    // A buffer length typed with a zero too many does not reach the thread.
    lane.BufferLen = 500;
    LaneControl::CorrectLaneSettings(lane);
    EXPECT_EQ(lane.BufferLen, Lane::kMaxBufferLen);
    lane.BufferLen = 5;
    LaneControl::CorrectLaneSettings(lane);
    EXPECT_EQ(lane.BufferLen, 5);
}

TEST_F(RecognitionThreads, StreamsComeUpBeforeTheirThreadsAndGoAfter) {
    StreamRecorder streams;
    control_.SetStreamServices(&streams);
    Lane& streamed = AddLane("Streamed", "ScriptLPR");
    streamed.port = 8101;
    streamed.AutoDiscovery = 1;
    streamed.bitrate = 500000;
    Lane& quiet = AddLane("Quiet", "ScriptLPR");
    quiet.port = 0;
    Camera& camera = AddCamera();
    camera.port = 8102;
    project_.StartLanes();
    EXPECT_EQ(streams.Calls(), "AddStream:Streamed:500000\nStartFront:Streamed:8101:wsd\n");
    Feed(streamed);
    EXPECT_TRUE(Has(streams.Calls(), "SetStreamSize:32x24:Streamed\nPush:Streamed\n"));

    testing::internal::CaptureStderr();
    project_.StopLanes();
    const std::string said = testing::internal::GetCapturedStderr();
    EXPECT_EQ(said, "Stop lpr thread\nRemove h264 stream\nStop soap\nStop lpr thread\n");
    EXPECT_TRUE(Has(streams.Calls(), "RemoveStream:Streamed\nStopFront\n"));

    // A source's front comes before its stream; stopping a source never started is harmless.
    control_.StopCamera(camera);
    control_.StartSampling(camera);
    EXPECT_TRUE(Has(streams.Calls(), "StartFront:Cam1:8102\nAddStream:Cam1:50000\n"));
    control_.StopSampling(camera);
    control_.SetStreamServices(nullptr);
}

TEST_F(RecognitionThreads, OneSourceFeedsEveryRegionAndSurvivesOddFrames) {
    Lane& left = AddLane("Left", "NoSuchReader");
    Lane& right = AddLane("Right", "NoSuchReader");
    left.roi[2] = 500;
    right.roi[0] = 500;
    left.shape = left.RoiCorners();
    right.shape = right.RoiCorners();
    Camera& camera = AddCamera();
    project_.StartLanes();
    const std::string cameraLibrary = PluginPath("camera", "TestCamera");
    // Odd frames first: none of them may reach a region.
    for (const char* script : {"shape=7,5,3", "shape=64,48,9", "shape=0,48,3",
                               "shape=64,48,3\nnull=1", "shape=-5,-5,1", "shape=64,12,2"}) {
        SetScript(cameraLibrary, script);
        control_.StartSampling(camera);
        std::this_thread::sleep_for(std::chrono::milliseconds(40));
        control_.StopSampling(camera);
    }
    EXPECT_EQ(left.lprthread->QueueLength(), 0u);
    SetScript(cameraLibrary, "");

    project_.selcamera = camera.id;
    {
        std::lock_guard<std::mutex> lock(project_.framemutex);
        project_.viewtick = platform::GetTickCount();
    }
    control_.StartSampling(camera);
    EXPECT_TRUE(WaitFor(
        [&] { return left.lprthread->QueueLength() > 0 && right.lprthread->QueueLength() > 0; }));
    EXPECT_TRUE(WaitFor([&] { return project_.camframes.Latest() != nullptr; }));
    bool refreshed = false;
    events_.Drain([&](const EventQueue::Event& event) {
        refreshed |= event.id == ID_VIEW_REFRESH && event.value == 0;
    });
    EXPECT_TRUE(refreshed);

    // An edit stops the source: flag cleared, thread gone, plug-in still open.
    project_.EditBracket([] {});
    EXPECT_EQ(camera.sampling, 0);
    EXPECT_FALSE(camera.grabthread);
    EXPECT_TRUE(left.lprthread);
}

TEST_F(RecognitionThreads, ARestartRequestReloadsOnlyAKnownSource) {
    Camera& camera = AddCamera();
    camera.settings = "<PARAMETER><NAME>Width<\\NAME><VALUE>32<\\VALUE><\\PARAMETER>";
    const std::string library = PluginPath("camera", "TestCamera");
    ClearJournal(library);
    EXPECT_FALSE(control_.RestartCamera(99));
    EXPECT_EQ(JournalOf(library), "");
    ASSERT_TRUE(control_.RestartCamera(camera.id));
    // Close, free, the stored parameters, Start, and Start once more from StartCamera.
    EXPECT_EQ(JournalOf(library),
              "Close\nFreeMemory\nSetParameters:" + camera.settings + "\nStart\nStart\n");
    EXPECT_TRUE(camera.grabthread);
    control_.StopCamera(camera);
    EXPECT_FALSE(camera.grabthread);
}

TEST_F(RecognitionThreads, FiftyEditsWhileTwoSourcesWithTwoRegionsEachSample) {
    // Two sources with two regions each; every region's thread makes its reader on its own
    // thread, side by side with the others, at every edit.
    for (int id : {1, 2}) {
        Camera camera;
        camera.name = "Cam" + std::to_string(id);
        camera.id = id;
        camera.plugin = project_.cameraplugins.CreateCamera("TestCamera");
        project_.cameras.Add(camera);
    }
    std::vector<int> regions;
    for (const char* camera : {"Cam1", "Cam2"})
        for (const char* side : {"Left", "Right"}) {
            Lane& lane = AddLane(std::string(camera) + side, "ScriptLPR");
            lane.camname = camera;
            lane.intname = "No Lane";
            regions.push_back(lane.id);
        }
    auto sampleAll = [&] {
        for (int id : {1, 2})
            control_.StartSampling(*project_.GetCamera(id));
    };
    project_.StartLanes();
    sampleAll();
    const std::string reader = Reader();
    int extra = -1;
    for (int round = 0; round < 50; ++round) {
        // A polygon drawn on live video: box and shape change under the sources' threads.
        if (Lane* drawn = project_.GetLane(regions[static_cast<size_t>(round) % 4])) {
            std::lock_guard<std::mutex> lock(project_.lanesmutex);
            const int edge = 500 + 10 * (round % 50);
            drawn->shape = {{0, 0}, {edge, 0}, {edge, edge}, {0, edge}};
            drawn->roi[2] = edge;
            drawn->roi[3] = edge;
        }
        // An edit: a region added on one round, removed on the next.
        project_.EditBracket([&] {
            if (extra < 0) {
                Lane& added = AddLane("Extra", "ScriptLPR");
                added.camname = round % 4 == 0 ? "Cam1" : "Cam2";
                added.intname = "No Lane";
                extra = added.id;
            } else {
                project_.RemoveLane(extra);
                extra = -1;
            }
        });
        sampleAll();
        std::this_thread::sleep_for(std::chrono::milliseconds(15));
    }
    // Every region still reads the pictures of its source.
    ClearJournal(reader);
    EXPECT_TRUE(WaitFor([&] {
        const std::string journal = JournalOf(reader);
        size_t reads = 0;
        for (size_t at = journal.find("Process:"); at != std::string::npos;
             at = journal.find("Process:", at + 1))
            ++reads;
        return reads >= 8;
    }));
    for (int id : regions)
        EXPECT_TRUE(project_.GetLane(id)->lprthread) << id;
}

TEST_F(RecognitionThreads, ACameraThatLeavesTheFrameIdAloneHasEachFrameReadOnce) {
    Camera& camera = AddCamera();
    Lane& lane = AddLane("Lane1", "ScriptLPR");
    lane.intname = "No Lane";
    project_.StartLanes();
    const std::string cameraLibrary = PluginPath("camera", "TestCamera");
    SetScript(cameraLibrary, "every=5");
    ClearJournal(cameraLibrary);
    ClearJournal(Reader());
    control_.StartSampling(camera);
    std::this_thread::sleep_for(std::chrono::milliseconds(800));
    control_.StopSampling(camera);
    ASSERT_TRUE(WaitFor([&] { return lane.lprthread->QueueLength() == 0; }));
    SetScript(cameraLibrary, "");
    auto count = [](const std::string& text, const std::string& what) {
        size_t n = 0;
        for (size_t at = text.find(what); at != std::string::npos; at = text.find(what, at + 1))
            ++n;
        return n;
    };
    const size_t issued = count(JournalOf(cameraLibrary), "Issued");
    const size_t read = count(JournalOf(Reader()), "Process:");
    ASSERT_GE(issued, 5u);
    EXPECT_LE(read, issued);  // never a frame twice
    EXPECT_GE(read, issued / 2);
}

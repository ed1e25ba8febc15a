#include <gtest/gtest.h>

#include "TestSupport.h"
#include "core/Project.h"

namespace {

Lane MakeLane(int id, const std::string& name, const std::string& camera) {
    Lane lane;
    lane.id = id;
    lane.name = name;
    lane.camname = camera;
    return lane;
}

Camera MakeCamera(int id, const std::string& name) {
    Camera camera;
    camera.id = id;
    camera.name = name;
    return camera;
}

// Records what the run control asked of the pipeline, and the events posted to the window.
class Recorder : public LaneRunner, public EventSink {
  public:
    std::vector<std::string> calls;
    void StartLane(Lane& lane) override { calls.push_back("start " + lane.name); }
    void StopLane(Lane& lane) override { calls.push_back("stop " + lane.name); }
    void StopCamera(Camera& camera) override { calls.push_back("stop camera " + camera.name); }
    void PostCommand(int id, int, const std::string&) override {
        calls.push_back("event " + std::to_string(id));
    }
};

}  // namespace

TEST(ProjectModel, NewIdsAreOneAboveTheLargestInUse) {
    Project project;
    EXPECT_EQ(project.NewLaneId(), 1);
    project.lanes.Add(MakeLane(3, "a", "c"));
    project.lanes.Add(MakeLane(7, "b", "c"));
    EXPECT_EQ(project.NewLaneId(), 8);
    project.RemoveLane(7);
    EXPECT_EQ(project.NewLaneId(), 4);
    EXPECT_EQ(project.NewBoardId(), 1);
    EXPECT_EQ(project.NewProcessorId(), 1);
}

TEST(ProjectModel, LookupsReportAbsenceAsNullOrMinusOne) {
    Project project;
    project.lanes.Add(MakeLane(-1, "odd", "c"));
    EXPECT_EQ(project.GetLaneId("odd"), -1);  // an id of -1 looks like a missing name
    EXPECT_EQ(project.GetLaneId("missing"), -1);
    EXPECT_EQ(project.GetCamera(1), nullptr);
    const Board missing = project.GetBoardCopy("none");
    EXPECT_EQ(missing.id, -1);
    EXPECT_EQ(missing.name, "--");
    EXPECT_EQ(project.GetBoardCopy(5).name, "--");
}

TEST(ProjectModel, NamesAreUniqueAcrossKindsWhileIdsAreUniquePerKind) {
    Project project;
    project.cameras.Add(MakeCamera(1, "Cam1"));
    Board board;
    board.id = 1;
    board.name = "IO";
    project.boards.Add(board);
    EXPECT_TRUE(project.NameInUse("Cam1"));
    EXPECT_TRUE(project.NameInUse("IO"));
    EXPECT_FALSE(project.NameInUse("cam1"));  // exact, case-sensitive
    EXPECT_FALSE(Project::IsValidName("two words"));
    EXPECT_FALSE(Project::IsValidName(""));
    EXPECT_TRUE(Project::IsValidName("Gate_1"));
}

TEST(ProjectModel, RenamingACameraOrGateFollowsEveryReference) {
    Project project;
    project.cameras.Add(MakeCamera(1, "Old"));
    Lane lane = MakeLane(1, "L1", "Old");
    lane.intname = "G";
    project.lanes.Add(lane);
    Integrator gate;
    gate.name = "G";
    project.integrators.Add(gate);
    PostProcessor processor;
    processor.refintegrator = "G";
    project.processors.Add(processor);

    EXPECT_EQ(project.RenameCamera("Old", "New"), 1);
    EXPECT_EQ(project.lanes[0].camname, "New");
    EXPECT_EQ(project.RenameCamera("Old", "Newer"), 0);
    EXPECT_EQ(project.RenameIntegrator("G", "Gate"), 1);
    EXPECT_EQ(project.lanes[0].intname, "Gate");
    EXPECT_EQ(project.processors[0].refintegrator, "Gate");
}

TEST(ProjectModel, RemovingACameraRemovesItsRegionsOnly) {
    Project project;
    project.cameras.Add(MakeCamera(1, "A"));
    project.cameras.Add(MakeCamera(2, "B"));
    project.lanes.Add(MakeLane(1, "a1", "A"));
    project.lanes.Add(MakeLane(2, "b1", "B"));
    project.lanes.Add(MakeLane(3, "a2", "A"));
    Trigger trigger;
    trigger.name = "T";
    project.triggers.Add(trigger);
    project.lanes[1].trigname = "T";

    project.RemoveCamera(1);
    ASSERT_EQ(project.lanes.GetCount(), 1u);
    EXPECT_EQ(project.lanes[0].name, "b1");
    ASSERT_EQ(project.cameras.GetCount(), 1u);

    project.RemoveTrigger(1);
    EXPECT_TRUE(project.triggers.IsEmpty());
    EXPECT_EQ(project.lanes[0].trigname, "T");  // the region keeps a name that resolves no more
}

TEST(ProjectModel, ArraysCopyTheirRecordsAndRejectBadIndexes) {
    ArrayLane lanes;
    Lane lane = MakeLane(1, "a", "c");
    lanes.Add(lane);
    lane.name = "changed";
    EXPECT_EQ(lanes[0].name, "a");  // Add stores a copy
    Lane* live = &lanes[0];
    for (int i = 2; i < 100; ++i)
        lanes.Add(MakeLane(i, "x", "c"));
    EXPECT_EQ(live, &lanes[0]);  // records keep their address as the array grows
    ArrayLane copy = lanes;
    copy[0].name = "copy";
    EXPECT_EQ(lanes[0].name, "a");

    LogCapture log;
    lanes.RemoveAt(1000);
    EXPECT_EQ(lanes.GetCount(), 99u);
    EXPECT_TRUE(log.Contains("bad index in ArrayLane::RemoveAt()"));
    lanes.Insert(MakeLane(0, "first", "c"), 0);
    EXPECT_EQ(lanes[0].name, "first");
}

TEST(ProjectModel, RecentReadingsAreCappedAtTwentyOldestFirst) {
    Project project;
    for (int i = 0; i < 25; ++i) {
        LPRPackage record;
        record.plate = "P" + std::to_string(i);
        project.AddResult(record);
    }
    ASSERT_EQ(project.lprresults.size(), 20u);
    EXPECT_EQ(project.lprresults.front().plate, "P5");
    EXPECT_EQ(project.lprresults.back().plate, "P24");
}

namespace {

// A project whose region runner and window are a recorder, with a sampling source "Cam" and its
// region "L1".
struct RecordedSite {
    RecordedSite() {
        project.SetLaneRunner(&recorder);
        project.mainframe = &recorder;
        Camera camera = MakeCamera(1, "Cam");
        camera.sampling = 1;
        project.cameras.Add(camera);
        project.lanes.Add(MakeLane(1, "L1", "Cam"));
    }
    Recorder recorder;
    Project project;
};

}  // namespace

TEST(ProjectModel, TheEditBracketStopsEverythingBeforeTheChangeAndRestartsRegionsAfter) {
    RecordedSite site;
    Project& project = site.project;
    Recorder& recorder = site.recorder;
    project.StartBoardThread();

    project.EditBracket([&] {
        EXPECT_EQ(project.boardthread, nullptr);
        recorder.calls.push_back("change");
        project.lanes.Add(MakeLane(2, "L2", "Cam"));
    });

    EXPECT_EQ(recorder.calls, std::vector<std::string>({"stop camera Cam", "stop L1", "change",
                                                        "start L1", "start L2", "event 6098"}));
    EXPECT_EQ(project.cameras[0].sampling, 0);  // sources stay stopped
    EXPECT_NE(project.boardthread, nullptr);
    EXPECT_NE(project.lastactivity, 0u);
    project.StopBoardThread();
}

TEST(ProjectModel, ABracketInsideABracketStopsAndStartsEverythingOnce) {
    // The demo is filled inside an edit of its own, and the flow that creates it may bracket
    // it again: regions, devices and streams start once, when the outermost edit ends.
    RecordedSite site;
    Project& project = site.project;
    Recorder& recorder = site.recorder;

    project.EditBracket([&] {
        recorder.calls.push_back("outer");
        project.EditBracket([&] {
            recorder.calls.push_back("inner");
            project.lanes.Add(MakeLane(2, "L2", "Cam"));
        });
        EXPECT_EQ(project.boardthread, nullptr);
    });

    EXPECT_EQ(recorder.calls,
              std::vector<std::string>({"stop camera Cam", "stop L1", "outer", "inner", "start L1",
                                        "start L2", "event 6098"}));
    project.StopBoardThread();
}

TEST(ProjectModel, TheProjectDescriptionListsCamerasBoardsAndRegions) {
    Project project;
    project.cameras.Add(MakeCamera(1, "Cam"));
    Board board;
    board.name = "IO";
    project.boards.Add(board);
    Lane lane = MakeLane(1, "L1", "Cam");
    lane.roi[0] = 100;
    lane.roi[1] = 200;
    lane.roi[2] = 900;
    lane.roi[3] = 800;
    lane.UseTemplate = 1;
    project.lanes.Add(lane);
    EXPECT_EQ(project.GetProjectText(),
              "<PROJECT_CAMERAS>\n<NEWCAMERA>\n<CAMNAME>Cam<\\CAMNAME>\n<CAMPLUGIN><\\CAMPLUGIN>\n"
              "<CAMSETTINGS><\\CAMSETTINGS>\n<\\NEWCAMERA>\n<\\PROJECT_CAMERAS>\n"
              "<PROJECT_BOARDS>\n<NEWBOARD>\n<BNAME>IO<\\BNAME>\n<BPLUG><\\BPLUG>\n<\\NEWBOARD>\n"
              "<\\PROJECT_BOARDS>\n<PROJECT_LANES>\n<NEWLANE>\n<LANENAME>L1<\\LANENAME>\n"
              "<LANECAMNAME>Cam<\\LANECAMNAME>\n<LANEX1>100<\\LANEX1>\n<LANEY1>200<\\LANEY1>\n"
              "<LANEX2>900<\\LANEX2>\n<LANEY2>800<\\LANEY2>\n<HMIN>18<\\HMIN>\n<HMAX>50<\\HMAX>\n"
              "<USETEMPL>1<\\USETEMPL>\n<\\NEWLANE>\n<\\PROJECT_LANES>\n");
}

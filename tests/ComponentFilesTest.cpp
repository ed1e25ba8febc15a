#include <gtest/gtest.h>

#include <sys/stat.h>

#include "TestSupport.h"
#include "core/Project.h"
#include "corvane/CameraPlugin.h"
#include "platform/CodePage.h"
#include "platform/FileSystem.h"

namespace {

// Each test works in a fresh project folder, with the test plug-ins in the application folder.
class ComponentFiles : public ::testing::Test {
  protected:
    ComponentFiles() : inFolder(folder.Path()) { project.appdir = AppDir(); }

    CameraPlugin* NewCameraPlugin() {
        platform::ScopedWorkingDirectory inApp(AppDir());
        return project.cameraplugins.CreateCamera("TestCamera");
    }

    TempDir folder;
    platform::ScopedWorkingDirectory inFolder;
    Project project;
};

Lane SampleLane() {
    Lane lane;
    lane.camname = "Cam";
    lane.id = 4;
    lane.intname = "Gate";
    lane.name = "L1";
    lane.place = "Depot";
    lane.roi[0] = 10;
    lane.roi[1] = 20;
    lane.roi[2] = 900;
    lane.roi[3] = 950;
    lane.trigname = "No trigger";
    lane.DROIX = 11;
    lane.DROIY = 21;
    lane.MinCar = 15;
    lane.MaxCar = 60;
    lane.BufferLen = 5;
    lane.lprlib = "PlateCore";
    lane.UseTemplate = 1;
    lane.port = 8001;
    lane.AutoDiscovery = 1;
    lane.FPS = 12;
    lane.FrameDim = 2;
    lane.CreateLogs = 1;
    lane.bitrate = 2000000;
    lane.shape = {{10, 20}, {900, 20}, {500, 950}};
    return lane;
}

Bytes LaneHead(int version, int count) {
    return Bytes().Int(version).Int(count);
}

// The fields every lanes.dat version has, for SampleLane().
Bytes& LaneV3Fields(Bytes& bytes) {
    return bytes.Str("Cam")
        .Int(4)
        .Str("Gate")
        .Str("L1")
        .Str("Depot")
        .Int(10)
        .Int(20)
        .Int(900)
        .Int(950)
        .Str("No trigger")
        .Int(11)
        .Int(21)
        .Int(15)
        .Int(60);
}

}  // namespace

TEST_F(ComponentFiles, LanesAreWrittenByteForByteAtVersion12) {
    project.lanes.Add(SampleLane());
    project.SaveLane();
    Bytes expected = LaneHead(12, 1);
    LaneV3Fields(expected)
        .Int(5)
        .Str("PlateCore")
        .Int(1)
        .Int(8001)
        .Int(1)
        .Int(12)
        .Int(2)
        .Int(1)
        .Int(2000000)
        .Int(24)
        .Int(10)
        .Int(20)
        .Int(900)
        .Int(20)
        .Int(500)
        .Int(950);
    EXPECT_EQ(ReadFileBytes("lanes.dat"), expected.Data());

    Project loaded;
    loaded.LoadLane();
    ASSERT_EQ(loaded.lanes.GetCount(), 1u);
    const Lane& lane = loaded.lanes[0];
    EXPECT_EQ(lane.shape, SampleLane().shape);
    EXPECT_EQ(lane.bitrate, 2000000);
    EXPECT_EQ(lane.port, 8001);
    EXPECT_EQ(lane.lprthread, nullptr);
}

TEST_F(ComponentFiles, AnOldLanesFileGetsDefaultsAndItsShapeFromTheBox) {
    Bytes v3 = LaneHead(3, 1);
    LaneV3Fields(v3);
    WriteFileBytes("lanes.dat", v3.Data());
    project.LoadLane();
    ASSERT_EQ(project.lanes.GetCount(), 1u);
    const Lane& lane = project.lanes[0];
    EXPECT_EQ(lane.BufferLen, 20);
    EXPECT_EQ(lane.lprlib, "PlateCore");
    EXPECT_EQ(lane.UseTemplate, 1);
    EXPECT_EQ(lane.port, -1);
    EXPECT_EQ(lane.FPS, 10);
    EXPECT_EQ(lane.FrameDim, 0);
    EXPECT_EQ(lane.bitrate, 1000000);  // 512 by default, then the bit-rate rule
    EXPECT_EQ(lane.shape, std::vector<ShapePoint>({{10, 20}, {900, 20}, {900, 950}, {10, 950}}));
}

TEST_F(ComponentFiles, AVersion11LaneIsWrittenBackAsVersion12WithItsCorners) {
    Bytes v11 = LaneHead(11, 1);
    LaneV3Fields(v11).Int(5).Str("Reader").Int(0).Int(-1).Int(0).Int(10).Int(0).Int(0).Int(49999);
    WriteFileBytes("lanes.dat", v11.Data());
    project.LoadLane();
    ASSERT_EQ(project.lanes.GetCount(), 1u);
    EXPECT_EQ(project.lanes[0].bitrate, 1000000);
    project.SaveLane();
    const auto written = ReadFileBytes("lanes.dat");
    ASSERT_GE(written.size(), 4u);
    EXPECT_EQ(written[0], 12);
    EXPECT_EQ(written.size(), v11.Data().size() + 4 + 32);
}

TEST_F(ComponentFiles, LanesBelowVersion3LoadNothingAndSaySo) {
    LogCapture log;
    WriteFileBytes("lanes.dat", Bytes().Int(2).Data());  // not even a count
    project.LoadLane();
    EXPECT_TRUE(project.lanes.IsEmpty());
    EXPECT_TRUE(log.Contains("lanes.dat is damaged: version 2 is not one this program reads"));
}

TEST_F(ComponentFiles, CamerasAreWrittenByteForByteAndKeepTheirPlugin) {
    Camera camera;
    camera.id = 3;
    camera.name = "Entrance";
    camera.settings = "<VALUE>320<\\VALUE>";
    camera.plugin = NewCameraPlugin();
    camera.port = 8002;
    camera.FrameDim = 1;
    camera.AutoDiscovery = 1;
    camera.FPS = 15;
    camera.bitrate = 50000;
    project.cameras.Add(camera);
    project.SaveCamera();
    EXPECT_EQ(ReadFileBytes("cameras.dat"), Bytes()
                                                .Int(6)
                                                .Int(1)
                                                .Int(3)
                                                .Str("Entrance")
                                                .Str("TestCamera")
                                                .Str("<VALUE>320<\\VALUE>")
                                                .Int(8002)
                                                .Int(1)
                                                .Int(1)
                                                .Int(15)
                                                .Int(50000)
                                                .Data());

    Project loaded;
    loaded.appdir = AppDir();
    loaded.LoadCamera();
    ASSERT_EQ(loaded.cameras.GetCount(), 1u);
    EXPECT_NE(loaded.cameras[0].plugin, nullptr);
    EXPECT_EQ(loaded.cameras[0].sampling, 0);
    EXPECT_EQ(loaded.cameras[0].bitrate, 50000);
    EXPECT_EQ(platform::GetWorkingDirectory(), folder.Path());  // back in the project folder
}

TEST_F(ComponentFiles, OldCamerasKeepTheirDefaultsAndLowBitratesAreRaised) {
    WriteFileBytes("cameras.dat", Bytes()
                                      .Int(1)
                                      .Int(2)
                                      .Int(1)
                                      .Str("Old")
                                      .Str("TestCamera")
                                      .Str("")
                                      .Int(2)
                                      .Str("Gone")
                                      .Str("MissingPlugin")
                                      .Str("")
                                      .Data());
    project.LoadCamera();
    ASSERT_EQ(project.cameras.GetCount(), 1u);  // the one without its library is dropped
    const Camera& camera = project.cameras[0];
    EXPECT_EQ(camera.port, -1);
    EXPECT_EQ(camera.FPS, 10);
    EXPECT_EQ(camera.bitrate, 50000);

    Project raised;
    raised.appdir = AppDir();
    WriteFileBytes("cameras.dat", Bytes()
                                      .Int(6)
                                      .Int(1)
                                      .Int(1)
                                      .Str("C")
                                      .Str("TestCamera")
                                      .Str("")
                                      .Int(8000)
                                      .Int(0)
                                      .Int(0)
                                      .Int(10)
                                      .Int(49999)
                                      .Data());
    raised.LoadCamera();
    ASSERT_EQ(raised.cameras.GetCount(), 1u);
    EXPECT_EQ(raised.cameras[0].bitrate, 1000000);
}

TEST_F(ComponentFiles, BoardsOfVersion1GetASingleBlankAsSettings) {
    ClearJournal(PluginPath("board", "TestBoard"));
    WriteFileBytes("boards.dat", Bytes().Int(1).Int(1).Int(1).Str("IO").Str("TestBoard").Data());
    project.LoadBoard();
    ASSERT_EQ(project.boards.GetCount(), 1u);
    EXPECT_EQ(project.boards[0].settings, " ");
    EXPECT_EQ(JournalOf(PluginPath("board", "TestBoard")), "SetParameters: \nOpen:IO:1\n");
    project.SaveBoard();
    EXPECT_EQ(ReadFileBytes("boards.dat"),
              Bytes().Int(2).Int(1).Int(1).Str("IO").Str("TestBoard").Str(" ").Data());
    WriteFileBytes("boards.dat", Bytes().Int(3).Int(1).Data());
    Project newer;
    newer.LoadBoard();
    EXPECT_TRUE(newer.boards.IsEmpty());
}

TEST_F(ComponentFiles, GatesHearTheirNameBehindTheStoredTextWhichStaysUnchanged) {
    ClearJournal(PluginPath("integrator", "TestGate"));
    project.place.placename = "Depot";
    project.place.placeid = 9;
    project.place.placedbip = "10.0.0.5";
    WriteFileBytes("integrators.dat",
                   Bytes().Int(1).Int(1).Int(2).Str("G1").Str("TestGate").Str("<X>1<\\X>").Data());
    project.LoadIntegrator();
    ASSERT_EQ(project.integrators.GetCount(), 1u);
    EXPECT_EQ(project.integrators[0].settings, "<X>1<\\X>");
    EXPECT_EQ(project.integrators[0].OpMode, 0);
    EXPECT_EQ(JournalOf(PluginPath("integrator", "TestGate")),
              "SetParameters:<X>1<\\X><INTNAME>G1<\\INTNAME>\nOpen:2:Depot:9:10.0.0.5\n");
    project.integrators[0].OpMode = 1;
    project.SaveIntegrator();
    EXPECT_EQ(
        ReadFileBytes("integrators.dat"),
        Bytes().Int(2).Int(1).Int(2).Str("G1").Str("TestGate").Str("<X>1<\\X>").Int(1).Data());
}

TEST_F(ComponentFiles, AProcessorsFileReplacesTheArrayAndTriggersRoundTrip) {
    WriteFileBytes(
        "processors.dat",
        Bytes().Int(2).Int(1).Int(5).Str("CSV").Str("TestPostProcessor").Str("").Str("G1").Data());
    project.LoadProcessor();
    project.LoadProcessor();
    ASSERT_EQ(project.processors.GetCount(), 1u);
    EXPECT_EQ(project.processors[0].refintegrator, "G1");
    EXPECT_NE(JournalOf(PluginPath("postprocessor", "TestPostProcessor")).find("Close:CSV:5"),
              std::string::npos);

    {
        platform::ScopedWorkingDirectory inApp(AppDir());  // where the dialogs add triggers
        ASSERT_EQ(project.AddTrigger("T1", "TestTrigger", "<STATUS>1<\\STATUS>", 3), 1);
    }
    project.SaveTrigger();
    EXPECT_EQ(ReadFileBytes("triggers.dat"), Bytes()
                                                 .Int(1)
                                                 .Int(1)
                                                 .Int(3)
                                                 .Str("T1")
                                                 .Str("TestTrigger")
                                                 .Str("<STATUS>1<\\STATUS>")
                                                 .Data());
}

TEST_F(ComponentFiles, NamesAreStoredInTheEightBitCodePage) {
    Lane lane = SampleLane();
    lane.place = "Citt\xC3\xA0";  // UTF-8 in memory
    project.lanes.Add(lane);
    project.SaveLane();
    const auto bytes = ReadFileBytes("lanes.dat");
    const std::string text(bytes.begin(), bytes.end());
    EXPECT_NE(text.find(std::string("\x05\0\0\0Citt\xE0", 9)), std::string::npos);
    Project loaded;
    loaded.LoadLane();
    EXPECT_EQ(loaded.lanes[0].place, "Citt\xC3\xA0");
}

TEST_F(ComponentFiles, ACyrillicSiteWritesAndReadsItsNamesInCodePage1251) {
    const std::string moscow = "\xD0\x9C\xD0\xBE\xD1\x81\xD0\xBA\xD0\xB2\xD0\xB0";
    Lane lane = SampleLane();
    lane.place = moscow;
    project.place.codepage = 1251;
    project.lanes.Add(lane);
    project.SaveComponents(platform::GetWorkingDirectory());
    const auto bytes = ReadFileBytes("lanes.dat");
    const std::string text(bytes.begin(), bytes.end());
    EXPECT_NE(text.find(std::string("\x06\0\0\0\xCC\xEE\xF1\xEA\xE2\xE0", 10)), std::string::npos);
    Project loaded;
    loaded.appdir = AppDir();
    loaded.place.codepage = 1251;
    loaded.LoadComponents(platform::GetWorkingDirectory());
    ASSERT_EQ(loaded.lanes.GetCount(), 1u);
    EXPECT_EQ(loaded.lanes[0].place, moscow);
}

TEST_F(ComponentFiles, AnotherProjectReadMeanwhileDoesNotChangeThisProjectsCodePage) {
    // A runtime checks a received project (a Western one) while it runs a Cyrillic site: the
    // site's next save still writes its own letters.
    project.place.codepage = 1251;
    Lane lane = SampleLane();
    lane.place = "\xD0\x9C\xD0\xBE\xD1\x81\xD0\xBA\xD0\xB2\xD0\xB0";
    project.lanes.Add(lane);
    Project western;
    western.appdir = AppDir();
    western.LoadComponents(platform::GetWorkingDirectory());
    project.SaveLane();
    const auto bytes = ReadFileBytes("lanes.dat");
    const std::string text(bytes.begin(), bytes.end());
    EXPECT_NE(text.find(std::string("\x06\0\0\0\xCC\xEE\xF1\xEA\xE2\xE0", 10)), std::string::npos);
}

TEST_F(ComponentFiles, ASaveThatCannotWriteIsReportedAndTheModelStays) {
    ::mkdir("lanes.dat", 0700);  // a folder where the file should be
    project.lanes.Add(SampleLane());
    LogCapture log;
    project.SaveLane();
    EXPECT_TRUE(log.Contains("Cannot save lanes file"));
    EXPECT_EQ(project.lanes.GetCount(), 1u);
}

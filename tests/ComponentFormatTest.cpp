// Every component file read from bytes the test writes field by field from the format, never
// by the writer under test: each field of each version holds a value no other field holds, so
// two fields read in each other's place, or a field read from the wrong version, show at once.
#include <gtest/gtest.h>

#include "TestSupport.h"
#include "core/Project.h"
#include "core/ProjectFile.h"
#include "corvane/CameraPlugin.h"
#include "platform/FileSystem.h"

namespace {

class ComponentFormats : public ::testing::Test {
  protected:
    ComponentFormats() : inFolder_(folder_.Path()) { project_.appdir = AppDir(); }

    void Write(const char* file, const Bytes& bytes) { WriteFileBytes(file, bytes.Data()); }

    TempDir folder_;
    platform::ScopedWorkingDirectory inFolder_;
    Project project_;
};

}  // namespace

TEST_F(ComponentFormats, EveryLanesVersionReadsEachFieldFromItsOwnPlace) {
    for (int version = 3; version <= 12; ++version) {
        Bytes bytes;
        bytes.Int(version).Int(1);
        bytes.Str("cam").Int(101).Str("gate").Str("lane").Str("place");
        bytes.Int(111).Int(122).Int(833).Int(944);
        bytes.Str("trig").Int(33).Int(44).Int(13).Int(57);
        if (version >= 4)
            bytes.Int(7);
        if (version >= 5)
            bytes.Str("Reader");
        if (version >= 6)
            bytes.Int(2);
        if (version >= 7)
            bytes.Int(8123);
        if (version >= 8)
            bytes.Int(5);
        if (version >= 9)
            bytes.Int(17).Int(4);
        if (version >= 10)
            bytes.Int(6);
        if (version >= 11)
            bytes.Int(1234567);
        if (version >= 12)
            bytes.Int(24).Int(150).Int(160).Int(870).Int(180).Int(500).Int(990);
        Write("lanes.dat", bytes);
        Project project;
        project.LoadLane();
        ASSERT_EQ(project.lanes.GetCount(), 1u) << version;
        const Lane& lane = project.lanes[0];
        SCOPED_TRACE("lanes.dat version " + std::to_string(version));
        EXPECT_EQ(lane.camname, "cam");
        EXPECT_EQ(lane.id, 101);
        EXPECT_EQ(lane.intname, "gate");
        EXPECT_EQ(lane.name, "lane");
        EXPECT_EQ(lane.place, "place");
        EXPECT_EQ(std::vector<int>(lane.roi, lane.roi + 4), (std::vector<int>{111, 122, 833, 944}));
        EXPECT_EQ(lane.trigname, "trig");
        EXPECT_EQ(lane.DROIX, 33);
        EXPECT_EQ(lane.DROIY, 44);
        EXPECT_EQ(lane.MinCar, 13);
        EXPECT_EQ(lane.MaxCar, 57);
        EXPECT_EQ(lane.BufferLen, version >= 4 ? 7 : 20);
        EXPECT_EQ(lane.lprlib, version >= 5 ? "Reader" : "PlateCore");
        EXPECT_EQ(lane.UseTemplate, version >= 6 ? 2 : 1);
        EXPECT_EQ(lane.port, version >= 7 ? 8123 : -1);
        EXPECT_EQ(lane.AutoDiscovery, version >= 8 ? 5 : 0);
        EXPECT_EQ(lane.FPS, version >= 9 ? 17 : 10);
        EXPECT_EQ(lane.FrameDim, version >= 9 ? 4 : 0);
        EXPECT_EQ(lane.CreateLogs, version >= 10 ? 6 : 0);
        // The default 512 meets the bit-rate rule and becomes 1,000,000.
        EXPECT_EQ(lane.bitrate, version >= 11 ? 1234567 : 1000000);
        const std::vector<ShapePoint> shape =
            version >= 12 ? std::vector<ShapePoint>{{150, 160}, {870, 180}, {500, 990}}
                          : std::vector<ShapePoint>{{111, 122}, {833, 122}, {833, 944}, {111, 944}};
        EXPECT_EQ(lane.shape, shape);
    }
}

TEST_F(ComponentFormats, EveryCamerasVersionReadsEachFieldFromItsOwnPlace) {
    for (int version = 1; version <= 6; ++version) {
        Bytes bytes;
        bytes.Int(version).Int(1).Int(201).Str("cam").Str("TestCamera").Str("<S>9<\\S>");
        if (version >= 2)
            bytes.Int(8201);
        if (version >= 3)
            bytes.Int(3);
        if (version >= 4)
            bytes.Int(7);
        if (version >= 5)
            bytes.Int(19);
        if (version >= 6)
            bytes.Int(777777);
        Write("cameras.dat", bytes);
        Project project;
        project.appdir = AppDir();
        project.LoadCamera();
        ASSERT_EQ(project.cameras.GetCount(), 1u) << version;
        const Camera& camera = project.cameras[0];
        SCOPED_TRACE("cameras.dat version " + std::to_string(version));
        EXPECT_EQ(camera.id, 201);
        EXPECT_EQ(camera.name, "cam");
        ASSERT_NE(camera.plugin, nullptr);
        EXPECT_EQ(camera.plugin->GetLibName(), "TestCamera");
        EXPECT_EQ(camera.settings, "<S>9<\\S>");
        EXPECT_EQ(camera.port, version >= 2 ? 8201 : -1);
        EXPECT_EQ(camera.FrameDim, version >= 3 ? 3 : 0);
        EXPECT_EQ(camera.AutoDiscovery, version >= 4 ? 7 : 0);
        EXPECT_EQ(camera.FPS, version >= 5 ? 19 : 10);
        EXPECT_EQ(camera.bitrate, version >= 6 ? 777777 : 50000);
        EXPECT_EQ(camera.sampling, 0);
    }
}

TEST_F(ComponentFormats, BoardsTriggersGatesAndProcessorsOfEveryVersion) {
    for (int version = 1; version <= 2; ++version) {
        SCOPED_TRACE("version " + std::to_string(version));
        Bytes boards;
        boards.Int(version).Int(1).Int(301).Str("io").Str("TestBoard");
        if (version >= 2)
            boards.Str("<PIN1>1<\\PIN1>");
        Write("boards.dat", boards);
        Bytes gates;
        gates.Int(version).Int(1).Int(401).Str("gate").Str("TestGate").Str("<G>4<\\G>");
        if (version >= 2)
            gates.Int(3);
        Write("integrators.dat", gates);
        Bytes processors;
        processors.Int(version).Int(1).Int(501).Str("post").Str("TestPostProcessor");
        processors.Str("<P>5<\\P>").Str("gate");
        Write("processors.dat", processors);
        Write("triggers.dat",
              Bytes().Int(1).Int(1).Int(601).Str("trig").Str("TestTrigger").Str("<T>6<\\T>"));

        Project project;
        project.appdir = AppDir();
        project.LoadComponents(platform::GetWorkingDirectory());
        ASSERT_EQ(project.boards.GetCount(), 1u);
        EXPECT_EQ(project.boards[0].id, 301);
        EXPECT_EQ(project.boards[0].name, "io");
        EXPECT_EQ(project.boards[0].settings, version >= 2 ? "<PIN1>1<\\PIN1>" : " ");
        ASSERT_EQ(project.integrators.GetCount(), 1u);
        EXPECT_EQ(project.integrators[0].id, 401);
        EXPECT_EQ(project.integrators[0].name, "gate");
        EXPECT_EQ(project.integrators[0].settings, "<G>4<\\G>");  // without the name suffix
        EXPECT_EQ(project.integrators[0].OpMode, version >= 2 ? 3 : 0);
        ASSERT_EQ(project.processors.GetCount(), 1u);
        EXPECT_EQ(project.processors[0].id, 501);
        EXPECT_EQ(project.processors[0].name, "post");
        EXPECT_EQ(project.processors[0].settings, "<P>5<\\P>");
        EXPECT_EQ(project.processors[0].refintegrator, "gate");
        ASSERT_EQ(project.triggers.GetCount(), 1u);
        EXPECT_EQ(project.triggers[0].id, 601);
        EXPECT_EQ(project.triggers[0].name, "trig");
        EXPECT_EQ(project.triggers[0].settings, "<T>6<\\T>");
        project.CloseAll();
    }
}

TEST_F(ComponentFormats, TheProjectFileReadsEachKeyIntoItsOwnField) {
    WriteFileText("site.tlr",
                  "<PROJECT>\n<VERSION>1<\\VERSION>\n<PRJNAME>n<\\PRJNAME>\n<PRJDIR>d<\\PRJDIR>\n"
                  "<PLACEID>71<\\PLACEID>\n<PLACENAME>pn<\\PLACENAME>\n<PLACEDBIP>ip<\\PLACEDBIP>\n"
                  "<PLACEDBNAME>db<\\PLACEDBNAME>\n<PLACEDBUSERNAME>us<\\PLACEDBUSERNAME>\n"
                  "<PLACEDBPASSWORD>pw<\\PLACEDBPASSWORD>\n<USELOCALDB>2<\\USELOCALDB>\n"
                  "<SYNCROTIME>73<\\SYNCROTIME>\n<DBSTORAGE>79<\\DBSTORAGE>\n"
                  "<WHITELIST>Yes<\\WHITELIST>\n<CODEPAGE>1250<\\CODEPAGE>\n<\\PROJECT>\n");
    ASSERT_TRUE(LoadProjectSettings("site.tlr", project_));
    const PlaceSettings& place = project_.place;
    EXPECT_EQ(place.placeid, 71);
    EXPECT_EQ(place.placename, "pn");
    EXPECT_EQ(place.placedbip, "ip");
    EXPECT_EQ(place.placedbname, "db");
    EXPECT_EQ(place.placedbusername, "us");
    EXPECT_EQ(place.placedbpassword, "pw");
    EXPECT_EQ(place.uselocaldb, 2);
    EXPECT_EQ(place.syncrotime, 73);
    EXPECT_EQ(place.dbstorage, 79);
    EXPECT_TRUE(place.whitelist);
    EXPECT_EQ(place.codepage, 1250);
}

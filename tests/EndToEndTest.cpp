// The whole recognition chain with the shipped plug-ins loaded from disk: synthetic traffic
// source -> grab thread -> region -> PlateCore -> voting gate -> CSV post processor, with the
// daily log. The plates drawn are the plates that must come out.
#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <set>
#include <thread>

#include <gtest/gtest.h>
#include <opencv2/imgcodecs.hpp>

#include "CameraProcess.h"
#include "TestSupport.h"
#include "core/DemoProject.h"
#include "core/EventQueue.h"
#include "core/Project.h"
#include "corvane/CameraPlugin.h"
#include "corvane/IntegratorPlugin.h"
#include "corvane/PostProcessorPlugin.h"
#include "pipeline/LaneControl.h"
#include "pipeline/RecognitionLog.h"
#include "pipeline/TransitLine.h"
#include "platform/FileSystem.h"
#include "plugins/Parametro.h"

namespace {

// A working folder whose ./plugin is the build's folder of shipped plug-ins.
class SiteFolder {
  public:
    SiteFolder() { FillAppFolder(dir_, CORVANE_APP_DIR); }
    const TempDir& Dir() const { return dir_; }

  private:
    TempDir dir_;
};

struct Site {
    // cameraUrl: read the scene from a network camera instead of drawing it in the source.
    explicit Site(const std::string& plates, int lanes = 1, const std::string& cameraUrl = "")
        : cwd(folder.Dir().Path()) {
        project.prjdir = folder.Dir().Path();
        project.place.placename = "Site";
        project.place.placeid = 7;
        project.mainframe = &events;
        project.cameraplugins.InitList();
        project.integratorplugins.LoadPlugin();
        project.processorplugins.LoadPlugin();
        project.lprplugins.InitList();
        if (cameraUrl.empty())
            AddCamera(plates, lanes);
        else
            AddNetworkCamera(cameraUrl);
        AddGate();
        AddPostProcessor();
    }

    void AddCamera(const std::string& plates, int lanes) {
        Camera camera;
        camera.name = "Cam1";
        camera.plugin = project.cameraplugins.CreateCamera("VideoSource");
        ASSERT_NE(camera.plugin, nullptr);
        camera.settings = ValueTextOf({{"Source", "Synthetic traffic"},
                                       {"Width", "1280"},
                                       {"Height", "720"},
                                       {"Frames per second", "25"},
                                       {"Traffic lanes", std::to_string(lanes)},
                                       {"Character height", "26"},
                                       {"Crossing time (ms)", "2000"},
                                       {"Gap (ms)", "900"},
                                       {"Plates", plates},
                                       {"Repeat", "No"}});
        camera.plugin->SetParameters(camera.settings);
        project.cameras.Add(camera);
    }

    void AddNetworkCamera(const std::string& url) {
        Camera camera;
        camera.name = "Cam1";
        camera.plugin = project.cameraplugins.CreateCamera("IpCamera");
        ASSERT_NE(camera.plugin, nullptr);
        camera.settings =
            ValueTextOf({{"URL", url}, {"Transport", "TCP"}, {"Stall time (s)", "5"}});
        camera.plugin->SetParameters(camera.settings);
        project.cameras.Add(camera);
    }

    void AddGate() {
        Integrator gate;
        gate.name = "Gate1";
        gate.plugin = project.integratorplugins.CreaIntegratorPlugin("VotingGate");
        ASSERT_NE(gate.plugin, nullptr);
        gate.settings = ValueTextOf({{"Readings for a transit", "2"},
                                     {"Empty frames to close", "3"},
                                     {"Image folder", "Transit_Images"}}) +
                        "<INTNAME>Gate1<\\INTNAME>";
        gate.plugin->SetParameters(gate.settings);
        gate.plugin->Open(nullptr, 1, "Site", 7, "", "", "", "");
        project.integrators.Add(gate);
    }

    void AddPostProcessor() {
        PostProcessor processor;
        processor.name = "Csv1";
        processor.refintegrator = "Gate1";
        processor.plugin = project.processorplugins.CreaProcessorPlugin("CsvTransits");
        ASSERT_NE(processor.plugin, nullptr);
        processor.plugin->SetParameters(ValueTextOf({{"Folder", "Transits"}}));
        project.processors.Add(processor);
    }

    void AddLane(const std::string& name, int x1, int x2) {
        Lane lane;
        lane.name = name;
        lane.id = project.NewLaneId();
        lane.camname = "Cam1";
        lane.roi[0] = x1;
        lane.roi[2] = x2;
        lane.shape = lane.RoiCorners();
        lane.lprlib = "PlateCore";
        lane.intname = "Gate1";
        lane.trigname = "No trigger";
        lane.CreateLogs = 1;
        lane.UseTemplate = 1;
        lane.BufferLen = 3;
        lane.MinCar = 14;
        lane.MaxCar = 45;
        project.lanes.Add(lane);
    }

    // Runs the site until count transits arrived or the time is up; returns their plates.
    std::vector<std::string> Run(size_t count, std::chrono::seconds limit) {
        LaneControl control(project, nullptr);
        project.StartLanes();
        control.StartSampling(*project.GetCameraByName("Cam1"));
        std::vector<std::string> plates;
        const auto deadline = std::chrono::steady_clock::now() + limit;
        while (plates.size() < count && std::chrono::steady_clock::now() < deadline)
            events.Drain(
                [&](const EventQueue::Event& event) {
                    if (event.id != ID_LPR_RESULT)
                        return;
                    lines.push_back(event.text);
                    plates.push_back(TransitLine::Record(event.text, WallClock::now()).plate);
                },
                std::chrono::milliseconds(200));
        control.StopSampling(*project.GetCameraByName("Cam1"));
        project.StopLanes();
        return plates;
    }

    SiteFolder folder;
    platform::ScopedWorkingDirectory cwd;
    EventQueue events;
    Project project;
    std::vector<std::string> lines;
};

std::string TodayLog(const std::string& lane) {
    const std::time_t now = std::time(nullptr);
    std::tm today{};
    localtime_r(&now, &today);
    return ReadFileText(RecognitionLog::FileName(lane, today));
}

}  // namespace

TEST(EndToEnd, PlatesDrawnByTheSourceAreThePlatesOfTheTransits) {
    const std::vector<std::string> drawn = {"AB123CD", "4521BCD", "GH45KLM", "ZR874TX", "7305FHK"};
    std::string list;
    for (const auto& plate : drawn)
        list += plate + ",";
    Site site(list);
    site.AddLane("Lane1", 0, 1000);

    const std::vector<std::string> transits = site.Run(drawn.size(), std::chrono::seconds(60));
    EXPECT_EQ(transits, drawn);

    // Every transit line has its twelve fields, the saved image among them.
    for (const auto& line : site.lines) {
        const TransitLine fields = TransitLine::Split(line);
        EXPECT_EQ(fields.separators, 11) << line;
        EXPECT_EQ(fields.field[1], "Lane1");
        EXPECT_EQ(fields.field[6], fields.field[0] == "AB123CD" ? "ITA" : fields.field[6]);
        EXPECT_FALSE(fields.field[3].empty());
    }
    // The log has each plate, with the template outcome; the post processor wrote each transit.
    const std::string log = TodayLog("Lane1");
    EXPECT_EQ(log.rfind(RecognitionLog::kHeader, 0), 0u);
    std::vector<std::string> csvNames;
    platform::ListDirectory("Transits", csvNames);
    ASSERT_EQ(csvNames.size(), 1u);
    const std::string csv = ReadFileText("Transits/" + csvNames[0]);
    for (const auto& plate : drawn) {
        EXPECT_NE(log.find(";" + plate + ";"), std::string::npos) << plate;
        EXPECT_NE(csv.find(";" + plate + ";Gate1;Site;"), std::string::npos) << plate;
    }
}

TEST(EndToEnd, PlatesFromANetworkCameraAreReadThroughItsRtspStream) {
    // The scene drawn by a camera process and served as H.264 over RTSP: what the region reads
    // went through an encoder, the network and the camera plug-in's decoder.
    const std::vector<std::string> drawn = {"AB123CD", "4521BCD", "GH45KLM"};
    const int port = 23000 + static_cast<int>(::getpid() % 1000);
    CameraProcess camera(port, "AB123CD,4521BCD,GH45KLM", 1280, 720, 10);
    ASSERT_TRUE(camera.Ready());
    Site site("", 1, "rtsp://127.0.0.1:" + std::to_string(port) + "/cam");
    site.AddLane("Lane1", 0, 1000);
    const std::vector<std::string> transits = site.Run(5, std::chrono::seconds(60));
    ASSERT_EQ(transits.size(), 5u);
    for (const auto& plate : transits)
        EXPECT_NE(std::find(drawn.begin(), drawn.end(), plate), drawn.end()) << plate;
    // Three cars in a row, one after the other, in the camera's order.
    for (size_t i = 1; i < transits.size(); ++i) {
        const auto at = std::find(drawn.begin(), drawn.end(), transits[i - 1]) - drawn.begin();
        EXPECT_EQ(transits[i], drawn[(at + 1) % drawn.size()]);
    }
}

TEST(EndToEnd, TwoRegionsOnOneSourceReadTheirOwnLanes) {
    // Two traffic lanes, one region over each half of the picture: each region's transits are
    // the cars of its own lane.
    const std::vector<std::string> drawn = {"AB123CD", "4521BCD", "GH45KLM", "7305FHK"};
    std::string list;
    for (const auto& plate : drawn)
        list += plate + ",";
    Site site(list, 2);
    site.AddLane("Left", 0, 500);
    site.AddLane("Right", 500, 1000);

    const std::vector<std::string> transits = site.Run(drawn.size(), std::chrono::seconds(60));
    std::multiset<std::string> got(transits.begin(), transits.end());
    EXPECT_EQ(got, std::multiset<std::string>(drawn.begin(), drawn.end()));
    for (const auto& line : site.lines) {
        const TransitLine fields = TransitLine::Split(line);
        const bool left = fields.field[0] == "AB123CD" || fields.field[0] == "GH45KLM";
        EXPECT_EQ(fields.field[1], left ? "Left" : "Right") << line;
    }
}

TEST(EndToEnd, TheDemoProjectIsMadeOfTheReferencePluginsAndSurvivesASave) {
    SiteFolder folder;
    platform::ScopedWorkingDirectory cwd(folder.Dir().Path());
    Project demo;
    demo.LoadPluginDirectories();
    PopulateDemoProject(demo);
    ASSERT_EQ(demo.cameras.GetCount(), 1u);
    ASSERT_EQ(demo.boards.GetCount(), 1u);
    ASSERT_EQ(demo.integrators.GetCount(), 1u);
    ASSERT_EQ(demo.processors.GetCount(), 1u);
    ASSERT_EQ(demo.lanes.GetCount(), 1u);
    EXPECT_NE(demo.cameras.Item(0).plugin, nullptr);
    EXPECT_NE(demo.boards.Item(0).plugin, nullptr);
    demo.SaveComponents(platform::GetWorkingDirectory());

    Project reopened;
    reopened.LoadPluginDirectories();
    reopened.LoadComponents(platform::GetWorkingDirectory());
    ASSERT_EQ(reopened.lanes.GetCount(), 1u);
    EXPECT_EQ(reopened.lanes.Item(0).lprlib, "PlateCore");
    EXPECT_EQ(reopened.lanes.Item(0).intname, "Gate1");
    EXPECT_EQ(reopened.lanes.Item(0).UseTemplate, 1);
    ASSERT_EQ(reopened.cameras.GetCount(), 1u);
    EXPECT_EQ(reopened.cameras.Item(0).settings, demo.cameras.Item(0).settings);
    ASSERT_EQ(reopened.integrators.GetCount(), 1u);
    EXPECT_EQ(reopened.integrators.Item(0).settings, demo.integrators.Item(0).settings);
    ASSERT_EQ(reopened.processors.GetCount(), 1u);
    EXPECT_EQ(reopened.processors.Item(0).refintegrator, "Gate1");
    reopened.CloseAll();
    demo.CloseAll();
}

TEST(EndToEnd, TheVideoSourcePlaysAnImageSequenceInALoop) {
    SiteFolder folder;
    platform::ScopedWorkingDirectory cwd(folder.Dir().Path());
    for (int i = 0; i < 3; ++i)
        cv::imwrite(folder.Dir().File("frame_" + std::to_string(i) + ".png"),
                    cv::Mat(120, 160, CV_8UC3, cv::Scalar(10, 20, 30 + 50 * i)));
    Project project;
    project.cameraplugins.InitList();
    CameraPlugin* source = project.cameraplugins.CreateCamera("VideoSource");
    ASSERT_NE(source, nullptr);
    source->SetParameters(ValueTextOf({{"Source", "Video file"},
                                       {"Video file", folder.Dir().File("frame_%d.png")},
                                       {"Frames per second", "50"}}));
    source->Start(nullptr);
    std::set<int> reds;
    const auto deadline = std::chrono::steady_clock::now() + std::chrono::seconds(5);
    while (reds.size() < 3 && std::chrono::steady_clock::now() < deadline) {
        int width = 0, height = 0, format = 0, id = 0;
        source->LockFrame();
        const auto* pixels =
            static_cast<const uint8_t*>(source->GetFrame(&width, &height, &format, &id));
        if (pixels != nullptr) {
            EXPECT_EQ(width, 160);
            EXPECT_EQ(height, 120);
            EXPECT_EQ(format, kFrameRGB24);
            reds.insert(pixels[0]);  // red comes first: the blue-green-red files' third value
        }
        source->UnlockFrame();
        std::this_thread::sleep_for(std::chrono::milliseconds(10));
    }
    source->Close();
    EXPECT_EQ(reds, (std::set<int>{30, 80, 130}));
}

// Frames per second through the pipeline: a source frame is converted and distributed to its
// regions (cut and mask), and every region's thread runs its cycle (grey, motion, search area,
// reader, readings) until all queues are empty again. Run with the reader that finds nothing
// (TestLPR: the pipeline's own cost) and with PlateCore (recognition included), for 1, 2 and 4
// regions at 1280x720 and 1920x1080. The reference in the same process is one grey
// conversion of the same frame.
#include <unistd.h>

#include <chrono>
#include <filesystem>
#include <thread>

#include <benchmark/benchmark.h>
#include <opencv2/imgproc.hpp>

#include "TrafficScene.h"
#include "core/Project.h"
#include "pipeline/FrameConverter.h"
#include "pipeline/GrabThread.h"
#include "pipeline/LPRThread.h"
#include "pipeline/LaneControl.h"
#include "platform/FileSystem.h"
#include "platform/Ticks.h"

namespace {

namespace fs = std::filesystem;

// A working folder whose ./plugin/lpr holds the two readers.
class BenchFolder {
  public:
    BenchFolder() {
        path_ = fs::temp_directory_path() / ("corvane-bench-" + std::to_string(::getpid()));
        fs::create_directories(path_ / "plugin" / "lpr");
        fs::create_symlink(fs::path(CORVANE_APP_DIR) / "plugin/lpr/PlateCore.dll",
                           path_ / "plugin/lpr/PlateCore.dll");
        fs::create_symlink(fs::path(TEST_APP_DIR) / "plugin/lpr/TestLPR.dll",
                           path_ / "plugin/lpr/TestLPR.dll");
        fs::copy_file(fs::path(CORVANE_APP_DIR) / "templates.xml", path_ / "templates.xml");
    }
    ~BenchFolder() {
        std::error_code ignored;
        fs::remove_all(path_, ignored);
    }
    std::string Path() const { return path_.string(); }

  private:
    fs::path path_;
};

BenchFolder& Folder() {
    static BenchFolder folder;
    return folder;
}

std::vector<cv::Mat> Frames(cv::Size size, int lanes, int count) {
    TrafficSettings traffic;
    traffic.size = size;
    traffic.lanes = lanes;
    traffic.charHeight = size.height * 26 / 720;
    TrafficScene scene(traffic);
    std::vector<cv::Mat> frames;
    cv::Mat bgr;
    for (int i = 0; i < count; ++i) {
        scene.Render(i * 40, bgr);  // 25 frames a second of traffic
        cv::Mat rgb;
        cv::cvtColor(bgr, rgb, cv::COLOR_BGR2RGB);
        frames.push_back(rgb);
    }
    return frames;
}

void RunPipeline(benchmark::State& state, const char* reader) {
    const cv::Size size(static_cast<int>(state.range(0)), static_cast<int>(state.range(1)));
    const int regions = static_cast<int>(state.range(2));
    platform::ScopedWorkingDirectory cwd(Folder().Path());
    Project project;
    project.prjdir = Folder().Path();
    project.lprplugins.InitList();
    LaneControl control(project, nullptr);
    for (int i = 0; i < regions; ++i) {
        Lane lane;
        lane.name = "Region" + std::to_string(i + 1);
        lane.id = i + 1;
        lane.camname = "Cam1";
        lane.lprlib = reader;
        lane.roi[0] = 1000 * i / regions;
        lane.roi[2] = 1000 * (i + 1) / regions;
        lane.shape = lane.RoiCorners();
        lane.MinCar = 12;
        lane.MaxCar = 60;
        lane.UseTemplate = 1;
        project.lanes.Add(lane);
    }
    project.StartLanes();
    GrabSettings settings;
    settings.name = "Cam1";
    GrabThread grab(project, nullptr, settings);
    const std::vector<cv::Mat> frames = Frames(size, regions, 75);
    size_t next = 0;
    auto idle = [&] {
        for (const auto& lane : project.lanes)
            if (lane.lprthread->QueueLength() != 0)
                return false;
        return true;
    };
    for (auto _ : state) {
        grab.HandleFrame(frames[next++ % frames.size()], platform::GetTickCount());
        while (!idle())
            std::this_thread::yield();
    }
    project.StopLanes();
    state.counters["fps"] =
        benchmark::Counter(static_cast<double>(state.iterations()), benchmark::Counter::kIsRate);
}

void BM_PipelineOwnCost(benchmark::State& state) {
    RunPipeline(state, "TestLPR");
}

void BM_PipelineWithPlateCore(benchmark::State& state) {
    RunPipeline(state, "PlateCore");
}

void BM_ReferenceGreyConversion(benchmark::State& state) {
    const cv::Size size(static_cast<int>(state.range(0)), static_cast<int>(state.range(1)));
    const cv::Mat frame = Frames(size, 1, 1)[0];
    cv::Mat grey;
    for (auto _ : state) {
        cv::cvtColor(frame, grey, cv::COLOR_RGB2GRAY);
        benchmark::DoNotOptimize(grey.data);
    }
    state.counters["fps"] =
        benchmark::Counter(static_cast<double>(state.iterations()), benchmark::Counter::kIsRate);
}

void Sizes(benchmark::internal::Benchmark* bench) {
    for (const auto& size : {std::pair<int, int>{1280, 720}, {1920, 1080}})
        for (const int regions : {1, 2, 4})
            bench->Args({size.first, size.second, regions});
}

}  // namespace

BENCHMARK(BM_ReferenceGreyConversion)->Args({1280, 720})->Args({1920, 1080});
BENCHMARK(BM_PipelineOwnCost)->Apply(Sizes)->UseRealTime()->Unit(benchmark::kMillisecond);
BENCHMARK(BM_PipelineWithPlateCore)->Apply(Sizes)->UseRealTime()->Unit(benchmark::kMillisecond);
BENCHMARK_MAIN();

// The network camera's cost, run by hand:
// 1. decoding a 1080p H.264 clip (two-second GOP, as cameras send) into RGB pictures through
//    the camera's reader, against the ffmpeg command line decoding the same clip in the same
//    run (to nothing, and to RGB);
// 2. a 1080p25 RTSP camera (the test camera process) read by the IpCamera plug-in into one
//    region with PlateCore: pictures delivered a second and pictures the region read a second.
#include <fcntl.h>
#include <unistd.h>

#include <atomic>
#include <chrono>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <regex>
#include <sstream>
#include <thread>

#include "CameraProcess.h"
#include "CameraStream.h"
#include "core/EventQueue.h"
#include "core/Project.h"
#include "pipeline/LaneControl.h"
#include "platform/FileSystem.h"
#include "plugins/Parametro.h"

namespace {

namespace fs = std::filesystem;
using Clock = std::chrono::steady_clock;
constexpr int kClipFrames = 200;

std::string Output(const std::string& command) {
    std::string output;
    FILE* pipe = ::popen((command + " 2>&1").c_str(), "r");
    char chunk[512];
    while (pipe != nullptr && std::fgets(chunk, sizeof chunk, pipe) != nullptr)
        output += chunk;
    if (pipe != nullptr)
        ::pclose(pipe);
    return output;
}

double Seconds(Clock::time_point since) {
    return std::chrono::duration<double>(Clock::now() - since).count();
}

// The real time ffmpeg reports with -benchmark, in seconds.
double FfmpegSeconds(const std::string& arguments) {
    const std::string said = Output("ffmpeg -hide_banner -nostats -benchmark " + arguments);
    std::smatch match;
    return std::regex_search(said, match, std::regex("rtime=([0-9.]+)s")) ? std::stod(match[1])
                                                                          : -1;
}

void DecodeCost(const fs::path& folder) {
    const std::string clip = (folder / "clip.mp4").string();
    Output("ffmpeg -v error -f lavfi -i testsrc2=size=1920x1080:rate=25 -frames:v " +
           std::to_string(kClipFrames) +
           " -c:v libx264 -preset veryfast -g 50 -pix_fmt yuv420p -y " + clip);
    std::atomic<bool> stop{false};
    CameraStream stream(stop);
    CameraStream::Options options;
    options.url = clip;
    const auto started = Clock::now();
    if (!stream.Open(options).empty()) {
        std::printf("cannot open the clip\n");
        return;
    }
    std::vector<uint8_t> rgb;
    int width = 0;
    int height = 0;
    int pictures = 0;
    while (stream.Next(rgb, width, height).empty())
        ++pictures;
    const double own = Seconds(started) * 1000 / pictures;
    const double plain = FfmpegSeconds("-i " + clip + " -f null -") * 1000 / kClipFrames;
    const double toRgb =
        FfmpegSeconds("-i " + clip + " -pix_fmt rgb24 -f null -") * 1000 / kClipFrames;
    const double oneThread =
        FfmpegSeconds("-threads 1 -i " + clip + " -pix_fmt rgb24 -f null -") * 1000 / kClipFrames;
    std::printf("1080p H.264 decode, %d pictures:\n", pictures);
    std::printf("  camera reader (to RGB): %.2f ms a picture\n", own);
    std::printf("  ffmpeg -f null:         %.2f ms (ratio %.2f)\n", plain, own / plain);
    std::printf("  ffmpeg to rgb24:        %.2f ms (ratio %.2f)\n", toRgb, own / toRgb);
    std::printf("  ffmpeg -threads 1 rgb24: %.2f ms (ratio %.2f)\n", oneThread, own / oneThread);
}

// The rates in the lines that the source's and the region's threads print every 30 s.
std::vector<double> Rates(const std::string& log, const std::string& pattern) {
    std::vector<double> rates;
    const std::regex line(pattern + "FPS:([0-9.]+)");
    for (std::sregex_iterator it(log.begin(), log.end(), line), end; it != end; ++it)
        rates.push_back(std::stod((*it)[1]));
    return rates;
}

void EndToEnd(const fs::path& folder) {
    const int port = 23900;
    CameraProcess camera(port, "AB123CD,4521BCD,GH45KLM", 1920, 1080, 25);
    if (!camera.Ready()) {
        std::printf("the camera process did not start\n");
        return;
    }
    fs::create_directories(folder / "plugin" / "camera");
    fs::create_directories(folder / "plugin" / "lpr");
    fs::create_symlink(fs::path(CORVANE_APP_DIR) / "plugin/camera/IpCamera.dll",
                       folder / "plugin/camera/IpCamera.dll");
    fs::create_symlink(fs::path(CORVANE_APP_DIR) / "plugin/lpr/PlateCore.dll",
                       folder / "plugin/lpr/PlateCore.dll");
    fs::copy_file(fs::path(CORVANE_APP_DIR) / "templates.xml", folder / "templates.xml");
    platform::ScopedWorkingDirectory cwd(folder.string());

    EventQueue events;
    Project project;
    project.prjdir = folder.string();
    project.mainframe = &events;
    project.cameraplugins.InitList();
    project.lprplugins.InitList();
    Camera source;
    source.name = "Cam1";
    source.plugin = project.cameraplugins.CreateCamera("IpCamera");
    source.settings = ValueTextOf(
        {{"URL", "rtsp://127.0.0.1:" + std::to_string(port) + "/cam"}, {"Transport", "TCP"}});
    source.plugin->SetParameters(source.settings);
    project.cameras.Add(source);
    Lane lane;
    lane.name = "Region1";
    lane.id = 1;
    lane.camname = "Cam1";
    lane.lprlib = "PlateCore";
    lane.roi[0] = 0;
    lane.roi[2] = 1000;
    lane.shape = lane.RoiCorners();
    lane.MinCar = 14;
    lane.MaxCar = 60;
    lane.UseTemplate = 1;
    lane.BufferLen = 3;
    project.lanes.Add(lane);

    // The threads say their rates on the standard streams: keep them in a file meanwhile.
    const std::string logFile = (folder / "said.txt").string();
    std::fflush(stdout);
    const int savedOut = ::dup(1);
    const int savedError = ::dup(2);
    const int log = ::open(logFile.c_str(), O_CREAT | O_TRUNC | O_WRONLY, 0600);
    ::dup2(log, 1);
    ::dup2(log, 2);
    LaneControl control(project, nullptr);
    project.StartLanes();
    control.StartSampling(*project.GetCameraByName("Cam1"));
    std::this_thread::sleep_for(std::chrono::seconds(62));  // two reports of each thread
    control.StopSampling(*project.GetCameraByName("Cam1"));
    project.StopLanes();
    std::fflush(stdout);
    ::dup2(savedOut, 1);
    ::dup2(savedError, 2);
    ::close(log);
    ::close(savedOut);
    ::close(savedError);

    std::ifstream in(logFile);
    std::stringstream text;
    text << in.rdbuf();
    const std::vector<double> grabbed = Rates(text.str(), "VIDEOSOURCE Cam1 W:1920 H:1080 ");
    const std::vector<double> read = Rates(text.str(), "Lane Region1 ");
    std::printf("1080p25 RTSP camera through one region with PlateCore (30 s windows):\n");
    for (const double rate : grabbed)
        std::printf("  source took %.1f pictures a second\n", rate);
    for (const double rate : read)
        std::printf("  region read %.1f pictures a second\n", rate);
    if (read.empty())
        std::printf("  (no rate reported; what was said:)\n%s\n", text.str().c_str());
}

}  // namespace

int main() {
    const fs::path folder =
        fs::temp_directory_path() / ("corvane-camera-bench-" + std::to_string(::getpid()));
    fs::create_directories(folder);
    DecodeCost(folder);
    EndToEnd(folder);
    std::error_code ignored;
    fs::remove_all(folder, ignored);
    return 0;
}

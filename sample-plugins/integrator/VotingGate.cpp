// VotingGate: the reference gate. A vehicle is the run of frames of a region with readings,
// closed by a number of frames without any; its plate is the reading seen most often (the
// higher summed confidence breaks a tie). The transit line carries all twelve fields, and the
// frame of the most confident reading is saved as a JPEG by a writer thread of the gate's own.
// One gate may serve several regions. The contract does not name the region in NewResult, but
// a region's NewFrame and NewResult come from that region's own thread, so the gate keeps its
// state per calling thread.
#include <chrono>
#include <condition_variable>
#include <cstdio>
#include <ctime>
#include <deque>
#include <map>
#include <mutex>
#include <thread>

#include <sys/stat.h>
#include <opencv2/imgcodecs.hpp>
#include <opencv2/imgproc.hpp>

#include "BoardText.h"
#include "ParameterSheet.h"
#include "corvane/IntegratorPlugin.h"

namespace {

// The votes of one plate text, with its most confident reading: the transit reports the
// winning text together with the box, tags and picture of that text's own best reading.
struct Votes {
    int count = 0;
    long long confidence = 0;
    int bestConfidence = -1;
    PluginRect box;
    std::string tags;
    cv::Mat frame;
    PluginDateTime time;
};

struct Vehicle {
    std::map<std::string, Votes> votes;
    int readings = 0;
    int empties = 0;
};

// What the gate knows of one region: its last frame and the vehicle being gathered.
struct RegionState {
    std::string lane;
    PluginDateTime frameTime;
    cv::Mat frame;
    Vehicle vehicle;
};

// Writes JPEG files off the recognition threads.
class ImageWriter {
  public:
    ImageWriter() : thread_([this] { Run(); }) {}
    ~ImageWriter() {
        {
            std::lock_guard<std::mutex> lock(mutex_);
            stop_ = true;
        }
        wake_.notify_all();
        thread_.join();
    }
    void Write(std::string path, cv::Mat image) {
        {
            std::lock_guard<std::mutex> lock(mutex_);
            if (jobs_.size() >= kMaxJobs)
                return;  // the disk cannot keep up: the picture is lost, the transit is not
            jobs_.emplace_back(std::move(path), std::move(image));
        }
        wake_.notify_all();
    }

  private:
    static constexpr size_t kMaxJobs = 32;
    void Run() {
        std::unique_lock<std::mutex> lock(mutex_);
        while (true) {
            wake_.wait(lock, [this] { return stop_ || !jobs_.empty(); });
            if (jobs_.empty())
                return;  // stop asked and nothing left to write
            auto job = std::move(jobs_.front());
            jobs_.pop_front();
            lock.unlock();
            cv::Mat bgr;
            cv::cvtColor(job.second, bgr, cv::COLOR_RGB2BGR);
            cv::imwrite(job.first, bgr);
            lock.lock();
        }
    }
    std::mutex mutex_;
    std::condition_variable wake_;
    std::deque<std::pair<std::string, cv::Mat>> jobs_;
    bool stop_ = false;
    std::thread thread_;
};

std::string LineTime(const PluginDateTime& t) {
    char text[48];
    std::snprintf(text, sizeof text, "%02d-%02d-%04d %02d:%02d:%02d.%03d", t.day, t.month, t.year,
                  t.hour, t.minute, t.second, t.millisecond);
    return text;
}

std::string FileTime(const PluginDateTime& t) {
    char text[48];
    std::snprintf(text, sizeof text, "%04d%02d%02d_%02d%02d%02d_%03d", t.year, t.month, t.day,
                  t.hour, t.minute, t.second, t.millisecond);
    return text;
}

// The newest of the gate-name elements the program appends to the settings.
std::string LastIntName(const std::string& text) {
    const std::string open = "<INTNAME>";
    const size_t at = text.rfind(open);
    if (at == std::string::npos)
        return std::string();
    const size_t close = text.find("<\\INTNAME>", at);
    return close == std::string::npos ? std::string()
                                      : text.substr(at + open.size(), close - at - open.size());
}

class VotingGate : public IntegratorPlugin {
  public:
    VotingGate() : sheet_("Voting Gate") {
        sheet_.Add("Readings for a transit", "INT", "2")
            .Add("Empty frames to close", "INT", "3")
            .Add("Image folder", "FOLDER", "Transit_Images")
            .Add("Transit Direction:", "CHOICE", "Incoming", "Incoming;Outgoing;")
            .Add("Barrier output", "PIN_OUT", "NO BOARD;-1")
            .Add("Barrier pulse (ms)", "INT", "1000");
    }

    void Open(NativeWindow, int, std::string, int, std::string, std::string, std::string,
              std::string) override {
        std::lock_guard<std::mutex> lock(mutex_);
        if (!writer_)
            writer_ = std::make_unique<ImageWriter>();
    }
    void Close(std::string, int) override {
        std::lock_guard<std::mutex> lock(mutex_);
        regions_.clear();
        writer_.reset();
    }
    std::string GetParameters(int) override {
        std::lock_guard<std::mutex> lock(mutex_);
        return sheet_.Description();
    }
    void SetParameters(std::string text) override {
        std::lock_guard<std::mutex> lock(mutex_);
        sheet_.Apply(text);
        name_ = LastIntName(text);
        sheet_.Pin("Barrier output", barrierBoard_, barrierPin_);
    }
    std::string GetLibName() override { return "VotingGate"; }
    std::string GetGuiName() override { return "Voting Gate"; }
    void SetBoardStatus(std::string) override {}
    std::string GetBoardCommands() override {
        std::lock_guard<std::mutex> lock(mutex_);
        if (barrierBoard_.empty() || barrierPin_ < 0)
            return std::string();
        const bool open = std::chrono::steady_clock::now() < barrierUntil_;
        const int wanted = open ? 1 : 0;
        if (wanted == barrierSent_)
            return std::string();
        barrierSent_ = wanted;
        return boardtext::SetPinCommand(barrierBoard_, barrierPin_, wanted);
    }
    void NewFrame(void* pixels, int width, int height, int depth, PluginDateTime time,
                  std::string lane, std::string) override {
        std::lock_guard<std::mutex> lock(mutex_);
        RegionState& region = regions_[std::this_thread::get_id()];
        region.lane = lane;
        region.frameTime = time;
        if (pixels != nullptr && depth == 8 && width > 0 && height > 0)
            region.frame = cv::Mat(height, width, CV_8UC3, pixels).clone();
        else
            region.frame.release();
    }
    std::string NewResult(std::string plate, PluginRect box, int, int, int confidence,
                          std::string tags) override {
        std::lock_guard<std::mutex> lock(mutex_);
        RegionState& region = regions_[std::this_thread::get_id()];
        Vehicle& vehicle = region.vehicle;
        if (plate == " ")
            return EmptyFrame(region);
        ++vehicle.readings;
        vehicle.empties = 0;
        Votes& votes = vehicle.votes[plate];
        ++votes.count;
        votes.confidence += confidence;
        if (confidence > votes.bestConfidence) {
            votes.bestConfidence = confidence;
            votes.box = box;
            votes.tags = tags;
            votes.frame = region.frame;
            votes.time = region.frameTime;
        }
        return std::string();
    }
    int WantsSceneResult() override { return 0; }
    int HasDialog() override { return 0; }
    int ShowDialog(NativeWindow, std::string) override { return 0; }

  private:
    std::string EmptyFrame(RegionState& region) {
        Vehicle& vehicle = region.vehicle;
        if (vehicle.readings == 0)
            return std::string();
        if (++vehicle.empties < std::max(sheet_.Int("Empty frames to close"), 1))
            return std::string();
        std::string line;
        if (vehicle.readings >= std::max(sheet_.Int("Readings for a transit"), 1))
            line = TransitLine(region.lane, vehicle);
        vehicle = Vehicle{};
        return line;
    }

    std::string TransitLine(const std::string& lane, const Vehicle& vehicle) {
        auto winner = vehicle.votes.begin();
        for (auto it = vehicle.votes.begin(); it != vehicle.votes.end(); ++it)
            if (it->second.count > winner->second.count ||
                (it->second.count == winner->second.count &&
                 it->second.confidence > winner->second.confidence))
                winner = it;
        const std::string& plate = winner->first;
        const Votes& best = winner->second;
        std::string image;
        if (!best.frame.empty() && writer_) {
            const std::string folder = sheet_.Text("Image folder");
            ::mkdir(folder.c_str(), 0755);
            image = folder + "/" + name_ + "_" + lane + "_" + FileTime(best.time) + "_" + plate +
                    ".jpg";
            writer_->Write(image, best.frame);
        }
        std::string iso = "Unknown";
        ReadTagString(best.tags, "CLAB", iso);
        std::string countryId = "-1";
        ReadTagString(best.tags, "CID", countryId);
        const int direction = sheet_.Text("Transit Direction:") == "Outgoing" ? 1 : 0;
        const std::string text = "votes " + std::to_string(winner->second.count) + "/" +
                                 std::to_string(vehicle.readings);
        barrierUntil_ = std::chrono::steady_clock::now() +
                        std::chrono::milliseconds(sheet_.Int("Barrier pulse (ms)"));
        const std::string s = "::";
        return plate + s + lane + s + LineTime(best.time) + s + image + s + text + s + countryId +
               s + iso + s + std::to_string(direction) + s + std::to_string(best.box.x) + s +
               std::to_string(best.box.y) + s + std::to_string(best.box.width) + s +
               std::to_string(best.box.height);
    }

    std::mutex mutex_;  // the recognition threads and the board thread both call in
    ParameterSheet sheet_;
    std::string name_;
    std::map<std::thread::id, RegionState> regions_;
    std::unique_ptr<ImageWriter> writer_;
    std::string barrierBoard_;
    int barrierPin_ = -1;
    int barrierSent_ = -1;
    std::chrono::steady_clock::time_point barrierUntil_{};
};

}  // namespace

CORVANE_PLUGIN_EXPORT IntegratorPlugin* CreateIntegratorPlugin() {
    return new VotingGate();
}

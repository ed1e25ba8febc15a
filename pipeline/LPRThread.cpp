#include "LPRThread.h"

#include <algorithm>
#include <cstdio>
#include <cstring>

#include <opencv2/core/types_c.h>
#include <opencv2/imgproc.hpp>

#include "RecognitionLog.h"
#include "RegionCutter.h"
#include "StreamServices.h"
#include "TransitLine.h"
#include "core/Project.h"
#include "corvane/IntegratorPlugin.h"
#include "corvane/LPRPlugin.h"
#include "corvane/TriggerPlugin.h"
#include "platform/FileSystem.h"
#include "platform/Log.h"
#include "platform/Ticks.h"

namespace {

constexpr int kFpsPeriodMs = 30000;
constexpr int kRectLimit = 1000000;  // a plug-in's rectangle beyond this is garbage

size_t CharacterCount(const std::string& text) {
    size_t count = 0;
    for (const unsigned char byte : text)
        if ((byte & 0xC0) != 0x80)
            ++count;
    return count;
}

std::string TemplatesPath(const std::string& projectDir) {
    if (projectDir.empty())
        return "templates.xml";
    return projectDir.back() == '/' ? projectDir + "templates.xml" : projectDir + "/templates.xml";
}

// The area cut out of the grey picture, limited as a masked region cut is.
cv::Mat CropArea(const cv::Mat& gray, const SearchArea& area) {
    const cv::Rect limited = RegionCutter::LimitedCut(gray.size(), area.x, area.y, area.w, area.h);
    return limited.empty() ? cv::Mat() : gray(limited).clone();
}

PluginRect MovedRect(const LPRThread::Reading& reading, const SearchArea& area) {
    return PluginRect{reading.rect[0] + area.x, reading.rect[1] + area.y, reading.rect[2],
                      reading.rect[3]};
}

}  // namespace

unsigned LPRThread::Reading::Mean() const {
    const size_t characters = CharacterCount(plate);
    return characters == 0 ? 0u : score / static_cast<unsigned>(characters);
}

LPRThread::LPRThread(Project& project, StreamServices* streams, LPRSettings settings)
    : project_(project),
      streams_(streams),
      settings_(std::move(settings)),
      pacer_(platform::GetTickCount()) {
    SetReportName("LPR thread of " + settings_.name);
}

LPRThread::~LPRThread() {
    Delete();
    std::lock_guard<std::mutex> lock(queueMutex_);
    queue_.clear();  // packages left over were never processed
}

size_t LPRThread::QueueLength() const {
    std::lock_guard<std::mutex> lock(queueMutex_);
    return queue_.size();
}

int LPRThread::AddLPRPackage(const uint8_t* data, int width, int height) {
    {
        std::lock_guard<std::mutex> lock(queueMutex_);
        if (static_cast<int>(queue_.size()) >= settings_.BufferLen)
            return 0;
    }
    if (data == nullptr || width < kMinPackageSide || height < kMinPackageSide)
        return 0;
    LPRPackage package;
    if (width > kMinImageSide && height > kMinImageSide) {
        package.img.create(height, width, CV_8UC3);
        std::memcpy(package.img.data, data, static_cast<size_t>(width) * height * 3);
    }
    if (package.img.empty()) {
        CORVANE_LOG_WARNING("LPRThread::AddLPRPackage",
                            "assertion \"pack->img\" failed: Cannot create pack image");
        return 0;
    }
    package.tick = platform::GetTickCount();
    package.time = WallClock::now();
    package.plate = "unknown";
    {
        // One producer per region (its source's thread): the room checked above is still there,
        // the consumer only ever takes packages away.
        std::lock_guard<std::mutex> lock(queueMutex_);
        queue_.push_back(std::move(package));
    }
    Wake();
    return 1;
}

// The live view reads the status under the same lock to colour the region's box.
void LPRThread::SetTriggerStatus(Lane& lane, int status) {
    std::lock_guard<std::mutex> lock(project_.lanesmutex);
    lane.TriggerStatus = status;
}

void LPRThread::Entry() {
    sceneMode_ = 0;
    const Lane* lane = project_.GetLane(settings_.laneId);
    plugin_ = lane != nullptr ? project_.lprplugins.GetLPRPlugin(lane->lprlib) : nullptr;
    if (plugin_ == nullptr) {
        // Said, not left to be guessed from a silent region.
        if (lane != nullptr)
            CORVANE_LOG_WARNING("LPRThread::Entry", "Region " + lane->name +
                                                        " has no plate reader (" + lane->lprlib +
                                                        "): nothing is read");
        while (Pause(250)) {
        }
        return;
    }
    if (plugin_->Init(settings_.MinCar, settings_.MaxCar, TemplatesPath(project_.prjdir),
                      std::to_string(lane->UseTemplate)) == 1)
        sceneMode_ = 1;
    found_ = 0;
    best_ = SearchArea{};
    frames_ = 0;
    fpsTick_ = platform::GetTickCount();
    pacer_ = StreamPacer(fpsTick_);

    while (!TestDestroy()) {
        LPRPackage* head = nullptr;
        {
            std::lock_guard<std::mutex> lock(queueMutex_);
            if (!queue_.empty())
                head = &queue_.front();  // deque elements stay put while others are appended
        }
        if (head == nullptr) {
            Pause(kIdlePauseMs);
            continue;
        }
        Cycle(*head);
        std::lock_guard<std::mutex> lock(queueMutex_);
        queue_.pop_front();
    }
    std::printf("Close LPR PLUGIN\n");
    plugin_->CloseLPR();
    std::printf("LPR THREAD CLOSED\n");
}

void LPRThread::Cycle(LPRPackage& package) {
    AnnounceToGate(package);
    package.position = -1;
    cv::Mat gray;
    cv::cvtColor(package.img, gray, cv::COLOR_BGR2GRAY);
    package.img = gray.clone();

    const std::string boardText = project_.GetBoardPins();
    SearchArea area;
    const int status = TriggerAndArea(gray, boardText, area);
    area = area.Limited(gray.cols, gray.rows);
    if (status != 0 && area.Searchable())
        Recognise(gray, area);
    const std::vector<Reading> readings = ReadResults();

    StreamStep(gray, area, readings, package.tick);
    gray.release();
    AcceptReadings(readings, area, package);

    int selected;
    {
        std::lock_guard<std::mutex> lock(project_.selectionmutex);
        selected = project_.selroi;
    }
    if (selected == settings_.laneId)
        ShowResult(package, readings, area);
    plugin_->ClearResults();
    CountFrame();
}

void LPRThread::AnnounceToGate(const LPRPackage& package) {
    std::lock_guard<std::mutex> lock(project_.lprmutex);
    const Lane* lane = nullptr;
    Integrator* gate = GateReport::GateOf(project_, settings_.laneId, &lane);
    if (gate == nullptr)
        return;
    gate->plugin->NewFrame(package.img.data, package.img.cols, package.img.rows, 8,
                           ToPluginDateTime(WallClock::now()), settings_.name,
                           sceneMode_ ? "<SCENELANE>" : lane->place);
}

int LPRThread::TriggerAndArea(const cv::Mat& gray, const std::string& boardText, SearchArea& area) {
    const bool margins = settings_.DROIX != 0 || settings_.DROIY != 0;
    const SearchArea whole = SearchArea::WholeImage(gray.cols, gray.rows);
    const SearchArea aroundPlate =
        SearchArea::AroundPlate(best_, gray.cols, gray.rows, settings_.DROIX, settings_.DROIY);
    Lane* lane = project_.GetLane(settings_.laneId);
    int status = 0;
    bool triggered = false;
    if (lane != nullptr) {
        Trigger* trigger = project_.GetTriggerByName(lane->trigname);
        if (trigger == nullptr) {
            status = 1;
            SetTriggerStatus(*lane, 1);
        } else {
            triggered = true;
            if (trigger->plugin != nullptr) {
                trigger->plugin->ProcessFrame(gray.data, gray.cols, gray.rows, gray.channels());
                trigger->plugin->SetBoardStatus(boardText);
                status = trigger->plugin->GetStatus();
                SetTriggerStatus(*lane, status);
            }
        }
    }
    if (triggered) {
        area = (!margins || found_ == 0) ? whole : aroundPlate;
        return status;
    }
    motion_.Run(gray);
    if (!margins)
        area = whole;
    else if (found_ == 1)
        area = aroundPlate;
    else
        area = SearchArea::FromMotion(motion_.x1, motion_.y1, motion_.x2, motion_.y2);
    return status;
}

void LPRThread::Recognise(const cv::Mat& gray, const SearchArea& area) {
    cv::Mat cut = CropArea(gray, area);
    if (cut.empty())
        return;
    IplImage image = cvIplImage(cut);
    plugin_->ClearResults();
    plugin_->Process(&image);
}

std::vector<LPRThread::Reading> LPRThread::ReadResults() {
    std::vector<Reading> readings;
    const int count = plugin_->GetResultCount();
    if (count > kMaxReadings)
        CORVANE_LOG_WARNING("LPRThread::ReadResults",
                            settings_.name + ": " + std::to_string(count) +
                                " readings in one picture; only the first " +
                                std::to_string(kMaxReadings) + " are taken");
    for (int index = 0; index < std::min(count, kMaxReadings); ++index) {
        Reading reading;
        plugin_->GetResult(index, &reading.plate, &reading.score, reading.rect, &reading.charHeight,
                           &reading.aux, &reading.tags);
        for (int& value : reading.rect)
            value = std::clamp(value, -kRectLimit, kRectLimit);
        readings.push_back(std::move(reading));
    }
    return readings;
}

void LPRThread::StreamStep(const cv::Mat& gray, const SearchArea& area,
                           const std::vector<Reading>& readings, uint32_t captureTick) {
    std::lock_guard<std::mutex> lock(project_.lprmutex);
    const Lane* lane = project_.GetLane(settings_.laneId);
    if (lane == nullptr)
        return;
    const int period = StreamPacer::PeriodOf(lane->FPS);
    if (lane->port <= 0 || streams_ == nullptr || !streams_->RtspRunning())
        return;
    if (!streams_->HasStream(settings_.name))
        streams_->AddStream(settings_.name, lane->bitrate);
    const uint32_t now = platform::GetTickCount();
    if (!pacer_.DueOrEqual(now))
        return;
    pacer_.Advance(now, period);
    cv::Mat picture;
    cv::cvtColor(gray, picture, cv::COLOR_GRAY2BGR);
    for (const auto& reading : readings)
        DrawReading(picture, reading, area.x, area.y);
    const cv::Mat scaled = StreamPacer::Scaled(picture, lane->FrameDim);
    if (scaled.empty())
        return;
    // The region's device tells the size and the rate its stream really has.
    if (lane->soapthread)
        streams_->SetVideoFormat(*lane->soapthread, scaled.cols, scaled.rows,
                                 streams_->StreamRate(settings_.name, lane->FPS));
    streams_->SetStreamSize(scaled.cols, scaled.rows, settings_.name);
    streams_->PushStreamFrame(scaled.data, scaled.cols, scaled.rows, settings_.name, captureTick);
}

void LPRThread::DrawReading(cv::Mat& picture, const Reading& reading, int offsetX, int offsetY) {
    if (reading.plate.empty() || reading.Mean() <= kDrawMean)
        return;
    // Garbage rectangles are kept near the picture so that drawing stays cheap.
    const int x = std::clamp(reading.rect[0] + offsetX, -picture.cols, 2 * picture.cols);
    const int y = std::clamp(reading.rect[1] + offsetY, -picture.rows, 2 * picture.rows);
    const int w = std::clamp(reading.rect[2], 0, 2 * picture.cols);
    const int h = std::clamp(reading.rect[3], 0, 2 * picture.rows);
    const cv::Scalar red(255, 0, 0, 0);
    cv::rectangle(picture, cv::Point(x, y), cv::Point(x + w, y + h), red, 3, cv::LINE_8);

    const int face = cv::FONT_HERSHEY_DUPLEX;
    int baseline = 0;
    const cv::Size unit = cv::getTextSize(reading.plate, face, 1.0, 1, &baseline);
    const double scale = unit.width > 0 ? w * 0.9 / unit.width : 1.0;
    const cv::Size text = cv::getTextSize(reading.plate, face, scale, 1, &baseline);
    const int cx = x + w / 2;
    const int top = y > picture.rows / 2 ? y - text.height - 10 : y + h + 2;
    const int bottom = top + text.height + 10;
    const cv::Point left(cx - w / 2, top);
    const cv::Point right(cx + w / 2, bottom);
    cv::rectangle(picture, left, right, cv::Scalar(0, 0, 0, 0), -1, cv::LINE_8);
    cv::rectangle(picture, left, right, red, 2, cv::LINE_8);
    cv::putText(picture, reading.plate, cv::Point(cx - text.width / 2, top + text.height + 5), face,
                scale, cv::Scalar(255, 255, 255, 0), 1, cv::LINE_8);
}

void LPRThread::AcceptReadings(const std::vector<Reading>& readings, const SearchArea& area,
                               const LPRPackage& package) {
    found_ = 0;
    unsigned bestMean = 0;
    const Lane* lane = project_.GetLane(settings_.laneId);
    const bool logs = lane != nullptr && lane->CreateLogs != 0;
    for (const auto& reading : readings) {
        const unsigned mean = reading.Mean();
        if (reading.plate.empty() || mean <= kAcceptMean)
            continue;
        if (logs)
            RecognitionLog::WriteLog(settings_.name, reading.plate, reading.charHeight,
                                     reading.tags);
        GateReading outgoing;
        outgoing.box = MovedRect(reading, area);
        outgoing.mean = mean;
        outgoing.charHeight = reading.charHeight;
        outgoing.tags = reading.tags;
        outgoing.plate = reading.plate;
        if (mean > bestMean) {
            best_ = {outgoing.box.x, outgoing.box.y, outgoing.box.width, outgoing.box.height};
            bestMean = mean;
        }
        found_ = 1;
        if (sceneMode_ == 0) {
            std::lock_guard<std::mutex> lock(project_.lprmutex);
            GateReport::ReportToGate(project_, settings_.laneId, outgoing, true, package.position);
        }
    }
    if (found_ == 0)
        ReportEmptyFrame(package);
}

void LPRThread::ReportEmptyFrame(const LPRPackage& package) {
    std::lock_guard<std::mutex> lock(project_.lprmutex);
    if (sceneMode_ != 0) {
        const Integrator* gate = GateReport::GateOf(project_, settings_.laneId);
        if (gate == nullptr || gate->plugin->WantsSceneResult() == 0)
            return;
    }
    GateReport::ReportToGate(project_, settings_.laneId, GateReading{}, false, package.position);
}

void LPRThread::ShowResult(LPRPackage& package, const std::vector<Reading>& readings,
                           const SearchArea& area) {
    {
        std::lock_guard<std::mutex> lock(project_.roiviewmutex);
        RoiView view;
        if (found_ != 0) {
            int taken = 0;
            for (const auto& reading : readings) {
                if (taken >= RoiView::kReadings)
                    break;
                if (reading.plate.empty() || reading.Mean() <= kAcceptMean)
                    continue;
                const PluginRect box = MovedRect(reading, area);
                view.score[taken] = reading.charHeight;
                view.valid[taken] = 1;
                view.rect[taken][0] = box.x;
                view.rect[taken][1] = box.y;
                view.rect[taken][2] = box.width;
                view.rect[taken][3] = box.height;
                view.text[taken] = reading.plate;
                // The view's walk leaves best at the last reading it takes, as the operator's
                // search area on a region on show has always followed.
                best_ = {box.x, box.y, box.width, box.height};
                ++taken;
            }
        }
        if (area.w > SearchArea::kMinWidth)
            cv::rectangle(package.img, cv::Point(area.x, area.y),
                          cv::Point(area.x + area.w, area.y + area.h), cv::Scalar(128, 128, 128, 0),
                          2, cv::LINE_8);
        cv::cvtColor(package.img, view.image, cv::COLOR_GRAY2BGR);
        project_.roiframes.Publish(std::move(view));
    }
    if (project_.lprsink != nullptr)
        project_.lprsink->PostCommand(ID_VIEW_REFRESH, 1, std::string());
    else
        CORVANE_LOG_WARNING("LPRThread::ShowResult", "need an object to post event to");
}

void LPRThread::CountFrame() {
    ++frames_;
    const uint32_t now = platform::GetTickCount();
    const uint32_t elapsed = platform::ElapsedTicks(now, fpsTick_);
    if (elapsed > kFpsPeriodMs) {
        std::fprintf(stderr, "Lane %s FPS:%.1f\n", settings_.name.c_str(),
                     frames_ / (elapsed / 1000.0));
        fpsTick_ = now;
        frames_ = 0;
    }
}

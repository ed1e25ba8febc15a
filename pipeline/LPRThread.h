#pragma once
#include <cstdint>
#include <deque>
#include <mutex>
#include <string>
#include <vector>

#include "GateReport.h"
#include "MotionArea.h"
#include "SearchArea.h"
#include "StreamPacer.h"
#include "core/LPRPackage.h"
#include "platform/WorkerThread.h"

class LPRPlugin;
class Project;
class StreamServices;

// What a region's thread is handed when it starts.
struct LPRSettings {
    int laneId = 0;
    std::string name;
    int BufferLen = 5;
    int MinCar = 18;
    int MaxCar = 50;
    int DROIX = 10;
    int DROIY = 20;
};

// The recognition thread of one region: takes the region pictures its source queued, asks the
// trigger, narrows the search, runs the plate reader, logs and reports what it accepts, feeds
// the region's stream and the result view.
class LPRThread : public platform::WorkerThread {
  public:
    static constexpr unsigned kAcceptMean = 40;  // a reading counts above this mean score
    static constexpr unsigned kDrawMean = 70;    // and is drawn into the stream above this
    static constexpr int kMinPackageSide = 10;
    static constexpr int kMinImageSide = 20;
    static constexpr int kMaxReadings = 256;  // more than this from one picture is garbage
    static constexpr int kIdlePauseMs = 20;

    // One reading of the plug-in, as GetResult gave it (rectangle in search-area pixels).
    struct Reading {
        std::string plate;
        unsigned score = 0;
        int rect[4] = {0, 0, 0, 0};
        int charHeight = 0;
        int aux = 0;
        std::string tags;
        // score / characters of plate (UTF-8 aware); 0 for an empty plate.
        unsigned Mean() const;
    };

    LPRThread(Project& project, StreamServices* streams, LPRSettings settings);
    ~LPRThread() override;

    // Called by the source's thread with a packed 24-bit picture. Returns 1 when queued, 0
    // when the queue is full or the picture too small.
    int AddLPRPackage(const uint8_t* data, int width, int height);

    size_t QueueLength() const;
    int SceneMode() const { return sceneMode_; }
    const LPRSettings& Settings() const { return settings_; }

    // Draws a reading and its plate text into a 3-channel stream picture.
    static void DrawReading(cv::Mat& picture, const Reading& reading, int offsetX, int offsetY);

  protected:
    void Entry() override;

  private:
    void SetTriggerStatus(Lane& lane, int status);
    void Cycle(LPRPackage& package);
    void AnnounceToGate(const LPRPackage& package);
    int TriggerAndArea(const cv::Mat& gray, const std::string& boardText, SearchArea& area);
    void Recognise(const cv::Mat& gray, const SearchArea& area);
    std::vector<Reading> ReadResults();
    // captureTick: when the region's picture was taken from its source.
    void StreamStep(const cv::Mat& gray, const SearchArea& area,
                    const std::vector<Reading>& readings, uint32_t captureTick);
    void AcceptReadings(const std::vector<Reading>& readings, const SearchArea& area,
                        const LPRPackage& package);
    void ReportEmptyFrame(const LPRPackage& package);
    void ShowResult(LPRPackage& package, const std::vector<Reading>& readings,
                    const SearchArea& area);
    void CountFrame();

    Project& project_;
    StreamServices* streams_;
    const LPRSettings settings_;
    int sceneMode_ = 0;
    LPRPlugin* plugin_ = nullptr;

    mutable std::mutex queueMutex_;
    std::deque<LPRPackage> queue_;  // the head stays in place during its cycle

    int found_ = 0;
    SearchArea best_;
    MotionArea motion_;
    StreamPacer pacer_;
    int frames_ = 0;
    uint32_t fpsTick_ = 0;
};

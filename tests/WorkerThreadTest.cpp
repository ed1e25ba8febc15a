#include <gtest/gtest.h>

#include <unistd.h>

#include <atomic>
#include <chrono>
#include <memory>
#include <thread>

#include "core/FrameRing.h"
#include "core/StartMode.h"
#include "platform/Ticks.h"
#include "platform/WorkerThread.h"

namespace {

class Looper : public platform::WorkerThread {
  public:
    explicit Looper(int pauseMs) : pause_(pauseMs) {}
    ~Looper() override { Delete(); }
    std::atomic<int> passes{0};

  protected:
    void Entry() override {
        while (!TestDestroy()) {
            ++passes;
            Pause(pause_);
        }
    }

  private:
    int pause_;
};

}  // namespace

TEST(WorkerThread, DeleteWakesALongPauseAndWaitsForTheEnd) {
    Looper looper(60000);
    ASSERT_TRUE(looper.Run());
    while (looper.passes == 0)
        std::this_thread::yield();
    const auto before = std::chrono::steady_clock::now();
    looper.Delete();
    EXPECT_LT(std::chrono::steady_clock::now() - before, std::chrono::milliseconds(500));
    EXPECT_FALSE(looper.IsRunning());
    EXPECT_EQ(looper.passes, 1);
}

TEST(WorkerThread, ADeletedWorkerCanBeDeletedAgainAndNeverStartedOnesToo) {
    Looper idle(5);
    idle.Delete();
    Looper looper(1);
    looper.Run();
    looper.Delete();
    looper.Delete();
    SUCCEED();
}

TEST(Ticks, ElapsedTimeIsRightAcrossAWrap) {
    EXPECT_EQ(platform::ElapsedTicks(5u, 0xFFFFFFFBu), 10u);
    const uint32_t before = platform::GetTickCount();
    platform::SleepMs(20);
    EXPECT_GE(platform::ElapsedTicks(platform::GetTickCount(), before), 19u);
}

TEST(FrameRing, TheViewSeesTheLatestWholePictureWhileTheProducerRuns) {
    struct Picture {
        int serial;
        std::vector<int> pixels;
    };
    FrameRing<Picture> ring;
    EXPECT_EQ(ring.Latest(), nullptr);
    std::atomic<bool> done{false};
    std::thread producer([&] {
        for (int serial = 1; serial <= 20000; ++serial)
            ring.Publish(Picture{serial, std::vector<int>(64, serial)});
        done = true;
    });
    int last = 0;
    int torn = 0;
    while (!done) {
        if (auto picture = ring.Latest()) {
            for (int pixel : picture->pixels)
                torn += pixel != picture->serial;
            EXPECT_GE(picture->serial, last - 2);  // never more than the ring's depth behind
            last = std::max(last, picture->serial);
        }
    }
    producer.join();
    EXPECT_EQ(torn, 0);
    EXPECT_EQ(ring.Latest()->serial, 20000);
    ring.Clear();
    EXPECT_EQ(ring.Latest(), nullptr);
}

TEST(StartMode, OnlyTheFirstArgumentCountsAndOnlyExactly) {
    const char* none[] = {"corvane"};
    const char* dbg[] = {"corvane", "-dbg"};
    const char* upper[] = {"corvane", "-DBG"};
    const char* nopwd[] = {"corvane", "-nopwd"};
    const char* shouted[] = {"corvane", "-NOPWD"};
    const char* second[] = {"corvane", "x", "-nopwd"};
    EXPECT_EQ(ParseStartMode(1, none), kStartNormal);
    EXPECT_EQ(ParseStartMode(2, dbg), kStartConsole);
    EXPECT_EQ(ParseStartMode(2, upper), kStartConsole);
    EXPECT_EQ(ParseStartMode(2, nopwd), kStartNoPassword);
    EXPECT_EQ(ParseStartMode(2, shouted), kStartNormal);
    EXPECT_EQ(ParseStartMode(3, second), kStartNormal);
}

namespace {

// Blocks for ever in what stands for a driver or plug-in call that never returns; it touches
// nothing of its object, nor anything else, while it waits.
class StuckInACall : public platform::WorkerThread {
  public:
    ~StuckInACall() override { Delete(); }

  protected:
    void Entry() override {
        for (;;)
            ::pause();
    }
};

}  // namespace

TEST(WorkerThread, OnTheWayOutAStuckWorkerIsLeftBehindAfterTheLimit) {
    platform::SetExitStopLimit(300);
    auto stuck = std::make_unique<StuckInACall>();
    stuck->SetReportName("stuck worker");
    stuck->Run();
    std::this_thread::sleep_for(std::chrono::milliseconds(20));
    const auto started = std::chrono::steady_clock::now();
    stuck->Delete();  // gives up after the limit
    EXPECT_LT(std::chrono::steady_clock::now() - started, std::chrono::seconds(2));
    EXPECT_TRUE(platform::AnyWorkerAbandoned());
    platform::SetExitStopLimit(0);
    // Left behind with its thread, as the program leaves it on its way out.
    static_cast<void>(stuck.release());
}

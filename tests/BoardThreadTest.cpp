#include <gtest/gtest.h>

#include <chrono>
#include <thread>

#include "TestSupport.h"
#include "core/Project.h"
#include "corvane/BoardPlugin.h"
#include "corvane/IntegratorPlugin.h"
#include "corvane/PostProcessorPlugin.h"
#include "pipeline/BoardThread.h"
#include "platform/FileSystem.h"

namespace {

class BoardThreadRun : public ::testing::Test {
  protected:
    void SetUp() override {
        project.AddBoard("IO", "TestBoard", "<PIN2>1<\\PIN2>", 1);
        Integrator gate;
        gate.name = "Gate";
        gate.plugin = project.integratorplugins.CreaIntegratorPlugin("TestGate");
        ASSERT_NE(gate.plugin, nullptr);
        gate.plugin->SetParameters("<BOARD>IO<\\BOARD><FROM>2<\\FROM><TO>11<\\TO>");
        project.integrators.Add(gate);
        for (int uses = 0; uses <= 1; ++uses) {
            PostProcessor processor;
            processor.id = uses + 1;
            processor.name = "P" + std::to_string(uses);
            processor.plugin = project.processorplugins.CreaProcessorPlugin("TestPostProcessor");
            ASSERT_NE(processor.plugin, nullptr);
            processor.plugin->SetParameters("<USES>" + std::to_string(uses) + "<\\USES>");
            project.processors.Add(processor);
        }
    }
    int OutputPin() { return project.boards[0].plugin->ReadPin(11, kPinAll); }

    platform::ScopedWorkingDirectory inApp{AppDir()};
    Project project;
};

}  // namespace

TEST_F(BoardThreadRun, OnePassCarriesAnInputToAnOutputThroughTheGate) {
    BoardThread thread(project);
    EXPECT_EQ(OutputPin(), 0);
    ClearJournal(PluginPath("postprocessor", "TestPostProcessor"));
    thread.Pass();
    EXPECT_EQ(OutputPin(), 1);
    // Only the post processor that takes part in the pin traffic hears of it, status first.
    EXPECT_EQ(JournalOf(PluginPath("postprocessor", "TestPostProcessor")),
              "SetBoardStatus:uses=1\nGetBoardCommands:uses=1\n");
}

TEST_F(BoardThreadRun, TheRunningThreadFollowsPinChangesAndStopsWithinOnePass) {
    project.StartBoardThread();
    auto waitFor = [this](int value) {
        for (int i = 0; i < 200 && OutputPin() != value; ++i)
            std::this_thread::sleep_for(std::chrono::milliseconds(5));
        return OutputPin() == value;
    };
    EXPECT_TRUE(waitFor(1));
    {
        std::lock_guard<std::mutex> lock(project.boardsmutex);
        project.boards[0].plugin->WritePin(2, 0);
    }
    EXPECT_TRUE(waitFor(0));
    const auto before = std::chrono::steady_clock::now();
    project.StopBoardThread();
    const auto took = std::chrono::steady_clock::now() - before;
    EXPECT_EQ(project.boardthread, nullptr);
    EXPECT_LT(took, std::chrono::milliseconds(200));
}

TEST(BoardThreadWithoutBoards, StillHandsTheEmptyStatusToItsPlugins) {
    platform::ScopedWorkingDirectory inApp(AppDir());
    Project project;
    Integrator gate;
    gate.plugin = project.integratorplugins.CreaIntegratorPlugin("TestGate");
    project.integrators.Add(gate);
    BoardThread thread(project);
    thread.Pass();  // an empty status and an empty answer: nothing to write, nothing breaks
    EXPECT_EQ(project.GetBoardPins(), "");
}

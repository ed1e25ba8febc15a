#include <gtest/gtest.h>

#include "TestSupport.h"
#include "core/Project.h"
#include "corvane/BoardPlugin.h"
#include "platform/FileSystem.h"

namespace {

class BoardTexts : public ::testing::Test {
  protected:
    void SetUp() override {
        ClearJournal(PluginPath("board", "TestBoard"));
        project.appdir = AppDir();
        ASSERT_EQ(project.AddBoard("B1", "TestBoard", "<PIN1>1<\\PIN1><PIN5>7<\\PIN5>", 1), 1);
        ASSERT_EQ(project.AddBoard("B2", "TestBoard", "", 2), 2);
    }
    std::string Journal() const { return JournalOf(PluginPath("board", "TestBoard")); }

    platform::ScopedWorkingDirectory inApp{AppDir()};
    Project project;
};

std::string BoardBlock(const std::string& name, const std::vector<std::pair<int, int>>& pins) {
    std::string text = "<BOARD>\n<NAME>" + name + "<\\NAME>\n";
    for (const auto& pin : pins)
        text += "<PIN>\n<ID>" + std::to_string(pin.first) + "<\\ID>\n<VALUE>" +
                std::to_string(pin.second) + "<\\VALUE>\n<\\PIN>\n";
    return text + "<\\BOARD>\n";
}

}  // namespace

TEST_F(BoardTexts, StatusTextListsEveryPinOfEveryBoardInOrder) {
    Board orphan;
    orphan.name = "NoPlugin";
    orphan.id = 3;
    project.boards.Add(orphan);
    EXPECT_EQ(project.GetBoardPins(),
              BoardBlock("B1", {{1, 1}, {2, 0}, {3, 0}, {4, 0}, {5, 7}, {10, 0}, {11, 0}}) +
                  BoardBlock("B2", {{1, 0}, {2, 0}, {3, 0}, {4, 0}, {5, 0}, {10, 0}, {11, 0}}) +
                  BoardBlock("NoPlugin", {}));
    Project empty;
    EXPECT_EQ(empty.GetBoardPins(), "");
}

TEST_F(BoardTexts, ABoardWithoutStoredSettingsIsGivenItsOwnDefaults) {
    const std::string journal = Journal();
    EXPECT_NE(journal.find("SetParameters:<PIN1>0<\\PIN1>\nOpen:B2:2"), std::string::npos)
        << journal;
}

TEST_F(BoardTexts, CommandsWriteOnlyPinsWhoseValueDiffers) {
    ClearJournal(PluginPath("board", "TestBoard"));
    project.SetBoardPins(
        "<BOARD><NAME>B1<\\NAME><PINID>10<\\PINID><VALUE>1<\\VALUE><\\BOARD>"
        "<BOARD><NAME>B1<\\NAME><PINID>1<\\PINID><VALUE>1<\\VALUE><\\BOARD>"   // already 1
        "<BOARD><NAME>B1<\\NAME><PINID>10<\\PINID><VALUE>0<\\VALUE><\\BOARD>"  // second, in order
        "<BOARD><NAME>Ghost<\\NAME><PINID>10<\\PINID><VALUE>1<\\VALUE><\\BOARD>"  // unknown board
        "<BOARD><NAME>B2<\\NAME><VALUE>5<\\VALUE><\\BOARD>");                     // no PINID: pin 0
    EXPECT_EQ(Journal(), "WritePin:B1:10=1\nWritePin:B1:10=0\nWritePin:B2:0=5\n");
}

TEST_F(BoardTexts, AnEmptyOrBrokenCommandTextChangesNothing) {
    ClearJournal(PluginPath("board", "TestBoard"));
    project.SetBoardPins("");
    project.SetBoardPins("<BOARD><NAME>B1<\\NAME><PINID>10<\\PINID><VALUE>1<\\VALUE>");
    project.SetBoardPins("<\\BOARD><BOARD>");
    EXPECT_EQ(Journal(), "");
}

TEST_F(BoardTexts, RemovingABoardClosesItsPlugin) {
    ClearJournal(PluginPath("board", "TestBoard"));
    project.RemoveBoard(1);
    EXPECT_EQ(project.boards.GetCount(), 1u);
    EXPECT_EQ(Journal(), "Close:B1:0\n");
}

TEST(BoardCreation, AMissingLibraryAddsNoRecord) {
    platform::ScopedWorkingDirectory inApp(AppDir());
    Project project;
    EXPECT_EQ(project.AddBoard("B", "Missing", "", 1), 0);
    LogCapture log;
    EXPECT_EQ(project.AddTrigger("T", "Missing", "", 1), -1);
    EXPECT_TRUE(log.Contains("Cannot found trigger plugin"));
    EXPECT_TRUE(project.triggers.IsEmpty());
    EXPECT_EQ(project.AddTrigger("T", "TestTrigger", "<STATUS>0<\\STATUS>", 4), 1);
    EXPECT_NE(JournalOf(PluginPath("trigger", "TestTrigger")).find("Open:T:4"), std::string::npos);
}

#include <gtest/gtest.h>

#include <sys/stat.h>

#include <algorithm>
#include <functional>
#include <map>
#include <random>

#include "SavedSite.h"
#include "TestSupport.h"
#include "core/Project.h"
#include "core/ProjectSession.h"
#include "fuzz/ReaderFuzzTargets.h"
#include "platform/FileSystem.h"
#include "templates/TemplateSet.h"

namespace {

class DamagedFiles : public ::testing::Test {
  protected:
    DamagedFiles() : inFolder(folder.Path()) {}

    // Two whole regions, as the program writes them.
    std::vector<uint8_t> TwoLanes() {
        Project source;
        for (int id = 1; id <= 2; ++id) {
            Lane lane;
            lane.id = id;
            lane.name = "L" + std::to_string(id);
            source.lanes.Add(lane);
        }
        source.SaveLane();
        return ReadFileBytes("lanes.dat");
    }

    TempDir folder;
    platform::ScopedWorkingDirectory inFolder;
};

}  // namespace

TEST_F(DamagedFiles, ATruncatedLanesFileKeepsEveryWholeRecordAndNamesTheFile) {
    const std::vector<uint8_t> whole = TwoLanes();
    const size_t recordSize = (whole.size() - 8) / 2;
    for (size_t length = 0; length < whole.size(); ++length) {
        WriteFileBytes("lanes.dat", std::vector<uint8_t>(whole.begin(), whole.begin() + length));
        Project project;
        LogCapture log;
        project.LoadLane();
        const size_t expected = length < 8 ? 0 : (length - 8) / recordSize;
        ASSERT_EQ(project.lanes.GetCount(), expected) << "length " << length;
        if (length >= 4) {  // below four bytes not even the version is there
            ASSERT_EQ(log.Messages().size(), 1u) << "length " << length;
            EXPECT_NE(log.Messages()[0].find("lanes.dat is damaged"), std::string::npos);
            EXPECT_EQ(log.Functions()[0], std::string("Project::LoadLane"));
        }
    }
}

TEST_F(DamagedFiles, HostileCountsAndLengthsAllocateNothingAndLoadWhatIsWhole) {
    LogCapture log;
    WriteFileBytes("lanes.dat", Bytes().Int(12).Int(-5).Data());
    Project negative;
    negative.LoadLane();
    EXPECT_TRUE(negative.lanes.IsEmpty());
    EXPECT_TRUE(log.Contains("negative record count"));

    std::vector<uint8_t> whole = TwoLanes();
    whole[4] = 0xFF;  // count 0x7FFFFFFF-ish: two records, then the data ends
    whole[5] = 0xFF;
    whole[6] = 0xFF;
    whole[7] = 0x7F;
    WriteFileBytes("lanes.dat", whole);
    Project huge;
    huge.LoadLane();
    EXPECT_EQ(huge.lanes.GetCount(), 2u);
    EXPECT_TRUE(log.Contains("only 2 of 2147483647 records"));

    WriteFileBytes("cameras.dat", Bytes().Int(6).Int(1).Int(1).Int(0x7FFFFFF0).Data());
    Project camera;
    camera.LoadCamera();
    EXPECT_TRUE(log.Contains("cameras.dat is damaged"));

    WriteFileBytes("boards.dat", Bytes().Int(2).Int(1).Int(1).Int(-3).Data());
    Project board;
    board.LoadBoard();
    EXPECT_TRUE(log.Contains("boards.dat is damaged"));
}

TEST_F(DamagedFiles, AShapeSizeBeyondTheFileIsRejected) {
    std::vector<uint8_t> whole = TwoLanes();
    // The shape size of the last record stands 36 bytes before the end (4 corners = 32 bytes).
    const size_t at = whole.size() - 36;
    whole[at] = 0x00;
    whole[at + 1] = 0x00;
    whole[at + 2] = 0x00;
    whole[at + 3] = 0x40;
    WriteFileBytes("lanes.dat", whole);
    Project project;
    LogCapture log;
    project.LoadLane();
    EXPECT_EQ(project.lanes.GetCount(), 1u);
    EXPECT_TRUE(log.Contains("only 1 of 2 records"));
}

TEST_F(DamagedFiles, AnUnreadableFileIsReportedWithTheMessageOfItsKind) {
    ::mkdir("triggers.dat", 0700);
    Project project;
    LogCapture log;
    project.LoadTrigger();
    EXPECT_TRUE(log.Contains("Cannot load triggers file"));
}

// Thousands of mutated copies of valid inputs through every reader: nothing may crash, hang or
// run out of memory. The libFuzzer build explores further; this keeps the ordinary build honest.
TEST_F(DamagedFiles, MutatedInputsNeverBreakAReader) {
    const std::vector<uint8_t> lanes = TwoLanes();
    const std::vector<std::vector<uint8_t>> seeds = {
        lanes,
        Bytes()
            .Int(6)
            .Int(2)
            .Int(1)
            .Str("C")
            .Str("X")
            .Str("s")
            .Int(1)
            .Int(1)
            .Int(1)
            .Int(1)
            .Int(1)
            .Data(),
        Bytes().Int(5).Str("user").Str("pw").Int(1).Int(1).Data(),
        Bytes().Int(1).Int(2).Int(300).Int(300).Str("perspective").Data(),
    };
    std::mt19937 random(1234);
    for (int round = 0; round < 4000; ++round) {
        std::vector<uint8_t> input = seeds[static_cast<size_t>(round) % seeds.size()];
        const int edits = 1 + static_cast<int>(random() % 8);
        for (int e = 0; e < edits && !input.empty(); ++e) {
            const size_t at = random() % input.size();
            switch (random() % 3) {
                case 0:
                    input[at] = static_cast<uint8_t>(random());
                    break;
                case 1:
                    input.resize(at);
                    break;
                case 2:
                    input.insert(input.begin() + static_cast<long>(at),
                                 static_cast<uint8_t>(random()));
                    break;
            }
        }
        input.insert(input.begin(), static_cast<uint8_t>(random()));
        FuzzOneReader(input.data(), input.size());
    }
    SUCCEED();
}

namespace {

// Answers every question No: nothing is saved unless a test asks for it.
class QuietHost : public ProjectHost {
  public:
    bool AskYesNo(const std::string&) override { return false; }
    void ShowMessage(const std::string&) override {}
};

struct Damage {
    const char* name;
    std::function<void(std::vector<uint8_t>&)> apply;
};

// What a disk or a careless copy does to a file.
std::vector<Damage> Damages() {
    return {{"cut in half", [](std::vector<uint8_t>& b) { b.resize(b.size() / 2); }},
            {"emptied", [](std::vector<uint8_t>& b) { b.clear(); }},
            {"first byte flipped", [](std::vector<uint8_t>& b) { b[0] ^= 0xFF; }},
            {"FF FF FF FF and noise",
             [](std::vector<uint8_t>& b) {
                 std::mt19937 random(7);
                 b.assign({0xFF, 0xFF, 0xFF, 0xFF});
                 for (int i = 0; i < 40; ++i)
                     b.push_back(static_cast<uint8_t>(random()));
             }},
            {"a byte more", [](std::vector<uint8_t>& b) { b.push_back(0x2A); }}};
}

// Opens the site in folder as an operator would and closes it without saving: what the open
// said, and whether a region and a source are there.
struct Opened {
    std::vector<std::string> warnings;
    size_t cameras = 0;
    size_t lanes = 0;
};

Opened OpenAndClose(const std::string& folder) {
    Opened opened;
    Project project;
    project.appdir = AppDir();
    QuietHost host;
    ProjectSession session(project, host);
    LogCapture log;
    session.LoadProject(folder + "/site.tlr");
    opened.warnings = log.Messages();
    opened.cameras = project.cameras.GetCount();
    opened.lanes = project.lanes.GetCount();
    project.StopLanes();
    project.StopBoardThread();
    project.CloseAll();
    return opened;
}

bool Names(const std::vector<std::string>& warnings, const std::string& file) {
    for (const std::string& warning : warnings)
        if (warning.find(file + " is damaged") != std::string::npos)
            return true;
    return false;
}

}  // namespace

TEST(DamagedProject, EveryDamageOfEveryFileIsSaidByNameWhatIsWholeLoadsAndNothingIsRewritten) {
    TempDir whole;
    SaveSite(whole.Path(), "site", "Damaged");
    const std::vector<std::string> files = {"site.tlr",     "cameras.dat",     "boards.dat",
                                            "triggers.dat", "integrators.dat", "processors.dat",
                                            "lanes.dat"};
    for (const std::string& file : files) {
        for (const Damage& damage : Damages()) {
            if (file == "site.tlr" && std::string(damage.name) == "a byte more")
                continue;  // a text file may end in anything after its last tag
            TempDir folder;
            for (const std::string& each : files)
                platform::CopyFileOver(whole.File(each), folder.File(each));
            auto bytes = ReadFileBytes(folder.File(file));
            damage.apply(bytes);
            WriteFileBytes(folder.File(file), bytes);
            std::map<std::string, std::vector<uint8_t>> before;
            for (const std::string& each : files)
                before[each] = ReadFileBytes(folder.File(each));

            const Opened opened = OpenAndClose(folder.Path());
            EXPECT_TRUE(Names(opened.warnings, file)) << file << " " << damage.name;
            // What was not damaged loads whole.
            if (file != "cameras.dat") {
                EXPECT_EQ(opened.cameras, 1u) << file << " " << damage.name;
            }
            if (file != "lanes.dat") {
                EXPECT_EQ(opened.lanes, 1u) << file << " " << damage.name;
            }
            for (const std::string& each : files)
                EXPECT_EQ(ReadFileBytes(folder.File(each)), before[each])
                    << each << " rewritten after " << file << " " << damage.name;
        }
    }
}

TEST(DamagedProject, ARecordWhosePluginIsMissingIsKeptSaidAndWrittenBackAsRead) {
    TempDir folder;
    SaveSite(folder.Path(), "site", "Kept");
    // The board's library name flipped in one letter: its plug-in is nowhere.
    auto boards = ReadFileBytes(folder.File("boards.dat"));
    const std::string name = "TestBoard";
    const auto at = std::search(boards.begin(), boards.end(), name.begin(), name.end());
    ASSERT_NE(at, boards.end());
    *at = 'X';
    WriteFileBytes(folder.File("boards.dat"), boards);

    Project project;
    project.appdir = AppDir();
    QuietHost host;
    ProjectSession session(project, host);
    LogCapture log;
    ASSERT_TRUE(session.LoadProject(folder.File("site.tlr")));
    EXPECT_TRUE(log.Contains("boards.dat record 1 \"IO\": plug-in XestBoard is not installed in " +
                             AppDir() + "/plugin/board/; kept out of this run"));
    EXPECT_TRUE(project.boards.IsEmpty());
    ASSERT_EQ(project.held.boards.size(), 1u);
    EXPECT_EQ(ReadFileBytes(folder.File("boards.dat")), boards);  // the open wrote nothing

    // A save keeps it: the record goes back to disk as it was read.
    session.SaveAll();
    EXPECT_EQ(ReadFileBytes(folder.File("boards.dat")), boards);
    project.StopLanes();
    project.StopBoardThread();
    project.CloseAll();
}

TEST(DamagedProject, CutPlateFilesAreSaidAndKeepWhatIsWhole) {
    const std::string stock = ReadFileText(std::string(CORVANE_APP_DIR) + "/templates.xml");
    ASSERT_GT(stock.size(), 1000u);
    TemplateSet whole;
    whole.ParseTemplates(stock);
    ASSERT_GT(whole.templates.size(), 2u);
    {
        LogCapture log;
        TemplateSet cut;
        cut.ParseTemplates(stock.substr(0, stock.size() / 2));
        EXPECT_TRUE(log.Contains("templates.xml is damaged: it ends before"));
        EXPECT_TRUE(log.Contains("templates are missing or cut"));
        EXPECT_GT(cut.templates.size(), 0u);
        EXPECT_LT(cut.templates.size(), whole.templates.size());
    }
    {
        LogCapture log;
        TemplateSet empty;
        empty.ParseTemplates("");
        EXPECT_TRUE(log.Contains("templates.xml is damaged: empty"));
    }
    const std::string codes = ReadFileText(std::string(CORVANE_APP_DIR) + "/countrycodes.txt");
    {
        LogCapture log;
        TemplateSet cut;
        cut.ParseCountryCodes(codes.substr(0, codes.size() - 10));
        EXPECT_TRUE(log.Contains("countrycodes.txt is damaged: row"));
        TemplateSet empty;
        empty.ParseCountryCodes("");
        EXPECT_TRUE(log.Contains("countrycodes.txt is damaged: empty"));
    }
}

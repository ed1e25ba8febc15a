#include <gtest/gtest.h>

#include <sys/stat.h>

#include <random>

#include "TestSupport.h"
#include "core/Project.h"
#include "fuzz/ReaderFuzzTargets.h"
#include "platform/FileSystem.h"

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

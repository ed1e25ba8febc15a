// The binary boundary as an outside author meets it: a plug-in of each kind is compiled here
// from the public headers alone, with the command the README gives and default visibility,
// loaded by the program's managers, and every slot of its table (reserved ones included) is
// called through the contract and noted by the plug-in. The slot numbers of every operation
// are checked against the contract's order, so a reordered or missing entry fails.
#include <dlfcn.h>

#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <string>
#include <vector>

#include <opencv2/core/core_c.h>
#include <opencv2/core.hpp>

#include <gtest/gtest.h>

#include "TestSupport.h"
#include "core/Project.h"
#include "corvane/BoardPlugin.h"
#include "corvane/CameraPlugin.h"
#include "corvane/IntegratorPlugin.h"
#include "corvane/LPRPlugin.h"
#include "corvane/PostProcessorPlugin.h"
#include "corvane/TriggerPlugin.h"
#include "platform/FileSystem.h"

namespace {

// The entry of a virtual operation in its class's table (the Itanium C++ ABI keeps a pointer to
// a virtual member as one plus the entry's byte offset).
template <typename Member>
size_t SlotOf(Member member) {
    static_assert(sizeof(Member) == 2 * sizeof(uintptr_t), "an Itanium member pointer");
    uintptr_t raw = 0;
    std::memcpy(&raw, &member, sizeof raw);
    return (raw - 1) / sizeof(void*);
}

template <typename... Members>
std::vector<size_t> Slots(Members... members) {
    return {SlotOf(members)...};
}

std::vector<size_t> FirstSlots(size_t count) {
    std::vector<size_t> slots(count);
    for (size_t i = 0; i < count; ++i)
        slots[i] = i;
    return slots;
}

// Builds tests/abi/<name>.cpp into <app>/plugin/<kind>/<name>.dll with the README's command.
class AbiPlugins : public ::testing::Test {
  protected:
    AbiPlugins() : cwd_(app_.Path()) {}

    bool Build(const std::string& name, const std::string& kind) {
        platform::MakeDirectory(app_.File("plugin"));
        platform::MakeDirectory(app_.File("plugin/" + kind));
        const std::string library = app_.File("plugin/" + kind + "/" + name + ".dll");
        const std::string command = "g++ -std=c++17 -shared -fPIC -I" CORVANE_SOURCE_DIR
                                    "/plugins/include $(pkg-config --cflags opencv4) -o " +
                                    library + " " CORVANE_SOURCE_DIR "/tests/abi/" + name +
                                    ".cpp 2>" + app_.File(name + ".log");
        const bool built = std::system(command.c_str()) == 0;
        if (!built)
            ADD_FAILURE() << ReadFileText(app_.File(name + ".log"));
        libraries_.push_back(library);
        return built;
    }

    // What the plug-in noted, from its own copy of the journal.
    std::string Journal(const std::string& kind, const std::string& name) {
        void* handle = ::dlopen(app_.File("plugin/" + kind + "/" + name + ".dll").c_str(),
                                RTLD_NOW | RTLD_NOLOAD);
        if (handle == nullptr)
            return "(not loaded)";
        using JournalFn = const char* (*)();
        auto journal = reinterpret_cast<JournalFn>(::dlsym(handle, "AbiJournal"));
        const std::string text = journal != nullptr ? journal() : "(no journal)";
        ::dlclose(handle);
        return text;
    }

    TempDir app_;
    platform::ScopedWorkingDirectory cwd_;
    std::vector<std::string> libraries_;
};

}  // namespace

TEST_F(AbiPlugins, TheContractsKeepTheirSlotOrder) {
    using C = CameraPlugin;
    EXPECT_EQ(Slots(&C::Start, &C::LockFrame, &C::UnlockFrame, &C::GetFrame, &C::FreeMemory,
                    &C::GetParameters, &C::SetParameters, &C::Reserved1, &C::GetLibName,
                    &C::GetGuiName, &C::GetDescription, &C::Close, &C::Reserved2, &C::Reserved3,
                    &C::HasDialog, &C::ShowDialog),
              FirstSlots(16));
    using B = BoardPlugin;
    EXPECT_EQ(Slots(&B::Open, &B::Close, &B::ReadPin, &B::Reserved1, &B::GetPins, &B::WritePin,
                    &B::GetGuiName, &B::GetLibName, &B::GetParameters, &B::SetParameters,
                    &B::HasDialog, &B::ShowDialog),
              FirstSlots(12));
    using T = TriggerPlugin;
    EXPECT_EQ(Slots(&T::Open, &T::Close, &T::GetParameters, &T::SetParameters, &T::GetLibName,
                    &T::GetGuiName, &T::Reserved1, &T::SetBoardStatus, &T::ProcessFrame,
                    &T::GetStatus, &T::HasDialog, &T::ShowDialog),
              FirstSlots(12));
    using L = LPRPlugin;
    EXPECT_EQ(
        Slots(&L::Init, &L::GetInfo, &L::Reserved1, &L::GetLibName, &L::Process, &L::GetResultCount,
              &L::GetResult, &L::ClearResults, &L::Reserved2, &L::Reserved3, &L::CloseLPR),
        FirstSlots(11));
    using I = IntegratorPlugin;
    EXPECT_EQ(
        Slots(&I::Open, &I::Close, &I::GetParameters, &I::SetParameters, &I::GetLibName,
              &I::GetGuiName, &I::Reserved1, &I::SetBoardStatus, &I::GetBoardCommands, &I::NewFrame,
              &I::NewResult, &I::WantsSceneResult, &I::HasDialog, &I::ShowDialog),
        FirstSlots(14));
    using P = PostProcessorPlugin;
    EXPECT_EQ(Slots(&P::Open, &P::Close, &P::GetParameters, &P::SetParameters, &P::GetLibName,
                    &P::GetGuiName, &P::Reserved1, &P::SetBoardStatus, &P::GetBoardCommands,
                    &P::UsesBoards, &P::NewTransit, &P::HasDialog, &P::ShowDialog),
              FirstSlots(13));
}

TEST_F(AbiPlugins, ACameraAndABoardBuiltOutsideAnswerEverySlot) {
    ASSERT_TRUE(Build("AbiCamera", "camera"));
    ASSERT_TRUE(Build("AbiBoard", "board"));
    Project project;
    CameraPlugin* camera = project.cameraplugins.CreateCamera("AbiCamera");
    ASSERT_NE(camera, nullptr);
    int marker = 0;
    camera->Start(&marker);
    camera->LockFrame();
    int width = 0, height = 0, format = 0, frameId = 41;
    const auto* pixels =
        static_cast<const unsigned char*>(camera->GetFrame(&width, &height, &format, &frameId));
    camera->UnlockFrame();
    ASSERT_NE(pixels, nullptr);
    EXPECT_EQ(pixels[5], 6);
    EXPECT_EQ(width * 10 + height, 21);
    EXPECT_EQ(format, kFrameRGB24);
    EXPECT_EQ(frameId, 41);  // left alone: the plug-in had nothing new to say about it
    camera->FreeMemory();
    EXPECT_EQ(camera->GetParameters(0), "<TITLE>abi<\\TITLE>");
    camera->SetParameters("<W>1<\\W>");
    camera->Reserved1();
    EXPECT_EQ(camera->GetLibName(), "AbiCamera");
    unsigned int word = 0;
    EXPECT_EQ(camera->GetGuiName(&word), "ABI camera");
    EXPECT_EQ(word, 77u);
    EXPECT_EQ(camera->GetDescription(), "every slot noted");
    camera->Close();
    camera->Reserved2();
    camera->Reserved3();
    EXPECT_EQ(camera->HasDialog(), 0);
    EXPECT_EQ(camera->ShowDialog(nullptr, "<PROJECT_CAMERAS>"), 1);
    EXPECT_EQ(Journal("camera", "AbiCamera"),
              "Start:1\nLockFrame\nGetFrame:41\nUnlockFrame\nFreeMemory\nGetParameters:0\n"
              "SetParameters:<W>1<\\W>\nReserved1\nGetLibName\nGetGuiName\nGetDescription\n"
              "Close\nReserved2\nReserved3\nHasDialog\nShowDialog:<PROJECT_CAMERAS>\n");

    BoardPlugin* board = project.boardplugins.CreaBoardPlugin("AbiBoard");
    ASSERT_NE(board, nullptr);
    board->Open(nullptr, "IO", 3);
    board->Close(0);
    EXPECT_EQ(board->ReadPin(5, 1), 1);
    board->Reserved1();
    std::vector<std::string> names;
    std::vector<int> ids;
    board->GetPins(names, ids, 2);
    EXPECT_EQ(names, std::vector<std::string>{"IN1"});
    EXPECT_EQ(ids, std::vector<int>{11});
    board->WritePin(11, 1);
    EXPECT_EQ(board->GetGuiName(), "ABI board");
    EXPECT_EQ(board->GetLibName(), "AbiBoard");
    board->GetParameters(0);
    board->SetParameters("s");
    board->HasDialog();
    board->ShowDialog(nullptr, "p");
    project.boardplugins.Destroy(board);
    EXPECT_EQ(Journal("board", "AbiBoard"),
              "Open:IO:3\nClose:0\nReadPin:5:1\nReserved1\nGetPins:2\nWritePin:11:1\n"
              "GetGuiName\nGetLibName\nGetParameters:0\nSetParameters:s\nHasDialog\n"
              "ShowDialog:p\n~AbiBoard\n");
}

TEST_F(AbiPlugins, ATriggerAndAReaderBuiltOutsideAnswerEverySlot) {
    ASSERT_TRUE(Build("AbiTrigger", "trigger"));
    ASSERT_TRUE(Build("AbiLPR", "lpr"));
    Project project;
    TriggerPlugin* trigger = project.triggerplugins.CreaTriggerPlugin("AbiTrigger");
    ASSERT_NE(trigger, nullptr);
    trigger->Open("T1", 4);
    trigger->Close("T1", 4);
    trigger->GetParameters(0);
    trigger->SetParameters("s");
    EXPECT_EQ(trigger->GetLibName(), "AbiTrigger");
    EXPECT_EQ(trigger->GetGuiName(), "ABI trigger");
    trigger->Reserved1();
    trigger->SetBoardStatus("<BOARD>");
    unsigned char grey[6] = {9, 8, 7, 6, 5, 4};
    trigger->ProcessFrame(grey, 3, 2, 1);
    EXPECT_EQ(trigger->GetStatus(), 1);
    trigger->HasDialog();
    trigger->ShowDialog(nullptr, "p");
    EXPECT_EQ(Journal("trigger", "AbiTrigger"),
              "Open:T1:4\nClose:T1:4\nGetParameters:0\nSetParameters:s\nGetLibName\nGetGuiName\n"
              "Reserved1\nSetBoardStatus:<BOARD>\nProcessFrame:9:3x2x1\nGetStatus\nHasDialog\n"
              "ShowDialog:p\n");

    LPRPlugin* reader = project.lprplugins.GetLPRPlugin("AbiLPR");
    ASSERT_NE(reader, nullptr);
    EXPECT_EQ(reader->Init(18, 50, "/site/templates.xml", "1"), 0);
    unsigned int word = 0;
    EXPECT_EQ(reader->GetInfo(&word), "ABI reader");
    reader->Reserved1();
    EXPECT_EQ(reader->GetLibName(), "AbiLPR");
    cv::Mat picture(30, 40, CV_8UC1, cv::Scalar(128));
    IplImage image = cvIplImage(picture);
    reader->Process(&image);
    EXPECT_EQ(reader->GetResultCount(), 1);
    std::string plate, tags;
    unsigned int score = 0;
    int rect[4] = {};
    int charHeight = 0, aux = 0;
    reader->GetResult(0, &plate, &score, rect, &charHeight, &aux, &tags);
    EXPECT_EQ(plate + ":" + std::to_string(score) + ":" + std::to_string(rect[3]) + ":" +
                  std::to_string(charHeight) + ":" + std::to_string(aux) + ":" + tags,
              "AB123CD:700:4:20:-1:<COUNTRY>ITA<\\COUNTRY>");
    reader->ClearResults();
    reader->Reserved2();
    reader->Reserved3();
    reader->CloseLPR();
    EXPECT_EQ(Journal("lpr", "AbiLPR"),
              "Init:18:50:/site/templates.xml:1\nGetInfo\nReserved1\nGetLibName\n"
              "Process:40x30x1\nGetResultCount\nGetResult:0\nClearResults\nReserved2\n"
              "Reserved3\nCloseLPR\n");
}

TEST_F(AbiPlugins, AGateAndAPostProcessorBuiltOutsideAnswerEverySlot) {
    ASSERT_TRUE(Build("AbiGate", "integrator"));
    ASSERT_TRUE(Build("AbiProcessor", "postprocessor"));
    Project project;
    IntegratorPlugin* gate = project.integratorplugins.CreaIntegratorPlugin("AbiGate");
    ASSERT_NE(gate, nullptr);
    gate->Open(nullptr, 7, "Site", 12, "10.0.0.5", "LPR", "sa", "pw");
    gate->Close(" ", -1);
    gate->GetParameters(0);
    gate->SetParameters("s");
    gate->GetLibName();
    gate->GetGuiName();
    gate->Reserved1();
    gate->SetBoardStatus("<B>");
    gate->GetBoardCommands();
    PluginDateTime time;
    time.year = 2026;
    time.millisecond = 415;
    unsigned char pixels[12] = {};
    gate->NewFrame(pixels, 2, 2, 8, time, "Lane1", "Place1");
    gate->NewResult("AB123CD", PluginRect{1, 2, 3, 4}, 20, 0, 71, "<T>");
    gate->WantsSceneResult();
    gate->HasDialog();
    gate->ShowDialog(nullptr, "p");
    EXPECT_EQ(Journal("integrator", "AbiGate"),
              "Open:7:Site:12:10.0.0.5:LPR:sa:pw\nClose: :-1\nGetParameters:0\n"
              "SetParameters:s\nGetLibName\nGetGuiName\nReserved1\nSetBoardStatus:<B>\n"
              "GetBoardCommands\nNewFrame:2x2:8:2026-415:Lane1:Place1\n"
              "NewResult:AB123CD:1,2,3,4:20:0:71:<T>\nWantsSceneResult\nHasDialog\n"
              "ShowDialog:p\n");

    PostProcessorPlugin* processor = project.processorplugins.CreaProcessorPlugin("AbiProcessor");
    ASSERT_NE(processor, nullptr);
    processor->Open(nullptr, 2, "Site", 12, "a", "b", "c", "d");
    processor->Close("P1", 2);
    processor->GetParameters(0);
    processor->SetParameters("s");
    processor->GetLibName();
    processor->GetGuiName();
    processor->Reserved1();
    processor->SetBoardStatus("<B>");
    processor->GetBoardCommands();
    processor->UsesBoards();
    time.day = 23;
    processor->NewTransit("AB123CD", "img.jpg", time, "Gate1", "Place1", 5, 12);
    processor->HasDialog();
    processor->ShowDialog(nullptr, "p");
    EXPECT_EQ(Journal("postprocessor", "AbiProcessor"),
              "Open:2:Site:12:a:b:c:d\nClose:P1:2\nGetParameters:0\nSetParameters:s\n"
              "GetLibName\nGetGuiName\nReserved1\nSetBoardStatus:<B>\nGetBoardCommands\n"
              "UsesBoards\nNewTransit:AB123CD:img.jpg:23:Gate1:Place1:5:12\nHasDialog\n"
              "ShowDialog:p\n");
}

#include <gtest/gtest.h>

#include <dlfcn.h>

#include <cstdlib>
#include <filesystem>
#include <string>
#include <vector>

#include "TestSupport.h"
#include "core/Project.h"
#include "corvane/BoardPlugin.h"
#include "corvane/CameraPlugin.h"
#include "corvane/LPRPlugin.h"
#include "corvane/PostProcessorPlugin.h"
#include "corvane/TriggerPlugin.h"
#include "platform/FileSystem.h"

namespace {

class PluginManagers : public ::testing::Test {
  protected:
    platform::ScopedWorkingDirectory inApp{AppDir()};
};

}  // namespace

TEST_F(PluginManagers, ScanKeepsOnlyLoadableLibrariesWithTheirFactory) {
    LogCapture log;
    PluginBoardManager boards{FixedFolder(AppDir())};
    EXPECT_EQ(boards.LoadPlugin(), 0);
    // Broken.dll, NoFactory.dll, Upper.DLL, the folder folder.dll and readme.txt are passed by.
    ASSERT_EQ(boards.GetCount(), 1u);
    EXPECT_EQ(boards.Item(0)->GetLibName(), "TestBoard");
    EXPECT_TRUE(log.Messages().empty());
}

TEST_F(PluginManagers, OnlyThePostProcessorScanTakesUpperCaseDll) {
    PluginProcessorManager processors{FixedFolder(AppDir())};
    processors.LoadPlugin();
    ASSERT_EQ(processors.GetCount(), 2u);
    processors.LoadPlugin();  // an import scans again: no type twice in a drop-down
    ASSERT_EQ(processors.GetCount(), 2u);
    EXPECT_EQ(processors.FindByGuiName("Test Post Processor"), processors.Item(0));
}

TEST_F(PluginManagers, EachKindFindsItsDirectoryAndFactory) {
    Project project;
    EXPECT_EQ(project.cameraplugins.InitList(), 0);
    EXPECT_EQ(project.triggerplugins.LoadPlugin(), 0);
    EXPECT_EQ(project.integratorplugins.LoadPlugin(), 0);
    EXPECT_EQ(project.lprplugins.InitList(), 0);
    EXPECT_EQ(project.cameraplugins.GetCount(), 1u);
    EXPECT_EQ(project.triggerplugins.GetCount(), 1u);
    EXPECT_EQ(project.integratorplugins.GetCount(), 1u);
    EXPECT_EQ(project.lprplugins.GetCount(), 2u);  // TestLPR and ScriptLPR
    EXPECT_EQ(project.cameraplugins.GuiNameToLibName("Test Camera"), "TestCamera");
    EXPECT_EQ(project.cameraplugins.LibNameToGuiName("TestCamera"), "Test Camera");
    EXPECT_EQ(project.cameraplugins.GuiNameToLibName("Nothing"), "");
    EXPECT_NE(project.triggerplugins.FindByGuiName("Test Trigger"), nullptr);
    EXPECT_EQ(project.triggerplugins.FindByGuiName("test trigger"), nullptr);
    EXPECT_NE(project.lprplugins.FindByLibName("TestLPR"), nullptr);
}

TEST_F(PluginManagers, CreateMakesAFreshInstanceByLibraryName) {
    PluginTriggerManager triggers{FixedFolder(AppDir())};
    TriggerPlugin* first = triggers.CreaTriggerPlugin("TestTrigger");
    TriggerPlugin* second = triggers.CreaTriggerPlugin("TestTrigger");
    ASSERT_NE(first, nullptr);
    ASSERT_NE(second, nullptr);
    EXPECT_NE(first, second);
    EXPECT_EQ(triggers.CreaTriggerPlugin("Missing"), nullptr);
    EXPECT_EQ(triggers.CreaTriggerPlugin("NoFactory"), nullptr);

    CameraPluginManager cameras{FixedFolder(AppDir())};
    CameraPlugin* camera = cameras.CreateCamera("TestCamera");
    ASSERT_NE(camera, nullptr);
    unsigned int word = 0;
    EXPECT_EQ(camera->GetGuiName(&word), "Test Camera");
    EXPECT_EQ(camera->GetGuiName(nullptr), "Test Camera");
    EXPECT_EQ(cameras.CreateCamera("Missing"), nullptr);

    PluginLPRManager readers{FixedFolder(AppDir())};
    LPRPlugin* reader = readers.GetLPRPlugin("TestLPR");
    ASSERT_NE(reader, nullptr);
    EXPECT_EQ(reader->Init(18, 50, "/p/templates.xml", "1"), 0);
    EXPECT_NE(JournalOf(PluginPath("lpr", "TestLPR")).find("Init:18:50:/p/templates.xml:1"),
              std::string::npos);
}

TEST_F(PluginManagers, ABoardInstanceAnswersThroughItsContract) {
    PluginBoardManager boards{FixedFolder(AppDir())};
    BoardPlugin* board = boards.CreaBoardPlugin("TestBoard");
    ASSERT_NE(board, nullptr);
    std::vector<std::string> names;
    std::vector<int> ids;
    board->GetPins(names, ids, kPinInputs0);
    board->GetPins(names, ids, kPinInputs1);
    EXPECT_EQ(ids, std::vector<int>({1, 2, 3, 4, 5}));
    EXPECT_EQ(names.front(), "IN1");
    board->WritePin(10, 1);
    EXPECT_EQ(board->ReadPin(10, kPinAll), 1);
}

TEST_F(PluginManagers, RescanningAddsNoLibraryTwice) {
    // An import scans again; each type stays once in its drop-down.
    PluginIntegratorManager gates{FixedFolder(AppDir())};
    gates.LoadPlugin();
    gates.LoadPlugin();
    ASSERT_EQ(gates.GetCount(), 1u);
    EXPECT_EQ(gates.FindByGuiName("Test Gate"), gates.Item(0));
}

TEST_F(PluginManagers, MirrorDBIsStartedWithItsPeriodsAndStoppedAgain) {
    const std::string library = AppDir() + "/MirrorDB.dll";
    PluginProcessorManager processors{FixedFolder(AppDir())};
    PluginOpenArgs args;
    args.placeName = "Depot";
    processors.StartMirrorDB(15, 30, args);
    ASSERT_NE(processors.MirrorDB(), nullptr);
    const std::string journal = JournalOf(library);
    EXPECT_NE(journal.find("SetParameters:<VALUE>15<\\VALUE><VALUE>30<\\VALUE>\nOpen:0:Depot"),
              std::string::npos)
        << journal;
    EXPECT_EQ(processors.StopMirrorDB(), 1);
    EXPECT_EQ(processors.MirrorDB(), nullptr);
    EXPECT_NE(JournalOf(library).find("Close:MIRRORDB:0"), std::string::npos);
}

TEST(PluginDirectories, AMissingDirectoryIsReportedAndAnEmptyOneIsNot) {
    TempDir folder;
    std::filesystem::create_directories(folder.File("plugin/trigger"));
    platform::ScopedWorkingDirectory inFolder(folder.Path());
    LogCapture log;
    PluginTriggerManager triggers{FixedFolder(folder.Path())};
    EXPECT_EQ(triggers.LoadPlugin(), 0);
    EXPECT_TRUE(log.Messages().empty());
    PluginLPRManager readers{FixedFolder(folder.Path())};
    EXPECT_EQ(readers.InitList(), 1);
    EXPECT_TRUE(log.Contains("Cannon find lpr plugin directory"));
    PluginProcessorManager processors{FixedFolder(folder.Path())};
    processors.StartMirrorDB(5, 5, PluginOpenArgs());
    EXPECT_EQ(processors.MirrorDB(), nullptr);  // no ./MirrorDB.dll here: nothing, no message
    EXPECT_EQ(log.Messages().size(), 1u);
}

namespace {

std::string IntruderPath() {
    return AppDir() + "/elsewhere/Intruder.dll";
}

bool IntruderLoaded() {
    void* handle = ::dlopen(IntruderPath().c_str(), RTLD_NOW | RTLD_NOLOAD);
    if (handle != nullptr)
        ::dlclose(handle);
    return handle != nullptr;
}

// Names a file could carry to lead the loader out of the plug-in folder.
std::vector<std::string> HostileNames() {
    using namespace std::string_literals;
    return {"../../elsewhere/Intruder",
            "../elsewhere/Intruder",
            IntruderPath(),
            AppDir() + "/elsewhere/Intruder",
            "..\\..\\elsewhere\\Intruder",
            "TestTrigger\0../../elsewhere/Intruder"s,
            "../../elsewhere/Intruder.dll\0.dll"s,
            ".hidden",
            "Test Trigger",
            std::string(200, 'A'),
            ""};
}

}  // namespace

TEST(PluginNames, OnlyABareNameOfALibraryInThePluginFolderIsEverLoaded) {
    EXPECT_TRUE(IsBareLibraryName("TestTrigger"));
    EXPECT_TRUE(IsBareLibraryName("Plate_Core-2.1"));
    EXPECT_FALSE(IsBareLibraryName("a..b"));
    EXPECT_FALSE(IsBareLibraryName(std::string(kMaxLibraryName + 1, 'x')));

    ::setenv("CORVANE_INTRUDER_MARK", (AppDir() + "/elsewhere/mark").c_str(), 1);
    ::unlink((AppDir() + "/elsewhere/mark").c_str());
    PluginTriggerManager triggers{FixedFolder(AppDir())};
    for (const std::string& name : HostileNames()) {
        LogCapture log;
        EXPECT_EQ(triggers.CreaTriggerPlugin(name), nullptr);
        EXPECT_TRUE(log.Contains("refused: not a bare library name")) << name;
    }
    // A bare name that is no library of the folder: the MirrorDB beside the folders is not one.
    PluginProcessorManager processors{FixedFolder(AppDir())};
    LogCapture log;
    EXPECT_EQ(processors.CreaProcessorPlugin("MirrorDB"), nullptr);
    EXPECT_TRUE(log.Contains("plug-in MirrorDB is not installed in " + AppDir() +
                             "/plugin/postprocessor/"));
    EXPECT_FALSE(IntruderLoaded());
    EXPECT_FALSE(platform::FileExists(AppDir() + "/elsewhere/mark"));
    ::unsetenv("CORVANE_INTRUDER_MARK");
}

TEST(PluginNames, TheWorkingDirectoryLeadsNoLoadAnywhere) {
    // A folder holding plugin/trigger/TestTrigger.dll of its own is the working directory: the
    // manager still loads from its application folder, by absolute path.
    TempDir decoy;
    std::filesystem::create_directories(decoy.File("plugin/trigger"));
    std::filesystem::copy_file(IntruderPath(), decoy.File("plugin/trigger/TestTrigger.dll"));
    platform::ScopedWorkingDirectory inDecoy(decoy.Path());
    PluginTriggerManager triggers{FixedFolder(AppDir())};
    EXPECT_EQ(triggers.Folder(), AppDir() + "/plugin/trigger/");
    EXPECT_EQ(triggers.Locate("TestTrigger"), AppDir() + "/plugin/trigger/TestTrigger.dll");
    EXPECT_NE(triggers.CreaTriggerPlugin("TestTrigger"), nullptr);
}

TEST(PluginNames, AnUpperCaseDllOfAPostProcessorIsCreatedAsItIsListed) {
    PluginProcessorManager processors{FixedFolder(AppDir())};
    processors.LoadPlugin();
    EXPECT_EQ(processors.Locate("Upper"), AppDir() + "/plugin/postprocessor/Upper.DLL");
    EXPECT_NE(processors.CreaProcessorPlugin("Upper"), nullptr);
    PluginBoardManager boards{FixedFolder(AppDir())};
    EXPECT_EQ(boards.Locate("Upper"), "");  // boards take ".dll" alone
}

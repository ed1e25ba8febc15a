// The check a runtime makes of a received project before it answers: whole projects pass,
// anything it could not open as it was saved is named, and the check touches nothing else.
#include <gtest/gtest.h>

#include "SavedSite.h"
#include "TestSupport.h"
#include "core/Project.h"
#include "core/ProjectCheck.h"
#include "core/ProjectFile.h"
#include "platform/FileSystem.h"

namespace {

bool Mentions(const std::vector<std::string>& problems, const std::string& fragment) {
    for (const auto& problem : problems)
        if (problem.find(fragment) != std::string::npos)
            return true;
    return false;
}

}  // namespace

TEST(ProjectCheck, ASavedProjectPassesAndTheCheckChangesNothingAroundIt) {
    TempDir folder;
    SaveSite(folder.Path(), "site", "Checked");
    const std::string before = platform::GetWorkingDirectory();
    LogCapture log;
    EXPECT_EQ(CheckProject(folder.Path(), "site.tlr", AppDir()), std::vector<std::string>{});
    EXPECT_EQ(platform::GetWorkingDirectory(), before);
    EXPECT_TRUE(log.Messages().empty());  // a check reports once, through its answer
}

TEST(ProjectCheck, NamesAMissingPluginADamagedOrEmptyFileAndAMissingOne) {
    TempDir folder;
    SaveSite(folder.Path(), "site", "Checked", "NoSuchReader");
    auto problems = CheckProject(folder.Path(), "site.tlr", AppDir());
    EXPECT_TRUE(Mentions(problems,
                         "plug-in NoSuchReader is not installed in " + AppDir() + "/plugin/lpr/"));

    SaveSite(folder.Path(), "site", "Checked");
    auto lanes = ReadFileBytes(folder.File("lanes.dat"));
    lanes.resize(lanes.size() - 3);
    WriteFileBytes(folder.File("lanes.dat"), lanes);
    WriteFileText(folder.File("boards.dat"), "");
    ::unlink(folder.File("triggers.dat").c_str());
    problems = CheckProject(folder.Path(), "site.tlr", AppDir());
    EXPECT_TRUE(Mentions(problems, "lanes.dat is damaged")) << ::testing::PrintToString(problems);
    EXPECT_TRUE(Mentions(problems, "boards.dat is damaged: no version"));
    EXPECT_TRUE(Mentions(problems, "triggers.dat is missing"));

    // An empty project file, as a block of empty sections brings, is no project.
    WriteFileText(folder.File("site.tlr"), "");
    EXPECT_TRUE(Mentions(CheckProject(folder.Path(), "site.tlr", AppDir()),
                         "the project file holds no project"));
    EXPECT_TRUE(Mentions(CheckProject(folder.Path(), "other.tlr", AppDir()),
                         "the project file cannot be read"));
}

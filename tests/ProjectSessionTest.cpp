#include <gtest/gtest.h>

#include <deque>

#include "TestSupport.h"
#include "core/Project.h"
#include "core/ProjectSession.h"
#include "corvane/CameraPlugin.h"
#include "platform/FileSystem.h"

namespace {

// Answers the flow's questions from a script (Yes when it runs out) and keeps its messages.
class ScriptedHost : public ProjectHost {
  public:
    std::deque<bool> answers;
    std::vector<std::string> questions;
    std::vector<std::string> messages;
    int refreshes = 0;
    bool AskYesNo(const std::string& question) override {
        questions.push_back(question);
        if (answers.empty())
            return true;
        const bool answer = answers.front();
        answers.pop_front();
        return answer;
    }
    void ShowMessage(const std::string& message) override { messages.push_back(message); }
    void RefreshLists() override { ++refreshes; }
};

class Sessions : public ::testing::Test {
  protected:
    Sessions() {
        project.appdir = AppDir();
        platform::SetWorkingDirectory(AppDir());
    }
    void AddComponents() {
        project.EditBracket([this] {
            Camera camera;
            camera.name = "Cam";
            camera.id = project.NewCameraId();
            {
                platform::ScopedWorkingDirectory inApp(project.appdir);
                camera.plugin = project.cameraplugins.CreateCamera("TestCamera");
            }
            project.cameras.Add(camera);
            Lane lane;
            lane.name = "L1";
            lane.id = project.NewLaneId();
            lane.camname = "Cam";
            project.lanes.Add(lane);
            project.AddBoard("IO", "TestBoard", "", project.NewBoardId());
        });
    }

    TempDir sites;
    Project project;
    ScriptedHost host;
    ProjectSession session{project, host};
};

}  // namespace

TEST_F(Sessions, AProjectMadeInOneRunOpensAgainInTheNext) {
    ASSERT_TRUE(session.NewProject(sites.Path(), "Depot"));
    EXPECT_EQ(project.prjopen, 1);
    EXPECT_EQ(platform::GetWorkingDirectory(), AppDir());
    project.place.placename = "North gate";
    AddComponents();
    session.SaveCurrent();
    host.answers = {true, false};  // close: yes; save changes: no (just saved)
    ASSERT_TRUE(session.CloseProject());
    EXPECT_EQ(project.prjopen, 0);
    EXPECT_TRUE(project.cameras.IsEmpty());
    EXPECT_EQ(project.selcamera, -1);

    Project next;
    next.appdir = AppDir();
    ProjectSession reopened(next, host);
    ASSERT_TRUE(reopened.LoadProject(sites.File("Depot/Depot.tlr")));
    EXPECT_EQ(next.prjname, "Depot");
    EXPECT_EQ(next.place.placename, "North gate");
    ASSERT_EQ(next.cameras.GetCount(), 1u);
    ASSERT_EQ(next.lanes.GetCount(), 1u);
    ASSERT_EQ(next.boards.GetCount(), 1u);
    EXPECT_NE(next.cameras[0].plugin, nullptr);
    EXPECT_EQ(next.selcamera, next.cameras[0].id);
    EXPECT_EQ(next.selroi, next.lanes[0].id);
    EXPECT_NE(next.boardthread, nullptr);
    EXPECT_EQ(platform::GetWorkingDirectory(), AppDir());
    next.StopBoardThread();
}

TEST_F(Sessions, NewNeverMergesIntoAnExistingFolder) {
    ASSERT_TRUE(platform::MakeDirectory(sites.File("Taken")));
    EXPECT_FALSE(session.NewProject(sites.Path(), "Taken"));
    EXPECT_EQ(host.messages, std::vector<std::string>({"Cannot create destination directory"}));
    EXPECT_EQ(project.prjopen, 0);
}

TEST_F(Sessions, OpeningLeavesTheFilesAsTheyAreAndASaveBringsThemUpToDate) {
    ASSERT_TRUE(platform::MakeDirectory(sites.File("Old")));
    const std::string old = "<PLACENAME>Yard<\\PLACENAME><PRJDIR>C:\\elsewhere\\<\\PRJDIR>";
    WriteFileText(sites.File("Old/Old.tlr"), old);
    ASSERT_TRUE(session.LoadProject(sites.File("Old/Old.tlr")));
    EXPECT_EQ(ReadFileText(sites.File("Old/Old.tlr")), old);
    EXPECT_FALSE(platform::FileExists(sites.File("Old/lanes.dat")));
    session.SaveCurrent();
    const std::string text = ReadFileText(sites.File("Old/Old.tlr"));
    EXPECT_NE(text.find("<USELOCALDB>1<\\USELOCALDB>"), std::string::npos);
    EXPECT_NE(text.find("<WHITELIST>No<\\WHITELIST>"), std::string::npos);
    EXPECT_NE(text.find("<PRJDIR>" + sites.File("Old/") + "<\\PRJDIR>"), std::string::npos);
    project.StopBoardThread();
}

TEST_F(Sessions, ExportWritesDefaultTlrWhateverTheProjectIsCalled) {
    ASSERT_TRUE(session.NewProject(sites.Path(), "Depot"));
    AddComponents();
    TempDir target;
    ASSERT_TRUE(session.ExportProject(target.Path()));
    EXPECT_TRUE(platform::FileExists(target.File("project/default.tlr")));
    EXPECT_TRUE(platform::FileExists(target.File("project/lanes.dat")));
    EXPECT_NE(ReadFileText(target.File("project/default.tlr")).find("<PRJNAME>Depot<\\PRJNAME>"),
              std::string::npos);
    // A second export asks before overwriting; No leaves it.
    host.answers = {false};
    EXPECT_FALSE(session.ExportProject(target.Path()));
    EXPECT_NE(host.questions.back().find("already exists, overwrite?"), std::string::npos);
    EXPECT_NE(project.boardthread, nullptr);  // work restarted either way
    project.StopBoardThread();
}

TEST_F(Sessions, ExportStopsTheWorkBeforeTheFolderIsChosenAndACancelStartsItAgain) {
    ASSERT_TRUE(session.NewProject(sites.Path(), "Depot"));
    AddComponents();
    bool stoppedWhenAsked = false;
    EXPECT_FALSE(session.ExportProject([&] {
        stoppedWhenAsked = project.boardthread == nullptr;
        return std::string();  // the operator cancels the folder dialog
    }));
    EXPECT_TRUE(stoppedWhenAsked);
    EXPECT_NE(project.boardthread, nullptr);
    EXPECT_TRUE(host.questions.empty());
    project.StopBoardThread();
}

TEST_F(Sessions, ImportReplacesComponentsButKeepsTheSiteIdentity) {
    ASSERT_TRUE(session.NewProject(sites.Path(), "Source"));
    project.place.placename = "Source site";
    project.place.placedbip = "10.9.9.9";
    AddComponents();
    TempDir target;
    ASSERT_TRUE(session.ExportProject(target.Path()));
    host.answers = {true, false};
    session.CloseProject();

    TempDir scratch;  // the import copies the component files into the working directory
    project.appdir = scratch.Path();
    ASSERT_TRUE(session.NewProject(sites.Path(), "Target"));
    project.place.placename = "Target site";
    project.appdir = AppDir();
    platform::SetWorkingDirectory(scratch.Path());
    ASSERT_TRUE(session.ImportProject(target.File("project/default.tlr")));
    EXPECT_EQ(project.place.placename, "Target site");
    EXPECT_EQ(project.place.placedbip, "10.9.9.9");
    EXPECT_EQ(project.cameras.GetCount(), 1u);
    EXPECT_EQ(project.lanes.GetCount(), 1u);
    EXPECT_FALSE(session.ImportProject(target.File("project/missing.tlr")));
    EXPECT_EQ(host.messages.back(), "Project file does not exist");
    project.StopBoardThread();
}

TEST_F(Sessions, ARelativeProjectPathIsTakenFromTheWorkingDirectoryAndGetsTheStockFiles) {
    TempDir app;
    WriteFileText(app.File("templates.xml"), "<TEMPLATES><\\TEMPLATES>\n");
    WriteFileText(app.File("countrycodes.txt"), "ITA 380\n");
    project.appdir = app.Path();
    platform::SetWorkingDirectory(app.Path());

    // A bare name is a file of the working directory, never one of the root folder.
    WriteFileText(app.File("site.tlr"), "<PROJECT>\n<PLACENAME>Bare<\\PLACENAME>\n<\\PROJECT>\n");
    ASSERT_TRUE(session.LoadProject("site.tlr"));
    EXPECT_EQ(project.prjdir, app.Path() + "/");
    EXPECT_EQ(project.place.placename, "Bare");
    EXPECT_FALSE(platform::FileExists("/site.tlr"));
    EXPECT_EQ(platform::GetWorkingDirectory(), app.Path());
    session.CloseProject();

    // A relative folder gets the stock files it lacks, in that folder.
    platform::MakeDirectory(app.File("dir"));
    WriteFileText(app.File("dir/x.tlr"), "<PROJECT>\n<\\PROJECT>\n");
    ASSERT_TRUE(session.LoadProject("dir/x.tlr"));
    EXPECT_EQ(project.prjdir, app.Path() + "/dir/");
    EXPECT_EQ(ReadFileText(app.File("dir/templates.xml")), "<TEMPLATES><\\TEMPLATES>\n");
    EXPECT_EQ(ReadFileText(app.File("dir/countrycodes.txt")), "ITA 380\n");
    EXPECT_EQ(ReadFileText(app.File("dir/x.tlr")),
              "<PROJECT>\n<\\PROJECT>\n");  // read, not written
    session.CloseProject();
}

TEST_F(Sessions, AProjectFileInCapitalsIsSavedUnderItsOwnName) {
    ASSERT_TRUE(platform::MakeDirectory(sites.File("Caps")));
    WriteFileText(sites.File("Caps/SITE.TLR"), "<PROJECT><PLACENAME>Caps<\\PLACENAME><\\PROJECT>");
    ASSERT_TRUE(session.LoadProject(sites.File("Caps/SITE.TLR")));
    project.place.placename = "Capitals";
    session.SaveCurrent();
    EXPECT_FALSE(platform::FileExists(sites.File("Caps/SITE.tlr")));
    EXPECT_NE(ReadFileText(sites.File("Caps/SITE.TLR")).find("Capitals"), std::string::npos);
    project.StopBoardThread();
}

#include <gtest/gtest.h>

#include "TestSupport.h"
#include "core/Project.h"
#include "core/ProjectFile.h"

TEST(ProjectFile, IsWrittenLineByLineInTheFixedOrder) {
    Project project;
    project.prjname = "Depot";
    project.prjdir = "/sites/Depot/";
    project.place.placeid = 12;
    project.place.placename = "Citt\xC3\xA0";
    project.place.placedbip = "10.1.1.1";
    project.place.placedbname = "LPR";
    project.place.placedbusername = "sa";
    project.place.placedbpassword = "p<w>";
    project.place.whitelist = true;
    EXPECT_EQ(
        ProjectFileText(project),
        "<PROJECT>\n<VERSION>1<\\VERSION>\n<PRJNAME>Depot<\\PRJNAME>\n"
        "<PRJDIR>/sites/Depot/<\\PRJDIR>\n<PLACEID>12<\\PLACEID>\n"
        "<PLACENAME>Citt\xC3\xA0<\\PLACENAME>\n<PLACEDBIP>10.1.1.1<\\PLACEDBIP>\n"
        "<PLACEDBNAME>LPR<\\PLACEDBNAME>\n<PLACEDBUSERNAME>sa<\\PLACEDBUSERNAME>\n"
        "<PLACEDBPASSWORD>p<w><\\PLACEDBPASSWORD>\n<USELOCALDB>1<\\USELOCALDB>\n"
        "<SYNCROTIME>5<\\SYNCROTIME>\n<DBSTORAGE>5<\\DBSTORAGE>\n<WHITELIST>Yes<\\WHITELIST>\n"
        "<\\PROJECT>\n");
}

TEST(ProjectFile, KeysAreFoundAnywhereInAnyOrder) {
    Project project;
    ParseProjectSettings(
        "<DBSTORAGE>9<\\DBSTORAGE><PLACENAME>North<\\PLACENAME><PLACEID>3"
        "<\\PLACEID><WHITELIST>Yes<\\WHITELIST>",
        project);
    EXPECT_EQ(project.place.placename, "North");
    EXPECT_EQ(project.place.placeid, 3);
    EXPECT_EQ(project.place.dbstorage, 9);
    EXPECT_TRUE(project.place.whitelist);
}

TEST(ProjectFile, AbsentKeysKeepTheirValueOrTakeTheirDefault) {
    Project project;
    project.place.placename = "Kept";
    project.place.uselocaldb = 0;
    project.place.syncrotime = 60;
    project.place.whitelist = true;
    ParseProjectSettings("<PROJECT>\n<PLACEID>4<\\PLACEID>\n<\\PROJECT>\n", project);
    EXPECT_EQ(project.place.placename, "Kept");
    EXPECT_EQ(project.place.uselocaldb, 1);
    EXPECT_EQ(project.place.syncrotime, 5);
    EXPECT_EQ(project.place.dbstorage, 5);
    EXPECT_FALSE(project.place.whitelist);
}

TEST(ProjectFile, ValuesAreNotEscapedAndWhitelistIsTrueOnlyForYes) {
    Project project;
    ParseProjectSettings("<PLACENAME>A<\\PLACENAME>B<\\PLACENAME><WHITELIST>yes<\\WHITELIST>",
                         project);
    EXPECT_EQ(project.place.placename, "A");
    EXPECT_FALSE(project.place.whitelist);
    ParseProjectSettings("<\\PLACEDBIP>x<PLACEDBIP>1.2.3.4", project);  // closing before opening
    EXPECT_EQ(project.place.placedbip, "");
}

TEST(ProjectFile, NonAsciiTextSurvivesASaveAndALoad) {
    TempDir folder;
    Project project;
    project.place.placedbpassword = "p\xC3\xA4ss\xE2\x82\xAC";
    project.place.placename = "\xC5\x81\xC3\xB3\x64\xC5\xBA";
    ASSERT_TRUE(WriteProjectFile(folder.File("x.tlr"), project));
    Project loaded;
    ASSERT_TRUE(LoadProjectSettings(folder.File("x.tlr"), loaded));
    EXPECT_EQ(loaded.place.placedbpassword, project.place.placedbpassword);
    EXPECT_EQ(loaded.place.placename, project.place.placename);
    // A file that an editor saved in the 8-bit code page still reads with its letters.
    WriteFileText(folder.File("ansi.tlr"), "<PLACENAME>Citt\xE0<\\PLACENAME>");
    ASSERT_TRUE(LoadProjectSettings(folder.File("ansi.tlr"), loaded));
    EXPECT_EQ(loaded.place.placename, "Citt\xC3\xA0");
    EXPECT_FALSE(LoadProjectSettings(folder.File("missing.tlr"), loaded));
}

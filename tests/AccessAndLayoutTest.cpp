#include <gtest/gtest.h>

#include "TestSupport.h"
#include "access/AccessStore.h"
#include "core/LayoutFile.h"
#include "core/Project.h"

TEST(AccessStore, DefaultsStandUntilTheStoreIsRead) {
    TempDir folder;
    Project project;
    SetAccessDefaults(project);
    LoadAccess(project, folder.File("apar.dat"));
    EXPECT_EQ(project.username, "steer");
    EXPECT_EQ(project.password, "gatekeep");
    EXPECT_EQ(project.accessmode, 1);
    EXPECT_EQ(project.timeout, 1);
}

TEST(AccessStore, IsWrittenByteForByteAndReadBack) {
    TempDir folder;
    Project project;
    project.username = "admin";
    project.password = "S3cr\xC3\xA9t";
    project.accessmode = 0;
    project.timeout = 4;
    SaveAccess(project, folder.File("apar.dat"));
    EXPECT_EQ(ReadFileBytes(folder.File("apar.dat")),
              Bytes().Int(5).Str("admin").Str("S3cr\xE9t").Int(0).Int(4).Data());
    Project loaded;
    SetAccessDefaults(loaded);
    LoadAccess(loaded, folder.File("apar.dat"));
    EXPECT_EQ(loaded.password, project.password);
    EXPECT_EQ(loaded.accessmode, 0);
    EXPECT_EQ(loaded.timeout, 4);
}

TEST(AccessStore, ADamagedStoreKeepsWhatWasWholeAndSaysSo) {
    TempDir folder;
    WriteFileBytes(folder.File("apar.dat"), Bytes().Int(5).Str("admin").Int(1000).Data());
    Project project;
    SetAccessDefaults(project);
    LogCapture log;
    LoadAccess(project, folder.File("apar.dat"));
    EXPECT_EQ(project.username, "admin");
    EXPECT_EQ(project.password, "gatekeep");
    EXPECT_TRUE(log.Contains("apar.dat is damaged"));
}

TEST(LayoutFile, CarriesGeometryAndPerspective) {
    TempDir folder;
    WindowLayout layout;
    layout.x = -5;
    layout.y = 40;
    layout.width = 1024;
    layout.height = 700;
    layout.perspective = "layout2|name=Sources;state=2";
    ASSERT_TRUE(SaveLayout(folder.File("layout.ini"), layout));
    EXPECT_EQ(
        ReadFileBytes(folder.File("layout.ini")),
        Bytes().Int(-5).Int(40).Int(1024).Int(700).Str("layout2|name=Sources;state=2").Data());
    const auto loaded = LoadLayout(folder.File("layout.ini"));
    ASSERT_TRUE(loaded.has_value());
    EXPECT_EQ(loaded->x, -5);
    EXPECT_EQ(loaded->perspective, layout.perspective);
}

TEST(LayoutFile, ASmallSizeIsCorrectedInItsOwnDimensionOnly) {
    TempDir folder;
    WriteFileBytes(folder.File("layout.ini"),
                   Bytes().Int(30).Int(60).Int(99).Int(500).Str("").Data());
    auto layout = LoadLayout(folder.File("layout.ini"));
    ASSERT_TRUE(layout.has_value());
    EXPECT_EQ(layout->x, 0);
    EXPECT_EQ(layout->width, 400);
    EXPECT_EQ(layout->y, 60);
    EXPECT_EQ(layout->height, 500);
    EXPECT_FALSE(LoadLayout(folder.File("missing.ini")).has_value());
}

TEST(LayoutFile, ADamagedPerspectiveIsDroppedButTheGeometryKept) {
    TempDir folder;
    WriteFileBytes(folder.File("layout.ini"),
                   Bytes().Int(1).Int(2).Int(300).Int(200).Int(1 << 30).Data());
    LogCapture log;
    auto layout = LoadLayout(folder.File("layout.ini"));
    ASSERT_TRUE(layout.has_value());
    EXPECT_EQ(layout->width, 300);
    EXPECT_EQ(layout->perspective, "");
    EXPECT_TRUE(log.Contains("layout.ini is damaged"));
}

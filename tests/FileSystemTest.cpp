// Saving a file: a failed write never leaves half a file, and a save keeps what the operator set
// on the file (links, permissions, owner) and leaves alone a file nobody may write.
#include <sys/stat.h>
#include <unistd.h>

#include <gtest/gtest.h>

#include "TestSupport.h"
#include "platform/FileSystem.h"

namespace {

struct stat StatOf(const std::string& path) {
    struct stat info {};
    ::lstat(path.c_str(), &info);
    return info;
}

}  // namespace

TEST(WriteWholeFile, KeepsPermissionsOwnerAndSymbolicLinks) {
    TempDir dir;
    const std::string file = dir.File("lanes.dat");
    WriteFileText(file, "old");
    ::chmod(file.c_str(), 0640);
    const bool root = ::geteuid() == 0;
    if (root) {
        ASSERT_EQ(::chown(file.c_str(), 1234, 4321), 0);
    }
    ASSERT_TRUE(platform::WriteWholeFile(file, std::string("new")));
    EXPECT_EQ(ReadFileText(file), "new");
    EXPECT_EQ(StatOf(file).st_mode & 07777, 0640u);
    if (root) {
        EXPECT_EQ(StatOf(file).st_uid, 1234u);
        EXPECT_EQ(StatOf(file).st_gid, 4321u);
    }

    // A project file kept elsewhere and linked into the project folder stays linked.
    platform::MakeDirectory(dir.File("shared"));
    WriteFileText(dir.File("shared/site.tlr"), "v1");
    ASSERT_EQ(::symlink("shared/site.tlr", dir.File("site.tlr").c_str()), 0);
    ASSERT_TRUE(platform::WriteWholeFile(dir.File("site.tlr"), std::string("v2")));
    EXPECT_TRUE(S_ISLNK(StatOf(dir.File("site.tlr")).st_mode));
    EXPECT_EQ(ReadFileText(dir.File("shared/site.tlr")), "v2");
    EXPECT_FALSE(platform::FileExists(dir.File("shared/site.tlr.tmp")));
}

TEST(WriteWholeFile, RefusesAReadOnlyFileAndLeavesItAsItWas) {
    TempDir dir;
    const std::string file = dir.File("cameras.dat");
    WriteFileText(file, "kept");
    ::chmod(file.c_str(), 0444);
    EXPECT_FALSE(platform::WriteWholeFile(file, std::string("lost")));
    EXPECT_EQ(ReadFileText(file), "kept");
    EXPECT_EQ(StatOf(file).st_mode & 07777, 0444u);
    // A folder in the file's place is no file to replace.
    platform::MakeDirectory(dir.File("boards.dat"));
    EXPECT_FALSE(platform::WriteWholeFile(dir.File("boards.dat"), std::string("x")));
    EXPECT_TRUE(platform::DirectoryExists(dir.File("boards.dat")));
}

TEST(WriteWholeFile, ANewFileIsMadeAndAMissingFolderFailsCleanly) {
    TempDir dir;
    EXPECT_TRUE(platform::WriteWholeFile(dir.File("new.dat"), std::string("abc")));
    EXPECT_EQ(ReadFileText(dir.File("new.dat")), "abc");
    EXPECT_FALSE(platform::WriteWholeFile(dir.File("missing/new.dat"), std::string("abc")));
}

TEST(AbsolutePath, FoldsTheWorkingDirectoryAndDots) {
    TempDir dir;
    platform::ScopedWorkingDirectory in(dir.Path());
    EXPECT_EQ(platform::AbsolutePath("site.tlr"), dir.Path() + "/site.tlr");
    EXPECT_EQ(platform::AbsolutePath("./a/../b/x.tlr"), dir.Path() + "/b/x.tlr");
    EXPECT_EQ(platform::AbsolutePath("/etc/x"), "/etc/x");
}

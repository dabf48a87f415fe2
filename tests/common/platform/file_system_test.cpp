// Tests of paths and recursive removal.

#include "common/platform/file_system.h"

#include <gtest/gtest.h>

#include <sys/stat.h>
#include <unistd.h>

#include "common/load_string.h"
#include "tests/temp_directory.h"

namespace tarquil {

namespace {

TEST(FileSystem, PathsAreJoinedWithOneSlash) {
    EXPECT_EQ(concat_paths("", "x"), "x");
    EXPECT_EQ(concat_paths("d", "x"), "d/x");
    EXPECT_EQ(concat_paths("d/", "x"), "d/x");
    EXPECT_EQ(concat_paths("/", "x"), "/x");
}

TEST(FileSystem, RemovalTakesTheWholeTreeAndNothingBehindALink) {
    const TempDirectory directory;
    const std::string tree = directory.path("tree");
    ASSERT_EQ(mkdir(tree.c_str(), 0700), 0);
    ASSERT_EQ(mkdir((tree + "/inner").c_str(), 0700), 0);
    ASSERT_EQ(mkdir(directory.path("kept").c_str(), 0700), 0);
    for (const char* file : {"tree/a", "tree/inner/.hidden", "kept/file"})
        ASSERT_EQ(save_file_to_string(directory.path(file), "text"), 0);
    ASSERT_EQ(symlink("../kept", (tree + "/link").c_str()), 0);
    ASSERT_EQ(symlink("missing", (tree + "/dangling").c_str()), 0);
    EXPECT_EQ(recursive_remove(tree), 0);
    EXPECT_FALSE(is_directory(tree));
    EXPECT_TRUE(is_regular_file(directory.path("kept/file")));
    EXPECT_EQ(recursive_remove(directory.path("kept/file")), 0);
    EXPECT_FALSE(is_regular_file(directory.path("kept/file")));
    EXPECT_EQ(recursive_remove(directory.path("missing")), 0);
}

} // namespace

} // namespace tarquil

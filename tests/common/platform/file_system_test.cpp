// Tests of paths, temporary directories, directory walking and recursive removal.

#include "common/platform/file_system.h"

#include <gtest/gtest.h>

#include <sys/stat.h>
#include <unistd.h>

#include <set>

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

TEST(FileSystem, TheDirectoryEndsAtTheLastSlash) {
    unsigned pos = 0;
    EXPECT_EQ(get_directory_from_filename("/a/b/c", &pos), "/a/b/");
    EXPECT_EQ(pos, 4U);
    EXPECT_EQ(get_directory_from_filename("bare", &pos), "./");
    EXPECT_EQ(pos, ~0U);
    EXPECT_EQ(get_directory_from_filename("/bare"), "/");
}

TEST(FileSystem, TemporaryDirectoriesAreFreshAndShareTheirName) {
    const char* first = mktempdir();
    ASSERT_NE(first, nullptr);
    const std::string first_name = first;
    EXPECT_EQ(first_name.compare(0, 8, "/tmp/TqL"), 0);
    EXPECT_TRUE(is_directory(first_name));
    EXPECT_FALSE(is_regular_file(first_name));
    const char* second = mktempdir();
    EXPECT_EQ(second, first);
    EXPECT_NE(second, first_name);
    recursive_remove(first_name);
    recursive_remove(second);
    EXPECT_FALSE(is_directory(first_name));
}

TEST(FileSystem, AWalkStartsWithTheDotAndSeesEveryName) {
    const TempDirectory directory;
    ASSERT_EQ(save_file_to_string(directory.path("file"), ""), 0);
    DIR* handle = nullptr;
    dirent* entry = nullptr;
    EXPECT_STREQ(find_first_file(directory.path(), handle, entry), ".");
    std::set<std::string> names;
    while (const char* name = find_next_file(handle, entry))
        names.insert(name);
    find_close(handle);
    EXPECT_TRUE(names.count("file") == 1);
    EXPECT_EQ(find_first_file(directory.path("missing"), handle, entry), nullptr);
    EXPECT_DEATH(find_close(handle), "handle != FS_INVALID_HANDLE");
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

// Tests of files that are replaced as a whole.

#include "common/platform/atomic_file.h"

#include <gtest/gtest.h>

#include <fcntl.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <functional>

#include "common/load_string.h"
#include "tests/support/file_size_limit.h"
#include "tests/support/files.h"
#include "tests/temp_directory.h"

namespace {

std::function<void(int)> flush_watcher;

} // namespace

// Stands before the system's.
extern "C" int fsync(int descriptor) {
    if (flush_watcher)
        flush_watcher(descriptor);
    return int(syscall(SYS_fsync, descriptor));
}

namespace tarquil {

namespace {

// A folder with one file in it.
class AtomicFileTest : public testing::Test {
  protected:
    void SetUp() override { ASSERT_EQ(save_file_to_string(path, "old"), 0); }
    // Nothing else is in the folder.
    void expect_file(const std::string& text) {
        EXPECT_EQ(file_text(path), text);
        EXPECT_EQ(names_in(directory.path()), std::set<std::string>{"file"});
    }

    const TempDirectory directory;
    const std::string path = directory.path("file");
};

TEST_F(AtomicFileTest, OnlyACommitChangesAnything) {
    { EXPECT_TRUE(AtomicFile().open(path)); }
    { EXPECT_TRUE(AtomicFile().open(directory.path("new"))); }
    expect_file("old");
    AtomicFile file;
    ASSERT_TRUE(file.open(path));
    EXPECT_EQ(file_text(path), "old");
    EXPECT_TRUE(file.commit("new"));
    expect_file("new");
}

TEST_F(AtomicFileTest, AFailedWriteKeepsTheOldFile) {
    {
        const FileSizeLimit limit(1000);
        EXPECT_EQ(save_file_to_string(path, std::string(5000, 'x')), 2);
        EXPECT_EQ(save_file_to_string(directory.path("other"), std::string(5000, 'x')), 2);
    }
    expect_file("old");
}

TEST_F(AtomicFileTest, PermissionsAndLinksStay) {
    ASSERT_EQ(chmod(path.c_str(), 0640), 0);
    ASSERT_EQ(symlink("file", directory.path("link").c_str()), 0);
    ASSERT_EQ(save_file_to_string(directory.path("link"), "new"), 0);
    struct stat info {};
    ASSERT_EQ(lstat(directory.path("link").c_str(), &info), 0);
    EXPECT_TRUE(S_ISLNK(info.st_mode));
    ASSERT_EQ(stat(path.c_str(), &info), 0);
    EXPECT_EQ(info.st_mode & 0777, 0640U);
    EXPECT_EQ(file_text(path), "new");
}

TEST_F(AtomicFileTest, ANewFileHasThePermissionsOfAnyOther) {
    const mode_t mask = umask(027);
    EXPECT_EQ(save_file_to_string(directory.path("new"), "text"), 0);
    umask(mask);
    struct stat info {};
    ASSERT_EQ(stat(directory.path("new").c_str(), &info), 0);
    EXPECT_EQ(info.st_mode & 0777, 0640U);
}

// While an object lives, a user whom permissions bind.
class OrdinaryUser {
  public:
    OrdinaryUser() {
        if (before == 0)
            good = seteuid(NOBODY) == 0;
    }
    OrdinaryUser(const OrdinaryUser&) = delete;
    OrdinaryUser& operator=(const OrdinaryUser&) = delete;
    ~OrdinaryUser() { good = good && seteuid(before) == 0; }

  private:
    static constexpr uid_t NOBODY = 65534;
    uid_t before = geteuid();
    bool good = true;
};

TEST(AtomicFile, AFileThatCannotBeReplacedIsOverwritten) {
    for (const mode_t folder_mode : {0555U, 01777U}) {
        const TempDirectory directory;
        const std::string path = directory.path("file");
        ASSERT_EQ(save_file_to_string(path, "the old contents"), 0);
        ASSERT_EQ(chmod(path.c_str(), 0666), 0);
        ASSERT_EQ(chmod(directory.path().c_str(), folder_mode), 0);
        struct stat before {};
        ASSERT_EQ(stat(path.c_str(), &before), 0);
        {
            const OrdinaryUser user;
            AtomicFile file;
            ASSERT_TRUE(file.open(path));
            EXPECT_EQ(file.is_in_place(), folder_mode == 0555U);
            EXPECT_FALSE(file.is_direct());
            EXPECT_EQ(file_text(path), "the old contents");
            EXPECT_TRUE(file.commit("new"));
            EXPECT_EQ(file_text(path), "new");
            EXPECT_EQ(save_file_to_string(path, std::string(200000, 'x')), 0);
            EXPECT_FALSE(AtomicFile().open(directory.path("missing/other")));
        }
        EXPECT_EQ(file_text(path), std::string(200000, 'x'));
        EXPECT_EQ(names_in(directory.path()), std::set<std::string>{"file"});
        struct stat after {};
        ASSERT_EQ(stat(path.c_str(), &after), 0);
        // In its owner's folder a user without special rights may rename.
        if (geteuid() == 0 || folder_mode == 0555U) {
            EXPECT_EQ(after.st_ino, before.st_ino);
        }
    }
}

TEST_F(AtomicFileTest, TheDataAndThenItsNameAreFlushed) {
    std::vector<std::string> seen;
    flush_watcher = [&](int descriptor) {
        struct stat info {};
        fstat(descriptor, &info);
        seen.push_back(S_ISDIR(info.st_mode)
                           ? "folder, " + file_text(path)
                           : std::to_string(info.st_size) + ", " + file_text(path));
    };
    EXPECT_EQ(save_file_to_string(path, "newer"), 0);
    EXPECT_EQ(seen, (std::vector<std::string>{"5, old", "folder, newer"}));
    seen.clear();
    AtomicFile file;
    EXPECT_TRUE(file.open(path) && file.commit("x", Durability::UNFLUSHED));
    EXPECT_TRUE(seen.empty());
    flush_watcher = nullptr;
}

TEST_F(AtomicFileTest, APipeIsWrittenDirectly) {
    const std::string pipe = directory.path("pipe");
    ASSERT_EQ(mkfifo(pipe.c_str(), 0600), 0);
    const int reader = open(pipe.c_str(), O_RDONLY | O_NONBLOCK);
    ASSERT_GE(reader, 0);
    EXPECT_EQ(save_file_to_string(pipe, "text"), 0);
    char buffer[16];
    EXPECT_EQ(read(reader, buffer, sizeof(buffer)), 4);
    close(reader);
}

} // namespace

} // namespace tarquil

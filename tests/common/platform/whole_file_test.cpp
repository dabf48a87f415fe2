// Tests of the reasons that people get when a file cannot be written.

#include "common/platform/whole_file.h"

#include <gtest/gtest.h>

#include <cerrno>

#include "tests/support/files.h"
#include "tests/temp_directory.h"

namespace tarquil {

namespace {

TEST(WholeFile, SaysWhatStandsInItsWay) {
    const TempDirectory directory;
    const std::string file = directory.path("file");
    EXPECT_EQ(write_whole_file(file, "text"), "");
    EXPECT_EQ(file_text(file), "text");
    const std::pair<std::string, std::string> cases[] = {
        {directory.path("none/file"), "no such folder"},
        {file + "/below", "no such folder"},
        {directory.path(), "there is a folder of that name"},
        {directory.path(std::string(300, 'x')), "the name is too long"},
        {"/dev/full", "no space left"},
        {"", "no such folder"},
    };
    for (const auto& [path, reason] : cases)
        EXPECT_EQ(write_whole_file(path, "text"), path + ": cannot be written: " + reason);
}

// The superuser may write everywhere, so these cannot be met in every run.
TEST(WholeFile, TellsAFolderThatIsReadOnlyFromAFile) {
    const TempDirectory directory;
    save_file_to_string(directory.path("file"), "");
    EXPECT_EQ(explain_write_error(directory.path("file"), EACCES), "read-only file");
    EXPECT_EQ(explain_write_error(directory.path("new"), EACCES), "read-only folder");
    EXPECT_EQ(explain_write_error(directory.path("new"), EROFS), "read-only disk");
}

} // namespace

} // namespace tarquil

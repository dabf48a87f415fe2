// Tests of writing key/value text into memory and files.

#include "instrument/text_file_writer.h"

#include <gtest/gtest.h>

#include "common/load_string.h"
#include "tests/temp_directory.h"

namespace tarquil {

namespace {

TEST(TextFileWriter, EachValueIsOneLine) {
    TextFileMemoryWriter writer;
    writer.write_str("name", "a b");
    writer.write_float("x", 0.5F);
    writer.write_float("large", -0x1p127F);
    writer.write_int("n", -12);
    EXPECT_EQ(writer.get_string(), "name = a b\nx = 0.500000\n"
                                   "large = -170141183460469231731687303715884105728.000000\n"
                                   "n = -12\n");
}

TEST(TextFileWriter, TheFileChangesWhenItIsClosed) {
    const TempDirectory directory;
    const std::string path = directory.path("file");
    ASSERT_EQ(save_file_to_string(path, "old"), 0);
    std::string text;
    {
        TextFileWriter writer;
        EXPECT_EQ(writer.close(), 0);
        ASSERT_FALSE(writer.open(path));
        writer.write_int("a", 1);
        ASSERT_EQ(load_file_to_string(path, text), 0);
        EXPECT_EQ(text, "old");
    }
    ASSERT_EQ(load_file_to_string(path, text), 0);
    EXPECT_EQ(text, "a = 1\n");
}

TEST(TextFileWriter, FailuresAreReported) {
    const TempDirectory directory;
    TextFileWriter writer;
    EXPECT_TRUE(writer.open(directory.path("missing/file")));
    EXPECT_FALSE(writer.open("/dev/full"));
    writer.write_int("a", 1);
    EXPECT_EQ(writer.close(), 2);
    ASSERT_FALSE(writer.open(directory.path("file")));
    EXPECT_DEATH(writer.open(directory.path("other")), "!outfile");
    EXPECT_EQ(writer.close(), 0);
}

} // namespace

} // namespace tarquil

// Tests of hexadecimal text, and of files that cannot be read or written.

#include "common/load_string.h"

#include <gtest/gtest.h>

#include <sys/stat.h>
#include <unistd.h>

#include <cstdio>

#include "tests/temp_directory.h"

namespace tarquil {

namespace {

TEST(LoadString, EveryPairIsReadAsScanfReadsIt) {
    for (int i = 0; i < 0x10000; i++) {
        const std::string pair{char(i >> 8), char(i)};
        unsigned expected = 0;
        const bool valid = std::sscanf(pair.c_str(), "%x", &expected) == 1; // NOLINT(cert-err34-c)
        std::string out;
        ASSERT_EQ(hex2str(pair, out), valid ? 0 : 3) << i;
        if (valid) {
            ASSERT_EQ(out, std::string(1, char(expected))) << i;
        }
    }
}

TEST(LoadString, WhatCannotBeReadGivesItsCode) {
    const TempDirectory directory;
    std::string out = "old contents";
    EXPECT_EQ(load_file_to_string(directory.path("missing"), out), 1);
    EXPECT_EQ(out, "");
    EXPECT_EQ(load_file_to_string(directory.path(), out), 2);
    EXPECT_EQ(load_file_to_string("/dev/zero", out), 2);
}

TEST(LoadString, OnlyRegularFilesAreReadForAFilesName) {
    const TempDirectory directory;
    ASSERT_EQ(mkfifo(directory.path("pipe").c_str(), 0600), 0);
    ASSERT_EQ(symlink("/dev/zero", directory.path("link").c_str()), 0);
    std::string out;
    for (const std::string& path :
         {directory.path(), directory.path("pipe"), directory.path("link"),
          std::string("/dev/zero"), std::string("/dev/null"), directory.path("missing"),
          std::string()})
        EXPECT_EQ(load_regular_file_to_string(path, out), 1) << path;
}

TEST(LoadString, WhatCannotBeWrittenGivesItsCode) {
    const TempDirectory directory;
    EXPECT_EQ(save_file_to_string("/dev/full", "text"), 2);
    EXPECT_EQ(save_file_to_string("/dev/null", "text"), 0);
    EXPECT_EQ(save_file_to_string(directory.path(), "text"), 1);
    EXPECT_EQ(save_file_to_string(directory.path("missing/file"), "text"), 1);
    EXPECT_EQ(save_file_to_string("", "text"), 1);
}

} // namespace

} // namespace tarquil

// Tests of unpacking directory images, whole and damaged.

#include "common/directory_image.h"

#include <gtest/gtest.h>

#include <vector>

#include "common/load_string.h"
#include "common/platform/file_system.h"
#include "tests/temp_directory.h"

namespace tarquil {

namespace {

std::string header(const std::string& kind, std::string name, uint32_t size = 0) {
    name.resize(256, '\0');
    std::string bytes = kind + name;
    for (int shift = 24; shift >= 0; shift -= 8)
        bytes += char(size >> shift);
    return bytes;
}

std::string file_record(const std::string& name, const std::string& data) {
    return header("MFIL", name, uint32_t(data.size())) + data;
}

std::string good_image() {
    return "MVFS" + file_record("default.tqb", "bank") + header("MDIR", "samples") +
           header("MDIR", "samples/inner") +
           file_record("samples/inner/a b", std::string(70000, 'x'));
}

// What the image has at the path, without unpacking it.
std::string found(const std::string& image, const std::string& path) {
    return std::string(find_in_directory_image(image, path).value_or("(nothing)"));
}

class DirectoryImage : public testing::Test {
  protected:
    int unpack(const std::string& image) {
        // A copy of the exact size shows any read beyond the image to the address sanitizer.
        const std::vector<char> exact(image.begin(), image.end());
        return memory_to_directory(target(), exact.data(), int(exact.size()));
    }
    std::string target() { return directory.path("target"); }
    std::string contents(const std::string& name) {
        std::string text;
        return load_file_to_string(concat_paths(target(), name), text) == 0 ? text : "(none)";
    }
    void SetUp() override { ASSERT_EQ(unpack_parent(), 0); }

  private:
    int unpack_parent() {
        const std::string image = "MVFS" + header("MDIR", "target");
        return memory_to_directory(directory.path(), image.data(), int(image.size()));
    }

    TempDirectory directory;
};

TEST_F(DirectoryImage, UnpacksATree) {
    EXPECT_EQ(found(good_image(), "default.tqb"), "bank");
    EXPECT_EQ(found(good_image(), "samples/inner/a b"), std::string(70000, 'x'));
    EXPECT_EQ(found(good_image(), "samples"), "(nothing)");
    EXPECT_EQ(unpack(good_image()), 0);
    EXPECT_EQ(contents("default.tqb"), "bank");
    EXPECT_EQ(contents("samples/inner/a b"), std::string(70000, 'x'));
    EXPECT_EQ(unpack(good_image()), 0) << "directories may exist already";
    EXPECT_EQ(found("MVFS", "a"), "(nothing)");
    EXPECT_EQ(unpack("MVFS"), 0);
}

TEST_F(DirectoryImage, ErrorsHaveTheirCodes) {
    EXPECT_EQ(unpack(""), 4);
    EXPECT_EQ(unpack("MVF"), 4);
    EXPECT_EQ(unpack("MFIL"), 4);
    EXPECT_EQ(unpack("MVFS" + header("MXXX", "a")), 234);
    EXPECT_EQ(unpack("MVFS" + header("MDIR", "cut").substr(0, 4 + 6)), 1);
    EXPECT_EQ(unpack("MVFS" + header("MFIL", "a", 0x80000000) + "rest"), 43);
    EXPECT_EQ(unpack("MVFS" + file_record("missing/a", "x")), 1234);
    EXPECT_EQ(unpack("MVFS" + file_record("", "x")), 1234);
    EXPECT_EQ(unpack("MVFS" + file_record("empty", "")), 2734);
    EXPECT_EQ(contents("empty"), "");
}

TEST_F(DirectoryImage, NothingIsMadeOutsideTheTarget) {
    for (const std::string& name :
         {target() + "/absolute", std::string("../outside"), std::string("a/../../outside"),
          std::string(".."), std::string("a/.."), std::string(256, 'n')}) {
        EXPECT_EQ(unpack("MVFS" + file_record(name, "x")), 1234) << name;
        EXPECT_EQ(unpack("MVFS" + header("MDIR", name)), 0) << name;
        for (const std::string& record : {file_record(name, "x"), header("MDIR", name)})
            EXPECT_EQ(found("MVFS" + record + file_record("a", "x"), "a"), "(nothing)") << name;
    }
    EXPECT_FALSE(is_directory(target() + "/../outside"));
    EXPECT_FALSE(is_regular_file(target() + "/../outside"));
    EXPECT_FALSE(is_directory(target() + "/absolute"));
    EXPECT_EQ(unpack("MVFS" + file_record("..a", "x") + file_record("b..", "x")), 0);
}

TEST_F(DirectoryImage, OnlyWhatLiesBeforeTheEndOfTheWantedFileMatters) {
    const std::string before = "MVFS" + file_record("first", "1") + header("MDIR", "b");
    const std::string image = before + file_record("b/a", "four");
    for (size_t length = 0; length < image.size(); length++)
        ASSERT_EQ(found(image.substr(0, length), "b/a"), "(nothing)") << length;
    for (const std::string& behind :
         {std::string(), std::string(1, '\0'), std::string(4096, '\0'), std::string("MFIL"),
          header("MXXX", "x"), header("MFIL", "x", 9) + "short", header("MFIL", "b/a", 5) + "four",
          file_record("../x", "x")})
        EXPECT_EQ(found(image + behind, "b/a"), "four");
    for (const std::string& damage :
         {header("MXXX", "x"), file_record("../x", "x"), file_record("empty", ""),
          file_record("missing/x", "x"), file_record("b", "x"), header("MFIL", "x", 0x80000000)})
        EXPECT_EQ(found(before + damage + file_record("b/a", "four"), "b/a"), "(nothing)");
}

TEST_F(DirectoryImage, AFileLongerThanTheImageAsserts) {
    EXPECT_DEATH(unpack("MVFS" + header("MFIL", "a", 5) + "four"), "arrsize >= int\\(filesize\\)");
}

} // namespace

} // namespace tarquil

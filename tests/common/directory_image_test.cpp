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

bool is_sound(const std::string& image) {
    return directory_image_is_sound(image.data(), int(image.size()));
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
    EXPECT_TRUE(is_sound(good_image()));
    EXPECT_EQ(unpack(good_image()), 0);
    EXPECT_EQ(contents("default.tqb"), "bank");
    EXPECT_EQ(contents("samples/inner/a b"), std::string(70000, 'x'));
    EXPECT_EQ(unpack(good_image()), 0) << "directories may exist already";
    EXPECT_TRUE(is_sound("MVFS"));
    EXPECT_EQ(unpack("MVFS"), 0);
}

TEST_F(DirectoryImage, ErrorsHaveTheirCodes) {
    EXPECT_EQ(unpack(""), 4);
    EXPECT_EQ(unpack("MVF"), 4);
    EXPECT_EQ(unpack("MFIL"), 4);
    EXPECT_EQ(unpack("MVFS" + header("MXXX", "a")), 234);
    EXPECT_EQ(unpack("MVFS" + file_record("missing/a", "x")), 1234);
    EXPECT_EQ(unpack("MVFS" + file_record("", "x")), 1234);
    EXPECT_EQ(unpack("MVFS" + file_record("empty", "")), 2734);
    EXPECT_EQ(contents("empty"), "");
}

TEST_F(DirectoryImage, ACutHeaderCountsAsZeros) {
    const std::string directory_record = "MVFS" + header("MDIR", "made");
    EXPECT_EQ(unpack(directory_record.substr(0, 4 + 4 + 6)), 1);
    EXPECT_TRUE(is_directory(target() + "/made"));
    EXPECT_EQ(unpack("MVFSM"), 234);
}

TEST_F(DirectoryImage, ASizeBeyondThirtyOneBitsIsAShortWrite) {
    EXPECT_EQ(unpack("MVFS" + header("MFIL", "a", 0x80000000) + "rest"), 43);
    EXPECT_EQ(contents("a"), "rest");
    EXPECT_EQ(unpack("MVFS" + header("MFIL", "b", 0xFFFFFFFF)), 2734);
}

TEST_F(DirectoryImage, NothingIsMadeOutsideTheTarget) {
    for (const std::string& name :
         {target() + "/absolute", std::string("../outside"), std::string("a/../../outside"),
          std::string(".."), std::string("a/.."), std::string(256, 'n')}) {
        EXPECT_EQ(unpack("MVFS" + file_record(name, "x")), 1234) << name;
        EXPECT_EQ(unpack("MVFS" + header("MDIR", name)), 0) << name;
        EXPECT_FALSE(is_sound("MVFS" + file_record(name, "x"))) << name;
        EXPECT_FALSE(is_sound("MVFS" + header("MDIR", name))) << name;
    }
    EXPECT_FALSE(is_directory(target() + "/../outside"));
    EXPECT_FALSE(is_regular_file(target() + "/../outside"));
    EXPECT_FALSE(is_directory(target() + "/absolute"));
    EXPECT_EQ(unpack("MVFS" + file_record("..a", "x") + file_record("b..", "x")), 0);
}

TEST_F(DirectoryImage, EveryCutOfAnImageIsSeen) {
    const std::string image = "MVFS" + file_record("a", "four") + header("MDIR", "b");
    for (size_t length = 0; length < image.size(); length++) {
        const bool whole_records = length == 4 || length == 4 + 264 + 4;
        EXPECT_EQ(is_sound(image.substr(0, length)), whole_records) << length;
    }
    EXPECT_FALSE(is_sound(image + "x"));
    EXPECT_FALSE(is_sound("MVFS" + header("MFIL", "a", 0x80000000)));
}

TEST_F(DirectoryImage, AFileLongerThanTheImageAsserts) {
    EXPECT_DEATH(unpack("MVFS" + header("MFIL", "a", 5) + "four"), "arrsize >= int\\(filesize\\)");
}

} // namespace

} // namespace tarquil

// Tests of what the editor remembers.

#include "editor/model/editor_settings.h"

#include <gtest/gtest.h>

#include "common/load_string.h"
#include "tests/temp_directory.h"

namespace tarquil {

namespace {

TEST(EditorSettings, ComeBackAndSurviveADamagedFile) {
    const TempDirectory directory;
    const std::string path = directory.path("new/editor.conf");
    EXPECT_EQ(load_editor_settings(path).scale, 1.0);
    ASSERT_TRUE(save_editor_settings(path, {1.5, "/home/me/my sounds"}));
    EXPECT_EQ(load_editor_settings(path).scale, 1.5);
    EXPECT_EQ(load_editor_settings(path).folder, "/home/me/my sounds");
    for (const char* text : {"scale = 77\n", "scale = nan\n", "nonsense", "\0\0"}) {
        ASSERT_EQ(save_file_to_string(path, text), 0);
        EXPECT_EQ(load_editor_settings(path).scale, 1.0) << text;
    }
    EXPECT_FALSE(save_editor_settings("", {}));
}

} // namespace

} // namespace tarquil

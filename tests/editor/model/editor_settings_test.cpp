// Tests of what the editor remembers, and where.

#include "editor/model/editor_settings.h"

#include <gtest/gtest.h>

#include <cstdlib>

#include "common/load_string.h"
#include "tests/temp_directory.h"

namespace tarquil {

namespace {

TEST(EditorSettings, ComeBackAndSurviveADamagedFile) {
    const TempDirectory directory;
    const std::string path = directory.path("new/editor.conf");
    EXPECT_EQ(load_editor_settings(path).scale, 1.0);
    ASSERT_TRUE(save_editor_settings(path, {1.5, true, "/home/me/my sounds"}));
    EXPECT_EQ(load_editor_settings(path).scale, 1.5);
    EXPECT_EQ(load_editor_settings(path).folder, "/home/me/my sounds");
    for (const char* text : {"scale = 77\n", "scale = 3.01\n", "scale = 0.74\n", "scale = nan\n",
                             "nonsense", "\0\0"}) {
        ASSERT_EQ(save_file_to_string(path, text), 0);
        EXPECT_EQ(load_editor_settings(path).scale, 1.0) << text;
    }
    for (const double scale : {EditorSettings::MIN_SCALE, EditorSettings::MAX_SCALE}) {
        ASSERT_TRUE(save_editor_settings(path, {scale, true, ""}));
        EXPECT_EQ(load_editor_settings(path).scale, scale);
    }
    EXPECT_FALSE(save_editor_settings("", {}));
    for (const bool is_shown : {false, true}) {
        ASSERT_TRUE(save_editor_settings(path, {1.0, true, "", is_shown}));
        EXPECT_EQ(load_editor_settings(path).shows_keyboard, is_shown);
    }
    ASSERT_EQ(save_file_to_string(path, "scale = 1.0\n"), 0);
    EXPECT_TRUE(load_editor_settings(path).shows_keyboard);
}

TEST(EditorSettings, ASizeThatNobodyChoseIsNotKept) {
    const TempDirectory directory;
    const std::string path = directory.path("editor.conf");
    ASSERT_TRUE(save_editor_settings(path, {2.0, false, "", true, "light"}));
    const EditorSettings loaded = load_editor_settings(path);
    EXPECT_FALSE(loaded.is_scale_chosen);
    EXPECT_EQ(loaded.scale, 1.0);
    EXPECT_EQ(loaded.theme, "light");
}

TEST(EditorSettings, AFolderThatTheFileCannotHoldIsForgotten) {
    const TempDirectory directory;
    const std::string path = directory.path("editor.conf");
    for (const char* folder : {"", "/sounds #1", "/two\nlines"}) {
        ASSERT_TRUE(save_editor_settings(path, {1.5, true, folder}));
        EXPECT_EQ(load_editor_settings(path).folder, "");
        EXPECT_EQ(load_editor_settings(path).scale, 1.5);
    }
}

// As the variables are, for the length of a scope.
class Variable {
  public:
    Variable(const char* variable, const char* value) : name(variable) {
        const char* now = std::getenv(name);
        had = now != nullptr;
        before = had ? now : "";
        if (value != nullptr)
            setenv(name, value, 1);
        else
            unsetenv(name);
    }
    Variable(const Variable&) = delete;
    Variable& operator=(const Variable&) = delete;
    ~Variable() {
        if (had)
            setenv(name, before.c_str(), 1);
        else
            unsetenv(name);
    }

  private:
    const char* name;
    bool had = false;
    std::string before;
};

TEST(EditorSettings, LieAmongTheUsersOwn) {
    const Variable home("HOME", "/home/me");
    {
        const Variable config("XDG_CONFIG_HOME", "/config");
        EXPECT_EQ(editor_settings_path(), "/config/tarquil/editor.conf");
    }
    const Variable config("XDG_CONFIG_HOME", nullptr);
    EXPECT_EQ(editor_settings_path(), "/home/me/.config/tarquil/editor.conf");
    const Variable nobody("HOME", "");
    EXPECT_EQ(editor_settings_path(), "");
}

} // namespace

} // namespace tarquil

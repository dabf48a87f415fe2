// Renders of real songs: those of the package openttd-openmsx, where it is installed.
//
// Each must end, sound, and keep within what a sound file holds; short ones are rendered again and
// must come out the same.

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <filesystem>

#include "common/load_string.h"
#include "midi/smf/song_file.h"
#include "softsynth/parameters/constants.h"
#include "tests/tools/audio/read_sound.h"
#include "tests/tools/command_run.h"
#include "tools/render/tail.h"

namespace tarquil {

namespace {

constexpr const char* SONG_FOLDER = "/usr/share/games/openttd/baseset/openmsx";
constexpr uintmax_t SHORT_SONG_BYTES = 10000;

std::vector<std::string> find_songs() {
    std::vector<std::string> songs;
    std::error_code error;
    for (const auto& entry : std::filesystem::directory_iterator(SONG_FOLDER, error))
        if (entry.path().extension() == ".mid")
            songs.push_back(entry.path().filename().string());
    std::sort(songs.begin(), songs.end());
    return songs;
}

class Songs : public testing::TestWithParam<std::string> {};

TEST_P(Songs, Sounds) {
    const std::string song_path = std::string(SONG_FOLDER) + "/" + GetParam();
    const TempDirectory directory;
    const std::string path = directory.path("song.wav");
    const std::vector<std::string> command = {"render", "--bits", "float", song_path, path};
    const CommandRun run = run_command(command);
    ASSERT_EQ(run.status, 0) << run.errors;

    const Sound sound = read_sound(path);
    const sf_count_t song_end = load_song(song_path).end_time;
    EXPECT_GE(sound.info.frames, song_end + sf_count_t(SILENCE_SAMPLES));
    EXPECT_LE(sound.info.frames, song_end + sf_count_t(MAX_AUTO_TAIL));
    float peak = 0.0F;
    for (const float sample : sound.samples) {
        ASSERT_TRUE(std::isfinite(sample));
        peak = std::max(peak, std::fabs(sample));
    }
    EXPECT_GT(peak, 0.05F); // General MIDI's usual volume is 100 of 127
    EXPECT_LE(peak, 1.0F);

    if (std::filesystem::file_size(song_path) < SHORT_SONG_BYTES) {
        std::string first;
        std::string second;
        load_file_to_string(path, first);
        ASSERT_EQ(run_command(command).status, 0);
        load_file_to_string(path, second);
        EXPECT_TRUE(first == second);
    }
}

std::string test_name(const testing::TestParamInfo<std::string>& info) {
    std::string name = info.param.substr(0, info.param.find('.'));
    std::replace_if(
        name.begin(), name.end(), [](char c) { return std::isalnum(c) == 0; }, '_');
    return name;
}

GTEST_ALLOW_UNINSTANTIATED_PARAMETERIZED_TEST(Songs);
INSTANTIATE_TEST_SUITE_P(OpenMsx, Songs, testing::ValuesIn(find_songs()), test_name);

} // namespace

} // namespace tarquil

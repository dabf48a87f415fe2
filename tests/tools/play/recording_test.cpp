// Tests of what is kept of what a device plays.

#include "tools/play/recording.h"

#include <gtest/gtest.h>

#include <filesystem>

#include "common/failure.h"
#include "tests/temp_directory.h"
#include "tests/tools/audio/read_sound.h"

namespace tarquil {

namespace {

constexpr float LEFT[] = {0.5F, -0.25F, 0.125F};
constexpr float RIGHT[] = {-0.5F, 0.25F, 0.0F};

TEST(Recording, IsThereWhenItIsFinished) {
    const TempDirectory directory;
    const std::string path = directory.path("played.wav");
    {
        Recording left_unfinished(path, std::nullopt);
        left_unfinished.listener()(LEFT, RIGHT, 3);
    }
    EXPECT_TRUE(std::filesystem::is_empty(directory.path()));
    Recording recording(path, 48000);
    EXPECT_EQ(recording.get_rate(), 48000U);
    const Listener listener = recording.listener();
    listener(LEFT, RIGHT, 3);
    listener(RIGHT, LEFT, 1);
    EXPECT_TRUE(recording.finish());
    const Sound sound = read_sound(path);
    EXPECT_EQ(sound.info.samplerate, 48000);
    const std::vector<float> expected{0.5F, -0.5F, -0.25F, 0.25F, 0.125F, 0.0F, -0.5F, 0.5F};
    ASSERT_EQ(sound.samples.size(), expected.size());
    for (size_t i = 0; i < expected.size(); i++)
        EXPECT_NEAR(sound.samples[i], expected[i], 1e-6F) << i;
}

TEST(Recording, SaysWhatCannotBe) {
    EXPECT_THROW(Recording("/none/played.wav", std::nullopt), BadInput);
    EXPECT_THROW(Recording("played.opus", 44100), BadInput);
    Recording full("/dev/full", std::nullopt);
    full.listener()(LEFT, RIGHT, 3);
    EXPECT_THROW(full.finish(), BadInput);
}

} // namespace

} // namespace tarquil

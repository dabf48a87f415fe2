// Tests of where the sound after a song ends.

#include "tools/render/tail.h"

#include <gtest/gtest.h>

#include <vector>

namespace tarquil {

namespace {

constexpr uint32_t SONG_END = 1000;

// The length of a sound that stops, on one side only, at the sample `sound_end`.
uint32_t length_of(uint32_t sound_end, std::optional<uint32_t> tail_length, uint32_t block,
                   float level = 0.1F) {
    Tail tail(SONG_END, tail_length);
    uint32_t time = 0;
    while (time < tail.get_end()) {
        std::vector<float> frames(size_t(2) * block);
        for (uint32_t i = 0; i < block; i++)
            frames[2 * i + 1] = time + i < sound_end ? -level : 0.0F;
        time += tail.add(frames.data(), block, time);
    }
    return time;
}

TEST(Tail, EndsHalfASecondAfterTheLastSoundWhateverTheBlock) {
    for (const uint32_t block : {4U, 256U, 2048U}) {
        EXPECT_EQ(length_of(50000, std::nullopt, block), 50000 + SILENCE_SAMPLES) << block;
        EXPECT_EQ(length_of(0, std::nullopt, block), SONG_END + SILENCE_SAMPLES) << block;
        EXPECT_EQ(length_of(500, std::nullopt, block), SONG_END + SILENCE_SAMPLES) << block;
    }
}

TEST(Tail, EndsForASoundThatNeverEnds) {
    EXPECT_EQ(length_of(UINT32_MAX, std::nullopt, 2048), SONG_END + MAX_AUTO_TAIL);
}

TEST(Tail, HearsMinus90DbFs) {
    EXPECT_EQ(length_of(50000, std::nullopt, 256, 3.163e-5F), 50000 + SILENCE_SAMPLES);
    EXPECT_EQ(length_of(50000, std::nullopt, 256, 3.162e-5F), SONG_END + SILENCE_SAMPLES);
}

TEST(Tail, EndsWhenItIsTold) {
    EXPECT_EQ(length_of(50000, 0, 256), SONG_END);
    EXPECT_EQ(length_of(0, 100001, 256), SONG_END + 100001);
}

} // namespace

} // namespace tarquil

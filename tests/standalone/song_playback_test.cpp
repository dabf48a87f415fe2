// Tests of the frames on which a song's messages fall.

#include "standalone/song_playback.h"

#include <gmock/gmock.h>

#include <vector>

namespace tarquil {

namespace {

using testing::ElementsAre;

Song make_song(const std::vector<uint32_t>& times, uint32_t end_time) {
    Song song;
    for (const uint32_t time : times) {
        song.messages.push_back({.time = time, .bytes = {0x90, uint8_t(song.messages.size()), 1}});
    }
    song.end_time = end_time;
    return song;
}

RateRatio ratio_of(double rate) {
    return *RateRatio::of(rate);
}

// The device frames of all messages that fall into the next `frames`; the end counts.
std::vector<uint64_t> play(SongPlayback& playback, uint64_t frames, uint32_t block) {
    std::vector<uint64_t> places;
    for (uint64_t begin = 0; begin < frames; begin += block) {
        while (const auto due = playback.take(block - 1))
            places.push_back(begin + due->frame);
        playback.advance(block);
    }
    return places;
}

TEST(SongPlayback, GoesOnAtAnotherRate) {
    const Song song = make_song({0, 4410, 8820, 13230}, 17640);
    SongPlayback playback(song);
    playback.start(ratio_of(44100));
    EXPECT_THAT(play(playback, 4500, 100), ElementsAre(0, 4410));
    playback.start(ratio_of(88200)); // at sample 4500
    EXPECT_THAT(play(playback, 10000, 100), ElementsAre(8639));
}

TEST(SongPlayback, ExclusivesComeInTheirPlace) {
    Song song = make_song({10, 10, 10}, 10);
    song.exclusives.push_back({.time = 10, .position = 1, .bytes = {0xF0, 0x7E, 0xF7}});
    SongPlayback playback(song);
    playback.start(ratio_of(44100));
    std::vector<int> order;
    EXPECT_FALSE(playback.take(9).has_value());
    while (const auto due = playback.take(10))
        order.push_back(due->bytes.empty() ? -1 : due->bytes[0] == 0xF0 ? 100 : due->bytes[1]);
    EXPECT_THAT(order, ElementsAre(0, 100, 1, 2, -1));
}

} // namespace

} // namespace tarquil

// A player played by a sound device.

#include "standalone/device_player.h"

#include <algorithm>
#include <cmath>

#include "player/silence.h"
#include "player/song_tempo.h"

namespace tarquil {

bool DevicePlayer::activate(double rate) {
    const std::optional<RateRatio> ratio = RateRatio::of(rate);
    if (!ratio || !hosted.activate(rate))
        return false;
    if (playback)
        playback->start(*ratio);
    releases_keys = was_active;
    was_active = true;
    device_rate = rate;
    return true;
}

void DevicePlayer::begin_block(float* left, float* right, uint32_t frames) {
    block_left = left;
    block_right = right;
    block_frames = frames;
    hosted.begin_block(left, right, frames);
    if (releases_keys) {
        hosted.release_all(0);
        releases_keys = false;
    }
}

void DevicePlayer::play(std::span<const uint8_t> message, uint32_t frame) {
    play_song(frame);
    hosted.add_message(message, frame);
}

void DevicePlayer::end_block() {
    if (block_frames > 0)
        play_song(block_frames - 1);
    hosted.end_block();
    if (!playback)
        return;
    playback->advance(block_frames);
    if (playback->has_ended())
        listen_for_end();
}

void DevicePlayer::play_song(uint32_t last_frame) {
    while (playback) {
        const std::optional<SongPlayback::Due> due = playback->take(last_frame);
        if (!due)
            return;
        if (due->tempo != nullptr)
            hosted.set_tempo(host_tempo(*due->tempo), due->frame);
        else if (due->bytes.empty())
            hosted.release_all(due->frame);
        else
            hosted.add_message(due->bytes, due->frame);
    }
}

void DevicePlayer::listen_for_end() {
    const auto is_heard = [](float sample) { return std::fabs(sample) >= SILENCE_LEVEL; };
    const bool is_silent = std::none_of(block_left, block_left + block_frames, is_heard) &&
                           std::none_of(block_right, block_right + block_frames, is_heard);
    frames_behind_song += block_frames;
    silent_frames = is_silent ? silent_frames + block_frames : 0;
    if (silent_frames >= SILENCE_SECONDS * device_rate ||
        frames_behind_song >= MAX_RINGING_SECONDS * device_rate)
        finished = true;
}

} // namespace tarquil

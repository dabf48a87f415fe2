// A player played by a sound device: a song and live messages in, blocks out, nothing allocated.

#pragma once

#include <atomic>
#include <cstdint>
#include <optional>
#include <span>

#include "player/hosted_player.h"
#include "standalone/song_playback.h"

namespace tarquil {

class DevicePlayer {
  public:
    // What windows work on.
    Player& player() { return hosted.player(); }

    // Plays this song, which stays as long as the object, from the first block on; before that.
    void set_song(const Song& song) { playback.emplace(song); }

    // Takes the device's rate in Hz; false for one beyond reason.  Before the device's first block.
    // At another device than before the song goes on where it is, and keys that are held are let
    // go.
    [[nodiscard]] bool activate(double rate);
    [[nodiscard]] uint32_t latency_frames() const { return hosted.latency_frames(); }

    // The song has ended and its sound too, or half a minute ago.
    [[nodiscard]] bool is_finished() const { return finished; }

    // All below is for the device's thread: begin, messages with frames that do not fall, end.
    void begin_block(float* left, float* right, uint32_t frames);
    void play(std::span<const uint8_t> message, uint32_t frame);
    void end_block();

  private:
    void play_song(uint32_t last_frame);
    void listen_for_end();

    HostedPlayer hosted;
    std::optional<SongPlayback> playback;
    bool was_active = false;
    bool releases_keys = false; // in the next block

    // the block
    const float* block_left = nullptr;
    const float* block_right = nullptr;
    uint32_t block_frames = 0;

    // since the song's end, in device frames
    double device_rate = 0;
    double frames_behind_song = 0;
    double silent_frames = 0;
    std::atomic<bool> finished{false};
};

} // namespace tarquil

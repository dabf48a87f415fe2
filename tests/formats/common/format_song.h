// A short song and how a player renders it: what every plug-in format has to give, byte for byte,
// at each rate and however a host cuts its blocks.

#pragma once

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <functional>
#include <random>
#include <vector>

#include "formats/common/instance_player.h"
#include "tests/support/byte_hash.h"

namespace tarquil {

struct SongMessage {
    uint32_t frame = 0;
    std::array<uint8_t, 3> bytes{};
};

struct StereoSound {
    std::vector<float> left;
    std::vector<float> right;

    bool operator==(const StereoSound&) const = default;

    [[nodiscard]] uint64_t hash() const {
        ByteHash hash;
        for (const std::vector<float>* side : {&left, &right})
            hash.add(side->data(), side->size() * sizeof(float));
        return hash.get();
    }
};

// The magnitudes of the rate converter's taps add up to 2.92: so far what the engine clips at 1 can
// reach at another rate, and noise does reach beyond 2.
inline bool is_bounded(const StereoSound& sound) {
    const auto is_fine = [](float sample) {
        return std::isfinite(sample) && std::fabs(sample) <= 3.0F;
    };
    return std::all_of(sound.left.begin(), sound.left.end(), is_fine) &&
           std::all_of(sound.right.begin(), sound.right.end(), is_fine);
}

inline constexpr uint32_t SONG_FRAMES = 20000;

// Notes on all channels, bends, controllers of both kinds and program changes, several at one
// frame.
inline std::vector<SongMessage> format_song() {
    std::mt19937 random(20);
    const auto below = [&](unsigned count) { return unsigned(random() % count); };
    std::vector<SongMessage> song;
    for (uint32_t frame = 0; frame < SONG_FRAMES - 3000; frame += 1 + below(400)) {
        const unsigned channel = below(16);
        const unsigned key = 36 + below(48);
        const auto add = [&](uint32_t at, unsigned status, unsigned data1, unsigned data2) {
            song.push_back({at, {uint8_t(status | channel), uint8_t(data1), uint8_t(data2)}});
        };
        if (below(8) == 0)
            add(frame, 0xC0, below(128), 0);
        if (below(4) == 0)
            add(frame, 0xE0, below(128), below(128));
        if (below(4) == 0)
            add(frame, 0xB0, below(2) == 0 ? CTRL_PANNING : CTRL_OSC1_OSC2_MIX, below(128));
        add(frame, 0x90, key, 1 + below(127));
        add(frame + 200 + below(2500), 0x80, key, 0);
    }
    std::stable_sort(song.begin(), song.end(),
                     [](const SongMessage& a, const SongMessage& b) { return a.frame < b.frame; });
    return song;
}

// Lengths of blocks that make up the song: `longest`, or random ones up to it, with empty ones
// among them.
inline std::vector<uint32_t> song_blocks(uint32_t longest, bool is_random, uint32_t seed = 1) {
    std::mt19937 random(seed);
    std::vector<uint32_t> blocks;
    for (uint32_t done = 0; done < SONG_FRAMES; done += blocks.back()) {
        const uint32_t wanted = is_random ? uint32_t(random() % (longest + 1)) : longest;
        blocks.push_back(std::min(wanted, SONG_FRAMES - done));
    }
    return blocks;
}

// Calls render(messages of the block with frames within it, left, right, frames) for each block.
using RenderBlock =
    std::function<void(const std::vector<SongMessage>&, float*, float*, uint32_t frames)>;

inline StereoSound render_song(const std::vector<uint32_t>& blocks, const RenderBlock& render) {
    const std::vector<SongMessage> song = format_song();
    StereoSound sound{std::vector<float>(SONG_FRAMES), std::vector<float>(SONG_FRAMES)};
    uint32_t begin = 0;
    size_t next = 0;
    for (const uint32_t frames : blocks) {
        std::vector<SongMessage> due;
        for (; next < song.size() && song[next].frame < begin + frames; next++)
            due.push_back({song[next].frame - begin, song[next].bytes});
        render(due, sound.left.data() + begin, sound.right.data() + begin, frames);
        begin += frames;
    }
    return sound;
}

inline void render_block(HostedPlayer& player, const std::vector<SongMessage>& messages,
                         float* left, float* right, uint32_t frames) {
    player.begin_block(left, right, frames);
    for (const SongMessage& message : messages)
        player.add_message(message.bytes, message.frame);
    player.end_block();
}

// The state of a player that has been given nothing: simple sounds in the native dialect, which
// tests look through more easily than a new instance's.
inline std::string plain_state() {
    return HostedPlayer().save_state();
}

// What all formats are compared with: the player's sound of what of each block's messages is
// passed.
using PassMessages = std::function<std::vector<SongMessage>(const std::vector<SongMessage>&)>;

inline StereoSound hosted_song(double rate, const std::vector<uint32_t>& blocks,
                               const std::string& state,
                               const PassMessages& passed = std::identity{}) {
    HostedPlayer player;
    if (player.load_state(state) != 0 || !player.activate(rate))
        return {};
    return render_song(blocks,
                       [&](const auto& messages, float* left, float* right, uint32_t frames) {
                           render_block(player, passed(messages), left, right, frames);
                       });
}

} // namespace tarquil

// Tests of a song played by a device: it has the renderer's bytes, and goes on at another device.

#include "standalone/device_player.h"

#include <gtest/gtest.h>

#include <chrono>
#include <cstring>
#include <thread>

#include "player/song_tempo.h"
#include "standalone/devices.h"

namespace tarquil {

namespace {

constexpr uint8_t NOTE_ON[] = {0x90, 60, 100};

Song song_with_notes(std::initializer_list<uint32_t> times, uint32_t end_time) {
    Song song;
    for (const uint32_t time : times) {
        SongMessage message;
        message.time = time;
        std::copy_n(NOTE_ON, 3, message.bytes);
        song.messages.push_back(message);
    }
    song.end_time = end_time;
    return song;
}

// The song in engine samples, the way a renderer runs it: whole quanta, raised to the rate by the
// same filter, `latency` frames of silence in front.
struct Rendered {
    std::vector<float> left;
    std::vector<float> right;
};

Rendered render_plainly(const Song& song, double rate, uint32_t frames,
                        const TarqSettings* bank = nullptr) {
    constexpr uint32_t QUANTUM = QuantumStream::QUANTUM;
    Player player;
    if (bank != nullptr)
        player.set_bank(*bank);
    player.start();
    player.audio().follow_edits();
    RateBridge bridge;
    EXPECT_TRUE(bridge.activate(rate, QUANTUM));
    size_t next = 0;
    size_t next_tempo = 0;
    bool is_released = false;
    Rendered sound{std::vector<float>(frames), std::vector<float>(frames)};
    bridge.render(sound.left.data(), sound.right.data(), frames, [&](float* pcm, uint32_t count) {
        for (uint32_t done = 0; done < count; done += QUANTUM) {
            PlayerAudio& audio = player.audio();
            const uint32_t end = audio.time() + QUANTUM;
            for (; next_tempo < song.tempos.size() && song.tempos[next_tempo].time < end;
                 next_tempo++)
                audio.add_tempo(host_tempo(song.tempos[next_tempo]), song.tempos[next_tempo].time);
            for (; next < song.messages.size() && song.messages[next].time < end; next++)
                audio.add_message(song.messages[next].bytes, song.messages[next].time);
            if (!is_released && song.end_time < end) {
                is_released = true;
                audio.release_all(song.end_time);
            }
            audio.run(pcm + size_t(2) * done, QUANTUM);
        }
    });
    return sound;
}

// The player's next frames, in blocks.
Rendered play(DevicePlayer& player, uint32_t frames, uint32_t block) {
    Rendered sound{std::vector<float>(frames), std::vector<float>(frames)};
    for (uint32_t begin = 0; begin < frames; begin += block) {
        player.begin_block(sound.left.data() + begin, sound.right.data() + begin, block);
        player.end_block();
    }
    return sound;
}

class Recording {
  public:
    explicit Recording(uint32_t frames) : wanted(frames) {}

    Listener listener() {
        return [this](const float* l, const float* r, uint32_t frames) {
            if (num_frames < wanted) {
                left.insert(left.end(), l, l + frames);
                right.insert(right.end(), r, r + frames);
                num_frames = uint32_t(left.size());
            }
        };
    }
    void wait() const {
        while (num_frames < wanted)
            std::this_thread::sleep_for(std::chrono::milliseconds(1));
    }

    std::vector<float> left;
    std::vector<float> right;

  private:
    const uint32_t wanted;
    std::atomic<uint32_t> num_frames{0};
};

TEST(DevicePlayer, ASongHasTheRenderersBytesAtTheDevicesRate) {
    const Song song = song_with_notes({0, 1, 63, 64, 777, 5000, 5001}, 9000);
    for (const uint32_t rate : {44100U, 48000U, 96000U}) {
        for (const uint32_t period : {16U, 1000U}) {
            constexpr uint32_t FRAMES = 20000;
            DevicePlayer player;
            player.set_song(song);
            Recording recording(FRAMES);
            const DeviceChoice choice{
                .kind = DeviceKind::FAST, .alsa_name = "", .rate = rate, .period = period};
            std::string reason;
            {
                const auto device = open_null_device(player, choice, reason, recording.listener());
                ASSERT_NE(device, nullptr) << reason;
                recording.wait();
            }
            const Rendered expected = render_plainly(song, rate, FRAMES);
            ASSERT_NE(expected.left, std::vector<float>(FRAMES));
            recording.left.resize(FRAMES);
            recording.right.resize(FRAMES);
            EXPECT_EQ(recording.left, expected.left) << rate << " Hz, period " << period;
            EXPECT_EQ(recording.right, expected.right) << rate << " Hz, period " << period;
        }
    }
}

TEST(DevicePlayer, ASongsTempoIsFollowedAsTheRendererDoes) {
    Song song = song_with_notes({0, 5000, 9000}, 15000);
    TarqSettings bank;
    bank.get_instrument(0).set_controller(CTRL_AUX2_LEVEL, 127);
    bank.set_global_controller(CTRL_DELAY_LEFT_TIME, 4);
    bank.set_global_controller(CTRL_RETRIGGER_SPEEDUP, 65);
    bank.set_global_controller(CTRL_RETRIGGER_WET_LEVEL, 64);
    bank.set_tempo_sync(true);
    constexpr uint32_t FRAMES = 24000;
    const Rendered untimed = render_plainly(song, 48000, FRAMES, &bank);
    song.tempos = {{.time = 0, .quarters_per_minute = 197.25},
                   {.time = 7001, .quarters_per_minute = 140.5, .position = 0.5}};
    const Rendered expected = render_plainly(song, 48000, FRAMES, &bank);
    EXPECT_NE(expected.left, untimed.left);
    DevicePlayer player;
    player.player().set_bank(bank);
    player.set_song(song);
    ASSERT_TRUE(player.activate(48000));
    const Rendered sound = play(player, FRAMES, 1000);
    EXPECT_EQ(sound.left, expected.left);
    EXPECT_EQ(sound.right, expected.right);
}

// Live notes between the song's do not disturb its order.
TEST(DevicePlayer, LiveMessagesFallBetweenThoseOfTheSong) {
    const Song song = song_with_notes({100, 300}, 100000);
    const auto play = [&](bool is_live) {
        DevicePlayer player;
        Song played = song;
        if (!is_live) {
            played = song_with_notes({100, 200, 300}, 100000);
            played.messages[1].bytes[1] = 67;
        }
        player.set_song(played);
        EXPECT_TRUE(player.activate(44100));
        std::vector<float> left(4096);
        std::vector<float> right(4096);
        player.begin_block(left.data(), right.data(), 4096);
        if (is_live)
            player.play(std::initializer_list<uint8_t>{0x90, 67, 100}, 200);
        player.end_block();
        return left;
    };
    EXPECT_EQ(play(true), play(false));
}

TEST(DevicePlayer, IsFinishedWhenTheSongsSoundIs) {
    const Song song = song_with_notes({}, 1000);
    DevicePlayer player;
    player.set_song(song);
    ASSERT_TRUE(player.activate(48000));
    int num_blocks = 0;
    for (; !player.is_finished() && num_blocks < 1000; num_blocks++)
        play(player, 1200, 1200);
    EXPECT_EQ(num_blocks, 20); // half a second from the block with the end on
}

} // namespace

} // namespace tarquil

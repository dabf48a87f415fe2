// Plays what comes with the program, dry: the General MIDI set, or its drums beside another bank.

#pragma once

#include <array>
#include <cstdint>
#include <vector>

#include <gtest/gtest.h>

#include "player/player.h"
#include "player/quantum_stream.h"
#include "sounds/shipped_sounds.h"
#include "sounds/starting_sounds.h"
#include "tests/support/engine_host.h"

namespace tarquil {

class SetPlayer {
  public:
    static constexpr unsigned DRUMS = 9; // channel

    SetPlayer() : SetPlayer(shipped_gm_bank()) {}
    explicit SetPlayer(const TarqSettings& bank) {
        give_drums(player);
        player.set_bank(bank);
        player.start();
        for (const unsigned channel : {0U, DRUMS})
            for (const uint8_t effect : {uint8_t(91), uint8_t(93)})
                send({uint8_t(0xB0U | channel), effect, 0});
    }

    void choose_program(unsigned program) { send({0xC0, uint8_t(program), 0}); }
    void choose_kit(unsigned program) { send({uint8_t(0xC0U | DRUMS), uint8_t(program), 0}); }

    void note_on(unsigned channel, unsigned key, unsigned velocity) {
        send({uint8_t(0x90U | channel), uint8_t(key), uint8_t(velocity)});
    }
    void note_off(unsigned channel, unsigned key) {
        send({uint8_t(0x80U | channel), uint8_t(key), 0});
    }

    // The left and the right side in the middle.
    std::vector<float> render(double seconds) {
        std::vector<float> sound;
        while (double(sound.size()) < seconds * SAMPLE_RATE) {
            std::array<float, size_t(2) * QuantumStream::QUANTUM> pcm;
            player.audio().run(pcm.data(), QuantumStream::QUANTUM);
            for (size_t i = 0; i < pcm.size(); i += 2)
                sound.push_back((pcm[i] + pcm[i + 1]) / 2);
        }
        return sound;
    }

    // What is heard of a note while it is held; it must have ended so many seconds later.
    std::vector<float> play(unsigned channel, unsigned key, unsigned velocity, double seconds,
                            double longest_end) {
        note_on(channel, key, velocity);
        const std::vector<float> held = render(seconds);
        note_off(channel, key);
        EXPECT_LT(seconds_until_silent(), longest_end);
        return held;
    }

    // Renders on until a tenth of a second stays below -80 dBFS; at most 20 s.
    double seconds_until_silent() {
        constexpr float SILENCE = 1e-4F;
        constexpr double PIECE = 0.1;
        constexpr double AT_MOST = 20.0;
        double seconds = 0.0;
        while (seconds < AT_MOST && peak(render(PIECE)) > SILENCE)
            seconds += PIECE;
        return seconds;
    }

  private:
    void send(std::array<uint8_t, 3> message) {
        player.audio().follow_edits();
        player.audio().add_message(message.data(), player.audio().time());
    }

    Player player;
};

} // namespace tarquil

// Plays what comes with the program, dry: the General MIDI set, or its drums beside another bank.

#pragma once

#include <cmath>
#include <cstdint>
#include <vector>

#include "player/quantum_stream.h"
#include "sounds/shipped_sounds.h"
#include "sounds/starting_sounds.h"
#include "tests/support/player_host.h"

namespace tarquil {

class SetPlayer {
  public:
    static constexpr unsigned DRUMS = 9; // channel

    SetPlayer() : SetPlayer(shipped_gm_bank()) {}
    explicit SetPlayer(const TarqSettings& bank) {
        give_drums(*host);
        host->set_bank(bank);
        host->start();
        for (const unsigned channel : {0U, DRUMS})
            for (const unsigned effect : {91U, 93U})
                host.midi(0xB0U | channel, effect, 0);
    }

    void choose_program(unsigned program) { host.midi(0xC0, program); }
    void choose_kit(unsigned program) { host.midi(0xC0U | DRUMS, program); }

    void note_on(unsigned channel, unsigned key, unsigned velocity) {
        host.midi(0x90U | channel, key, velocity);
    }
    void note_off(unsigned channel, unsigned key) { host.midi(0x80U | channel, key, 0); }

    // The left and the right side in the middle.
    std::vector<float> render(double seconds) {
        constexpr uint32_t QUANTUM = QuantumStream::QUANTUM;
        const std::vector<float> stereo =
            host.render(uint32_t(std::ceil(seconds * SAMPLE_RATE / QUANTUM)) * QUANTUM);
        std::vector<float> sound;
        for (size_t i = 0; i < stereo.size(); i += 2)
            sound.push_back((stereo[i] + stereo[i + 1]) / 2);
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
    PlayerHost host{false};
};

} // namespace tarquil

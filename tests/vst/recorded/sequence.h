// One random use of a plug-in by a host, from a seed, and a hash of everything that came back.

#pragma once

#include <cstdint>
#include <iterator>
#include <random>
#include <string>

#include "softsynth/parameters/controller_number.h"
#include "tests/support/byte_hash.h"
#include "tests/vst/plugin_host.h"

namespace tarquil {

class RecordedSequence {
  public:
    explicit RecordedSequence(uint32_t new_seed)
        : random(new_seed), max_frames(BLOCK_SIZES[any(4)]), host(max_frames) {}

    // Plays it in a fresh instance.
    uint64_t play() {
        set_up_programs();
        constexpr int32_t TAIL_FRAMES = 3000;
        // Some are long enough for beats to be repeated and for channels to fall silent.
        const int32_t num_frames = one_in(16) ? 90000 : 14000;
        for (int32_t done = 0; done < num_frames;) {
            const auto frames = 1 + int32_t(any(uint32_t(max_frames)));
            if (one_in(3))
                act();
            // Small blocks have fewer messages, large ones many at once.
            for (uint32_t i = any(3U + uint32_t(frames) / 200); i > 0; i--)
                send_message(frames);
            if (one_in(4)) {
                host.send_events();
                send_message(frames);
            }
            render(frames);
            done += frames;
        }
        for (unsigned channel = 0; channel < NUM_CHANNELS_USED; channel++)
            host.midi(0xB0 | channel, ALL_NOTES_OFF);
        render(TAIL_FRAMES);
        return hash.get();
    }

  private:
    static constexpr uint32_t NUM_PARAMS = 173;
    static constexpr uint32_t NUM_CHANNELS_USED = 6;
    static constexpr uint32_t NUM_PROGRAMS_USED = 8;
    static constexpr uint32_t NUM_CONTROLLER_NUMBERS = 206;
    static constexpr unsigned ALL_NOTES_OFF = 123;

    // Those that act within a block.
    static constexpr unsigned LIVE_CONTROLLERS[] = {
        CTRL_MAIN_VOLUME,   CTRL_PANNING,           CTRL_OSC1_OSC2_MIX,       CTRL_OSC3_VOLUME,
        CTRL_LFO1_SPEED,    CTRL_FILTER1_CUTOFF,    CTRL_FILTER1_RESONANCE,   CTRL_CHANFX1_PARAM1,
        CTRL_RETRIGGER_BPM, CTRL_RETRIGGER_SPEEDUP, CTRL_RETRIGGER_WET_LEVEL,
    };

    static constexpr int32_t BLOCK_SIZES[] = {48, 256, 700, 5000};

    // 0..limit - 1, the same with every library.
    uint32_t any(uint32_t limit) { return uint32_t(random() % limit); }
    bool one_in(uint32_t count) { return any(count) == 0; }
    // Often at the ends and in the middle of the range.
    uint32_t any_byte() {
        switch (any(6)) {
        case 0:
            return 127 * any(2);
        case 1:
            return 60 + any(9);
        default:
            return any(128);
        }
    }
    int32_t any_delay(int32_t frames) {
        if (one_in(20))
            return frames + int32_t(any(300)); // for a later block
        return one_in(40) ? -int32_t(any(50)) : int32_t(any(uint32_t(frames)));
    }

    void set_parameter() {
        // Drawn one by one, here and below: compilers do not agree on the order of arguments.
        const uint32_t byte = any_byte();
        host.set(int32_t(any(NUM_PARAMS)), float(byte) / 127.0F);
    }
    // A few settings each, so that most programs still sound; the first channel leaves its usual
    // program, so that a saved bank always tells which ones the channels play.
    void set_up_programs() {
        host.midi(0xC0, 1 + any(NUM_PROGRAMS_USED - 1));
        for (uint32_t program = 0; program < NUM_PROGRAMS_USED; program++) {
            host.call(effSetProgram, 0, intptr_t(program));
            for (uint32_t i = any(30); i > 0; i--)
                set_parameter();
        }
    }
    void send_message(int32_t frames) {
        const uint32_t channel = any(NUM_CHANNELS_USED);
        const int32_t delay = any_delay(frames);
        const uint32_t note = 30 + any(60);
        switch (any(12)) {
        case 0:
        case 1:
        case 2:
        case 3:
        case 4:
            host.midi(0x90 | channel, note, any_byte(), delay);
            break;
        case 5:
        case 6:
            host.midi(0x80 | channel, note, any_byte(), delay);
            break;
        case 7: {
            const uint32_t coarse = any_byte();
            host.midi(0xE0 | channel, any(128), coarse, delay);
            break;
        }
        case 8:
            if (one_in(3)) {
                const auto within = int32_t(any(uint32_t(frames)));
                host.midi(0xC0 | channel, 1 + any(NUM_PROGRAMS_USED - 1), 0, within);
            } else if (one_in(4)) {
                host.midi(0xB0 | channel, ALL_NOTES_OFF, 0, delay);
            } else { // is none of the engine's messages, or broken
                const uint32_t data2 = any(256);
                const uint32_t data1 = any(256);
                host.midi(0xA0 | (any(6) << 4U) | channel, data1, data2, delay);
            }
            break;
        default: {
            const uint32_t number = one_in(3) ? LIVE_CONTROLLERS[any(std::size(LIVE_CONTROLLERS))]
                                              : any(NUM_CONTROLLER_NUMBERS);
            host.midi(0xB0 | channel, number, any_byte(), delay);
            break;
        }
        }
    }
    // What a host does between two blocks.
    void act() {
        switch (any(14)) {
        case 0:
            host.call(effSetProgram, 0, intptr_t(any(NUM_PROGRAMS_USED)));
            break;
        case 1:
            save_or_load_preset();
            break;
        case 2: {
            const float value = host.get(int32_t(any(NUM_PARAMS)));
            hash.add(&value, sizeof(value));
            break;
        }
        case 3: {
            const auto index = int32_t(any(NUM_PARAMS));
            std::string shown = host.text(effGetParamDisplay, index);
            hash.add(shown.data(), shown.size());
            host.call(effString2Parameter, index, 0, shown.data());
            break;
        }
        case 4:
            if (one_in(8))
                save_and_load_bank();
            else if (one_in(4))
                host.call(effMainsChanged, 0, intptr_t(any(2)));
            break;
        default:
            set_parameter();
            break;
        }
    }
    void save_or_load_preset() {
        if (preset.empty() || one_in(3)) {
            preset = host.save(true);
            hash.add(preset.data(), preset.size());
        } else {
            const bool loaded = host.load(preset, true);
            hash.add(&loaded, sizeof(loaded));
        }
    }
    void save_and_load_bank() {
        // The first channel plays another program than its usual one, so that the bank says so.
        host.midi(0xC0, 1 + any(NUM_PROGRAMS_USED - 1));
        host.send_events();
        const std::string bank = host.save(false);
        hash.add(bank.data(), bank.size());
        for (uint32_t i = any(3); i > 0; i--)
            set_parameter();
        if (one_in(2))
            host.load(bank, false);
    }
    void render(int32_t frames) {
        const std::vector<float> sound = host.block(frames);
        hash.add(sound.data(), sound.size() * sizeof(float));
    }

    std::mt19937 random;
    int32_t max_frames;
    PluginHost host;
    std::string preset; // saved before
    ByteHash hash;
};

} // namespace tarquil

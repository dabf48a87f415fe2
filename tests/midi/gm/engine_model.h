// Two engines as far as events go: what they were told, and whether they could have been.

#pragma once

#include <gtest/gtest.h>

#include <array>
#include <cstdint>
#include <optional>
#include <set>
#include <tuple>
#include <vector>

#include "instrument/controller_bytes.h"
#include "midi/gm/gm_dialect.h"

namespace tarquil {

class EngineModel : public EngineEvents {
  public:
    struct Channel {
        ControllerBytes bytes{};
        std::set<unsigned> notes; // that have not been released
        unsigned silences = 0;
        unsigned master_silences = 0;
    };
    struct Strike {
        unsigned engine = 0;
        unsigned channel = 0;
        unsigned note = 0;
        unsigned velocity = 0;
        uint32_t time = 0;
        ControllerBytes bytes{}; // what the voice reads
    };

    void put(unsigned engine, const midi_event& event) override {
        ASSERT_LT(engine, NUM_GM_ENGINES);
        if (last_time[engine]) {
            ASSERT_GE(int32_t(event.time - *last_time[engine]), 0) << "out of order";
        }
        last_time[engine] = event.time;
        events.emplace_back(engine, event);
        ASSERT_LT(event.data1, NUM_CONTROLLERS);
        ASSERT_LT(event.data2, 128);
        const unsigned index = event.status & 0x0FU;
        Channel& channel = channels[engine][index];
        const unsigned kind = event.status & 0xF0U;
        if (half_bend) {
            ASSERT_TRUE(kind == MIDI_CONTROL_CHANGE && event.data1 == CTRL_PITCH_BEND_LSB &&
                        event.time == *half_bend)
                << "half a bend";
        }
        half_bend.reset();
        switch (kind) {
        case MIDI_NOTE_ON:
            ASSERT_LT(event.data1, 128);
            ASSERT_GT(event.data2, 0);
            channel.notes.insert(event.data1);
            strikes.push_back({engine, index, event.data1, event.data2, event.time, channel.bytes});
            break;
        case MIDI_NOTE_OFF:
            ASSERT_LT(event.data1, 128);
            channel.notes.erase(event.data1);
            break;
        case MIDI_SILENCE:
            channel.notes.clear();
            (event.data1 == SILENCE_MASTER ? channel.master_silences : channel.silences)++;
            break;
        case MIDI_CONTROL_CHANGE: {
            const ControllerInfo* info = find_controller(event.data1);
            ASSERT_NE(info, nullptr);
            ASSERT_EQ(filter_controller(event.data1, event.data2), event.data2);
            if (info->scope != ControllerScope::CHANNEL) {
                ASSERT_EQ(index, 0U);
            }
            channel.bytes[event.data1] = event.data2;
            if (event.data1 == CTRL_PITCH_BEND_MSB)
                half_bend = event.time;
            break;
        }
        default:
            FAIL() << "kind " << kind;
        }
    }

    [[nodiscard]] size_t num_sounding() const {
        size_t count = 0;
        for (const auto& engine : channels)
            for (const Channel& channel : engine)
                count += channel.notes.size();
        return count;
    }

    // Forgets the events and the order of their times.
    void start_clock_anew() {
        events.clear();
        last_time = {};
    }

    std::array<std::array<Channel, 16>, NUM_GM_ENGINES> channels;
    std::vector<Strike> strikes;
    std::vector<std::pair<unsigned, midi_event>> events;

  private:
    std::array<std::optional<uint32_t>, NUM_GM_ENGINES> last_time;
    std::optional<uint32_t> half_bend;
};

// A dialect with default sounds that writes into a model; messages at a time of its own.
struct DialectRig {
    DialectRig() {
        sounds.melodic.fill(&bytes);
        sounds.drums.fill(&bytes);
        sounds.globals = &default_controller_bytes();
        use();
    }

    void use() {
        dialect.set_sounds(sounds, &map);
        dialect.start(0);
    }

    void send(std::initializer_list<uint8_t> message) {
        const std::vector<uint8_t> copy(message);
        dialect.translate(time, copy, model);
    }
    void note_on(uint8_t key, uint8_t velocity = 100, unsigned channel = 0) {
        send({uint8_t(0x90U | channel), key, velocity});
    }
    void note_off(uint8_t key, unsigned channel = 0) { send({uint8_t(0x80U | channel), key, 64}); }
    void control(uint8_t number, uint8_t value, unsigned channel = 0) {
        send({uint8_t(0xB0U | channel), number, value});
    }
    void bend(unsigned value, unsigned channel = 0) {
        send({uint8_t(0xE0U | channel), uint8_t(value & 0x7FU), uint8_t(value >> 7U)});
    }
    void wait(double seconds) {
        time += uint32_t(seconds * 44100);
        dialect.advance(time, model);
    }

    [[nodiscard]] const std::set<unsigned>& sounding(unsigned channel = 0) const {
        return model.channels[MELODIC_ENGINE][channel].notes;
    }
    [[nodiscard]] unsigned byte(unsigned controller, unsigned channel = 0) const {
        return model.channels[MELODIC_ENGINE][channel].bytes[controller];
    }
    // Of the engine channel, in semitones.
    [[nodiscard]] double bend_semitones(unsigned channel = 0) const {
        return (byte(CTRL_PITCH_BEND_MSB, channel) * 128.0 + byte(CTRL_PITCH_BEND_LSB, channel) -
                8192) /
               8192 * 12;
    }

    ControllerBytes bytes = default_controller_bytes();
    GmSounds sounds;
    GmMap map;
    EngineModel model;
    GmDialect dialect;
    uint32_t time = 0;
};

inline constexpr std::initializer_list<uint8_t> GM_ON = {0xF0, 0x7E, 0x7F, 0x09, 0x01, 0xF7};

} // namespace tarquil

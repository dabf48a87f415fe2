// Fuzz target of the General MIDI dialect: any bytes as messages give events that an engine takes,
// a bounded number of them, and no note that outlives pedals up and all notes off.
//
// Input: records of a length and a delay (a byte each, the delay in 64 samples) and the message.

#include <bitset>
#include <cstddef>
#include <cstdint>
#include <string>

#include "common/assertion.h"
#include "midi/gm/gm_dialect.h"
#include "midi/gm/gm_map_file.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size);

namespace tarquil {
namespace {

constexpr unsigned DELAY_SAMPLES = 64;
constexpr uint32_t LONGEST_DRUM = 31 * 44100;

class CheckedEvents : public EngineEvents {
  public:
    void put(unsigned engine, const midi_event& event) override {
        TARQ_ASSERT(engine < NUM_GM_ENGINES);
        TARQ_ASSERT(!is_before(event.time, last_time[engine]));
        last_time[engine] = event.time;
        count++;
        const unsigned channel = event.status & 0x0FU;
        switch (event.status & 0xF0U) {
        case MIDI_NOTE_ON:
            TARQ_ASSERT(event.data1 < 128 && event.data2 > 0 && event.data2 < 128);
            notes[engine][channel].set(event.data1);
            break;
        case MIDI_NOTE_OFF:
            TARQ_ASSERT(event.data1 < 128);
            notes[engine][channel].reset(event.data1);
            break;
        case MIDI_SILENCE:
            notes[engine][channel].reset();
            break;
        case MIDI_CONTROL_CHANGE:
            TARQ_ASSERT(find_controller(event.data1) != nullptr && event.data2 < 128);
            TARQ_ASSERT(filter_controller(event.data1, event.data2) == event.data2);
            break;
        default:
            TARQ_ASSERT(false);
        }
    }

    uint32_t last_time[NUM_GM_ENGINES] = {};
    std::bitset<128> notes[NUM_GM_ENGINES][16];
    unsigned count = 0;
};

const GmMap& fuzz_map() {
    static const GmMap map = [] {
        GmMap loaded;
        const std::string error = load_gm_map_from_string(
            loaded, "family = kick hats\nk00_036 = kick 1 60 100 64 400\n"
                    "k00_042 = hats 7 96 50 84 120 46\nk00_046 = hats 8 97 100 84 30000 42\n"
                    "k00_072 = hats 9 70 100 20 held 71\np000_env1_decay = key -20 vel 5\n"
                    "p003_vibrato = 5 20 0.2 0.1\n");
        TARQ_ASSERT(error.empty());
        return loaded;
    }();
    return map;
}

void play(const uint8_t* data, size_t size) {
    GmSounds sounds;
    sounds.melodic.fill(&default_controller_bytes());
    sounds.drums.fill(&default_controller_bytes());
    sounds.globals = &default_controller_bytes();
    GmDialect dialect;
    dialect.set_sounds(sounds, &fuzz_map());
    CheckedEvents out;
    uint32_t time = 0;
    while (size >= 2) {
        const size_t length = data[0] < size - 2 ? data[0] : size - 2;
        time += data[1] * DELAY_SAMPLES;
        dialect.advance(time, out);
        out.count = 0;
        dialect.translate(time, {data + 2, length}, out);
        TARQ_ASSERT(out.count <= GmDialect::MAX_EVENTS_PER_CALL);
        data += 2 + length;
        size -= 2 + length;
    }
    for (unsigned channel = 0; channel < 16; channel++) {
        for (const unsigned controller : {64U, 66U, 123U}) {
            const uint8_t message[] = {uint8_t(0xB0U | channel), uint8_t(controller), 0};
            dialect.translate(time, message, out);
        }
    }
    dialect.advance(time + LONGEST_DRUM, out);
    TARQ_ASSERT(dialect.num_held_notes() == 0);
    for (const auto& engine : out.notes)
        for (const auto& channel : engine)
            TARQ_ASSERT(channel.none());
}

} // namespace
} // namespace tarquil

int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    tarquil::play(data, size);
    return 0;
}

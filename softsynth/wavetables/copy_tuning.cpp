// The pitches of an oscillator's detuned copies, and a cache of them.

#include "softsynth/wavetables/copy_tuning.h"

#include <algorithm>
#include <bit>

#include "common/assertion.h"
#include "softsynth/parameters/note_frequency.h"
#include "softsynth/wavetables/oscillator.h"

namespace tarquil {

namespace {

// Neighbouring notes and tunings should not meet in one place.
uint32_t hash(const CopyTuning& tuning) {
    constexpr uint32_t FACTOR = 0x9E3779B1; // 2^32 over the golden ratio
    uint32_t h = uint32_t(tuning.type) * MAX_OSCILLATOR_COPIES + tuning.count;
    for (const float value : {tuning.base, tuning.step})
        h = (h ^ std::bit_cast<uint32_t>(value)) * FACTOR;
    return h;
}

} // namespace

TunedCopies& TunedCopies::operator=(const TunedCopies& other) {
    type = other.type;
    count = other.count;
    runs = other.runs;
    table_shift = other.table_shift;
    if (this != &other && type != OSC_NONE) {
        std::copy_n(other.increment_scale, count, increment_scale);
        std::copy_n(other.table, count, table);
    }
    return *this;
}

void TunedCopies::init(OscType new_type) {
    type = new_type;
    count = 0;
    runs = 0;
}

void TunedCopies::add(const WaveformStore& waves, float frequency) {
    TARQ_ASSERT(count < MAX_OSCILLATOR_COPIES);
    if (type != OSC_NONE) {
        Wavetable_ret wavetable;
        waves.getWavetable(type, frequency, &wavetable);
        if (count == 0 || wavetable.data != table[count - 1])
            runs++;
        table[count] = wavetable.data;
        table_shift = wavetable.shift; // the same for all tables of a waveform
        increment_scale[count] = oscillator_increment_scale(frequency);
    }
    count++;
}

void TunedCopies::init(const WaveformStore& waves, const CopyTuning& tuning) {
    init(tuning.type);
    const auto half = int(tuning.count / 2);
    for (int j = 0; j < int(tuning.count); j++)
        add(waves, note_frequency(tuning.step * float(j - half) + tuning.base));
}

const TunedCopies& CopyTuningCache::get(const WaveformStore& waves, const CopyTuning& tuning) {
    Entry& entry = entries[hash(tuning) / (UINT32_MAX / SIZE + 1)];
    if (!(entry.tuning == tuning)) {
        entry.tuning = tuning;
        entry.copies.init(waves, tuning);
    }
    return entry.copies;
}

} // namespace tarquil

// Band-limited wavetables: one waveform is a set of tables with a rising number of harmonics.

#include "softsynth/wavetables/waveform.h"

#include <algorithm>
#include <cmath>
#include <numbers>

#include "common/assertion.h"
#include "softsynth/wavetables/waveform_cache.h"
#include "softsynth/wavetables/wavetable_builder.h"

namespace tarquil {

namespace {

AmplitudeFunction amplitude_of(OscType type) {
    switch (type) {
    case OSC_SINE:
        return Waveform::sineWaveAmplitude;
    case OSC_SAW:
        return Waveform::sawWaveAmplitude;
    case OSC_SQUARE:
        return Waveform::squareWaveAmplitude;
    case OSC_TRIANGLE:
        return Waveform::triangleWaveAmplitude;
    default:
        return Waveform::noAmplitude;
    }
}

// Park & Miller's minimal standard generator (1988), x' = 16807 x mod (2^31 - 1), in chains that
// take turns: each makes a step of all at once, so that they need not wait for each other.
class NoiseChains {
  public:
    static constexpr unsigned COUNT = 8;

    NoiseChains() {
        for (unsigned k = 0; k < COUNT; k++) {
            x[k] = times(k == 0 ? SEED : x[k - 1], MULTIPLIER);
            leap = times(leap, MULTIPLIER);
        }
    }

    // Writes the next COUNT samples, within -1..1.
    void next(float* samples) {
        constexpr float TO_UNIT = 1.0F / (1U << 30U);
        for (unsigned k = 0; k < COUNT; k++) {
            samples[k] = float(int32_t(x[k])) * TO_UNIT - 1.0F;
            x[k] = times(x[k], leap);
        }
    }

  private:
    static constexpr uint64_t SEED = 123459876;
    static constexpr uint64_t MULTIPLIER = 16807;
    static constexpr uint64_t MODULUS = 2147483647; // 2^31 - 1, so that 2^31 counts as 1

    static uint64_t times(uint64_t a, uint64_t b) {
        const uint64_t product = a * b;
        const uint64_t folded = (product & MODULUS) + (product >> 31U);
        return folded >= MODULUS ? folded - MODULUS : folded;
    }

    uint64_t leap = 1; // MULTIPLIER to the power of COUNT
    uint64_t x[COUNT] = {};
};

// Harmonics of the table after one of n: every number up to 32, every second up to 64, then every
// fourth.
unsigned next_harmonics(unsigned n) {
    return n < 32 ? n + 1 : n < 64 ? n + 2 : n + 4;
}

} // namespace

void Wavetable::allocate(unsigned size) {
    shift = 32 - uint32_t(0.499 + std::log(size) / std::log(2.0));
    if (data == nullptr) {
        owned = make_large_float_array(size + WAVETABLE_GUARD);
        data = owned.get();
    }
}

void Wavetable::init(unsigned tableSize, unsigned harmonics, float (*amplitude)(unsigned),
                     float* cache, bool cache_loaded) {
    TARQ_ASSERT((tableSize & (tableSize - 1)) == 0);
    nHarmonies = harmonics;
    allocate(tableSize);
    if (cache_loaded) {
        if (cache != data)
            std::copy_n(cache, tableSize, data);
    } else {
        build_wavetables(data, tableSize, tableSize, {harmonics}, amplitude);
        std::copy_n(data, tableSize, cache);
    }
    data[tableSize] = data[0];
}

void Wavetable::init_noise(unsigned size) {
    allocate(size);
    NoiseChains chains;
    for (unsigned i = 0; i < size; i += NoiseChains::COUNT)
        chains.next(data + i);
    data[size] = data[0];
}

float Waveform::sineWaveAmplitude(unsigned h) {
    return h == 1 ? 1.0F : 0.0F;
}

float Waveform::sawWaveAmplitude(unsigned h) {
    const auto a = float(2 / std::numbers::pi / h);
    return h % 2 == 1 ? a : -a;
}

float Waveform::squareWaveAmplitude(unsigned h) {
    return h % 2 == 1 ? float(4 / std::numbers::pi / h) : 0.0F;
}

float Waveform::triangleWaveAmplitude(unsigned h) {
    if (h % 2 == 0)
        return 0.0F;
    const auto a = float(8 / (std::numbers::pi * std::numbers::pi) / (double(h) * h));
    return h % 4 == 3 ? -a : a;
}

float Waveform::noAmplitude(unsigned /*h*/) {
    return 0.0F;
}

Waveform::Waveform(OscType type, const std::string& cache_folder) {
    const bool is_noise = type == OSC_NOISE;
    tables.resize(is_noise ? 1 : NUM_WAVETABLES);
    if (is_noise) {
        // Its cached block is the table before it is filled, all zeros: nothing worth reading.
        keep_empty_waveform_cache(cache_folder, size(), type, NOISE_SIZE);
        tables[0].init_noise(NOISE_SIZE);
        return;
    }

    constexpr size_t STRIDE = WAVETABLE_SIZE + WAVETABLE_GUARD;
    memory = make_large_float_array(size() * STRIDE);
    std::vector<unsigned> harmonics = {1};
    while (harmonics.size() < size())
        harmonics.push_back(next_harmonics(harmonics.back()));
    const CachedTables layout = {memory.get(), WAVETABLE_SIZE, STRIDE, size()};
    const bool loaded = read_waveform_cache(cache_folder, type, layout);
    if (!loaded)
        build_wavetables(memory.get(), STRIDE, WAVETABLE_SIZE, harmonics, amplitude_of(type));
    unsigned limit = 0;
    for (unsigned k = 0; k < size(); k++) {
        float* samples = memory.get() + k * STRIDE;
        tables[k].use_memory(samples);
        tables[k].init(WAVETABLE_SIZE, harmonics[k], amplitude_of(type), samples, true);
        const bool last = k + 1 == size();
        while (limit <= MAX_HARMONICS && (last || limit < harmonics[k + 1]))
            table_of_limit[limit++] = uint8_t(k);
    }
    if (!loaded)
        write_waveform_cache(cache_folder, type, layout);
}

void Waveform::getWavetable(float frequency, Wavetable_ret* ret) const {
    const float limit = 22050.0F / frequency;
    const unsigned index =
        limit < float(MAX_HARMONICS) ? unsigned(std::max(limit, 0.0F)) : MAX_HARMONICS;
    const Wavetable& wavetable = tables[table_of_limit[index]];
    ret->data = wavetable.get_data();
    ret->shift = wavetable.get_shift();
}

WaveformStore::WaveformStore(const std::string& cache_folder)
    : square(OSC_SQUARE, cache_folder), saw(OSC_SAW, cache_folder),
      triangle(OSC_TRIANGLE, cache_folder), sine(OSC_SINE, cache_folder),
      noise(OSC_NOISE, cache_folder) {}

void WaveformStore::getWavetable(OscType type, float frequency, Wavetable_ret* ret) const {
    switch (type) {
    case OSC_SINE:
        sine.getWavetable(frequency, ret);
        return;
    case OSC_SAW:
        saw.getWavetable(frequency, ret);
        return;
    case OSC_SQUARE:
        square.getWavetable(frequency, ret);
        return;
    case OSC_TRIANGLE:
        triangle.getWavetable(frequency, ret);
        return;
    case OSC_NOISE:
        noise.getWavetable(frequency, ret);
        return;
    default:
        TARQ_ASSERT(0);
    }
}

} // namespace tarquil

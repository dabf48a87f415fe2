// Band-limited wavetables: one waveform is a set of tables with a rising number of harmonics.

#include "softsynth/waveform.h"

#include <algorithm>
#include <cmath>
#include <numbers>

#include "common/assertion.h"
#include "common/log/log.h"
#include "softsynth/waveform_cache.h"

namespace {

constexpr double PI = std::numbers::pi;

// Adds amplitude * sin(step * (i + 0.5)) to every sample i of the table.  Four phasors half a
// sample, one and a half, ... into the cycle advance by four samples per turn.
void add_harmonic(float* table, unsigned size, double step, float amplitude) {
    float sine[4];
    float cosine[4];
    for (int k = 0; k < 4; k++) {
        sine[k] = float(std::sin(step * (k + 0.5)));
        cosine[k] = float(std::cos(step * (k + 0.5)));
    }
    const auto turn_sine = float(std::sin(4 * step));
    const auto turn_cosine = float(std::cos(4 * step));
    for (unsigned i = 0; i < size; i += 4) {
        for (unsigned k = 0; k < 4; k++) {
            table[i + k] += amplitude * sine[k];
            const float turned = sine[k] * turn_cosine + cosine[k] * turn_sine;
            cosine[k] = cosine[k] * turn_cosine - sine[k] * turn_sine;
            sine[k] = turned;
        }
    }
}

using AmplitudeFunction = float (*)(unsigned);

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
        std::copy_n(cache, tableSize, data);
    } else {
        for (unsigned h = 1; h <= harmonics; h++) {
            float a = amplitude(h);
            if (a == 0.0F)
                continue;
            const double taper = std::cos(PI / 2 / harmonics * (h - 1));
            a *= float(taper * taper);
            add_harmonic(data, tableSize, 2 * PI * h / tableSize, a);
        }
        std::copy_n(data, tableSize, cache);
    }
    data[tableSize] = data[0];
}

void Wavetable::init_noise(unsigned size) {
    // Park & Miller's minimal standard generator (1988), x' = 16807 x mod (2^31 - 1).
    constexpr uint64_t MULTIPLIER = 16807;
    constexpr uint64_t MODULUS = 2147483647;
    constexpr float TO_UNIT = 1.0F / (1U << 30U);
    allocate(size);
    uint64_t x = 123459876;
    for (unsigned i = 0; i < size; i++) {
        x = x * MULTIPLIER % MODULUS;
        data[i] = float(x) * TO_UNIT - 1.0F;
    }
    data[size] = data[0];
}

float Waveform::sineWaveAmplitude(unsigned h) {
    return h == 1 ? 1.0F : 0.0F;
}

float Waveform::sawWaveAmplitude(unsigned h) {
    const auto a = float(2 / PI / h);
    return h % 2 == 1 ? a : -a;
}

float Waveform::squareWaveAmplitude(unsigned h) {
    return h % 2 == 1 ? float(4 / PI / h) : 0.0F;
}

float Waveform::triangleWaveAmplitude(unsigned h) {
    if (h % 2 == 0)
        return 0.0F;
    const auto a = float(8 / (PI * PI) / (double(h) * h));
    return h % 4 == 3 ? -a : a;
}

float Waveform::noAmplitude(unsigned /*h*/) {
    return 0.0F;
}

Waveform::Waveform(OscType type) {
    logPrintf("Precomputing wavetables for waveform %d...", int(type));
    const bool is_noise = type == OSC_NOISE;
    tables.resize(is_noise ? 1 : NUM_WAVETABLES);
    if (is_noise) {
        // Its cached block is the table before it is filled, all zeros: nothing worth reading.
        keep_empty_waveform_cache(size(), type, NOISE_SIZE);
        tables[0].init_noise(NOISE_SIZE);
        return;
    }

    const size_t num_floats = size_t(size()) * WAVETABLE_SIZE;
    const CachedTables cached(size(), type, num_floats);
    const bool loaded = cached.get() != nullptr;
    std::vector<float> built(loaded ? 0 : num_floats);
    float* cache = loaded ? cached.get() : built.data();
    constexpr size_t STRIDE = WAVETABLE_SIZE + WAVETABLE_GUARD;
    memory = make_large_float_array(size() * STRIDE);
    unsigned harmonics = 1;
    unsigned limit = 0;
    for (unsigned k = 0; k < size(); k++) {
        tables[k].use_memory(memory.get() + k * STRIDE);
        tables[k].init(WAVETABLE_SIZE, harmonics, amplitude_of(type),
                       cache + size_t(k) * WAVETABLE_SIZE, loaded);
        const bool last = k + 1 == size();
        harmonics = next_harmonics(harmonics);
        while (limit <= MAX_HARMONICS && (last || limit < harmonics))
            table_of_limit[limit++] = uint8_t(k);
    }
    logPrintf("maximum nHarmonies is %i, ", int(harmonics - 4));
    if (!loaded)
        write_waveform_cache(size(), type, built);
    logPrintf("done\n");
}

void Waveform::getWavetable(float frequency, Wavetable_ret* ret) const {
    const float limit = 22050.0F / frequency;
    const unsigned index =
        limit < float(MAX_HARMONICS) ? unsigned(std::max(limit, 0.0F)) : MAX_HARMONICS;
    const Wavetable& wavetable = tables[table_of_limit[index]];
    ret->data = wavetable.get_data();
    ret->shift = wavetable.get_shift();
}

WaveformStore::WaveformStore() = default;

const WaveformStore& WaveformStore::instance() {
    static const WaveformStore store;
    return store;
}

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

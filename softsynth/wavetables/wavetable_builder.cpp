// Building band-limited wavetables from their harmonics.

#include "softsynth/wavetables/wavetable_builder.h"

#include <algorithm>
#include <cmath>
#include <numbers>

#include "common/assertion.h"
#include "softsynth/kernels/kernels.h"

namespace tarquil {

namespace {

// Of sin(step * (i + 0.5)) at the first samples, for `step` radians a sample.
HarmonicPhasors first_phasors(double step) {
    HarmonicPhasors phasors = {};
    for (int k = 0; k < 4; k++) {
        phasors.sine[k] = float(std::sin(step * (k + 0.5)));
        phasors.cosine[k] = float(std::cos(step * (k + 0.5)));
    }
    phasors.turn_sine = float(std::sin(4 * step));
    phasors.turn_cosine = float(std::cos(4 * step));
    return phasors;
}

} // namespace

void build_wavetables(float* samples, size_t stride, unsigned size,
                      const std::vector<unsigned>& num_harmonics, AmplitudeFunction amplitude) {
    TARQ_ASSERT((size & (size - 1)) == 0 && size >= HarmonicTables::CHUNK);
    // Only the harmonics that the waveform has.
    std::vector<unsigned> present;
    for (unsigned h = 1; h <= num_harmonics.back(); h++) {
        if (amplitude(h) != 0.0F)
            present.push_back(h);
    }
    std::vector<HarmonicPhasors> phasors(present.size());
    std::transform(present.begin(), present.end(), phasors.begin(),
                   [&](unsigned h) { return first_phasors(2 * std::numbers::pi * h / size); });
    std::vector<uint32_t> counts;
    std::vector<float> amplitudes(num_harmonics.size() * present.size());
    for (size_t k = 0; k < num_harmonics.size(); k++) {
        const unsigned n = num_harmonics[k];
        const auto end = std::upper_bound(present.begin(), present.end(), n);
        counts.push_back(uint32_t(end - present.begin()));
        for (uint32_t j = 0; j < counts[k]; j++) {
            const double taper = std::cos(std::numbers::pi / 2 / n * (present[j] - 1));
            amplitudes[k * present.size() + j] = amplitude(present[j]) * float(taper * taper);
        }
    }
    std::vector<float> scratch(present.size() * HarmonicTables::CHUNK);
    kernels().harmonic_tables({samples, stride, size, uint32_t(counts.size()), counts.data(),
                               uint32_t(present.size()), amplitudes.data(), phasors.data(),
                               scratch.data()});
}

} // namespace tarquil

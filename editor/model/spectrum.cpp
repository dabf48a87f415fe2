// The levels of a sound over frequency.

#include "editor/model/spectrum.h"

#include <kiss_fftr.h>

#include <algorithm>
#include <cmath>
#include <numbers>

#include "softsynth/parameters/constants.h"

namespace tarquil {

static_assert(sizeof(kiss_fft_cpx) == 2 * sizeof(float));

Spectrum::Spectrum(unsigned num_frames)
    : transform(kiss_fftr_alloc(int(num_frames), 0, nullptr, nullptr)), window(num_frames),
      windowed(num_frames), bins(num_frames + 2) {
    for (unsigned i = 0; i < num_frames; i++) {
        const double cosine = std::cos(2.0 * std::numbers::pi * i / num_frames);
        // A Hann window's mean is 1/2, and half of a sine's level lies at its negative frequency.
        window[i] = float((1.0 - cosine) / 2 * 4.0 / num_frames);
    }
}

Spectrum::~Spectrum() {
    kiss_fftr_free(transform);
}

void Spectrum::raise(std::span<const float> samples, std::span<float> levels) {
    std::transform(samples.begin(), samples.end(), window.begin(), windowed.begin(),
                   std::multiplies<float>());
    auto* const parts = reinterpret_cast<kiss_fft_cpx*>(bins.data());
    kiss_fftr(transform, windowed.data(), parts);
    const size_t num_bins = windowed.size() / 2 + 1;
    for (size_t i = 0; i < num_bins; i++) // in place: behind what has been read
        bins[i] = std::hypot(parts[i].r, parts[i].i);
    const double bins_per_hz = double(windowed.size()) / SAMPLE_RATE;
    const double octaves = std::log2(HIGHEST_HZ / LOWEST_HZ) / double(levels.size() - 1);
    for (size_t k = 0; k < levels.size(); k++) {
        const double place = LOWEST_HZ * std::exp2(octaves * double(k)) * bins_per_hz;
        const auto first = size_t(place * std::exp2(-octaves / 2));
        const auto last = size_t(place * std::exp2(octaves / 2));
        float level = 0.0F;
        if (last <= first + 1) { // between two bins
            const auto part = float(place - std::floor(place));
            const auto below = size_t(place);
            level = bins[below] + (bins[below + 1] - bins[below]) * part;
        } else {
            level = *std::max_element(bins.begin() + std::ptrdiff_t(first + 1),
                                      bins.begin() + std::ptrdiff_t(last + 1));
        }
        constexpr float LOWEST_LEVEL = 1e-7F;
        levels[k] = std::max(levels[k], 20.0F * std::log10(std::max(level, LOWEST_LEVEL)));
    }
}

} // namespace tarquil

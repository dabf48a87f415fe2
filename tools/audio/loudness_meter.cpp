// Peak and loudness of a stereo stream.

#include "tools/audio/loudness_meter.h"

#include <algorithm>
#include <cmath>
#include <iterator>

#include "common/failure.h"

namespace tarquil {

float find_peak(const float* samples, uint64_t num_samples) {
    // Several at a time, since each maximum waits for the one before.
    constexpr uint64_t CHAINS = 8;
    float peaks[CHAINS] = {};
    uint64_t i = 0;
    for (; i + CHAINS <= num_samples; i += CHAINS) {
        for (uint64_t k = 0; k < CHAINS; k++)
            peaks[k] = std::max(peaks[k], std::fabs(samples[i + k]));
    }
    for (; i < num_samples; i++)
        peaks[0] = std::max(peaks[0], std::fabs(samples[i]));
    return *std::max_element(std::begin(peaks), std::end(peaks));
}

LoudnessMeter::LoudnessMeter(int rate)
    : state(ebur128_init(2, static_cast<unsigned long>(rate), EBUR128_MODE_I)) {
    if (state == nullptr)
        throw Failure(STATUS_CANNOT, "the loudness meter cannot be made");
}

LoudnessMeter::~LoudnessMeter() {
    ebur128_destroy(&state);
}

void LoudnessMeter::add(const float* frames, uint64_t num_frames) {
    peak = std::max(peak, find_peak(frames, 2 * num_frames));
    if (ebur128_add_frames_float(state, frames, num_frames) != EBUR128_SUCCESS)
        throw Failure(STATUS_CANNOT, "the loudness meter is out of memory");
}

std::optional<double> LoudnessMeter::peak_dbfs() const {
    if (peak == 0.0F)
        return std::nullopt;
    return 20.0 * std::log10(double(peak));
}

std::optional<double> LoudnessMeter::loudness_lufs() const {
    double loudness = 0.0;
    if (ebur128_loudness_global(state, &loudness) != EBUR128_SUCCESS || !std::isfinite(loudness))
        return std::nullopt;
    return loudness;
}

} // namespace tarquil

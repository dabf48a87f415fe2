// The second-order section on interleaved stereo, for the master section.

#include "softsynth/filters/stereo_filter.h"

#include <algorithm>
#include <bit>

#include "common/assertion.h"
#include "softsynth/kernels/kernels.h"
#include "softsynth/signal/finite.h"

namespace tarquil {

void StereoFilter::init(FilterType new_type) {
    Filter::init(new_type, 0, 1, 0.0F);
    clear();
}

void StereoFilter::clear() {
    std::fill_n(sides, CHANNELS, State());
}

void StereoFilter::set(float omega, float q, float gain) {
    set_linear_cutoff(omega);
    set_resonance(q);
    set_dbgain_normalized(gain);
    update();
}

void StereoFilter::render(std::span<StereoFilter* const> filters, float* buf, uint32_t n) {
    if (all_zero(buf, CHANNELS * n) && are_at_rest(filters))
        return;
    run(filters, buf, n);
    for (StereoFilter* filter : filters) {
        if (!all_finite(&filter->sides[0].z1, 2 * CHANNELS))
            filter->clear();
    }
}

void StereoFilter::run(std::span<StereoFilter* const> filters, float* buf, uint32_t n) {
    TARQ_ASSERT(!filters.empty() && filters.size() <= BiquadSeries::MAX_SECTIONS);
    BiquadSeries series = {{}, {}, uint32_t(filters.size()), CHANNELS};
    for (uint32_t i = 0; i < series.count; i++) {
        TARQ_ASSERT(filters[i]->depth == 1);
        series.coefficients[i] = &filters[i]->get_coefficients();
        series.memory[i] = filters[i]->sides;
    }
    kernels().biquad_series(series, buf, n);
}

bool StereoFilter::are_at_rest(std::span<StereoFilter* const> filters) {
    State before[BiquadSeries::MAX_SECTIONS][CHANNELS];
    for (size_t i = 0; i < filters.size(); i++)
        std::copy_n(filters[i]->sides, CHANNELS, before[i]);
    float frame[CHANNELS] = {};
    run(filters, frame, 1);
    const auto same_bits = [](State a, State b) {
        return std::bit_cast<uint64_t>(a) == std::bit_cast<uint64_t>(b);
    };
    bool is_unchanged = true;
    for (size_t i = 0; i < filters.size(); i++) {
        is_unchanged = is_unchanged &&
                       std::equal(before[i], before[i] + CHANNELS, filters[i]->sides, same_bits);
        std::copy_n(before[i], CHANNELS, filters[i]->sides);
    }
    return is_unchanged && all_zero(frame, CHANNELS);
}

} // namespace tarquil

// The second-order section on interleaved stereo, for the master section.

#include "softsynth/filters/stereo_filter.h"

#include <algorithm>
#include <bit>
#include <iterator>

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
    const bool is_idle = all_zero(buf, CHANNELS * n) &&
                         std::all_of(filters.begin(), filters.end(),
                                     [](StereoFilter* filter) { return filter->is_at_rest(); });
    if (is_idle)
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

bool StereoFilter::is_at_rest() {
    State before[CHANNELS];
    std::copy_n(sides, CHANNELS, before);
    float frame[CHANNELS] = {};
    StereoFilter* const self = this;
    run({&self, 1}, frame, 1);
    const bool is_unchanged =
        std::equal(std::begin(before), std::end(before), sides, [](State a, State b) {
            return std::bit_cast<uint64_t>(a) == std::bit_cast<uint64_t>(b);
        });
    std::copy_n(before, CHANNELS, sides);
    return is_unchanged && all_zero(frame, CHANNELS);
}

} // namespace tarquil

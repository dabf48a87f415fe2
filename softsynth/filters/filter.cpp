// A cascade of up to four identical second-order sections, with an optional waveshaper around it.

#include "softsynth/filters/filter.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <numbers>
#include <string>

#include "common/number_text.h"
#include "softsynth/filters/cutoff_angle.h"
#include "softsynth/kernels/kernels.h"
#include "softsynth/parameters/filter_quantities.h"
#include "softsynth/signal/control_segments.h"
#include "softsynth/signal/finite.h"

namespace tarquil {

namespace {

constexpr float MIN_RESONANCE = 0.001F;

float shape_before(float x) {
    const float x2 = x * x;
    return x * (0.93343276F + x2 * (-0.64557457F + x2 * (0.7337183F + x2 * -0.33106458F)));
}

float shape_after(float x) {
    const float x2 = x * x;
    return x * (1.1850098F + x2 * (0.5173562F + x2 * -0.004378877F));
}

} // namespace

Filter::Filter() {
    init(FILTER_NONE, 0, 1, 0.0F);
    update();
}

void Filter::init(FilterType new_type, int new_waveshape, int new_depth, float key_frequency) {
    type = new_type;
    waveshape = new_waveshape;
    depth = unsigned(new_depth);
    if (type == FILTER_NONE)
        depth = 0;
    if (depth == 0)
        type = FILTER_NONE;
    key_follow = 2.0F * key_frequency * std::numbers::pi_v<float> / float(SAMPLE_RATE);
    is_stale = true;
    std::fill_n(state, depth, State());
}

void Filter::set_octaves_cutoff(float octaves) {
    if (octaves == octaves_set)
        return;
    octaves_set = octaves;
    set_cutoff(cutoff_omega(octaves));
}

void Filter::set_resonance(float q) {
    // Written so that not a number ends at the bound, too.
    const float bounded = q > 0.0F ? q : MIN_RESONANCE;
    is_stale = is_stale || resonance != bounded;
    resonance = bounded;
}

void Filter::set_dbgain_normalized(float g) {
    if (g == gain_power)
        return;
    gain_power = g;
    A = filter_gain_factor(g);
    is_stale = true;
}

float Filter::section_q() const {
    switch (depth) {
    case 0:
    case 1:
        return resonance;
    case 2:
        return std::sqrt(resonance);
    case 3:
        return std::cbrt(resonance);
    case 4:
        return std::sqrt(std::sqrt(resonance));
    default:
        TARQ_ASSERT(0);
    }
}

void Filter::update() {
    if (!is_stale)
        return;
    is_stale = false;
    // As in set_resonance.
    float omega = cutoff + key_follow;
    omega = omega < MAX_CUTOFF_ANGLE ? omega : MAX_CUTOFF_ANGLE;
    omega = omega > MIN_CUTOFF_ANGLE ? omega : MIN_CUTOFF_ANGLE;
    const float s = std::sin(omega);
    const float c = std::cos(omega);
    const float alpha = s / (2.0F * section_q());

    float a0 = 1.0F + alpha;
    a1 = -2.0F * c;
    a2 = 1.0F - alpha;
    switch (type) {
    case FILTER_NONE:
        b0 = 1.0F;
        b1 = 0.0F;
        b2 = 0.0F;
        a0 = 1.0F;
        a1 = 0.0F;
        a2 = 0.0F;
        break;
    case FILTER_LOWPASS:
        b0 = (1.0F - c) / 2.0F;
        b1 = 1.0F - c;
        b2 = (1.0F - c) / 2.0F;
        break;
    case FILTER_HIGHPASS:
        b0 = (1.0F + c) / 2.0F;
        b1 = -(1.0F + c);
        b2 = (1.0F + c) / 2.0F;
        break;
    case FILTER_BANDPASS:
        b0 = alpha;
        b1 = 0.0F;
        b2 = -alpha;
        break;
    case FILTER_NOTCH:
        b0 = 1.0F;
        b1 = -2.0F * c;
        b2 = 1.0F;
        break;
    case FILTER_ALLPASS: // b2 is 1, not 1 + alpha: deliberately not exactly flat
        b0 = 1.0F - alpha;
        b1 = -2.0F * c;
        b2 = 1.0F;
        break;
    case FILTER_PEAKING_EQ:
        b0 = 1.0F + alpha * A;
        b1 = -2.0F * c;
        b2 = 1.0F - alpha * A;
        a0 = 1.0F + alpha / A;
        a2 = 1.0F - alpha / A;
        break;
    case FILTER_LOW_SHELF: {
        const float beta = 2.0F * std::sqrt(A) * alpha;
        b0 = A * ((A + 1.0F) - (A - 1.0F) * c + beta);
        b1 = 2.0F * A * ((A - 1.0F) - (A + 1.0F) * c);
        b2 = A * ((A + 1.0F) - (A - 1.0F) * c - beta);
        a0 = (A + 1.0F) + (A - 1.0F) * c + beta;
        a1 = -2.0F * ((A - 1.0F) + (A + 1.0F) * c);
        a2 = (A + 1.0F) + (A - 1.0F) * c - beta;
        break;
    }
    case FILTER_HIGH_SHELF: {
        const float beta = 2.0F * std::sqrt(A) * alpha;
        b0 = A * ((A + 1.0F) + (A - 1.0F) * c + beta);
        b1 = -2.0F * A * ((A - 1.0F) + (A + 1.0F) * c);
        b2 = A * ((A + 1.0F) + (A - 1.0F) * c - beta);
        a0 = (A + 1.0F) - (A - 1.0F) * c + beta;
        a1 = 2.0F * ((A - 1.0F) - (A + 1.0F) * c);
        a2 = (A + 1.0F) - (A - 1.0F) * c - beta;
        break;
    }
    default:
        TARQ_ASSERT(0);
    }
    b0 /= a0;
    b1 /= a0;
    b2 /= a0;
    a1 /= a0;
    a2 /= a0;
}

void Filter::render_chunk(float* buf, uint32_t n_samples) {
    TARQ_ASSERT((n_samples & 3) == 0);
    if (depth == 0)
        return;
    kernels().biquad_series(equal_sections(*this, state, depth), buf, n_samples);
    clear_if_not_finite();
}

void Filter::render_series(std::span<Filter* const> filters, float* buf, uint32_t n_samples) {
    if (filters.empty())
        return;
    BiquadSeries series = {{}, {}, uint32_t(filters.size()), 1};
    for (uint32_t i = 0; i < series.count; i++) {
        TARQ_ASSERT(filters[i]->depth == 1);
        series.coefficients[i] = filters[i];
        series.memory[i] = filters[i]->state;
    }
    kernels().biquad_series(series, buf, n_samples);
    for (Filter* filter : filters)
        filter->clear_if_not_finite();
}

void Filter::clear_if_not_finite() {
    for (unsigned k = 0; k < depth; k++) {
        if (!std::isfinite(state[k].z1) || !std::isfinite(state[k].z2)) {
            std::fill_n(state, depth, State());
            return;
        }
    }
}

void Filter::shape_before_sections(float* buf, uint32_t n_samples) {
    std::transform(buf, buf + n_samples, buf, shape_before);
}

void Filter::shape_after_sections(float* buf, uint32_t n_samples) {
    std::transform(buf, buf + n_samples, buf, shape_after);
}

void Filter::render(float* buf, uint32_t buf_size, const float* cutoff_octaves,
                    const float* resonance_signal, uint32_t control_step) {
    TARQ_ASSERT(buf_size % 4 == 0);
    if (depth == 0 && waveshape == 0)
        return;
    if (has_waveshaper())
        shape_before_sections(buf, buf_size);
    for_each_control_segment(buf_size, cutoff_octaves, resonance_signal, control_step,
                             [&](uint32_t first, uint32_t end, float octaves, float q) {
                                 set_octaves_cutoff(octaves);
                                 set_resonance(q);
                                 update();
                                 render_chunk(buf + first, end - first);
                             });
    if (has_waveshaper())
        shape_after_sections(buf, buf_size);
}

std::complex<float> Filter::evaluate_transfer_function(float omega) const {
    const std::complex<float> z1 = std::polar(1.0F, -omega);
    const std::complex<float> z2 = std::polar(1.0F, -2.0F * omega);
    const std::complex<float> section = (b0 + b1 * z1 + b2 * z2) / (1.0F + a1 * z1 + a2 * z2);
    std::complex<float> response = 1.0F;
    for (unsigned k = 0; k < depth; k++)
        response *= section;
    return response;
}

void Filter::debug() const {
    const std::string nyquist = number_to_text(SAMPLE_RATE / 2.0);
    std::string script = "set xrange [2:" + nyquist +
                         "]; set yrange [-80:20]; set log x; phasor(x) = cos(x*pi/" + nyquist +
                         ")*{1,0} + sin(x*pi/" + nyquist +
                         ")*{0,1}; tfunc(x, b0, b1, b2, a0, a1, a2) = (b0 * phasor(x)**2 + b1 * "
                         "phasor(x) + b2) / (a0 * phasor(x)**2 + a1 * phasor(x) + a2); db(x) = "
                         "20*log10(x); plot db(abs(tfunc(x";
    for (const float coefficient : {b0, b1, b2, 1.0F, a1, a2})
        script += ", " + number_to_text(double(coefficient));
    script += "))) title \"\"\n";
    std::fputs(script.c_str(), stdout);
}

} // namespace tarquil

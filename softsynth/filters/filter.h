// A cascade of up to four identical second-order sections, with an optional waveshaper around it.
//
// Coefficients: R. Bristow-Johnson, "Cookbook formulae for audio EQ biquad filter coefficients"
// (1998), with the section's Q the n-th root of the cascade's, so that the resonance of the whole
// stays near the set value.  Structure: transposed direct form II,
//
//   y = b0 x + z1;   z1 = b1 x - a1 y + z2;   z2 = b2 x - a2 y
//
// Frequencies are angular, in radians per sample, and are clamped to 0.001..pi; Q is at least
// 0.001. Stable for every Q > 0 below pi; at pi itself rounding lets the state grow slowly, and a
// state that is not finite any more is cleared.  The waveshapers are odd polynomials (own design)
// that compress before the sections and expand after them; they hold for about -1..1 and diverge
// far outside.

#pragma once

#include <complex>
#include <cstdint>
#include <limits>
#include <span>

#include "common/assertion.h"
#include "softsynth/kernels/biquad_lanes.h"
#include "softsynth/parameters/constants.h"
#include "softsynth/parameters/filter_type.h"

namespace tarquil {

// A biquad type without its waveshaper.
inline FilterType get_base_filter_type(FilterType ftype) {
    TARQ_ASSERT(ftype < FILTER_LADDER_START_MARKER);
    return FilterType(ftype % NUM_BASE_FILTER_TYPES);
}

// 1 when the type has the waveshaper.
inline int get_filter_waveshape(FilterType ftype) {
    TARQ_ASSERT(ftype < FILTER_LADDER_START_MARKER);
    return ftype / NUM_BASE_FILTER_TYPES;
}

class Filter : BiquadCoefficients {
  public:
    static constexpr int MAX_DEPTH = MAX_FILTER_DEPTH;
    static_assert(MAX_DEPTH == BiquadLanes::MAX_DEPTH);

    Filter();

    // `new_type` 0..8, `new_depth` sections 0..4; type 0 means depth 0 and the other way round.
    // `key_frequency` in Hz is added to every cutoff.  Clears the state; coefficients follow with
    // update().
    void init(FilterType new_type, int new_waveshape, int new_depth, float key_frequency);

    [[nodiscard]] FilterType get_type() const { return type; }
    [[nodiscard]] int get_depth() const { return int(depth); }
    [[nodiscard]] bool has_waveshaper() const { return waveshape == 1; }

    // Octaves above 20 Hz.
    void set_octaves_cutoff(float octaves);
    // Radians per sample.
    void set_linear_cutoff(float omega) {
        octaves_set = NEVER_SET;
        set_cutoff(omega);
    }
    void set_resonance(float q);
    // The linear gain factor of the peaking and shelf types is 10^g.
    void set_dbgain_normalized(float g);

    // Recomputes the coefficients from the settings, if any has changed.
    void update();

    // Runs the sections in place over n samples, a multiple of 4.
    void render_chunk(float* buf, uint32_t n_samples);

    // The same for up to BiquadSeries::MAX_SECTIONS filters of one section each, one behind the
    // other.
    static void render_series(std::span<Filter* const> filters, float* buf, uint32_t n_samples);

    // Waveshaper and sections in place over buf_size samples (a multiple of 4), with cutoff
    // (octaves above 20 Hz) and resonance per sample; they are read at multiples of 32 only, and
    // coefficients are computed only where they change.  The values that are read lie
    // `control_step` floats apart.
    void render(float* buf, uint32_t buf_size, const float* cutoff_octaves,
                const float* resonance_signal, uint32_t control_step = CONTROL_PERIOD);

    // What the kernel needs, with the settings applied, and the state as it is.
    [[nodiscard]] const BiquadCoefficients& get_coefficients() const { return *this; }
    [[nodiscard]] BiquadState* get_state() { return state; }
    void clear_if_not_finite();

    // The two halves of the waveshaper, in place.
    static void shape_before_sections(float* buf, uint32_t n_samples);
    static void shape_after_sections(float* buf, uint32_t n_samples);

    // The response of all sections at omega radians per sample.
    [[nodiscard]] std::complex<float> evaluate_transfer_function(float omega) const;

    // Prints a gnuplot script of the response to standard output.
    void debug() const;

  private:
    friend class StereoFilter;
    friend class SplittingStereoFilter;

    using State = BiquadState;

    // Not a number differs from everything.
    static constexpr float NEVER_SET = std::numeric_limits<float>::quiet_NaN();

    void set_cutoff(float omega) {
        is_stale = is_stale || cutoff != omega;
        cutoff = omega;
    }
    [[nodiscard]] float section_q() const;

    // settings
    FilterType type = FILTER_NONE;
    int waveshape = 0;
    float cutoff = 3.1415927F;
    float octaves_set = NEVER_SET; // that gave the cutoff, or none
    float gain_power = NEVER_SET;  // that gave A
    float resonance = 0.01F;
    float A = 1.0F;
    unsigned depth = 0;
    float key_follow = 0.0F;
    bool is_stale = true; // the coefficients are not those of the settings

    // memory (the coefficients are the base)
    State state[MAX_DEPTH];
};

} // namespace tarquil

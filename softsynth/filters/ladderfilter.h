// A four-pole transistor ladder with a saturation in every stage, at four times the sample rate.
//
// Model: A. Huovilainen's non-linear ladder (DAFx 2004) with its half-sample feedback average; the
// polynomials that correct tuning and resonance are fits to it.  Per oversampled step, w the
// angular frequency at 176400 Hz and r the resonance (0..4):
//
//   g = 1 - exp(-2 w (0.9988 - 0.20658311 w + 0.050204646 w^2 + 0.060407124 w^3))
//   k = r (0.9968 + 0.58597666 w - 0.3988407 w^2)
//   u = x - k feedback;   y1 += (T(u) - t1) g, t1 = T(y1);   ... y4, t4   (T the saturation)
//   feedback = (y4 + previous y4) / 2
//   output = (c0 u + c1 t1 + c2 t2 + c3 t3 + c4 t4) (1 + 1.25 r)
//
// The type is a set of weights c0..c4 (pole mixing).  Two 2:1 decimators lead back to 44100 Hz.
// Stable for w in 0.001..pi and r in 0..4: every stage is bounded by its saturation.  A state that
// is not finite is cleared.

#pragma once

#include <cstdint>
#include <limits>

#include "softsynth/filters/filter.h"
#include "softsynth/kernels/ladder_lanes.h"
#include "softsynth/kernels/ladder_step.h"

namespace tarquil {

// The saturation T.
inline float tanh_approx(float x) {
    return ladder_saturation(x);
}

class LadderFilter {
  public:
    LadderFilter();

    // `new_type` 18..24; `key_frequency` in Hz is added to every cutoff.  Clears the memory.
    void init(FilterType new_type, float key_frequency);

    // Octaves above 20 Hz.
    void set_octaves_cutoff(float octaves);
    // As a biquad's Q, 0..7.5 to the ladder's 0..4.
    void set_resonance(float r);
    // Recomputes the coefficients from the settings, if any has changed.
    void update();

    // n samples at 44100 Hz in, 4n at 176400 Hz out.
    void render_chunk(const float* in, float* out, uint32_t n);

    // What the kernel needs, with the settings applied and the memory as it is.
    [[nodiscard]] const LadderCoefficients& get_coefficients() const { return coefficients; }
    [[nodiscard]] LadderMemory& get_memory() { return memory; }
    void clear_if_not_finite();

    // In place over buf_size samples (at most MAX_NUM_SAMPLES), with cutoff (octaves above 20 Hz)
    // and resonance per sample, read at multiples of 32 only; the values that are read lie
    // `control_step` floats apart.
    void render(float* buf, uint32_t buf_size, const float* cutoff_octaves,
                const float* resonance_signal, uint32_t control_step = CONTROL_PERIOD);

    // Estimates the gain at omega radians per sample from a sine of 1024 samples; changes the
    // memory.
    float estimate_transfer_function(float omega);

  private:
    // settings
    FilterType type = FILTER_LADDER_START_MARKER;
    float key_follow = 0.0F; // radians per sample at 44100 Hz
    float cutoff = 3.1415927F;
    float octaves_set = std::numeric_limits<float>::quiet_NaN(); // that gave the cutoff
    float resonance = 0.01F;
    bool is_stale = true; // the coefficients are not those of the settings

    LadderCoefficients coefficients;
    LadderMemory memory;
};

} // namespace tarquil

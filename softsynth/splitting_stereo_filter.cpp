// A crossover: splits a stereo signal into the bands below and above a frequency.

#include "softsynth/splitting_stereo_filter.h"

#include "softsynth/finite.h"

void SplittingStereoFilter::init(int stages) {
    low_pass.init(FILTER_LOWPASS, 0, stages, 0.0F);
    high_pass.init(FILTER_HIGHPASS, 0, stages, 0.0F);
    num_stages = stages;
    clear_history();
}

void SplittingStereoFilter::clear_history() {
    for (Section& section : sections)
        section = Section();
}

void SplittingStereoFilter::render(float* low_out, float* in_out, uint32_t frames, float omega,
                                   float resonance) {
    for (Filter* filter : {&low_pass, &high_pass}) {
        filter->set_linear_cutoff(omega);
        filter->set_resonance(resonance);
        filter->update();
    }
    // Both numerators are symmetric (b2 = b0), both denominators the same.
    const float b0[LANES] = {low_pass.b0, low_pass.b0, high_pass.b0, high_pass.b0};
    const float b1[LANES] = {low_pass.b1, low_pass.b1, high_pass.b1, high_pass.b1};
    const float a1 = low_pass.a1;
    const float a2 = low_pass.a2;

    for (int stage = 0; stage < num_stages; stage++) {
        Section s = sections[stage];
        for (uint32_t i = 0; i < 2 * frames; i += 2) {
            const float x[LANES] = {low_out[i], low_out[i + 1], in_out[i], in_out[i + 1]};
            float y[LANES];
            for (int lane = 0; lane < LANES; lane++) {
                y[lane] = b0[lane] * x[lane] + s.z1[lane];
                s.z1[lane] = b1[lane] * x[lane] - a1 * y[lane] + s.z2[lane];
                s.z2[lane] = b0[lane] * x[lane] - a2 * y[lane];
            }
            low_out[i] = y[0];
            low_out[i + 1] = y[1];
            in_out[i] = y[2];
            in_out[i + 1] = y[3];
        }
        sections[stage] = s;
    }
    for (const Section& section : sections) {
        if (!all_finite(section.z1, LANES) || !all_finite(section.z2, LANES)) {
            clear_history();
            return;
        }
    }
}

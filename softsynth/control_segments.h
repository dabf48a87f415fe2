// Cuts a block where its filter controls change.

#pragma once

#include <cstdint>

#include "softsynth/constants.h"

// Calls render(first, end, cutoff, resonance) for each run of samples with the same controls, which
// are read at multiples of CONTROL_PERIOD from the block's start and lie `control_step` floats
// apart: CONTROL_PERIOD in signals with a value per sample.
template <typename Render>
void for_each_control_segment(uint32_t size, const float* cutoff, const float* resonance,
                              uint32_t control_step, const Render& render) {
    float current_cutoff = cutoff[0];
    float current_resonance = resonance[0];
    uint32_t first = 0;
    for (uint32_t i = CONTROL_PERIOD; i < size; i += CONTROL_PERIOD) {
        cutoff += control_step;
        resonance += control_step;
        if (*cutoff == current_cutoff && *resonance == current_resonance)
            continue;
        render(first, i, current_cutoff, current_resonance);
        current_cutoff = *cutoff;
        current_resonance = *resonance;
        first = i;
    }
    render(first, size, current_cutoff, current_resonance);
}

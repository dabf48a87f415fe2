// Cuts a block where its filter controls change, for one signal and for many at once.

#pragma once

#include <cstdint>

#include "softsynth/parameters/constants.h"

namespace tarquil {

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

// For `count` signals at once, whose controls are arrays with a value per CONTROL_PERIOD: calls
// apply(signal, cutoff, resonance) for every signal at the block's start and wherever its controls
// change, with the values that hold from there on, and render(first, end) for each run of samples
// in which no signal's controls change.
template <uint32_t MAX_COUNT, typename Apply, typename Render>
void for_each_common_segment(uint32_t size, uint32_t count, const float* const* cutoff,
                             const float* const* resonance, const Apply& apply,
                             const Render& render) {
    float current_cutoff[MAX_COUNT];
    float current_resonance[MAX_COUNT];
    const auto take = [&](uint32_t signal, uint32_t control) {
        current_cutoff[signal] = cutoff[signal][control];
        current_resonance[signal] = resonance[signal][control];
        apply(signal, current_cutoff[signal], current_resonance[signal]);
    };
    for (uint32_t signal = 0; signal < count; signal++)
        take(signal, 0);
    uint32_t first = 0;
    for (uint32_t i = CONTROL_PERIOD; i < size; i += CONTROL_PERIOD) {
        const uint32_t control = i / CONTROL_PERIOD;
        for (uint32_t signal = 0; signal < count; signal++) {
            if (cutoff[signal][control] == current_cutoff[signal] &&
                resonance[signal][control] == current_resonance[signal])
                continue;
            if (first < i)
                render(first, i);
            first = i;
            take(signal, control);
        }
    }
    render(first, size);
}

} // namespace tarquil

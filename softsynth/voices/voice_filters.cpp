// The filters of all channels' voices, batched by kind so that many run side by side.

#include "softsynth/voices/voice_filters.h"

#include "softsynth/kernels/kernels.h"
#include "softsynth/signal/control_segments.h"

namespace tarquil {

void VoiceFilters::render(std::span<Voice* const> voices, uint32_t size) {
    constexpr int LADDER = Filter::MAX_DEPTH + 1; // beside the biquads' depths
    Voice* kinds[LADDER + 1][MAX_VOICES];
    uint32_t counts[LADDER + 1] = {};
    for (Voice* voice : voices) {
        const int kind = voice->get_ladder() != nullptr ? LADDER : voice->get_biquads().get_depth();
        kinds[kind][counts[kind]++] = voice;
    }
    for (int kind = 0; kind <= LADDER; kind++) {
        if (counts[kind] == 0)
            continue;
        const std::span<Voice* const> batch = {kinds[kind], counts[kind]};
        take(batch);
        if (kind == LADDER)
            render_ladders(batch, size);
        else
            render_biquads(batch, kind, size);
    }
}

void VoiceFilters::take(std::span<Voice* const> voices) {
    count = 0;
    for (Voice* voice : voices) {
        VoiceSignals& signals = voice->get_signals();
        signal[count] = signals.signal;
        cutoff[count] = signals.cutoff;
        resonance[count] = signals.resonance;
        count++;
    }
}

void VoiceFilters::render_ladders(std::span<Voice* const> voices, uint32_t size) {
    LadderFilter* filters[MAX_VOICES];
    LadderMemory* memory[MAX_VOICES];
    const LadderCoefficients* coefficients[MAX_VOICES];
    for (uint32_t i = 0; i < count; i++) {
        filters[i] = voices[i]->get_ladder();
        memory[i] = &filters[i]->get_memory();
        coefficients[i] = &filters[i]->get_coefficients();
    }
    const LadderLanes lanes = {signal, memory, coefficients, count, ladder_scratch};
    for_each_common_segment<MAX_VOICES>(
        size, count, cutoff, resonance,
        [&](uint32_t lane, float octaves, float q) {
            filters[lane]->set_octaves_cutoff(octaves);
            filters[lane]->set_resonance(q);
            filters[lane]->update();
        },
        [&](uint32_t first, uint32_t end) { kernels().ladder_lanes(lanes, first, end - first); });
    for (uint32_t i = 0; i < count; i++)
        filters[i]->clear_if_not_finite();
}

void VoiceFilters::render_biquads(std::span<Voice* const> voices, int depth, uint32_t size) {
    Filter* filters[MAX_VOICES];
    BiquadState* memory[MAX_VOICES];
    const BiquadCoefficients* coefficients[MAX_VOICES];
    for (uint32_t i = 0; i < count; i++) {
        filters[i] = &voices[i]->get_biquads();
        memory[i] = filters[i]->get_state();
        coefficients[i] = &filters[i]->get_coefficients();
        if (filters[i]->has_waveshaper())
            Filter::shape_before_sections(signal[i], size);
    }
    const BiquadLanes lanes = {signal, memory, coefficients, count, uint32_t(depth)};
    if (depth > 0) {
        for_each_common_segment<MAX_VOICES>(
            size, count, cutoff, resonance,
            [&](uint32_t lane, float octaves, float q) {
                filters[lane]->clear_if_not_finite(); // at the end of each segment of its own
                filters[lane]->set_octaves_cutoff(octaves);
                filters[lane]->set_resonance(q);
                filters[lane]->update();
            },
            [&](uint32_t first, uint32_t end) {
                kernels().biquad_lanes(lanes, first, end - first);
            });
    }
    for (uint32_t i = 0; i < count; i++) {
        filters[i]->clear_if_not_finite();
        if (filters[i]->has_waveshaper())
            Filter::shape_after_sections(signal[i], size);
    }
}

} // namespace tarquil

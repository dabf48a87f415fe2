// The filters of all channels' voices, batched by kind so that many run side by side.

#include "softsynth/voice_filters.h"

#include "softsynth/control_segments.h"
#include "softsynth/kernels/kernels.h"

void VoiceFilters::render(VoicePool& pool, uint32_t size) {
    render_ladders(pool, size);
    for (int depth = 0; depth <= Filter::MAX_DEPTH; depth++)
        render_biquads(pool, depth, size);
}

void VoiceFilters::add(VoiceSignals& signals) {
    signal[count] = signals.signal;
    cutoff[count] = signals.cutoff;
    resonance[count] = signals.resonance;
    count++;
}

void VoiceFilters::render_ladders(VoicePool& pool, uint32_t size) {
    LadderFilter* filters[MAX_VOICES];
    LadderMemory* memory[MAX_VOICES];
    const LadderCoefficients* coefficients[MAX_VOICES];
    clear();
    for (Voice& voice : pool) {
        LadderFilter* ladder = voice.is_active() ? voice.get_ladder() : nullptr;
        if (ladder == nullptr)
            continue;
        filters[count] = ladder;
        memory[count] = &ladder->get_memory();
        coefficients[count] = &ladder->get_coefficients();
        add(voice.get_signals());
    }
    if (count == 0)
        return;
    const LadderLanes lanes = {signal, memory, coefficients, count, ladder_scratch};
    for_each_common_segment<MAX_VOICES>(
        size, count, cutoff, resonance,
        [&](uint32_t voice, float octaves, float q) {
            filters[voice]->set_octaves_cutoff(octaves);
            filters[voice]->set_resonance(q);
            filters[voice]->update();
        },
        [&](uint32_t first, uint32_t end) { kernels().ladder_lanes(lanes, first, end - first); });
    for (uint32_t voice = 0; voice < count; voice++)
        filters[voice]->clear_if_not_finite();
}

void VoiceFilters::render_biquads(VoicePool& pool, int depth, uint32_t size) {
    Filter* filters[MAX_VOICES];
    BiquadState* memory[MAX_VOICES];
    const BiquadCoefficients* coefficients[MAX_VOICES];
    clear();
    for (Voice& voice : pool) {
        if (!voice.is_active() || voice.get_ladder() != nullptr ||
            voice.get_biquads().get_depth() != depth)
            continue;
        Filter& filter = voice.get_biquads();
        filters[count] = &filter;
        memory[count] = filter.get_state();
        coefficients[count] = &filter.get_coefficients();
        add(voice.get_signals());
        if (filter.has_waveshaper())
            Filter::shape_before_sections(voice.get_signals().signal, size);
    }
    if (count > 0 && depth > 0) {
        const BiquadLanes lanes = {signal, memory, coefficients, count, uint32_t(depth)};
        for_each_common_segment<MAX_VOICES>(
            size, count, cutoff, resonance,
            [&](uint32_t voice, float octaves, float q) {
                filters[voice]->clear_if_not_finite(); // at the end of each segment of its own
                filters[voice]->set_octaves_cutoff(octaves);
                filters[voice]->set_resonance(q);
                filters[voice]->update();
            },
            [&](uint32_t first, uint32_t end) {
                kernels().biquad_lanes(lanes, first, end - first);
            });
    }
    for (uint32_t voice = 0; voice < count; voice++) {
        filters[voice]->clear_if_not_finite();
        if (filters[voice]->has_waveshaper())
            Filter::shape_after_sections(signal[voice], size);
    }
}

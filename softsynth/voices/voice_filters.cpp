// The filters of all channels' voices, batched by kind so that many run side by side.

#include "softsynth/voices/voice_filters.h"

#include "softsynth/kernels/kernels.h"
#include "softsynth/signal/control_segments.h"

namespace tarquil {

void VoiceFilters::render(std::span<Voice* const> voices, uint32_t size) {
    render_ladders(voices, size);
    for (int depth = 0; depth <= Filter::MAX_DEPTH; depth++)
        render_biquads(voices, depth, size);
}

void VoiceFilters::add(VoiceSignals& signals) {
    signal[count] = signals.signal;
    cutoff[count] = signals.cutoff;
    resonance[count] = signals.resonance;
    count++;
}

void VoiceFilters::render_ladders(std::span<Voice* const> voices, uint32_t size) {
    LadderFilter* filters[MAX_VOICES];
    LadderMemory* memory[MAX_VOICES];
    const LadderCoefficients* coefficients[MAX_VOICES];
    clear();
    for (Voice* voice : voices) {
        LadderFilter* ladder = voice->get_ladder();
        if (ladder == nullptr)
            continue;
        filters[count] = ladder;
        memory[count] = &ladder->get_memory();
        coefficients[count] = &ladder->get_coefficients();
        add(voice->get_signals());
    }
    if (count == 0)
        return;
    const LadderLanes lanes = {signal, memory, coefficients, count, ladder_scratch};
    for_each_common_segment<MAX_VOICES>(
        size, count, cutoff, resonance,
        [&](uint32_t lane, float octaves, float q) {
            filters[lane]->set_octaves_cutoff(octaves);
            filters[lane]->set_resonance(q);
            filters[lane]->update();
        },
        [&](uint32_t first, uint32_t end) { kernels().ladder_lanes(lanes, first, end - first); });
    for (Voice* voice : voices) {
        if (LadderFilter* ladder = voice->get_ladder())
            ladder->clear_if_not_finite();
    }
}

void VoiceFilters::render_biquads(std::span<Voice* const> voices, int depth, uint32_t size) {
    Filter* filters[MAX_VOICES];
    BiquadState* memory[MAX_VOICES];
    const BiquadCoefficients* coefficients[MAX_VOICES];
    const auto belongs = [depth](Voice& voice) {
        return voice.get_ladder() == nullptr && voice.get_biquads().get_depth() == depth;
    };
    clear();
    for (Voice* voice : voices) {
        if (!belongs(*voice))
            continue;
        Filter& filter = voice->get_biquads();
        filters[count] = &filter;
        memory[count] = filter.get_state();
        coefficients[count] = &filter.get_coefficients();
        add(voice->get_signals());
        if (filter.has_waveshaper())
            Filter::shape_before_sections(voice->get_signals().signal, size);
    }
    const BiquadLanes lanes = {signal, memory, coefficients, count, uint32_t(depth)};
    if (count > 0 && depth > 0) {
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
    for (Voice* voice : voices) {
        if (!belongs(*voice))
            continue;
        voice->get_biquads().clear_if_not_finite();
        if (voice->get_biquads().has_waveshaper())
            Filter::shape_after_sections(voice->get_signals().signal, size);
    }
}

} // namespace tarquil

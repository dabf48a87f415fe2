// What a channel's chain takes of its controllers once a block: their last values.

#include "softsynth/voices/chain_settings.h"

#include <algorithm>
#include <cmath>

#include "softsynth/parameters/master_quantities.h"

namespace tarquil {

ChainSettings::ChainSettings(const SoundControls& controls) {
    const auto take_parameters = [&](const EffectRows& rows, int* parameters) {
        for (unsigned i = 0; i < NUM_EFFECT_PARAMETERS; i++)
            parameters[i] = controls.last_int_value(rows.parameter(i));
    };
    for (unsigned i = 0; i < NUM_MONO_EFFECTS; i++) {
        const EffectRows rows = mono_effect_rows(i);
        inserts[i].type = MonoEffect::effect_type(controls.last_int_value(rows.type));
        take_parameters(rows, inserts[i].parameters);
    }
    for (unsigned i = 0; i < NUM_CHANNEL_FILTERS; i++) {
        const FilterRows rows = channel_filter_rows(i);
        filters[i] = {.type = FilterType(controls.last_int_value(rows.type)),
                      .cutoff = controls.last_value(rows.cutoff),
                      .resonance = controls.last_value(rows.resonance),
                      .gain = controls.last_value(rows.gain)};
    }
    const float panning = controls.last_value(CTRL_PANNING);
    volume = controls.last_cubed_value(CTRL_MAIN_VOLUME);
    left_gain = std::sqrt(1.0F - panning);
    right_gain = std::sqrt(panning);
    stereo_type = StereoEffect::effect_type(controls.last_int_value(STEREO_EFFECT_ROWS.type));
    take_parameters(STEREO_EFFECT_ROWS, stereo_parameters);
    stereo_wet = controls.last_cubed_value(CTRL_CHANFX2_WET);
    levels[0] = 1.0F;
    levels[1] = send_level(controls.last_value(CTRL_AUX1_LEVEL));
    levels[2] = send_level(controls.last_value(CTRL_AUX2_LEVEL));

    passes_silence =
        std::all_of(
            std::begin(inserts), std::end(inserts),
            [](const Insert& insert) { return insert.type == MonoEffect::MONO_EFFECT_OFF; }) &&
        std::all_of(std::begin(filters), std::end(filters),
                    [](const Equaliser& filter) { return filter.type == FILTER_NONE; }) &&
        stereo_type == StereoEffect::STEREO_EFFECT_OFF && volume >= 0.0F;
}

} // namespace tarquil

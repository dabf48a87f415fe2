// What the master section takes of the global controllers once a block.

#include "softsynth/core/master_settings.h"

#include <algorithm>
#include <iterator>

#include "softsynth/parameters/filter_quantities.h"
#include "softsynth/parameters/master_quantities.h"

namespace tarquil {

MasterSettings::MasterSettings(const ControllerArray& globals) {
    const auto byte = [&](unsigned number) {
        return globals.get_controller(number).get_last_int_value();
    };
    const auto value = [&](unsigned number) {
        return globals.get_controller(number).get_last_value();
    };
    const auto cubed_value = [&](unsigned number) {
        return globals.get_controller(number).get_last_cubed_value();
    };
    reverb = {.room_size = value(CTRL_REVERB_ROOMSIZE),
              .damp = value(CTRL_REVERB_DAMP),
              .width = value(CTRL_REVERB_WIDTH),
              .wet = cubed_value(CTRL_REVERB_WET)};
    delay_parameters[0] = byte(CTRL_DELAY_LEFT_TIME);
    delay_parameters[1] = byte(CTRL_DELAY_RIGHT_TIME);
    delay_parameters[2] = byte(CTRL_DELAY_FEEDBACK);
    aux_omega = cubed_value(CTRL_AUX_CUTOFF) * RADIANS_PER_HZ;
    for (unsigned i = 0; i < NUM_GLOBAL_FILTERS; i++) {
        const FilterRows rows = global_filter_rows(i);
        filters[i] = {.type = FilterType(byte(rows.type)),
                      .omega = cutoff_omega(value(rows.cutoff)),
                      .resonance = value(rows.resonance),
                      .gain = value(rows.gain)};
    }
    retrigger = {.bpm_byte = byte(CTRL_RETRIGGER_BPM),
                 .bpm = value(CTRL_RETRIGGER_BPM),
                 .speedup = value(CTRL_RETRIGGER_SPEEDUP),
                 .wet = value(CTRL_RETRIGGER_WET_LEVEL)};
    pre_gain = master_pre_gain(value(CTRL_FCMPR_PRE_GAIN));
    std::transform(std::begin(CROSSOVER_ROWS), std::end(CROSSOVER_ROWS), compressor.crossovers,
                   cubed_value);
    for (unsigned b = 0; b < MC_N_BANDS; b++) {
        const CompressorBandRows rows = compressor_band_rows(b);
        compressor.thresholds[b] = cubed_value(rows.threshold);
        compressor.ratios[b] = cubed_value(rows.ratio);
        compressor.attacks[b] = cubed_value(rows.attack);
        compressor.releases[b] = cubed_value(rows.release);
        compressor.makeups[b] = cubed_value(rows.makeup);
    }
}

} // namespace tarquil

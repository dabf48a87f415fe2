// The gain of filters over frequency, from the engine's own filters.
//
// Linear filters tell it themselves.  Those with a waveshaper or a ladder are asked with an impulse
// so small that their curves are straight: what comes out is the response to quiet sound, in
// amplitude and not only in phase with the input as the ladder's own estimate is.

#pragma once

#include <vector>

#include "softsynth/parameters/controller_bytes.h"
#include "softsynth/parameters/families.h"
#include "softsynth/parameters/filter_type.h"

namespace tarquil {

struct FilterSettings {
    FilterType type = FILTER_NONE; // 0..24
    int depth = 0;                 // sections of a biquad filter, 0..4
    float cutoff_octaves = 0.0F;   // above 20 Hz
    float resonance = 1.0F;        // Q
    float gain = 0.0F;             // as Filter::set_dbgain_normalized takes it
    float key_frequency = 0.0F;    // Hz, added to the cutoff

    bool operator==(const FilterSettings&) const = default;
};

// False when the filter passes everything unchanged.
bool is_filter_on(const FilterSettings& filter);

// The filter of a voice that plays `note`; its resonance and cutoff without modulation.
FilterSettings voice_filter_settings(const ControllerBytes& bytes, int note);

// A filter of an equaliser.
FilterSettings equaliser_filter_settings(const ControllerBytes& bytes, const FilterRows& rows);

// Insert effect `index` as a filter.
FilterSettings mono_effect_filter_settings(const ControllerBytes& bytes, unsigned index);

// With the key's frequency, which may be beyond what the filter can do.
double cutoff_hertz(const FilterSettings& filter);

// The gain in dB at each of `frequencies` (Hz, up to 22050), not below MIN_GAIN_DB.
std::vector<double> filter_gains(const FilterSettings& filter,
                                 const std::vector<double>& frequencies);

// Stands for the infinite attenuation in the middle of a notch.
inline constexpr double MIN_GAIN_DB = -200.0;

// `count` frequencies (at least 2) from `first` to `last`, at equal ratios.
std::vector<double> spread_frequencies(double first, double last, unsigned count);

} // namespace tarquil

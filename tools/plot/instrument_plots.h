// The plots of an instrument's filters, waveform and envelopes.

#pragma once

#include <string>

#include "curves/envelope_shape.h"
#include "curves/filter_response.h"
#include "instrument/instrument.h"
#include "tools/plot/plot.h"

namespace tarquil {

// The voice filter at `note` (0..127), the channel filters together and the sum of both.
Plot plot_instrument_filters(const Instrument& instrument, int note);
// One filter.
Plot plot_filter(const FilterSettings& filter);

// `periods` (at least 1) of `note` (0..127).
Plot plot_wave(const Instrument& instrument, int note, int periods);

// A note of `hold` seconds (0 to MAX_HOLD).
Plot plot_envelopes(const Instrument& instrument, double hold);

// The label of a voice filter's type, "off" to "ladder notch".
std::string filter_type_label(FilterType type);

} // namespace tarquil

// What a controller's byte stands for, as people read it: "-6.0 dB", "1.25 kHz", "lowpass".

#pragma once

#include <string>

// The quantity that controller `number` (0..205) has at `byte` (0..127): mapped and bent by the
// controller's curve, in the unit of its row (see ControllerInfo).
double controller_quantity(unsigned number, int byte);

// That quantity with its unit: levels in dB ("-inf dB" for silence), times in ms or s, frequencies
// in Hz or kHz; the label where the controller picks one of a list.  A byte that is beyond the
// list, or a controller without a key, shows the number itself.
std::string controller_display(unsigned number, int byte);

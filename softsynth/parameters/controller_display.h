// What a controller's byte stands for, as people read it: "-6.0 dB", "1.25 kHz", "lowpass".

#pragma once

#include <string>
#include <string_view>

namespace tarquil {

// The quantity that controller `number` (0..205) has at `byte` (0..127): mapped and bent by the
// controller's curve, in the unit of its row (see ControllerInfo).
double controller_quantity(unsigned number, int byte);

// A quantity in the unit of a controller's row: levels in dB ("-inf dB" for silence), times in ms
// or s, frequencies in Hz or kHz.
std::string quantity_display(double quantity, std::string_view unit);

// The controller's quantity so; the label where the controller picks one of a list.  A byte that is
// beyond the list, or a controller without a key, shows the number itself.
std::string controller_display(unsigned number, int byte);

} // namespace tarquil

// Filter types as they are typed in a shell.

#pragma once

#include <string>

#include "softsynth/filters/filter.h"

namespace tarquil {

// The voice filter type of that label or of the only label that starts so; case and anything but
// letters and digits do not count: "lowpass", "ladder-lp-24".  BadInput lists the labels.
FilterType find_filter_type(const std::string& name);

} // namespace tarquil

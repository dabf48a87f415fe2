// Controllers as they are shown and typed while the others are as they are.

#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "softsynth/parameters/controller_bytes.h"

namespace tarquil {

// The effect's own name of a parameter, else `label`.
std::string control_label(unsigned number, const ControllerBytes& bytes, const char* label);

// A value as it is shown, with short units; of list choices the label; with `follows_tempo` note
// lengths ("1/8 T") of what then follows.
std::string control_text(unsigned number, int byte, const ControllerBytes& bytes,
                         bool follows_tempo = false);

// The value that `text` means, in the unit in which `bytes` shows it now or in the one that it
// names ("1.2 k", "80 ms", "-inf"), or a label or its start, or a note length; nothing when it
// means none.
std::optional<int> parse_control(unsigned number, std::string_view text,
                                 const ControllerBytes& bytes, bool follows_tempo = false);

} // namespace tarquil

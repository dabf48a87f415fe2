// What a controller's byte stands for: the quantity that the engine uses, and its text.

#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace tarquil {

// The quantity that controller `number` (0..205) has at `byte` (0..127), in the unit of its row
// (see ControllerInfo).
double controller_quantity(unsigned number, int byte);

// The controller's quantity as text; the label where the controller picks one of a list.  A byte
// that is beyond the list, or a controller without a key, shows the number itself.
std::string controller_display(unsigned number, int byte);

// The value of a controller whose quantity is nearest to `quantity`.
int nearest_value(unsigned number, double quantity);

// The byte whose mapped float, which files hold and VST 2 hosts show, is nearest to the number that
// `text` starts with; nothing when it starts with none.
std::optional<int> parse_mapped_value(unsigned number, std::string_view text);

// At its top the amount of a modulation slot is none: the source multiplies the target.
bool is_multiplying(unsigned number, int byte);
inline constexpr const char* MULTIPLIES_TEXT = "multiplies";

} // namespace tarquil

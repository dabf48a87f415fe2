// The roles and states of the window's parts in AT-SPI 2's numbers.

#pragma once

#include <cstdint>

#include "editor/kit/spoken.h"

namespace tarquil {

// AtspiRole, and what it is called
struct AccessibleRole {
    uint32_t number;
    const char* name;
};
constexpr AccessibleRole APPLICATION_ROLE{75, "application"};
AccessibleRole accessible_role(SpokenRole role);

// A bit for each AtspiStateType.  `has_keyboard`: the window, at the desktop.
uint64_t accessible_states(const Spoken& spoken, bool has_keyboard);
uint64_t accessible_program_states();

} // namespace tarquil

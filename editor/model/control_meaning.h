// What a controller means while the others are as they are: the parameters of an effect depend on
// its type, and what is switched off has no effect.

#pragma once

#include <optional>
#include <span>
#include <string>
#include <string_view>

#include "instrument/controller_bytes.h"

namespace tarquil {

struct ControlMeaning {
    const char* label = "";                    // for a parameter that its effect's type names
    double (*quantity)(int byte) = nullptr;    // null: the controller's own
    const char* unit = "";                     // of `quantity`
    std::span<const char* const> choices = {}; // the labels, when it picks one of a list
    bool is_used = true;                       // false: it changes nothing that can be heard now
};

ControlMeaning meaning_of(unsigned number, const ControllerBytes& bytes);

// The label on the page: the effect's own name of a parameter, else `label`.
std::string control_label(unsigned number, const ControllerBytes& bytes, const char* label);

// A value as it is shown; of list choices the label.
std::string control_text(unsigned number, int byte, const ControllerBytes& bytes);

// The text with the short form of its unit: "0.5 st" for "0.5 semitones".
std::string with_short_unit(std::string text);

// The value that `text` means, in the unit in which `bytes` shows it now or in the one that it
// names ("1.2 k", "80 ms", "-inf"), or a label or its start; nothing when it means none.
std::optional<int> parse_control(unsigned number, std::string_view text,
                                 const ControllerBytes& bytes);

// The value of a controller whose quantity (controller_quantity) is nearest to `quantity`.
int nearest_value(unsigned number, double quantity);

} // namespace tarquil

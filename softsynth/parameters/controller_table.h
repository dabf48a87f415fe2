// What is known of each controller: its key, scope, mapping, default, choices and display unit.
//
// The table's order is the order of the host's parameters, of the keys in an instrument file (the
// channel rows) and of the keys in a bank file (the global rows).

#pragma once

#include <array>
#include <cstdint>
#include <span>
#include <string_view>

#include "softsynth/parameters/controller_number.h"
#include "softsynth/parameters/unit.h"

namespace tarquil {

enum class ControllerScope {
    CHANNEL,
    GLOBAL,
    GLOBAL_CONSTANT, // global, and only the last value of a block is ever used
};

// How the mapped float becomes the quantity that is heard; the functions are those that the engine
// calls (see controller_quantity).
enum class ControllerCurve {
    LINEAR_CURVE,
    CUBED,
    OCTAVES,              // 20 Hz * 2^x
    SQUARED_POWER_OF_TEN, // 10^2x: what a filter with the gain factor 10^x gains at its peak
    ENVELOPE_TIME,        // cubed, in whole samples
    PORTAMENTO_TIME,      // cubed seconds, in whole samples
    SEND,                 // cubed, silent at the bottom
    PRE_GAIN,             // cubed, with 1 made exact
    CUBED_RATIO,          // cubed, infinite at the top
    // From the byte, as the effect takes it; the mapped float is what files say.
    DELAY_TIME,
    DELAY_FEEDBACK,
};

// mapped float = offset + scale * byte, when `exists`
struct ControllerMapping {
    bool exists = false;
    float offset = 0.0F;
    float scale = 1.0F / 127;
};

// The default, as a byte (0..127) or as a mapped float.
struct ControllerDefault {
    bool is_byte = true;
    float value = 0.0F;
};

// The values a byte may have, and the labels of a list of choices (none for a plain range).
struct ControllerChoices {
    uint8_t first = 0;
    uint8_t last = 127;
    std::span<const char* const> labels;
};

struct ControllerInfo {
    ControllerNumber number = CTRL_MAIN_VOLUME;
    const char* key = "";  // in files, and the host's parameter name
    const char* name = ""; // for people
    ControllerScope scope = ControllerScope::CHANNEL;
    ControllerMapping mapping;
    ControllerDefault default_value;
    ControllerChoices choices;
    ControllerCurve curve = ControllerCurve::LINEAR_CURVE;
    Unit unit = Unit::NONE; // of the quantity after the curve
};

inline constexpr unsigned NUM_KEYED_CONTROLLERS = 172;
inline constexpr unsigned NUM_CHANNEL_CONTROLLERS = 113;
inline constexpr unsigned NUM_GLOBAL_CONTROLLERS = 59;

// All rows in table order.
std::span<const ControllerInfo, NUM_KEYED_CONTROLLERS> controller_rows();

// The rows of an instrument file and of a bank's global section, in file order.
std::span<const ControllerInfo, NUM_CHANNEL_CONTROLLERS> channel_controller_rows();
std::span<const ControllerInfo, NUM_GLOBAL_CONTROLLERS> global_controller_rows();

// The row of controller `number`, or null when the number has none (or is above 205).
const ControllerInfo* find_controller(unsigned number);

// The row with this key, or null.
const ControllerInfo* find_controller_by_key(std::string_view key);

// Which of the scopes a number's row has; all false without a row.
bool is_global_controller(unsigned number); // constant or not
bool is_channel_controller(unsigned number);
bool is_constant_controller(unsigned number);

// The float that `value` (0..127) stands for; the value itself for a controller without a mapping.
float map_char_to_float(unsigned number, int value);

struct NearestByte {
    int byte = 0; // 0..127
    bool in_range = true;
};

// The inverse, rounded.  A value out of range is clamped; not a number and minus infinity give 0,
// plus infinity gives 127.
NearestByte nearest_byte(unsigned number, float value);

// The same with a message on standard output for a value out of range.
int map_float_to_char(unsigned number, float value);

// The default as a byte.
int default_byte(const ControllerInfo& info);

// The value to store for controller `number`: clamped to its choices where it picks one of a list,
// unchanged otherwise.
int filter_controller(unsigned number, int value);

} // namespace tarquil

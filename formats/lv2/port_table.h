// The ports: fixed ones, then a control input for each parameter, in real units.

#pragma once

#include <array>
#include <cstdint>
#include <vector>

#include "formats/common/host_controls.h"
#include "softsynth/parameters/controller_table.h"

namespace tarquil {

enum Lv2Port : uint32_t {
    LV2_PORT_EVENTS,  // atoms in: MIDI, patch messages
    LV2_PORT_NOTIFY,  // atoms out: patch messages, that the state has changed
    LV2_PORT_LEFT,    // audio out
    LV2_PORT_RIGHT,   // audio out
    LV2_PORT_LATENCY, // control out, in frames
    NUM_FIXED_LV2_PORTS
};

// The value of a control port: a list's place, a byte where the meaning depends on another control,
// the quantity that is heard elsewhere, with levels in dB and times in seconds.
class Lv2Control {
  public:
    // `shown` is one of a controller, and stays as long as the object.
    explicit Lv2Control(const HostControl& shown);

    [[nodiscard]] const HostControl& shown() const { return *control; }
    [[nodiscard]] const ControllerInfo& info() const { return *controller; }
    [[nodiscard]] unsigned number() const { return controller->number; }

    [[nodiscard]] float value(int byte) const { return values[size_t(byte)]; }
    // The nearest; anything but a number gives -1.
    [[nodiscard]] int byte(float value) const;

    [[nodiscard]] float lowest() const;
    [[nodiscard]] float highest() const;
    // What a new instance has.
    [[nodiscard]] float default_value() const { return value(first_byte()); }
    [[nodiscard]] int first_byte() const { return control->default_value; }

    [[nodiscard]] bool is_integer() const { return integer; }
    [[nodiscard]] bool is_logarithmic() const;
    // Of `value`, in LV2's vocabulary of units; null for none.
    [[nodiscard]] const char* unit() const;

  private:
    const HostControl* control;
    const ControllerInfo* controller;
    bool integer = false;
    Unit quantity_unit = Unit::NONE;
    std::array<float, 128> values{};
};

// Those of the ports from NUM_FIXED_LV2_PORTS on.  Made at the first call, which is not for the
// audio thread.
const std::vector<Lv2Control>& lv2_controls();

// The port of a controller; 0 when it has none.
uint32_t lv2_port_of(unsigned number);

} // namespace tarquil

// The way between two versions of a sound: what lies between them, and how it is gone by itself.

#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "softsynth/parameters/controller_bytes.h"

namespace tarquil {

// What a program has at `position` of the way, 0: `from`, to the byte, to 1: `to`.  A control goes
// evenly along the law of its own, as a hand would turn it: a cutoff in octaves, a level or a time
// by its cube root; an amount and its fine amount go as one value.  Choices change at the middle,
// and with them what means something else before them and behind them.  A control that has an
// effect in one of the two sounds only is as there.
ControllerBytes morphed(const ControllerBytes& from, const ControllerBytes& to, double position);

// How long it takes.
struct MorphLength {
    double value = 4.0;
    bool is_in_quarters = false; // quarter notes, else seconds

    [[nodiscard]] double seconds(double quarters_per_minute) const;
    // "4 s", "1/1".
    [[nodiscard]] std::string text() const;
};

// "4", "2.5 s", "1/2", "2/1"; nothing for what means no length within a second's tenth and ten
// minutes.
std::optional<MorphLength> parse_morph_length(std::string_view text);

// The position while it is gone by itself.
class MorphRun {
  public:
    // To and fro until it is stopped, or once to the end.
    bool swings = false;

    // From `position` on; from the start when that is the end.
    void start(double position);
    void stop() { is_on = false; }
    [[nodiscard]] bool is_running() const { return is_on; }

    // The position after another `part` of the way; it stops at the end.
    double advance(double part);

  private:
    bool is_on = false;
    double way = 0.0; // 0..1 there, 1..2 back
};

} // namespace tarquil

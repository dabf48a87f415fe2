// What MIDI messages have set on one of the sixteen channels, apart from its notes.

#pragma once

#include <array>
#include <cstdint>

#include "midi/gm/midi_numbers.h"
#include "softsynth/parameters/controller_number.h"
#include "softsynth/parameters/rhythm_channel.h"

namespace tarquil {

inline constexpr unsigned NUM_MIDI_CHANNELS = 16;
inline constexpr unsigned BEND_CENTRE = 8192;

// Parameters that registered (RPN) and other (NRPN) numbers choose for data entry.
enum class DataTarget : uint8_t {
    NOTHING,
    BEND_RANGE,
    FINE_TUNING,
    COARSE_TUNING,
    MODULATION_RANGE,
    ENGINE_CONTROLLER, // number in data_number: the engine's own numbers
    SOUND_CONTROLLER,  // number in data_number: GS numbers that double controllers 71 to 78
    UNKNOWN,
};

class GmChannel {
  public:
    static constexpr uint8_t NO_OVERRIDE = UINT8_MAX;

    explicit GmChannel(unsigned index = 0) { set_defaults(index); }

    // As "GM on" leaves channel `index` (0..15).
    void set_defaults(unsigned index);

    // Controller 121, by RP-015.  Pedals are up then; what they held is the caller's to release.
    void reset_controllers();

    [[nodiscard]] unsigned value(unsigned controller) const { return controllers[controller]; }
    void set_value(unsigned controller, unsigned value) {
        controllers[controller] = uint8_t(value);
    }
    [[nodiscard]] bool is_down(unsigned pedal) const {
        return controllers[pedal] >= MIDI_PEDAL_DOWN;
    }

    // A program change: the bank in force decides whether the channel becomes a rhythm part.
    void set_program(unsigned number, bool xg_banks);

    // Controllers 98 to 101.
    void select_parameter(unsigned controller, unsigned value);

    // Controllers 6 and 38 and, by +-1, 96 and 97; for the targets that are values of the channel.
    void enter_data(unsigned controller, unsigned value);
    void step_data(int step);

    // In semitones, without vibrato.
    [[nodiscard]] double bend_semitones() const;
    [[nodiscard]] double modulation_cents() const; // depth of the wheel or pressure, the larger

    uint8_t program = 0;
    bool is_rhythm = false;
    bool is_rhythm_by_default = false; // channel 10, or by a GS message
    bool is_mono = false;
    uint16_t bend = BEND_CENTRE;
    uint8_t pressure = 0;

    DataTarget data_target = DataTarget::NOTHING;
    uint8_t data_number = 0;

    // 14 bits: MSB semitones and LSB cents; tunings around BEND_CENTRE; MSB semitones, LSB 1/128.
    uint16_t bend_range = 0;
    uint16_t fine_tuning = 0;
    uint16_t coarse_tuning = 0;
    uint16_t modulation_range = 0;

    // Bytes of the engine's own numbers that NRPN has set, until the next program change.
    std::array<uint8_t, NUM_CONTROLLERS> overrides{};

  private:
    uint16_t* data_value();
    void find_target();

    std::array<uint8_t, 128> controllers{};
    bool is_registered = true; // RPN was chosen last, not NRPN
    uint8_t parameter_msb = 127;
    uint8_t parameter_lsb = 127;
};

} // namespace tarquil

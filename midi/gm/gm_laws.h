// How quantities of General MIDI become controller bytes of the engine.
//
// The engine cubes the bytes of levels, pans with equal power and bends over an octave.

#pragma once

#include <cstdint>

namespace tarquil {

inline constexpr unsigned MAX_MASTER_VOLUME = 16383; // 14 bits
inline constexpr unsigned DEFAULT_VOLUME = 100;      // of controller 7
inline constexpr int DEFAULT_REVERB = 40;            // of controller 91

// The gain of a level 0..127: 40 log10(v / 127) dB (General MIDI recommended practice RP-015 and
// GM2 1.2, "volume and expression").
double level_gain(double value_of_127);

// The volume byte, before rounding, of a sound whose own byte is `own` under these levels.
double exact_volume(unsigned own, unsigned volume, unsigned expression, unsigned master);

// The byte at or above: what it is too loud by, the velocity of each note takes back.
uint8_t volume_byte(double exact);

// How much too loud `volume_byte` is, as a factor at most 1 that repairs it.
double volume_correction(double exact);

// GM2: left cos, right sin of pi/2 * max(0, v - 1) / 126.  `value` is clamped to 0..127.
uint8_t pan_byte(int value);
// The pan value 0..127 of a sound's own byte.
int pan_value(uint8_t byte);

// How a sound's level follows the engine's velocity.
enum class VelocityLaw : uint8_t {
    FROM_SOUND, // SQUARE, or LINEAR where the amplitude is multiplied by envelope 1 once more
    SQUARE,     // the sound is linear: engine velocity 127 (v / 127)^2
    LINEAR,     // the sound squares the velocity itself
};

// The engine velocity 1..127 of `velocity` 0..127, for a gain of `factor`; clamped.
uint8_t engine_velocity(double velocity, VelocityLaw law, double factor);

// The send byte of a sound under controller 91.  Its own byte is what it sends at DEFAULT_REVERB;
// the gain follows the controller.
uint8_t reverb_byte(uint8_t own, unsigned reverb);

// The wet byte of the stereo effect under controller 93: half the dry sound's level at 127.
uint8_t chorus_byte(unsigned chorus);

// The byte of an envelope's time at 1/8 (0) to 8 times (127) the sound's own, 64 in between.
uint8_t scaled_time_byte(unsigned controller, uint8_t own, unsigned value);

// A bend in steps of 1/8192 octave from 0 to 16383; 8192 is none.  Clamped.
unsigned bend_value(double semitones);

} // namespace tarquil

// The controller bytes of a sound as a MIDI channel's settings make them.

#pragma once

#include <cstdint>
#include <span>

#include "midi/gm/gm_state.h"

namespace tarquil {

// All of a channel's controllers but bend, of a sound whose own bytes are `own`.
uint8_t channel_byte(const GmState& state, const GmChannel& channel, const ControllerBytes& own,
                     unsigned controller);

// The same but panning, which a kit gives (as controller 10) to its drums, and what drums ignore.
uint8_t drum_byte(const GmState& state, const GmChannel& channel, const ControllerBytes& own,
                  unsigned pan, unsigned controller);

// The volume byte before rounding.
double channel_volume(const GmState& state, const GmChannel& channel, const ControllerBytes& own);

// The controllers of a sound that the MIDI controller `controller` acts on.
std::span<const unsigned> controllers_behind(unsigned controller);

// What FROM_SOUND stands for.
VelocityLaw find_velocity_law(VelocityLaw wanted, const ControllerBytes& own);

} // namespace tarquil

// Reading of map files (*.tqm): a General MIDI set as key/value text.
//
//   title = Standard set
//   melodic_bank = gm.tqb
//   drum_bank = gm-drums.tqb
//   p000_velocity = square                  square or linear, see VelocityLaw
//   p000_env1_decay = key -19.1 vel -3.4    bytes per octave above key 60, per 12 above velocity
//   100 p056_vibrato = 5.2 8 0.35 0.5           Hz, cents, seconds of delay and of rise
//   d036_env1_decay = vel 4                 the same of a drum bank's instrument
//   family = kick snare hats                names of the second engine's channels, at most 16
//   k00_036 = kick 1 60 100 64 400          kit 0, key 36: family, instrument, note, velocity in
//                                           percent, pan, milliseconds until the note-off or "held"
//   k00_042 = hats 7 96 100 84 120 44,46    keys that it ends

#pragma once

#include <string>
#include <string_view>

#include "midi/gm/gm_map.h"

namespace tarquil {

// Loads all or nothing: empty, or "line 12: k00_036: unknown family 'kik'" and `map` as it was.
std::string load_gm_map_from_string(GmMap& map, std::string_view text);

// The same of a file; the message starts with its path.
std::string load_gm_map(GmMap& map, const std::string& path);

} // namespace tarquil

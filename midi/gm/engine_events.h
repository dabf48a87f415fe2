// What the General MIDI dialect hands to the two engines behind it.

#pragma once

#include <cstdint>

#include "softsynth/parameters/midi_event.h"

namespace tarquil {

inline constexpr unsigned MELODIC_ENGINE = 0;
inline constexpr unsigned RHYTHM_ENGINE = 1;
inline constexpr unsigned NUM_GM_ENGINES = 2;

// Takes events, each engine's in the order of their times.
class EngineEvents {
  public:
    EngineEvents() = default;
    EngineEvents(const EngineEvents&) = delete;
    EngineEvents& operator=(const EngineEvents&) = delete;
    virtual ~EngineEvents() = default;

    virtual void put(unsigned engine, const midi_event& event) = 0;
};

} // namespace tarquil

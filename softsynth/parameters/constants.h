// Fixed sizes and rates of the engine.

#pragma once

#include <cstdint>

namespace tarquil {

// Largest block of one run, in frames; also the capacity of every buffer.
inline constexpr uint32_t MAX_NUM_SAMPLES = 2048;

// Every block length is a multiple of this many frames.
inline constexpr uint32_t GRANULARITY = 4;

// The engine's only sample rate, in Hz.
inline constexpr int SAMPLE_RATE = 44100;

// 2 pi / 44100: turns Hz into radians per sample.
inline constexpr float RADIANS_PER_HZ = 0.00014247585F;

// Angular frequency of 20 Hz in radians per sample, the origin of every cutoff in octaves.
inline constexpr float OMEGA_20HZ = 0.002849517146113191F;

inline constexpr int NUM_CHANNELS = 16;

// Controls that may change during a note are read once per this many samples.
inline constexpr uint32_t CONTROL_PERIOD = 32;

// "Not yet known" or "never", as an absolute sample time.
inline constexpr uint32_t TIME_NEVER = 0x7FFEFFFF;

} // namespace tarquil

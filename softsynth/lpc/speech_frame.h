// One frame of speech and the eleven bytes that it is stored in.
//
// Bytes 0..9 are the line spectral pairs, ten positions between 0 and pi on the frequency axis of
// the synthesis filter; byte 10 is the level.  Lines have an order of their own, so the order of
// their bytes is free: it is one of 10! = 3,628,800, and its number carries the pitch, how far up
// the frame is voiced, and the level half way to the next frame.  Any eleven bytes are a frame, and
// its filter is stable.

#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

namespace tarquil {

inline constexpr size_t LPC_ORDER = 10;
inline constexpr uint32_t SPEECH_FRAME_SAMPLES = 882;
inline constexpr double SPEECH_FRAME_SECONDS = 0.02;
inline constexpr size_t SPEECH_FRAME_BYTES = LPC_ORDER + 1;

// Lines keep at least this distance: closer ones would ring for longer than a frame.
inline constexpr int MIN_LINE_DISTANCE = 2;
inline constexpr int TOP_LINE = 255;

inline constexpr unsigned MAX_VOICING = 7;

inline constexpr double LEVEL_STEP_DB = 0.5;

// Bends go from MIN_BEND to MAX_BEND.
inline constexpr int MIN_BEND = -16;
inline constexpr int MAX_BEND = 15;
inline constexpr int LEVELS_A_BEND = 3;

struct SpeechFrame {
    // Ascending; line b stands for (b + 1/2) pi / 256.
    std::array<uint8_t, LPC_ORDER> lines{};
    // 0: silence.  See level_amplitude.
    uint8_t level = 0;
    // See pitch_hz.  A frame without voice has one too, which leads to its neighbours'.
    uint8_t pitch = 0;
    // 0: noise only.  Else pulses up to voicing_limit_hz and noise above.
    uint8_t voicing = 0;
    // The level half way to the next frame lies LEVELS_A_BEND * bend above the middle of both.  So
    // the burst of a "t" may be shorter than a frame.
    int8_t bend = 0;

    bool operator==(const SpeechFrame&) const = default;
};

using SpeechFrameBytes = std::array<uint8_t, SPEECH_FRAME_BYTES>;

// The lines of a flat spectrum, evenly spaced.
std::array<uint8_t, LPC_ORDER> flat_lines();

// Sorts `lines` and moves them as little upwards (at the top: downwards) as keeps them
// MIN_LINE_DISTANCE apart.
void separate_lines(std::array<uint8_t, LPC_ORDER>& lines);

// `frame.lines` are as separate_lines leaves them, `frame.voicing` is at most MAX_VOICING,
// `frame.bend` one of the bends.
SpeechFrameBytes pack_frame(const SpeechFrame& frame);
SpeechFrame unpack_frame(const SpeechFrameBytes& bytes);

// The amplitude (RMS on the filter's axis) of a level between 0 and 255 in 1/256: half a decibel a
// step, 255 is 6 dB above 1.
double level_amplitude(uint32_t level_256ths);

// The level whose amplitude is nearest; 0 below half of the smallest.
uint8_t nearest_level(double amplitude);

// 64 steps an octave from 50 Hz up, for a pitch between 0 and 255 in 1/256.
double pitch_hz(uint32_t pitch_256ths);
uint8_t nearest_pitch(double hz);

// Voicing 1..7: the frequency at which noise takes over from pulses; the last is beyond hearing.
double voicing_limit_hz(unsigned voicing);

} // namespace tarquil

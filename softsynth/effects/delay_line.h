// One stereo side's circular delay memory with feedback.
//
//   y[n] = b(n - d),  b[n] = x[n] + feedback * y[n],  out[n] += wet * y[n]
//
// read at an integer delay, or at a varying fractional one through the cubic of Catmull & Rom ("A
// class of local interpolating splines", 1974).  Delays in samples, feedback and wet linear.
// Stable for |feedback| < 1: at every fraction the cubic's gain is at most 1 at all frequencies.

#pragma once

#include <cstdint>

#include "softsynth/signal/buffer.h"

namespace tarquil {

// Samples of history, a power of two: 1.49 s.
inline constexpr int32_t MAX_DELAY_LENGTH = 65536;

// The spline between y1 (t = 0) and y2 (t = 1) with the slopes (y2 - y0) / 2 and (y3 - y1) / 2.
inline float cubic_interpolate(float y0, float y1, float y2, float y3, float t) {
    return y1 + t * (0.5F * (y2 - y0) + t * ((2.0F * y2 - 2.5F * y1 + y0 - 0.5F * y3) +
                                             t * 0.5F * (y3 + 3.0F * (y1 - y2) - y0)));
}

class DelayLine {
  public:
    // The side of an interleaved buffer that a line works on.
    enum channel : uint32_t { LEFT = 0, RIGHT = 1 };

    // A line can be split: its past is what it held then and goes on by itself, its present starts
    // as an empty line.
    enum class Part { PRESENT, PAST };

    // Forgets the history.  It costs nothing: what is not there is read as 0.
    void reset();

    // Makes what the line holds its past, which may be rendered for PAST_LENGTH samples more, with
    // delays of at most a second.
    void split();
    static constexpr int32_t PAST_LENGTH = 2 * MAX_NUM_SAMPLES + 256;
    static constexpr int32_t LONGEST_PAST_DELAY = MAX_DELAY_LENGTH - 2 * PAST_LENGTH;

    // Adds wet * delayed input to side `ch` of `outbuf`, which may be `inbuf`.  The delay is cut to
    // an integer.
    void render_no_lfo(const StereoBuffer& inbuf, StereoBuffer& outbuf, float delay_samples,
                       float feedback, float wet, channel ch, Part part = Part::PRESENT);

    // The same, from one integer delay to another across the block: what is heard at the one fades
    // while the other comes.
    void render_moved(const StereoBuffer& inbuf, StereoBuffer& outbuf, float from_samples,
                      float to_samples, float feedback, float wet, channel ch);

    // The same with a delay per sample, at least 1 and below MAX_DELAY_LENGTH - 2.
    void render_with_lfo(const StereoBuffer& inbuf, StereoBuffer& outbuf, const MonoBuffer& delay,
                         float feedback, float wet, channel ch, Part part = Part::PRESENT);

  private:
    struct FullMemory;
    struct YoungMemory;
    struct PastMemory;

    // Hands act() the part's memory for `count` samples.
    template <typename Act> void render_part(Part part, uint32_t count, const Act& act);

    // Forgets the history if one of the last `count` samples written is not finite, and counts
    // those that are 0.
    void look_at_written(uint32_t count);

    // memory; initialised, so that its pages exist before the audio thread touches them
    float buffer[MAX_DELAY_LENGTH] = {};
    int32_t circbuf_pos = 0;               // next sample to write
    int32_t num_held = MAX_DELAY_LENGTH;   // samples before it that count
    uint32_t num_zeros = MAX_DELAY_LENGTH; // written last, in whole blocks

    // memory of the past
    int32_t past_pos = 0;   // of the split
    int32_t past_held = 0;  // samples before it that count
    int32_t past_count = 0; // samples since
};

} // namespace tarquil

// The master bus's beat repeat: each beat is recorded, shortened, and looped through the next.
//
// Own design.  A beat is the integer part of 60 * 44100 / bpm samples; per sample
//
//   out = (loop - x) wet + x
//
// Beats that the history can not hold (below 41 bpm) are cut to its length.  Samples that are not
// finite never enter the loop.

#pragma once

#include <cstdint>

#include "softsynth/signal/buffer.h"

namespace tarquil {

class RetriggerBox {
  public:
    void reset();

    // In place.  The buffers hold per sample the tempo in beats per minute (60..187), the speed-up
    // factor (-63..64, negative plays backwards, 0 counts as 1) and the wet level 0..1.  Reads the
    // left side only; both sides become the same.  A change of tempo or speed-up restarts the beat.
    // With `fade_age` the loop fades: it is where the block starts after the start of a FadeOut.
    void render(StereoBuffer& buf, const MonoBuffer& bpm_buf, const MonoBuffer& speedup_buf,
                const MonoBuffer& wet_buf, const int32_t* fade_age = nullptr);

  private:
    static constexpr uint32_t LENGTH = 65536; // samples of history and of the loop
    static constexpr uint32_t MASK = LENGTH - 1;

    // Makes the last `period` samples the loop, shortened by `factor`.
    void capture(int factor, uint32_t period);

    // the settings that the current period was computed from
    float bpm = 120.0F;
    int speedup = 1;

    // memory
    float history[LENGTH] = {};
    uint32_t write_pos = 0;
    uint32_t capture_start = 0;
    float loop[LENGTH] = {};
    uint32_t play_pos = 0;
    uint32_t loop_len = 1;

    // scratch: the beat that is being shortened
    float beat[LENGTH] = {};
};

} // namespace tarquil

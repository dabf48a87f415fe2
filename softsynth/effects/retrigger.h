// The master bus's beat repeat: each beat is recorded, shortened, and looped through the next.
//
// Own design.  A beat is the integer part of 60 * 44100 / bpm samples; per sample
//
//   out = (loop - x) wet + x
//
// Beats that the history can not hold (below 41 bpm) are cut to its length.  Samples that are not
// finite never enter the loop.
//
// On the grid of a song the beats begin where the song's do, whatever the tempo control says; a
// beat is what was played since the last one.

#pragma once

#include <cstdint>
#include <limits>

#include "softsynth/parameters/tempo.h"
#include "softsynth/parameters/tempo_values.h"
#include "softsynth/signal/buffer.h"

namespace tarquil {

// Where a block lies among a song's beats.
struct BeatGrid {
    Tempo tempo;       // of the block's first sample
    double beat = 0.0; // quarter notes

    // Where the beat began that sample `index` of the block lies in: a number that only that beat
    // has.
    [[nodiscard]] int64_t beat_at(uint32_t index) const;
};

class RetriggerBox {
  public:
    void reset();

    // In place.  The buffers hold per sample the tempo in beats per minute (60..187), the speed-up
    // factor (-63..64, negative plays backwards, 0 counts as 1) and the wet level 0..1.  Reads the
    // left side only; both sides become the same.  A change of tempo or speed-up restarts the beat.
    // With `fade_age` the loop fades: it is where the block starts after the start of a FadeOut.
    // With `grid` the beats are its, and a change of speed-up waits for the next one.
    void render(StereoBuffer& buf, const MonoBuffer& bpm_buf, const MonoBuffer& speedup_buf,
                const MonoBuffer& wet_buf, const int32_t* fade_age = nullptr,
                const BeatGrid* grid = nullptr);

    // It is not rendered for a while, or not on a grid: the next beat of one is a new start.
    void leave_grid() { grid_beat = NO_BEAT; }

    // The longest beat, in samples.
    static constexpr auto LONGEST_BEAT = uint32_t(TempoValues::LONGEST_BEAT);

  private:
    static constexpr uint32_t LENGTH = 65536; // samples of history and of the loop
    static constexpr uint32_t MASK = LENGTH - 1;

    // Makes the last `period` samples the loop, shortened by `factor`.
    void capture(int factor, uint32_t period);

    void step_on_grid(int64_t next_beat, int factor);

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

    static constexpr int64_t NO_BEAT = std::numeric_limits<int64_t>::min();
    int64_t grid_beat = NO_BEAT; // that is being recorded
    uint32_t grid_samples = 0;   // of it

    // scratch: the beat that is being shortened
    float beat[LENGTH] = {};
};

} // namespace tarquil

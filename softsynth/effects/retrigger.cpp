// The master bus's beat repeat: each beat is recorded, shortened, and looped through the next.

#include "softsynth/effects/retrigger.h"

#include <algorithm>
#include <cmath>

#include "softsynth/effects/psola.h"
#include "softsynth/signal/fade_out.h"
#include "softsynth/signal/finite.h"

namespace tarquil {

namespace {

constexpr float SAMPLES_PER_MINUTE = 60.0F * SAMPLE_RATE;

// At most `longest`, which also takes the place of what is not a number.
uint32_t samples_per_beat(float bpm, uint32_t longest) {
    const float samples = SAMPLES_PER_MINUTE / bpm;
    if (!(samples < float(longest)))
        return longest;
    return samples > 1.0F ? uint32_t(samples) : 1;
}

} // namespace

int64_t BeatGrid::beat_at(uint32_t index) const {
    // A hundredth of a sample at most: what rounding leaves before a beat belongs to it.
    constexpr double EARLY = 1e-6;
    constexpr double PLACES_PER_QUARTER = 4096.0;
    const double place = tempo.position + double(index) / tempo.samples_per_quarter + EARLY;
    double bar = tempo.bar_start;
    if (tempo.bar_length > 0.0)
        bar += std::floor((place - bar) / tempo.bar_length) * tempo.bar_length;
    const double start = bar + std::floor((place - bar) / beat) * beat;
    return int64_t(std::floor(start * PLACES_PER_QUARTER + 0.5));
}

void RetriggerBox::reset() {
    // The rest is written before it is read.
    loop[0] = 0.0F;
    write_pos = capture_start = play_pos = 0;
    loop_len = 1;
    bpm = 120.0F;
    speedup = 1;
    leave_grid();
}

void RetriggerBox::render(StereoBuffer& buf, const MonoBuffer& bpm_buf,
                          const MonoBuffer& speedup_buf, const MonoBuffer& wet_buf,
                          const int32_t* fade_age, const BeatGrid* grid) {
    float* frame = buf.get_first_left_sample_ptr();
    const float* bpms = bpm_buf.get_first_sample_ptr();
    const float* speedups = speedup_buf.get_first_sample_ptr();
    const float* wets = wet_buf.get_first_sample_ptr();
    const uint32_t size = buf.get_buf_size();
    uint32_t period = samples_per_beat(bpm, MASK);
    if (grid != nullptr)
        step_on_grid(grid->beat_at(0), int(speedups[0]));
    for (uint32_t i = 0; i < size; i++, frame += 2) {
        const float x = frame[0];
        history[write_pos] = x;
        write_pos = (write_pos + 1) & MASK;

        float y = loop[play_pos % loop_len];
        if (fade_age != nullptr)
            y *= FadeOut::gain(*fade_age + int32_t(i));
        play_pos++;
        const float out = (y - x) * wets[i] + x;
        frame[0] = out;
        frame[1] = out;

        if (grid != nullptr) {
            grid_samples++;
            step_on_grid(grid->beat_at(i + 1), int(speedups[i]));
            continue;
        }
        const int s = int(speedups[i]) == 0 ? 1 : int(speedups[i]);
        if (bpms[i] != bpm || s != speedup) {
            bpm = bpms[i];
            speedup = s;
            period = samples_per_beat(bpm, MASK);
            capture_start = write_pos;
        }
        if (write_pos == ((capture_start + period) & MASK))
            capture(s, period);
    }
}

// A song that jumps within a beat, or back, leaves too little to be a beat.
void RetriggerBox::step_on_grid(int64_t next_beat, int factor) {
    if (next_beat == grid_beat)
        return;
    constexpr uint32_t LEAST_SAMPLES = 256;
    if (grid_beat != NO_BEAT && grid_samples >= LEAST_SAMPLES && next_beat > grid_beat) {
        const uint32_t period = std::min(grid_samples, LONGEST_BEAT);
        capture_start = (write_pos - period) & MASK;
        capture(factor == 0 ? 1 : factor, period);
    }
    capture_start = write_pos;
    grid_beat = next_beat;
    grid_samples = 0;
}

void RetriggerBox::capture(int factor, uint32_t period) {
    for (uint32_t i = 0; i < period; i++)
        beat[i] = history[(capture_start + i) & MASK];
    psola_time_stretch(beat, period, factor, loop, &loop_len);
    // The loop sounds for a whole beat, however short the fault was that it was made from.
    scrub_non_finite(loop, loop_len);
    capture_start = write_pos;
    play_pos = 0;
}

} // namespace tarquil

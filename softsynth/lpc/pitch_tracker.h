// The melody of a recording.

#pragma once

#include <span>
#include <vector>

namespace tarquil {

// The pitch of each frame in Hz, 0 without voice.  Maxima of the normalised cross-correlation
// between a stretch of sound and itself one period later, and of these the sequence that costs
// least, by dynamic programming: D. Talkin, "A robust algorithm for pitch tracking (RAPT)", in
// "Speech Coding and Synthesis", 1995. `samples` at 44100 Hz.
std::vector<double> track_pitch(std::span<const float> samples);

// The normalised cross-correlation, -1..1, of `length` samples with those `lag` samples later, both
// together centred on `centre`; what lies outside `samples` counts as silence.
double correlation_at_lag(std::span<const float> samples, long centre, long lag, long length,
                          double floor_power);

} // namespace tarquil

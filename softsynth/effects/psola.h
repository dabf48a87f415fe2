// Shortens a stretch of sound by a whole factor without changing its pitch.
//
// Overlap-add of grains taken at even distances, each moved by up to 256 samples to where it
// matches the end of what is there best (largest cross-correlation over the overlap of 128
// samples), in the manner of waveform-similarity overlap-add (Verhelst & Roelands 1993).  The
// cross-fade's weights end at 128/130, not at 1.
//
// Every beat of 14149 samples or more can be shortened by factors up to 64; of shorter ones at
// least one grain, or the whole sound, remains.

#pragma once

#include <cstdint>

namespace tarquil {

// `in` holds n samples (at least 1); `out` has room for n.  The result, `out_len` samples, is
// n / |speedup| long to within one grain of 896; a negative speedup plays it backwards, 0 counts as
// 1, and a factor of 1 copies.
void psola_time_stretch(const float* in, uint32_t n, int speedup, float* out, uint32_t* out_len);

} // namespace tarquil

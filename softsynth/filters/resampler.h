// Fixed 2:1 converters: symmetric half-band FIR filters of 26 taps.
//
// Polyphase form, x[-j] the input j samples before the newest and h[25 - j] = h[j]:
//
//   up:    even = sum h[2j] x[-j];   odd = sum h[2j + 1] x[-j]            j = 0..12
//   down:  y = sum h[j] (x[-(25 - j)] + x[-j]) after each pair of inputs
//
// The kernels are tables of this system (own design).  Their taps add up to 1.394, not to 1, which
// is part of the sound.  A converter keeps a history of 32 samples; without feedback it is always
// stable.

#pragma once

#include <cstdint>

namespace tarquil {

inline constexpr unsigned RESAMPLE_HALF_TAPS = 13; // tap 25 - j equals tap j

extern const float resample_kernel[RESAMPLE_HALF_TAPS];
extern const float alt_resample_kernel[RESAMPLE_HALF_TAPS];

// The last 32 samples and the position of the newest.
struct ResampleHistory {
    static constexpr uint32_t SIZE = 32;
    static constexpr uint32_t MASK = SIZE - 1;

    void push(float sample) {
        position = (position + 1) & MASK;
        samples[position] = sample;
    }
    // The sample pushed `age` pushes before the newest.
    [[nodiscard]] float at(uint32_t age) const { return samples[(position - age) & MASK]; }
    void clear() { *this = ResampleHistory(); }
    [[nodiscard]] bool is_finite() const;

    float samples[SIZE] = {};
    uint32_t position = MASK;
};

class Upsampler {
  public:
    // n samples in, 2n out.
    void resample(const float* in, float* out, uint32_t n);

  private:
    ResampleHistory history;
};

class Downsampler {
  public:
    // 2n samples in, n out.  `out` may be `in`.
    void resample(const float* in, float* out, uint32_t n);

  private:
    ResampleHistory history;
};

// The ladder filter's, with a kernel of its own.
class AltDownsampler {
  public:
    // Clears the history.
    void init() { *this = AltDownsampler(); }
    // 2n samples in, n out.  `out` may be `in`.
    void resample(const float* in, float* out, uint32_t n);
    [[nodiscard]] bool is_finite() const;

  private:
    // Oldest first, and nothing else: the ladder's kernel reads it as a row.
    float history[ResampleHistory::SIZE] = {};
};

} // namespace tarquil

// Peak and loudness of a stereo stream.

#pragma once

#include <ebur128.h>

#include <cstdint>
#include <optional>

namespace tarquil {

class LoudnessMeter {
  public:
    explicit LoudnessMeter(int rate);
    ~LoudnessMeter();
    LoudnessMeter(const LoudnessMeter&) = delete;
    LoudnessMeter& operator=(const LoudnessMeter&) = delete;

    // Interleaved stereo frames.
    void add(const float* frames, uint64_t num_frames);

    // The largest absolute sample, in dB relative to 1; none for silence.
    [[nodiscard]] std::optional<double> peak_dbfs() const;

    // Integrated loudness in LUFS, EBU R 128; none below the measure's own gate of -70 LUFS.
    [[nodiscard]] std::optional<double> loudness_lufs() const;

  private:
    float peak = 0.0F;
    ebur128_state* state;
};

// The largest absolute sample.
float find_peak(const float* samples, uint64_t num_samples);

} // namespace tarquil

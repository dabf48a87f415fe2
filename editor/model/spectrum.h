// The levels of a sound over frequency, with a Hann window.

#pragma once

#include <span>
#include <vector>

struct kiss_fftr_state;

namespace tarquil {

class Spectrum {
  public:
    // Of `num_frames` (even) samples at 44100 Hz.
    explicit Spectrum(unsigned num_frames);
    Spectrum(const Spectrum&) = delete;
    Spectrum& operator=(const Spectrum&) = delete;
    ~Spectrum();

    // Raises `levels` (dB, a sine at full scale is 0) to those of `samples` at frequencies in equal
    // ratios from LOWEST_HZ to HIGHEST_HZ, the highest of each one's surroundings.
    void raise(std::span<const float> samples, std::span<float> levels);

    static constexpr double LOWEST_HZ = 20.0;
    static constexpr double HIGHEST_HZ = 20000.0;

  private:
    kiss_fftr_state* const transform;
    std::vector<float> window; // with the factor that makes a sine's level 1
    std::vector<float> windowed;
    std::vector<float> bins; // real and imaginary parts, then levels
};

} // namespace tarquil

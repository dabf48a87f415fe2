// What the controls that follow a tempo stand for, from their bytes 0..127.

#pragma once

#include <array>
#include <cstdint>

#include "softsynth/parameters/families.h"

namespace tarquil {

class TempoValues {
  public:
    // Nothing follows yet.
    TempoValues();

    // Takes the length of a quarter note in samples; 0: nothing follows.
    void follow(double new_samples_per_quarter);

    // The rest is for when something follows.
    [[nodiscard]] bool is_on() const { return samples_per_quarter > 0.0; }

    // Of a delay line, whole samples: what is too long for its memory is halved until it fits.
    [[nodiscard]] float delay_samples(int byte) const;
    static constexpr double LONGEST_DELAY = 56832;
    // Of the retrigger, samples.
    static constexpr double LONGEST_BEAT = 65535;

    // Of chorus and flanger; 0 stands still.
    [[nodiscard]] float sweep_hz(int byte) const;

    // Of a voice's LFO, by bytes.
    [[nodiscard]] const float* lfo_hz(unsigned lfo) const { return lfo_speeds[lfo].data(); }

    // Of the retrigger's beat in quarter notes, halved until `longest` samples hold it.
    [[nodiscard]] double beat_quarters(int byte, double longest) const;

  private:
    template <typename Number> using ByByte = std::array<Number, 128>;

    double samples_per_quarter = 0.0;
    std::array<ByByte<float>, NUM_LFOS> lfo_speeds{}; // Hz

    // quarter notes; 0 for none
    ByByte<double> delays{};
    ByByte<double> sweeps{};
    ByByte<double> beats{};
    std::array<ByByte<double>, NUM_LFOS> lfos{};
};

} // namespace tarquil

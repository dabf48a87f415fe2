// Pulses at a moving pitch, with the power of 1 and the same level at all frequencies.
//
// A pulse falls between samples: what is added is a windowed sinc, shifted to its place in steps of
// 1/64 sample.  Source: T. Stilson and J. Smith, "Alias-free digital synthesis of classic analog
// waveforms", Int. Computer Music Conf. 1996.

#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

namespace tarquil {

class PulseTrain {
  public:
    // Taps of a pulse; the pulse comes half as many samples late.
    static constexpr size_t PULSE_LENGTH = 16;

    // `hz` may be anything up to an eighth of the sample rate.
    void set_pitch(double hz);

    // The next sample.
    float next();

  private:
    void add_pulse(double samples_ahead);

    // settings
    double period = 441.0; // samples
    float amplitude = 21.0F;

    // memory
    double until_pulse = 0.0; // samples
    std::array<float, PULSE_LENGTH> pending{};
    size_t position = 0;
};

} // namespace tarquil

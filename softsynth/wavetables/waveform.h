// Band-limited wavetables: one waveform is a set of tables with a rising number of harmonics.
//
// A table is the Fourier series of its waveform up to harmonic n, each harmonic h weighted by a
// raised-cosine taper cos^2(pi / 2 / n * (h - 1)) that tames the ringing at the cut (the idea of
// Lanczos' sigma factors with a softer window, own design).  Samples lie at half-sample positions.
// An oscillator picks the richest table whose highest harmonic stays below 22050 Hz.

#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <vector>

#include "common/platform/large_pages.h"
#include "softsynth/parameters/osc_type.h"

namespace tarquil {

inline constexpr unsigned NUM_WAVETABLES = 128;   // of each waveform but the noise
inline constexpr unsigned WAVETABLE_SIZE = 4096;  // samples, one cycle
inline constexpr unsigned NOISE_SIZE = 1U << 20U; // samples of the one noise table
inline constexpr unsigned WAVETABLE_GUARD = 4;    // samples behind a cycle; the first repeats it
inline constexpr unsigned MAX_HARMONICS = 384;    // of the richest table

class Wavetable {
  public:
    // The first sample of `memory`, samples of 0 with room for a cycle and WAVETABLE_GUARD more
    // that outlive the table; without it init allocates.
    void use_memory(float* memory) { data = memory; }

    // Builds the table of harmonics 1..nHarmonies (`tableSize` a power of two), or copies it from
    // `cache` (tableSize floats) when `cache_loaded`; a table that was built is copied into
    // `cache`.
    void init(unsigned tableSize, unsigned nHarmonies, float (*amplitude)(unsigned), float* cache,
              bool cache_loaded);

    // White noise in -1..1, the same on every start (`size` a power of two).
    void init_noise(unsigned size);

    // One cycle and its first sample once more, the guard for interpolation.
    [[nodiscard]] const float* get_data() const { return data; }
    [[nodiscard]] unsigned get_harmonics() const { return nHarmonies; }
    // Right shift that turns a 32-bit phase into an index.
    [[nodiscard]] uint32_t get_shift() const { return shift; }

  private:
    void allocate(unsigned size);

    LargeFloatArray owned;
    float* data = nullptr; // size + WAVETABLE_GUARD floats
    unsigned nHarmonies = 0;
    uint32_t shift = 0;
};

// A table as an oscillator uses it.
struct Wavetable_ret {
    const float* data = nullptr;
    uint32_t shift = 0;
};

class Waveform {
  public:
    // Reads the tables from the cache's folder, or builds them and writes the cache; without a
    // folder ("") builds them.
    explicit Waveform(OscType type, const std::string& cache_folder = {});

    // The richest table for a base frequency in Hz; 0 Hz gets the richest of all.
    void getWavetable(float frequency, Wavetable_ret* ret) const;

    [[nodiscard]] unsigned size() const { return unsigned(tables.size()); }
    [[nodiscard]] const Wavetable& table(unsigned index) const { return tables[index]; }

    // Amplitude of harmonic h >= 1 before the taper.
    static float sineWaveAmplitude(unsigned h);
    static float sawWaveAmplitude(unsigned h);
    static float squareWaveAmplitude(unsigned h);
    static float triangleWaveAmplitude(unsigned h);
    static float noAmplitude(unsigned h);

  private:
    LargeFloatArray memory; // of all tables
    std::vector<Wavetable> tables;
    // The table for a harmonic limit of 0..MAX_HARMONICS.
    std::array<uint8_t, MAX_HARMONICS + 1> table_of_limit{};
};

// All waveforms; one store can serve any number of engines.
class WaveformStore {
  public:
    // As Waveform.  A cache that cannot be read or written costs time, nothing else.
    explicit WaveformStore(const std::string& cache_folder = {});
    WaveformStore(const WaveformStore&) = delete; // whose tables may be in use
    WaveformStore& operator=(const WaveformStore&) = delete;

    void getWavetable(OscType type, float frequency, Wavetable_ret* ret) const;

  private:
    Waveform square;
    Waveform saw;
    Waveform triangle;
    Waveform sine;
    Waveform noise;
};

} // namespace tarquil

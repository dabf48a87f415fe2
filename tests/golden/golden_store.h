// The stored references of the golden renders.
//
// A reference is a file NAME.flac (24 bits, stereo) with every n-th frame of the sound, enough to
// measure a signal-to-noise ratio, and a row in numbers.txt with figures over all frames.

#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace tarquil {

struct GoldenNumbers {
    uint64_t frames = 0;
    double rms = 0;
    double peak = 0;
};

class GoldenStore {
  public:
    explicit GoldenStore(std::string data_directory);

    // Every `stride`-th frame of interleaved stereo.
    static std::vector<float> pick_frames(const std::vector<float>& sound, unsigned stride);

    // The stored frames; empty when there are none.
    [[nodiscard]] std::vector<float> read_frames(const std::string& name) const;
    // False when the file cannot be written.
    [[nodiscard]] bool write_frames(const std::string& name,
                                    const std::vector<float>& frames) const;

    // False when the store has no such row.
    bool read_numbers(const std::string& name, GoldenNumbers& numbers) const;
    // Replaces or adds the row; false when the file cannot be written.
    [[nodiscard]] bool write_numbers(const std::string& name, const GoldenNumbers& numbers) const;

  private:
    [[nodiscard]] std::string frames_path(const std::string& name) const;
    [[nodiscard]] std::string numbers_path() const;

    std::string directory;
};

} // namespace tarquil

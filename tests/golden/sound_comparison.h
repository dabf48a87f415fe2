// How much one sound differs from another.

#pragma once

#include <vector>

namespace tarquil {

struct SoundComparison {
    double snr_db = 0; // energy of the reference over that of the difference; inf when equal
    double rms_difference = 0; // of the samples' differences
    double peak_difference = 0;
    bool same_length = false;
};

// Compares over the shorter length.
SoundComparison compare_sounds(const std::vector<float>& reference,
                               const std::vector<float>& sound);

double rms(const std::vector<float>& sound);

} // namespace tarquil

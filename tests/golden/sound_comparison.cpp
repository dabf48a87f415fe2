// How much one sound differs from another.

#include "tests/golden/sound_comparison.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace tarquil {

SoundComparison compare_sounds(const std::vector<float>& reference,
                               const std::vector<float>& sound) {
    SoundComparison result;
    result.same_length = reference.size() == sound.size();
    const size_t length = std::min(reference.size(), sound.size());
    double energy = 0;
    double error = 0;
    for (size_t i = 0; i < length; i++) {
        const double difference = double(sound[i]) - double(reference[i]);
        energy += double(reference[i]) * double(reference[i]);
        error += difference * difference;
        result.peak_difference = std::max(result.peak_difference, std::fabs(difference));
    }
    result.snr_db =
        error == 0 ? std::numeric_limits<double>::infinity() : 10 * std::log10(energy / error);
    result.rms_difference = length == 0 ? 0 : std::sqrt(error / double(length));
    return result;
}

double rms(const std::vector<float>& sound) {
    double energy = 0;
    for (const float sample : sound)
        energy += double(sample) * double(sample);
    return sound.empty() ? 0 : std::sqrt(energy / double(sound.size()));
}

} // namespace tarquil

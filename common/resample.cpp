// Lowering of a recording's sample rate by powers of two.

#include "common/resample.h"

#include <algorithm>
#include <cmath>
#include <iterator>

#include "common/assertion.h"

namespace tarquil {

const double halfband_filter_coefs[NUM_HALFBAND_COEFS] = {
    0.0031,  0.0019,  -0.0037, -0.0024, 0.0031,  0.0058,  -0.0032, -0.0086, 0.0007, 0.0125,
    0.0033,  -0.0154, -0.0102, 0.0173,  0.0201,  -0.0162, -0.0339, 0.0103,  0.0534, 0.0053,
    -0.0857, -0.0479, 0.1799,  0.4132,  0.4132,  0.1799,  -0.0479, -0.0857, 0.0053, 0.0534,
    0.0103,  -0.0339, -0.0162, 0.0201,  0.0173,  -0.0102, -0.0154, 0.0033,  0.0125, 0.0007,
    -0.0086, -0.0032, 0.0058,  0.0031,  -0.0024, -0.0037, 0.0019,  0.0031,
};

namespace {

constexpr size_t LONGEST_FILTER = 64;

// Rates and ratios that differ by less are equal.
constexpr float TOLERANCE = 0.0001F;

// Ratios from here on leave nothing of any recording.
constexpr float RATIO_LIMIT = 1e9F;

} // namespace

void decimate(size_t M, size_t H_size, const double* h, size_t N, const float* x,
              std::vector<float>& y) {
    double p_Z[LONGEST_FILTER] = {}; // newest sample first
    // clang-format off
    TARQ_ASSERT(sizeof(p_Z)/sizeof(p_Z[0]) >= H_size);
    // clang-format on
    TARQ_ASSERT(M >= 1 && M <= H_size);
    y.resize(N / M);
    for (float& result : y) {
        std::copy_backward(p_Z, p_Z + H_size - M, p_Z + H_size);
        for (size_t i = M; i > 0; i--)
            p_Z[i - 1] = double(*x++);
        double sum = 0.0;
        for (size_t i = 0; i < H_size; i++)
            sum += h[i] * p_Z[i];
        result = float(sum);
    }
}

bool resample(std::vector<float>& samples, float from_rate, float to_rate) {
    if (std::fabs(from_rate - to_rate) < TOLERANCE)
        return true;
    const float ratio = from_rate / to_rate;
    if (!(ratio >= 0.0F && ratio < RATIO_LIMIT)) // so that it converts; also not a number
        return false;
    auto n = unsigned(ratio + 0.499F);
    const bool power_of_two = n != 0 && (n & (n - 1)) == 0;
    if (std::fabs(ratio - float(n)) > TOLERANCE || !power_of_two)
        return false;
    for (; n > 1; n /= 2) {
        const std::vector<float> input = samples;
        decimate(2, NUM_HALFBAND_COEFS, halfband_filter_coefs, input.size(), input.data(), samples);
    }
    return true;
}

} // namespace tarquil

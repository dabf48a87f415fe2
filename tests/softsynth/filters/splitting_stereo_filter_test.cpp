// The bands of a crossover against the responses of its sections.

#include "softsynth/filters/splitting_stereo_filter.h"

#include <cmath>
#include <complex>
#include <limits>
#include <vector>

#include <gtest/gtest.h>

namespace tarquil {

namespace {

using Response = std::complex<double>;

enum class SectionType { LOW_PASS, HIGH_PASS };

// R. Bristow-Johnson, "Cookbook formulae for audio EQ biquad filter coefficients": with c the
// cosine of the cutoff, numerator (1 -+ c) / 2 * (1 +- 1/z)^2, denominator
// 1 + alpha - 2 c / z + (1 - alpha) / z^2.  Cutoff and omega in radians per sample.
Response cookbook_section(SectionType type, double cutoff, double q, double omega) {
    const double sign = type == SectionType::LOW_PASS ? 1 : -1;
    const double c = std::cos(cutoff);
    const double alpha = std::sin(cutoff) / (2 * q);
    const std::complex<double> delay = std::polar(1.0, -omega);
    const std::complex<double> zeros = 1.0 + sign * delay;
    return (1 - sign * c) / 2 * zeros * zeros /
           (1 + alpha - 2 * c * delay + (1 - alpha) * delay * delay);
}

constexpr uint32_t LENGTH = 8192; // the responses below have died away by then

// Response of an interleaved side's impulse response at omega.
Response response(const std::vector<float>& samples, uint32_t side, double omega) {
    Response sum = 0;
    for (uint32_t n = 0; n < LENGTH; n++)
        sum += double(samples[size_t(2) * n + side]) * std::polar(1.0, -omega * n);
    return sum;
}

class SplittingStereoFilterTest : public testing::Test {
  protected:
    // Impulses of 1 on the left and 2 a frame later on the right.
    void split(int stages, float omega, float resonance) {
        filter.init(stages);
        low.assign(size_t(2) * LENGTH, 0.0F);
        low[0] = 1.0F;
        low[3] = 2.0F;
        high = low;
        for (uint32_t done = 0; done < LENGTH; done += LENGTH / 16)
            filter.render(low.data() + size_t(2) * done, high.data() + size_t(2) * done,
                          LENGTH / 16, omega, resonance);
    }

    SplittingStereoFilter filter;
    std::vector<float> low;
    std::vector<float> high;
};

TEST_F(SplittingStereoFilterTest, BandsHaveTheResponseOfTheirSections) {
    for (const int stages : {1, 2, 4}) {
        for (const float cutoff : {0.05F, 0.5F, 2.0F}) {
            split(stages, cutoff, 0.25F);
            const double q = std::pow(0.25, 1.0 / stages);
            for (const double omega : {0.02, 0.05, 0.5, 1.0, 2.5}) {
                const Response below =
                    std::pow(cookbook_section(SectionType::LOW_PASS, cutoff, q, omega), stages);
                const Response above =
                    std::pow(cookbook_section(SectionType::HIGH_PASS, cutoff, q, omega), stages);
                // Single precision accumulates about 1e-5 in low cutoffs.
                EXPECT_NEAR(std::abs(response(low, 0, omega) - below), 0, 1e-4) << omega;
                EXPECT_NEAR(std::abs(response(high, 0, omega) - above), 0, 1e-4) << omega;
                const Response delayed = 2.0 * std::polar(1.0, -omega);
                EXPECT_NEAR(std::abs(response(low, 1, omega) - delayed * below), 0, 2e-4);
                EXPECT_NEAR(std::abs(response(high, 1, omega) - delayed * above), 0, 2e-4);
            }
        }
    }
}

TEST_F(SplittingStereoFilterTest, HistoryIsClearedByInitAndByWhatIsNotFinite) {
    split(4, 0.3F, 0.25F);
    const std::vector<float> first = low;
    float bad[8] = {1.0F, 1.0F, std::numeric_limits<float>::infinity(), 1.0F};
    float bad_copy[8] = {};
    filter.render(bad, bad_copy, 4, 0.3F, 0.25F);
    float silent[8] = {};
    float silent_copy[8] = {};
    filter.render(silent, silent_copy, 4, 0.3F, 0.25F);
    for (int i = 0; i < 8; i++) {
        EXPECT_EQ(silent[i], 0.0F);
        EXPECT_EQ(silent_copy[i], 0.0F);
    }
    filter.render(bad_copy, silent_copy, 4, 0.3F, 0.25F);
    split(4, 0.3F, 0.25F);
    EXPECT_EQ(low, first);
}

} // namespace

} // namespace tarquil

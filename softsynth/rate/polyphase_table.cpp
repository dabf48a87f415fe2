// The taps of the rate converter.

#include "softsynth/rate/polyphase_table.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <mutex>

#include "softsynth/parameters/constants.h"

namespace tarquil {

namespace {

constexpr uint32_t MAX_TABLE = 512 * 1024 / sizeof(float); // taps
constexpr double HALF_TAPS = 48.0;
constexpr double HALF_TRANSITION = 2.225; // times H: cycles per engine frame
constexpr double AUDIBLE = 20000.0 / SAMPLE_RATE;
constexpr double PI = 3.14159265358979323846;

// sin(pi x) by its series, exact to the last bits of a double for |x| <= 1/2.  Not the library's,
// so that every platform has the same taps; so for the window.
double sine_of_half_turns(double x) {
    const double nearest = std::nearbyint(x);
    const double angle = PI * (x - nearest);
    double sine = 0.0;
    for (int n = 21; n > 1; n -= 2)
        sine = (1.0 + sine) * (-angle * angle / (n * (n - 1)));
    sine = angle * (1.0 + sine);
    return std::fmod(nearest, 2.0) == 0.0 ? sine : -sine;
}

double sinc(double x) {
    return std::fabs(x) < 1e-9 ? 1.0 : sine_of_half_turns(x) / (PI * x);
}

// The factors between the terms (7^2 x)^n / n!^2 of I0(14 sqrt(x)).
constexpr int BESSEL_TERMS = 30;
constexpr std::array<double, BESSEL_TERMS + 1> BESSEL_FACTORS = [] {
    std::array<double, BESSEL_TERMS + 1> factors = {};
    for (int n = 1; n <= BESSEL_TERMS; n++)
        factors[size_t(n)] = 49.0 / (n * n);
    return factors;
}();

double bessel_of_root(double x) {
    double sum = 0.0;
    for (size_t n = BESSEL_TERMS; n > 0; n--)
        sum = (1.0 + sum) * (x * BESSEL_FACTORS[n]);
    return 1.0 + sum;
}

// The transition's centre, in cycles per engine frame.
double cutoff_for(double host_frames_per_frame, double half_taps) {
    const double half_rate = std::min(host_frames_per_frame, 1.0) / 2.0;
    const double stop = std::max(half_rate, 2.0 * half_rate - AUDIBLE);
    return std::min(half_rate, stop - HALF_TRANSITION / half_taps);
}

} // namespace

uint32_t filter_reach(const RateRatio& ratio) {
    if (ratio.is_one())
        return 0;
    const double longer = std::max(1.0, double(ratio.engine_frames) / double(ratio.host_frames));
    constexpr uint32_t STEP = Polyphase::SUMS / 2; // of half a row
    return uint32_t(std::ceil(HALF_TAPS * longer / STEP)) * STEP;
}

PolyphaseTable::PolyphaseTable(const RateRatio& rates) : ratio(rates) {
    const double host_frames_per_frame = double(ratio.host_frames) / double(ratio.engine_frames);
    half_taps = filter_reach(ratio);
    num_taps = 2 * half_taps;
    const double width = half_taps;
    const double cutoff = cutoff_for(host_frames_per_frame, width);

    interpolated = ratio.host_frames > MAX_TABLE / num_taps;
    const uint32_t rows_per_frame = interpolated ? MAX_TABLE / num_taps : ratio.host_frames;
    rows_per_phase = double(rows_per_frame) / double(ratio.host_frames);
    const uint32_t num_rows = rows_per_frame + (interpolated ? 1 : 0);
    taps.resize(size_t(num_rows) * num_taps / Polyphase::SUMS);
    const double scale = 2.0 * cutoff / bessel_of_root(1.0);
    float* tap = taps.front().tap;
    for (uint32_t row = 0; row < num_rows; row++) {
        const double fraction = double(row) / double(rows_per_frame);
        for (uint32_t k = 0; k < num_taps; k++) {
            const double t = fraction + (width - 1.0 - double(k));
            const double inside = std::max(0.0, (1.0 - t / width) * (1.0 + t / width));
            *tap++ = float(scale * sinc(2.0 * cutoff * t) * bessel_of_root(inside));
        }
    }
}

std::shared_ptr<const PolyphaseTable> shared_polyphase_table(const RateRatio& ratio) {
    static std::mutex mutex;
    static std::vector<std::weak_ptr<const PolyphaseTable>> tables;
    const std::lock_guard lock(mutex);
    std::erase_if(tables, [](const auto& table) { return table.expired(); });
    for (const auto& held : tables) {
        if (auto table = held.lock(); table && table->ratio == ratio)
            return table;
    }
    auto table = std::make_shared<const PolyphaseTable>(ratio);
    tables.push_back(table);
    return table;
}

} // namespace tarquil

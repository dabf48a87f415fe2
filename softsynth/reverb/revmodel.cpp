// The reverb: eight parallel combs and four all-passes in series on either side.

#include "softsynth/reverb/revmodel.h"

#include <algorithm>
#include <iterator>

#include "common/assertion.h"
#include "softsynth/kernels/kernels.h"
#include "softsynth/signal/finite.h"

namespace tarquil {

namespace {

constexpr float SCALE_WET = 3.0F;

// Delays of the left side in samples; the right side's are longer by the spread.
constexpr int COMB_TUNING[] = {1116, 1188, 1277, 1356, 1422, 1491, 1557, 1617};
constexpr int ALLPASS_TUNING[] = {556, 441, 341, 225};
constexpr int STEREO_SPREAD = 23;
static_assert(std::size(COMB_TUNING) == ReverbTank::NUM_COMBS &&
              COMB_TUNING[ReverbTank::NUM_COMBS - 1] + STEREO_SPREAD == revmodel::LONGEST_COMB);

} // namespace

revmodel::revmodel() {
    float* next = memory;
    const auto assign = [&next](ReverbTank::Line& line, int size) {
        line = {next, uint32_t(size), 0};
        next += size;
    };
    for (int s = 0; s < 2; s++) {
        const int spread = s * STEREO_SPREAD;
        for (unsigned i = 0; i < ReverbTank::NUM_COMBS; i++)
            assign(tank.sides[s].combs[i], COMB_TUNING[i] + spread);
        for (unsigned i = 0; i < ReverbTank::NUM_ALLPASSES; i++)
            assign(tank.sides[s].allpasses[i], ALLPASS_TUNING[i] + spread);
    }
    TARQ_ASSERT(next == memory + MEMORY_LENGTH);
    setwet(1.0F / 3.0F);
    setroomsize(0.5F);
    setdamp(0.5F);
    setwidth(1.0F);
}

void revmodel::setroomsize(float value) {
    roomsize = comb_feedback(value);
}

void revmodel::setdamp(float value) {
    damp = comb_damping(value);
}

void revmodel::setwet(float value) {
    wet = value * SCALE_WET;
}

void revmodel::setwidth(float value) {
    width = value;
}

void revmodel::update() {
    wet1 = wet * (width / 2.0F + 0.5F);
    wet2 = wet * (0.5F - width / 2.0F);
    tank.feedback = roomsize;
    tank.damp1 = damp;
    tank.damp2 = 1.0F - damp;
}

template <typename Store>
void revmodel::process(const float* in, float* out, long frames, const Store& store) {
    constexpr long CHUNK = 64;
    const bool silent = all_zero(in, uint32_t(2 * frames));
    if (silent && known_empty) {
        for (long i = 0; i < 2 * frames; i++)
            store(out[i], 0.0F);
        return;
    }
    bool silent_out = true;
    for (long start = 0; start < frames; start += CHUNK) {
        const long count = std::min(CHUNK, frames - start);
        float tank_out[2 * CHUNK];
        kernels().reverb(tank, in + 2 * start, tank_out, uint32_t(count));
        silent_out = silent_out && all_zero(tank_out, uint32_t(2 * count));
        for (long i = 0; i < count; i++) {
            const float left = tank_out[2 * i];
            const float right = tank_out[2 * i + 1];
            store(out[2 * (start + i)], left * wet1 + right * wet2);
            store(out[2 * (start + i) + 1], right * wet1 + left * wet2);
        }
    }
    known_empty = silent && silent_out && is_empty();
    mute_if_not_finite(out, frames);
}

bool revmodel::is_empty() const {
    return all_zero(memory, MEMORY_LENGTH) &&
           all_zero(tank.sides[0].stores, ReverbTank::NUM_COMBS) &&
           all_zero(tank.sides[1].stores, ReverbTank::NUM_COMBS);
}

void revmodel::processmix(const float* in, float* out, long frames) {
    process(in, out, frames, [](float& sample, float wet_sample) { sample += wet_sample; });
}

void revmodel::processreplace(const float* in, float* out, long frames) {
    process(in, out, frames, [](float& sample, float wet_sample) { sample = wet_sample; });
}

void revmodel::mute() {
    std::fill_n(memory, MEMORY_LENGTH, 0.0F);
    for (ReverbTank::Side& side : tank.sides)
        std::fill_n(side.stores, ReverbTank::NUM_COMBS, 0.0F);
}

void revmodel::mute_if_not_finite(float* out, long frames) {
    const auto is_finite = [](const ReverbTank::Side& side) {
        return all_finite(side.stores, ReverbTank::NUM_COMBS);
    };
    // Whatever is spoilt in the delay memory comes out at the latest one delay later.
    if (!scrub_non_finite(out, uint32_t(2 * frames)) && is_finite(tank.sides[0]) &&
        is_finite(tank.sides[1]))
        return;
    mute();
}

} // namespace tarquil

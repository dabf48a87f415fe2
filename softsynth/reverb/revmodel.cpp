// The reverb: eight parallel combs and four all-passes in series on either side.

#include "softsynth/reverb/revmodel.h"

#include <algorithm>

#include "common/assertion.h"
#include "softsynth/finite.h"

namespace {

constexpr float INPUT_GAIN = 0.015F;
constexpr float SCALE_WET = 3.0F;
constexpr float SCALE_DAMP = 0.4F;
constexpr float SCALE_ROOM = 0.28F;
constexpr float OFFSET_ROOM = 0.7F;

// Delays of the left side in samples; the right side's are longer by the spread.
constexpr int COMB_TUNING[] = {1116, 1188, 1277, 1356, 1422, 1491, 1557, 1617};
constexpr int ALLPASS_TUNING[] = {556, 441, 341, 225};
constexpr int STEREO_SPREAD = 23;

} // namespace

revmodel::revmodel() {
    float* next = memory;
    const auto assign = [&next](auto& filter, int size) {
        filter.setbuffer(next, size);
        next += size;
    };
    for (int i = 0; i < NUM_COMBS; i++) {
        assign(combL[i], COMB_TUNING[i]);
        assign(combR[i], COMB_TUNING[i] + STEREO_SPREAD);
    }
    for (int i = 0; i < NUM_ALLPASSES; i++) {
        assign(allpassL[i], ALLPASS_TUNING[i]);
        assign(allpassR[i], ALLPASS_TUNING[i] + STEREO_SPREAD);
    }
    TARQ_ASSERT(next == memory + MEMORY_LENGTH);
    setwet(1.0F / 3.0F);
    setroomsize(0.5F);
    setdamp(0.5F);
    setwidth(1.0F);
}

void revmodel::setroomsize(float value) {
    roomsize = value * SCALE_ROOM + OFFSET_ROOM;
}

void revmodel::setdamp(float value) {
    damp = value * SCALE_DAMP;
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
    for (comb* side : {combL, combR}) {
        for (int i = 0; i < NUM_COMBS; i++) {
            side[i].setfeedback(roomsize);
            side[i].setdamp(damp);
        }
    }
}

revmodel::Frame revmodel::process(float left, float right) {
    const float input = (left + right) * INPUT_GAIN;
    Frame out = {0.0F, 0.0F};
    for (int i = 0; i < NUM_COMBS; i++) {
        out.left += combL[i].process(input);
        out.right += combR[i].process(input);
    }
    for (int i = 0; i < NUM_ALLPASSES; i++) {
        out.left = allpassL[i].process(out.left);
        out.right = allpassR[i].process(out.right);
    }
    return {out.left * wet1 + out.right * wet2, out.right * wet1 + out.left * wet2};
}

void revmodel::processmix(const float* in, float* out, long frames) {
    for (long i = 0; i < frames; i++) {
        const Frame frame = process(in[2 * i], in[2 * i + 1]);
        out[2 * i] += frame.left;
        out[2 * i + 1] += frame.right;
    }
    mute_if_not_finite(out, frames);
}

void revmodel::processreplace(const float* in, float* out, long frames) {
    for (long i = 0; i < frames; i++) {
        const Frame frame = process(in[2 * i], in[2 * i + 1]);
        out[2 * i] = frame.left;
        out[2 * i + 1] = frame.right;
    }
    mute_if_not_finite(out, frames);
}

void revmodel::mute() {
    std::fill_n(memory, MEMORY_LENGTH, 0.0F);
    for (comb* side : {combL, combR})
        std::for_each(side, side + NUM_COMBS, [](comb& filter) { filter.mute(); });
}

void revmodel::mute_if_not_finite(float* out, long frames) {
    const auto is_finite = [](const comb* side) {
        return std::all_of(side, side + NUM_COMBS, [](const comb& c) { return c.is_finite(); });
    };
    // Whatever is spoilt in the delay memory comes out at the latest one delay later.
    if (!scrub_non_finite(out, uint32_t(2 * frames)) && is_finite(combL) && is_finite(combR))
        return;
    mute();
}

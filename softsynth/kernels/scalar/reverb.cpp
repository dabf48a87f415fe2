// The reverb's delay lines, frame by frame.

#include "softsynth/kernels/kernel_functions.h"

namespace tarquil {

namespace {

// Replaces the oldest sample.
void push(ReverbTank::Line& line, float sample) {
    line.samples[line.position] = sample;
    line.position++;
    if (line.position >= line.size)
        line.position = 0;
}

float run_comb(const ReverbTank& tank, ReverbTank::Line& line, float& store, float x) {
    const float y = line.samples[line.position];
    store = store * tank.damp1 + y * tank.damp2;
    push(line, x + store * tank.feedback);
    return y;
}

float run_allpass(ReverbTank::Line& line, float x) {
    const float b = line.samples[line.position];
    push(line, x + b * ReverbTank::ALLPASS_FEEDBACK);
    return b - x;
}

} // namespace

void KERNEL_NAMESPACE::reverb(ReverbTank& tank, const float* in, float* wet, uint32_t num_frames) {
    for (uint32_t i = 0; i < num_frames; i++) {
        const float x = (in[2 * i] + in[2 * i + 1]) * ReverbTank::INPUT_GAIN;
        for (uint32_t s = 0; s < 2; s++) {
            ReverbTank::Side& side = tank.sides[s];
            float sum = 0.0F;
            for (uint32_t k = 0; k < ReverbTank::NUM_COMBS; k++)
                sum += run_comb(tank, side.combs[k], side.stores[k], x);
            for (ReverbTank::Line& line : side.allpasses)
                sum = run_allpass(line, sum);
            wet[2 * i + s] = sum;
        }
    }
}

} // namespace tarquil

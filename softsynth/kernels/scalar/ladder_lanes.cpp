// Ladder filters one after the other.

#include "softsynth/kernels/ladder_lanes.h"

#include "softsynth/kernels/kernel_functions.h"
#include "softsynth/kernels/ladder_step.h"

namespace tarquil {

void run_ladder(const LadderCoefficients& coefficients, LadderMemory& memory, const float* in,
                float* out, uint32_t n) {
    const auto& [k, gain, g, c] = coefficients;
    const LadderSettings<float, 1> settings = {
        {k}, {gain}, {g}, {{c[0]}, {c[1]}, {c[2]}, {c[3]}, {c[4]}}};
    // Held in registers: `out` could overlap the memory.
    LadderStages<float, 1> stages = {{}, {}, {memory.y4_prev}, {memory.feedback}};
    for (int i = 0; i < 4; i++) {
        stages.y[i][0] = memory.y[i];
        stages.t[i][0] = memory.t[i];
    }
    for (uint32_t i = 0; i < n; i++) {
        const float x[1] = {in[i]};
        for (uint32_t step = 0; step < LadderLanes::OVERSAMPLING; step++) {
            float y[1];
            ladder_step(stages, settings, x, y);
            *out++ = y[0];
        }
    }
    for (int i = 0; i < 4; i++) {
        memory.y[i] = stages.y[i][0];
        memory.t[i] = stages.t[i][0];
    }
    memory.y4_prev = stages.y4_prev[0];
    memory.feedback = stages.feedback[0];
}

void KERNEL_NAMESPACE::ladder_lanes(const LadderLanes& lanes, uint32_t first, uint32_t length) {
    constexpr uint32_t PIECE = LadderLanes::PIECE;
    for (uint32_t lane = 0; lane < lanes.count; lane++) {
        LadderMemory& memory = *lanes.memory[lane];
        for (uint32_t done = 0; done < length; done += PIECE) {
            const uint32_t n = length - done < PIECE ? length - done : PIECE;
            float* samples = lanes.signal[lane] + first + done;
            float oversampled[LadderLanes::OVERSAMPLING * PIECE];
            run_ladder(*lanes.coefficients[lane], memory, samples, oversampled, n);
            memory.decimate_176khz.resample(oversampled, oversampled, 2 * n);
            memory.decimate_88khz.resample(oversampled, samples, n);
        }
    }
}

} // namespace tarquil

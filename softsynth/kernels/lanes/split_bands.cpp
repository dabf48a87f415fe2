// The crossover with its four signals in lanes and all sections in one loop, where the sections of
// neighbouring frames overlap.

#include "softsynth/kernels/kernel_functions.h"
#include "softsynth/kernels/lanes/lanes.h"

namespace tarquil {

namespace KERNEL_NAMESPACE {
namespace {

using Signals = Lanes<Crossover::SIGNALS>;

template <int STAGES> void split(Crossover& crossover, float* low, float* high, uint32_t frames) {
    const Signals b0 = Signals::load(crossover.b0);
    const Signals b1 = Signals::load(crossover.b1);
    const Signals a1 = Signals::splat(crossover.a1);
    const Signals a2 = Signals::splat(crossover.a2);
    Signals z1[STAGES];
    Signals z2[STAGES];
    for (int k = 0; k < STAGES; k++) {
        z1[k] = Signals::load(crossover.sections[k].z1);
        z2[k] = Signals::load(crossover.sections[k].z2);
    }
    for (uint32_t i = 0; i < 2 * frames; i += 2) {
        Signals x = load_halves(low + i, high + i);
        for (int k = 0; k < STAGES; k++) {
            const Signals in = b0 * x;
            const Signals y = in + z1[k];
            z1[k] = b1 * x - a1 * y + z2[k];
            z2[k] = in - a2 * y;
            x = y;
        }
        store_halves(x, low + i, high + i);
    }
    for (int k = 0; k < STAGES; k++) {
        z1[k].store(crossover.sections[k].z1);
        z2[k].store(crossover.sections[k].z2);
    }
}

} // namespace

void split_bands(Crossover& crossover, float* low, float* high, uint32_t frames) {
    switch (crossover.num_stages) {
    case 1:
        split<1>(crossover, low, high, frames);
        return;
    case 2:
        split<2>(crossover, low, high, frames);
        return;
    case 3:
        split<3>(crossover, low, high, frames);
        return;
    case 4:
        split<4>(crossover, low, high, frames);
        return;
    default:
        return;
    }
}

} // namespace KERNEL_NAMESPACE

} // namespace tarquil

// Crossovers with their four signals in lanes.
//
// A section waits for its own last output.  In vectors of four lanes all sections of a crossover
// stand in one loop, where those of neighbouring frames overlap.  Vectors of sixteen hold all four
// sections, each a frame behind the one before it, and all crossovers run in one loop, each four
// frames behind.

#include "softsynth/kernels/kernel_functions.h"
#include "softsynth/kernels/lanes/lanes.h"

namespace tarquil {

namespace KERNEL_NAMESPACE {
namespace {

constexpr int STAGES = Crossover::STAGES;
using Signals = Lanes<Crossover::SIGNALS>;

void run_sections(Crossover& crossover, float* low, float* high, uint32_t frames) {
    const Signals b0 = Signals::load(crossover.b0);
    const Signals b1 = Signals::load(crossover.b1);
    const Signals a1 = Signals::splat(crossover.a1);
    const Signals a2 = Signals::splat(crossover.a2);
    Signals z1[STAGES];
    Signals z2[STAGES];
    for (int k = 0; k < STAGES; k++) {
        z1[k] = Signals::load(crossover.z1[k]);
        z2[k] = Signals::load(crossover.z2[k]);
    }
    for (uint32_t i = 0; i < 2 * frames; i += 2) {
        Signals x = load_halves(high + i, high + i);
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
        z1[k].store(crossover.z1[k]);
        z2[k].store(crossover.z2[k]);
    }
}

// All sections of a crossover: lanes 4k to 4k + 3 are section k.
struct Wave {
    using All = Lanes<STAGES * Crossover::SIGNALS>;

    All b0;
    All b1;
    All a1;
    All a2;
    All z1;
    All z2;
    All last; // outputs, by a section onwards; the first four are the last section's

    explicit Wave(const Crossover& crossover)
        : b0(repeated(crossover.b0)), b1(repeated(crossover.b1)), a1(All::splat(crossover.a1)),
          a2(All::splat(crossover.a2)), z1(All::load(crossover.z1[0])),
          z2(All::load(crossover.z2[0])), last(All::splat(0.0F)) {}

    static All repeated(const float* signals) {
        float all[STAGES * Crossover::SIGNALS];
        for (int i = 0; i < STAGES * Crossover::SIGNALS; i++)
            all[i] = signals[i % Crossover::SIGNALS];
        return All::load(all);
    }

    // The first section takes `in`; `frame` is its frame, and sections whose frame is not within
    // 0 .. frames - 1 rest when CHECKED.
    template <bool CHECKED> void step(const Signals& in, int frame, int frames) {
        const All x = with_first(last, in);
        const All scaled = b0 * x;
        const All y = scaled + z1;
        const All next_z1 = b1 * x - a1 * y + z2;
        const All next_z2 = scaled - a2 * y;
        if constexpr (CHECKED) {
            float own[STAGES * Crossover::SIGNALS];
            for (int i = 0; i < STAGES * Crossover::SIGNALS; i++) {
                const int section = i / Crossover::SIGNALS;
                own[i] = float(frame - section);
            }
            const All at = All::load(own);
            const auto has_begun = at >= All::splat(0.0F);
            const auto goes_on = at < All::splat(float(frames));
            z1 = select(has_begun, select(goes_on, next_z1, z1), z1);
            z2 = select(has_begun, select(goes_on, next_z2, z2), z2);
        } else {
            z1 = next_z1;
            z2 = next_z2;
        }
        last = rotated(y);
    }
};

// Of three crossovers.
class Waves {
  public:
    static constexpr int COUNT = 3;

    Waves(const BandSplit& of_split, uint32_t num_frames)
        : split(of_split),
          frames(int(num_frames)), waves{Wave(*split.crossovers[0]), Wave(*split.crossovers[1]),
                                         Wave(*split.crossovers[2])} {}

    void run() {
        constexpr int BEHIND = STAGES * COUNT - 1; // the last section
        int t = 0;
        for (; t < BEHIND; t++)
            step<true>(t);
        for (; t < frames; t++)
            step<false>(t);
        for (; t < frames + BEHIND; t++)
            step<true>(t);
        for (int b = 0; b < COUNT; b++) {
            waves[b].z1.store(split.crossovers[b]->z1[0]);
            waves[b].z2.store(split.crossovers[b]->z2[0]);
        }
    }

  private:
    // One step of all, the last crossover first, since each takes the last output of the one
    // before.
    template <bool CHECKED> void step(int t) {
#pragma GCC unroll 4
        for (int b = COUNT - 1; b >= 0; b--) {
            const int frame = t - STAGES * b;
            Signals in = Signals::splat(0.0F);
            if (b > 0)
                in = upper_twice(first(waves[b - 1].last));
            else if (!CHECKED || t < frames)
                in = load_halves(split.high + 2 * t, split.high + 2 * t);
            waves[b].template step<CHECKED>(in, frame, frames);
            const int done = frame - STAGES + 1;
            if (CHECKED && (done < 0 || done >= frames))
                continue;
            const Signals out = first(waves[b].last);
            store_lower(out, split.low[b] + 2 * done);
            if (b == COUNT - 1)
                store_upper(out, split.high + 2 * done);
        }
    }

    const BandSplit& split;
    int frames;
    Wave waves[COUNT];
};

} // namespace

void split_bands(const BandSplit& split, uint32_t frames) {
    if (NATIVE_LANES == STAGES * Crossover::SIGNALS && split.count == Waves::COUNT) {
        Waves(split, frames).run();
        return;
    }
    for (uint32_t b = 0; b < split.count; b++)
        run_sections(*split.crossovers[b], split.low[b], split.high, frames);
}

} // namespace KERNEL_NAMESPACE

} // namespace tarquil

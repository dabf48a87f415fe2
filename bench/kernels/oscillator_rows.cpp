// Oscillator copies: one group, and the pool of 96 voices with three groups of 255.

#include <algorithm>
#include <memory>
#include <string>

#include "bench/kernels/kernel_row.h"
#include "player/shared_waveforms.h"
#include "softsynth/voices/voice_pool.h"
#include "softsynth/wavetables/oscillator_group.h"

namespace tarquil {

namespace {

constexpr uint32_t BLOCK = 256;
constexpr int GROUPS = 96 * 3;

MonoBuffer pitch;
MonoBuffer out;

void render(OscillatorGroup& group, uint32_t size) {
    out.init(size);
    group.render(out, pitch, 0);
}

// Copies spread evenly from `low` Hz upwards, by `step` Hz each.
void fill(OscillatorGroup& group, int copies, float low, float step) {
    group.init(OSC_SAW);
    for (int j = 0; j < copies; j++)
        group.add_copy(shared_waveforms(), low + step * float(j), float(j) * 0.618F);
}

KernelRow group_row(int copies, uint32_t size) {
    const auto group = std::make_shared<OscillatorGroup>();
    fill(*group, copies, 220.0F, 0.001F);
    return {"oscillators, " + std::to_string(copies) + (copies == 1 ? " copy, " : " copies, ") +
                std::to_string(size) + " samples",
            KernelRow::CYCLES, double(copies) * size, [group, size] { render(*group, size); }};
}

// Wide: sixteen tables a group.
KernelRow pool_row(bool wide, uint32_t size) {
    const auto groups = std::make_shared<std::vector<OscillatorGroup>>(GROUPS);
    for (int i = 0; i < GROUPS; i++)
        fill((*groups)[size_t(i)], MAX_MULTI_OSC_WIDTH,
             wide ? 190.0F + float(i) : 110.0F + float(i), wide ? 0.9F : 0.001F);
    return {"pool of " + std::to_string(GROUPS * MAX_MULTI_OSC_WIDTH) + ", " +
                (wide ? "wide, " : "narrow, ") + std::to_string(size) + " samples",
            KernelRow::CYCLES, double(GROUPS) * MAX_MULTI_OSC_WIDTH * size, [groups, size] {
                for (OscillatorGroup& group : *groups)
                    render(group, size);
            }};
}

} // namespace

std::vector<KernelRow> oscillator_rows() {
    std::fill_n(pitch.get_first_sample_ptr(), MAX_NUM_SAMPLES, 1.0F);
    return {group_row(1, 4),       group_row(1, BLOCK),  group_row(3, 4),
            group_row(3, BLOCK),   group_row(15, BLOCK), group_row(63, BLOCK),
            group_row(255, BLOCK), pool_row(false, 64),  pool_row(true, 256)};
}

} // namespace tarquil

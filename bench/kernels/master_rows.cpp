// The stages of the master section, and the way to another rate.

#include <algorithm>
#include <memory>

#include "bench/kernels/kernel_row.h"
#include "bench/signals.h"
#include "softsynth/effects/multi_compressor.h"
#include "softsynth/effects/psola.h"
#include "softsynth/rate/rate_bridge.h"
#include "softsynth/reverb/revmodel.h"

namespace tarquil {

namespace {

constexpr uint32_t BLOCK = 256;

StereoBuffer noise;
StereoBuffer bus;

void fill_bus() {
    Buffer::copy(noise, bus);
}

KernelRow crossover_row() {
    const auto split = std::make_shared<SplittingStereoFilter>();
    split->set(0.1F, 0.25F);
    return {"crossover of 4 sections, frame", KernelRow::CYCLES, BLOCK, [split] {
                static StereoBuffer low;
                low.init(BLOCK);
                fill_bus();
                float* const lows[] = {low.get_first_left_sample_ptr()};
                SplittingStereoFilter::render({split.get(), 1}, lows,
                                              bus.get_first_left_sample_ptr(), BLOCK);
            }};
}

// Below the thresholds, so that the gain's power does not hide the rest.
KernelRow compressor_row() {
    const auto multi = std::make_shared<MultiCompressor>();
    return {"4 bands split and compressed, frame", KernelRow::CYCLES, BLOCK, [multi] {
                constexpr float CROSSOVERS[] = {300, 1000, 5000};
                constexpr float ONES[] = {1, 1, 1, 1};
                constexpr float RATIOS[] = {4, 4, 4, 4};
                constexpr float ATTACKS[] = {0.01F, 0.01F, 0.01F, 0.01F};
                constexpr float RELEASES[] = {0.1F, 0.1F, 0.1F, 0.1F};
                fill_bus();
                multi->process(bus, CROSSOVERS, ONES, RATIOS, ATTACKS, RELEASES, ONES);
            }};
}

KernelRow reverb_row() {
    const auto model = std::make_shared<revmodel>();
    model->update();
    return {"reverb, frame", KernelRow::CYCLES, BLOCK, [model] {
                fill_bus();
                model->processmix(noise.get_first_left_sample_ptr(),
                                  bus.get_first_left_sample_ptr(), BLOCK);
            }};
}

// A beat of 60 bpm.
KernelRow capture_row() {
    constexpr uint32_t PERIOD = 44100;
    const auto beat = std::make_shared<std::vector<float>>(PERIOD);
    const auto loop = std::make_shared<std::vector<float>>(PERIOD);
    fill_noise(beat->data(), PERIOD);
    return {"retrigger's capture at 60 bpm, x 2", KernelRow::MICROSECONDS, 1, [beat, loop] {
                uint32_t length = 0;
                psola_time_stretch(beat->data(), PERIOD, 2, loop->data(), &length);
            }};
}

// To a host's rate.
KernelRow rate_row(const char* name, double rate) {
    const auto bridge = std::make_shared<RateBridge>();
    if (!bridge->activate(rate, 32))
        return {};
    return {name, KernelRow::CYCLES, BLOCK, [bridge] {
                static float left[BLOCK];
                static float right[BLOCK];
                bridge->render(left, right, BLOCK, [](float* frames, uint32_t num_frames) {
                    std::copy_n(noise.get_first_left_sample_ptr(), 2 * num_frames, frames);
                });
            }};
}

} // namespace

std::vector<KernelRow> master_rows() {
    noise.init(BLOCK);
    bus.init(BLOCK);
    fill_noise(noise.get_first_left_sample_ptr(), 2 * BLOCK);
    return {crossover_row(),
            compressor_row(),
            reverb_row(),
            capture_row(),
            rate_row("44100 to 48000 Hz, frame", 48000.0),
            rate_row("44100 to 47999 Hz, frame", 47999.0)};
}

} // namespace tarquil

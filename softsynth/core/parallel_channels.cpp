// Renders the voices and channels of an engine's block on several threads.

#include "softsynth/core/parallel_channels.h"

#include <algorithm>

#include "softsynth/signal/flush_to_zero.h"

namespace tarquil {

namespace {

// Fewer voices would leave the filters' lanes empty.
constexpr uint32_t FEWEST_VOICES = 8;

} // namespace

ParallelChannels::ParallelChannels(JobRunner& job_runner, const WaveformStore& waves)
    : runner(job_runner) {
    for (unsigned i = 0; i < runner.width(); i++)
        places.push_back(std::make_unique<Place>(waves));
}

void ParallelChannels::follow(const TempoValues* tempo) {
    for (const std::unique_ptr<Place>& place : places) {
        place->voices.follow(tempo);
        place->channel.stereo_effect.tempo = tempo;
    }
}

template <typename Act> void ParallelChannels::share_out(uint32_t count, const Act& act) {
    next.store(0, std::memory_order_relaxed);
    const auto work = [&](uint32_t place) {
        const FlushToZero flush_to_zero;
        for (;;) {
            const uint32_t index = next.fetch_add(1, std::memory_order_relaxed);
            if (index >= count)
                return;
            act(*places[place], index);
        }
    };
    runner.run(
        std::min(uint32_t(places.size()), count),
        [](const void* context, uint32_t index) {
            (*static_cast<const decltype(work)*>(context))(index);
        },
        &work);
}

bool ParallelChannels::is_worth_it(std::span<Voice* const> voices, uint32_t size) const {
    uint64_t cycles = 0;
    for (const Voice* voice : voices)
        cycles += uint64_t(voice->get_cost()) * size;
    return cycles >= runner.least_work();
}

void ParallelChannels::render_voices(std::span<Voice* const> voices, uint32_t start,
                                     uint32_t size) {
    // Two pieces for each place make up for some of their differences.
    const auto count = uint32_t(voices.size());
    const auto pieces = uint32_t(2 * places.size());
    const uint32_t length = std::max((count + pieces - 1) / pieces, FEWEST_VOICES);
    share_out((count + length - 1) / length, [&](Place& place, uint32_t piece) {
        const uint32_t first = piece * length;
        place.voices.render(voices.subspan(first, std::min(length, count - first)), start, size);
    });
}

void ParallelChannels::render_channels(Channel* channels, uint32_t start, uint32_t size) {
    share_out(NUM_CHANNELS, [&](Place& place, uint32_t channel) {
        channels[channel].render(size, start, place.channel, outputs[channel]);
    });
}

} // namespace tarquil

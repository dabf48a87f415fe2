// Renders the voices and channels of an engine's block on several threads.
//
// Voices do not act on each other before their channel adds them, nor channels before the buses:
// each gives the bits that it gives alone, and what they give is added in the usual order.  A job
// takes what is next as long as there is any, so that a late thread holds up nothing.

#pragma once

#include <atomic>
#include <cstdint>
#include <memory>
#include <span>
#include <vector>

#include "common/job_runner.h"
#include "softsynth/voices/channel.h"
#include "softsynth/voices/voice_renderer.h"

namespace tarquil {

class ParallelChannels {
  public:
    // Both stay as long as the object.  Allocates what each of the runner's jobs works with.
    ParallelChannels(JobRunner& job_runner, const WaveformStore& waves);

    // What delays and LFOs follow from now on; null for nothing.
    void follow(const TempoValues* tempo);

    // Whether a block with these voices is to be shared out.
    [[nodiscard]] bool is_worth_it(std::span<Voice* const> voices, uint32_t size) const;

    // As VoiceRenderer::render.
    void render_voices(std::span<Voice* const> voices, uint32_t start, uint32_t size);

    // As Channel::render, for all channels.
    void render_channels(Channel* channels, uint32_t start, uint32_t size);
    [[nodiscard]] const ChannelOutput& get_output(int channel) const { return outputs[channel]; }

  private:
    // What a job works with.
    struct Place {
        explicit Place(const WaveformStore& waves) : channel(waves) {}

        VoiceRenderer voices;
        ChannelScratch channel;
    };

    // Calls act(place, index) for each index below `count`, on as many places as there are.
    template <typename Act> void share_out(uint32_t count, const Act& act);

    JobRunner& runner;
    std::vector<std::unique_ptr<Place>> places;
    std::atomic<uint32_t> next{0};
    ChannelOutput outputs[NUM_CHANNELS];
};

} // namespace tarquil

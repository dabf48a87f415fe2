// What rests in silence: the tail keeps its bits, ends at 0, and the next sound is as the first.

#include <gtest/gtest.h>

#include <functional>
#include <vector>

#include "player/shared_waveforms.h"
#include "softsynth/effects/multi_compressor.h"
#include "softsynth/effects/stereo_effect.h"
#include "softsynth/filters/stereo_filter.h"
#include "softsynth/reverb/revmodel.h"
#include "softsynth/signal/finite.h"
#include "softsynth/signal/flush_to_zero.h"

namespace tarquil {

namespace {

using Process = std::function<void(StereoBuffer& in, StereoBuffer& out)>;

// An impulse and the silence after it, in blocks; interleaved stereo.
std::vector<float> impulse_response(const Process& process, uint32_t frames, uint32_t block) {
    const FlushToZero flush_to_zero;
    static StereoBuffer in;
    static StereoBuffer out;
    std::vector<float> response;
    for (uint32_t done = 0; done < frames; done += block) {
        for (StereoBuffer* buffer : {&in, &out}) {
            buffer->init(block);
            buffer->nullify();
        }
        if (done == 0)
            in.get_first_left_sample_ptr()[1] = 0.5F;
        process(in, out);
        const float* samples = out.get_first_left_sample_ptr();
        response.insert(response.end(), samples, samples + 2 * block);
    }
    return response;
}

// `seconds` is more than the tail lasts.
void expect_rest(const std::function<Process()>& make, uint32_t seconds) {
    const uint32_t frames = seconds * SAMPLE_RATE / 2048 * 2048;
    const Process process = make();
    impulse_response(process, frames, 2048); // settles what starts away from its resting place
    const std::vector<float> first = impulse_response(process, frames, 2048);
    ASSERT_FALSE(all_zero(first.data(), uint32_t(first.size())));
    EXPECT_TRUE(all_zero(first.data() + first.size() - 4096, 4096));
    EXPECT_TRUE(impulse_response(process, frames, 2048) == first) << "after a rest";
    const Process other = make();
    impulse_response(other, frames, 64);
    EXPECT_TRUE(impulse_response(other, frames, 64) == first) << "in small blocks";
}

TEST(Silence, RestsInTheReverb) {
    static revmodel reverb;
    expect_rest(
        [] {
            reverb.mute();
            reverb.setroomsize(0.0F);
            reverb.update();
            return [](StereoBuffer& in, StereoBuffer& out) {
                reverb.processmix(in.get_first_left_sample_ptr(), out.get_first_left_sample_ptr(),
                                  long(in.get_buf_size()));
            };
        },
        20);
}

TEST(Silence, RestsInTheDelay) {
    static StereoEffect effect;
    static StereoEffectScratch scratch(shared_waveforms());
    expect_rest(
        [] {
            return [](StereoBuffer& in, StereoBuffer& out) {
                effect.render(StereoEffect::STEREO_EFFECT_DELAY, in, out, 0, 10, 64, 0, 0, 1.0F,
                              scratch);
            };
        },
        20);
}

TEST(Silence, RestsInAFilter) {
    static StereoFilter filter;
    expect_rest(
        [] {
            filter.init(FILTER_HIGHPASS, 2);
            return [](StereoBuffer& in, StereoBuffer& out) {
                Buffer::copy(in, out);
                filter.render(out.get_first_left_sample_ptr(), out.get_buf_size(), 0.3F, 0.7F,
                              0.0F);
            };
        },
        2);
}

TEST(Silence, RestsInTheCompressor) {
    static MultiCompressor compressor;
    expect_rest(
        [] {
            compressor.reset();
            return [](StereoBuffer& in, StereoBuffer& out) {
                const float crossovers[] = {100.0F, 1000.0F, 5000.0F};
                const float values[][4] = {{0.1F, 0.1F, 0.1F, 0.1F},
                                           {2.0F, 2.0F, 2.0F, 2.0F},
                                           {0.01F, 0.01F, 0.01F, 0.01F},
                                           {0.1F, 0.1F, 0.1F, 0.1F},
                                           {1.0F, 1.0F, 1.0F, 1.0F}};
                Buffer::copy(in, out);
                compressor.process(out, crossovers, values[0], values[1], values[2], values[3],
                                   values[4]);
            };
        },
        6);
}

} // namespace

} // namespace tarquil

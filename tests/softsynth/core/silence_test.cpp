// What has a memory in silence and after what is not finite: the tail keeps its bits and ends at 0,
// and the next sound is as the first.

#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <functional>
#include <memory>
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

Process make_reverb() {
    const auto reverb = std::make_shared<revmodel>();
    reverb->setroomsize(0.0F);
    reverb->update();
    return [reverb](StereoBuffer& in, StereoBuffer& out) {
        reverb->processmix(in.get_first_left_sample_ptr(), out.get_first_left_sample_ptr(),
                           long(in.get_buf_size()));
    };
}

Process make_delay() {
    struct Delay {
        StereoEffect effect;
        StereoEffectScratch scratch{shared_waveforms()};
    };
    const auto delay = std::make_shared<Delay>();
    return [delay](StereoBuffer& in, StereoBuffer& out) {
        delay->effect.render(StereoEffect::STEREO_EFFECT_DELAY, in, out, 0, 10, 64, 0, 0, 1.0F,
                             delay->scratch);
    };
}

Process make_filter() {
    const auto filters = std::make_shared<std::array<StereoFilter, 2>>();
    for (StereoFilter& filter : *filters) {
        filter.init(FILTER_HIGHPASS);
        filter.set(0.3F, 0.7F, 0.0F);
    }
    return [filters](StereoBuffer& in, StereoBuffer& out) {
        Buffer::copy(in, out);
        StereoFilter* const series[] = {&(*filters)[0], &(*filters)[1]};
        StereoFilter::render(series, out.get_first_left_sample_ptr(), out.get_buf_size());
    };
}

Process make_compressor() {
    const auto compressor = std::make_shared<MultiCompressor>();
    return [compressor](StereoBuffer& in, StereoBuffer& out) {
        const float crossovers[] = {100.0F, 1000.0F, 5000.0F};
        const float values[][4] = {{0.1F, 0.1F, 0.1F, 0.1F},
                                   {2.0F, 2.0F, 2.0F, 2.0F},
                                   {0.01F, 0.01F, 0.01F, 0.01F},
                                   {0.1F, 0.1F, 0.1F, 0.1F},
                                   {1.0F, 1.0F, 1.0F, 1.0F}};
        Buffer::copy(in, out);
        compressor->process(out, crossovers, values[0], values[1], values[2], values[3], values[4]);
    };
}

struct Stage {
    const char* name;
    Process (*make)();
    uint32_t seconds; // more than its tail lasts
};

class Memory : public testing::TestWithParam<Stage> {
  protected:
    // What comes of two frames on the left and the silence after them, in blocks; interleaved.
    static std::vector<float> response(const Process& process, uint32_t block,
                                       float height = 0.5F) {
        const FlushToZero flush_to_zero;
        static StereoBuffer in;
        static StereoBuffer out;
        std::vector<float> sound;
        for (uint32_t done = 0; done < frames(); done += block) {
            for (StereoBuffer* buffer : {&in, &out}) {
                buffer->init(block);
                buffer->nullify();
            }
            if (done == 0)
                in.get_first_left_sample_ptr()[1] = in.get_first_left_sample_ptr()[41] = height;
            process(in, out);
            const float* samples = out.get_first_left_sample_ptr();
            sound.insert(sound.end(), samples, samples + 2 * block);
        }
        return sound;
    }
    static uint32_t frames() { return GetParam().seconds * SAMPLE_RATE / 2048 * 2048; }
};

TEST_P(Memory, RestsInSilence) {
    const Process process = GetParam().make();
    response(process, 2048); // settles what starts away from its resting place
    const std::vector<float> first = response(process, 2048);
    ASSERT_FALSE(all_zero(first.data(), uint32_t(first.size())));
    EXPECT_TRUE(all_zero(first.data() + first.size() - 4096, 4096));
    EXPECT_TRUE(response(process, 2048) == first) << "after a rest";
    const Process other = GetParam().make();
    response(other, 64);
    EXPECT_TRUE(response(other, 64) == first) << "in small blocks";
}

TEST_P(Memory, ForgetsWhatIsNotFinite) {
    const Process fresh = GetParam().make();
    response(fresh, 2048);
    const std::vector<float> expected = response(fresh, 2048);
    for (const float bad : {INFINITY, std::nanf("")}) {
        const Process process = GetParam().make();
        const std::vector<float> spoilt = response(process, 2048, bad);
        EXPECT_TRUE(all_finite(spoilt.data() + 4096, uint32_t(spoilt.size()) - 4096)) << bad;
        EXPECT_TRUE(response(process, 2048) == expected) << bad;
    }
}

INSTANTIATE_TEST_SUITE_P(Stages, Memory,
                         testing::Values(Stage{"reverb", make_reverb, 20},
                                         Stage{"delay", make_delay, 20},
                                         Stage{"filter", make_filter, 2},
                                         Stage{"compressor", make_compressor, 6}),
                         [](const auto& given) { return std::string(given.param.name); });

} // namespace

} // namespace tarquil

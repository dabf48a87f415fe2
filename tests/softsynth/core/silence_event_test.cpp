// Silencing a channel: how fast and how quietly it ends, what ends with it and what does not.

#include <gtest/gtest.h>

#include <functional>

#include "softsynth/core/core.h"
#include "tests/support/engine_host.h"

namespace tarquil {

namespace {

// An engine whose channels are heard one by one, before the master section.
class Tapped {
  public:
    Tapped() { host->set_channel_taps(taps.data()); }

    // What channel 0 and channel 1 add to the main bus, interleaved stereo.
    void render(uint32_t frames, uint32_t block = 64) {
        for (uint32_t done = 0; done < frames; done += block) {
            host.render(block, block);
            for (unsigned channel = 0; channel < 2; channel++) {
                const float* samples = taps[channel].get_first_left_sample_ptr();
                sound[channel].insert(sound[channel].end(), samples, samples + 2 * block);
            }
        }
    }

    EngineHost host;
    std::vector<float> sound[2];

  private:
    std::vector<StereoBuffer> taps{NUM_CHANNELS};
};

std::vector<float> from_frame(const std::vector<float>& sound, uint32_t frame) {
    return {sound.begin() + 2 * ptrdiff_t(frame), sound.end()};
}

// Every effect that remembers: on channel 0, and sends to the master's.
void set_echoes(EngineHost& host, int channel, int stereo_effect) {
    host.set_plain(channel, OSC_SAW);
    host.set(channel, CTRL_CHANFX1_TYPE, 2); // a compressor
    for (unsigned i = 0; i < 5; i++)
        host.set(channel, CTRL_CHANFX1_PARAM1 + i, 64);
    host.set(channel, CTRL_CHAN_FILTER1_TYPE, 1);
    host.set(channel, CTRL_CHAN_FILTER1_CUTOFF, 60);
    host.set(channel, CTRL_CHAN_FILTER1_RESONANCE, 120);
    host.set(channel, CTRL_CHANFX2_TYPE, stereo_effect);
    host.set(channel, CTRL_CHANFX2_WET, 127);
    for (unsigned i = 0; i < 5; i++)
        host.set(channel, CTRL_CHANFX2_PARAM1 + i, i == 3 ? int(OSC_SINE) : 40 + 10 * int(i));
    host.set(channel, CTRL_AUX1_LEVEL, 127);
    host.set(channel, CTRL_AUX2_LEVEL, 127);
}

TEST(SilenceEvent, EndsWithinMilliseconds) {
    constexpr uint32_t START = 8192;
    for (const uint32_t offset : {0U, 25U, 50U, 63U}) { // a period has 100 samples
        Tapped synth;
        synth.host.set_plain(0, OSC_SINE);
        synth.host.note_on(0, 69);
        synth.render(START);
        synth.host.silence(0, false, offset);
        synth.render(1024);
        const std::vector<float> left = side(synth.sound[0], 0);
        const auto at = [&](double ms) {
            return left.begin() + START + offset + int(ms * SAMPLE_RATE / 1000);
        };
        const float tone = peak({at(-20), at(0)});
        ASSERT_GT(tone, 0.01F);
        EXPECT_GT(peak({at(0), at(2)}), 0.5F * tone) << "not before 2 ms";
        EXPECT_EQ(peak({at(5), left.end()}), 0.0F) << "not after 5 ms";
        EXPECT_EQ(synth.host->get_voice_pool().voices_used(), 0);
    }
}

TEST(SilenceEvent, WhatFadesNoLongerFollowsControllers) {
    const auto play = [](bool change) {
        Tapped synth;
        set_echoes(synth.host, 0, StereoEffect::STEREO_EFFECT_FLANGER);
        synth.host.set(0, CTRL_FILTER1_TYPE, 1);
        synth.host.set(0, CTRL_LFO1_SPEED, 100);
        synth.host.set(0, CTRL_OSC1_INFLUENCE_SOURCE, INFL_LFO1);
        synth.host.set(0, CTRL_OSC1_INFLUENCE_AMOUNT, 80);
        synth.host.note_on(0, 57);
        synth.render(4096);
        synth.host.silence(0, false, 11);
        for (const ControllerInfo& info : controller_rows()) {
            if (change && !is_global_controller(info.number))
                synth.host.set(0, info.number, filter_controller(info.number, 13), 11);
        }
        synth.render(1024);
        return from_frame(synth.sound[0], 4096);
    };
    EXPECT_EQ(play(true), play(false));
}

// A note that starts at the very sample of a silence: once that has faded, it sounds as the first
// note of a fresh engine.
TEST(SilenceEvent, NothingOfWhatWasIsLeft) {
    constexpr uint32_t TIME = 44096;
    const auto play = [](int effect, const std::function<void(EngineHost&)>& before) {
        Tapped synth;
        set_echoes(synth.host, 0, effect);
        if (before)
            before(synth.host);
        synth.render(TIME);
        if (before)
            synth.host.silence(0, false, 20);
        synth.host.note_on(0, 60, 100, 20);
        synth.render(65536);
        return from_frame(synth.sound[0], TIME + 20 + SILENCE_FADE_SAMPLES);
    };
    const std::function<void(EngineHost&)> pasts[] = {[](EngineHost& host) { host.note_on(0, 43); },
                                                      [](EngineHost& host) { // echoes only
                                                          host.note_on(0, 43);
                                                          host.note_off(0, 43, 1000);
                                                      },
                                                      [](EngineHost& host) { // silenced before
                                                          host.note_on(0, 43);
                                                          host.silence(0, false, 20000);
                                                          host.note_on(0, 50, 127, 20000);
                                                      }};
    for (int effect = 0; effect < 4; effect++) {
        const std::vector<float> fresh = play(effect, nullptr);
        EXPECT_GT(peak(fresh), 0.01F);
        for (const auto& before : pasts)
            EXPECT_EQ(play(effect, before), fresh) << effect;
    }
}

TEST(SilenceEvent, EchoesThatRestEndToo) {
    Tapped synth;
    set_echoes(synth.host, 0, StereoEffect::STEREO_EFFECT_DELAY);
    synth.host.note_on(0, 60);
    synth.host.note_off(0, 60, 2000);
    synth.render(3 * SAMPLE_RATE / 64 * 64); // the channel is not rendered any more
    synth.host.silence(0);
    synth.render(64);
    synth.sound[0].clear();
    synth.host.set(0, CTRL_MAIN_VOLUME, 0);
    synth.host.note_on(0, 60);
    synth.render(65536);
    EXPECT_EQ(peak(synth.sound[0]), 0.0F);
}

TEST(SilenceEvent, TheMastersEchoesEndWhenAskedFor) {
    const auto tail = [](bool silence, bool master) {
        EngineHost host;
        set_echoes(host, 0, StereoEffect::STEREO_EFFECT_OFF);
        host.set(0, CTRL_REVERB_ROOMSIZE, 127);
        host.set(0, CTRL_DELAY_FEEDBACK, 127);
        host.set(0, CTRL_RETRIGGER_SPEEDUP, 65);
        host.set(0, CTRL_RETRIGGER_WET_LEVEL, 64);
        host.note_on(0, 60);
        host.note_off(0, 60, 40000);
        host.render(44096);
        if (silence)
            host.silence(0, master, 100);
        host.render(4096); // until the master's high-passes have rung out
        return peak(host.render(88064));
    };
    EXPECT_GT(tail(false, false), 0.01F);
    EXPECT_GT(tail(true, false), 0.01F);
    EXPECT_LT(tail(true, true), 1e-4F); // what the filters ring on in the loop
}

TEST(SilenceEvent, OtherChannelsKeepEveryByte) {
    const auto play = [](bool silence) {
        Tapped synth;
        for (const int channel : {0, 1})
            set_echoes(synth.host, channel, StereoEffect::STEREO_EFFECT_CHORUS);
        for (const int note : {48, 55, 64}) {
            synth.host.note_on(0, note);
            synth.host.note_on(1, note + 1);
        }
        synth.render(4096);
        if (silence)
            synth.host.silence(0, false, 40);
        synth.host.note_off(1, 49, 50);
        synth.host.note_on(1, 70, 80, 500);
        synth.render(8192);
        return synth.sound[1];
    };
    const std::vector<float> alone = play(false);
    EXPECT_GT(peak(alone), 0.01F);
    EXPECT_EQ(play(true), alone);
}

TEST(SilenceEvent, VoicesThatFadeNeitherCountNorComeBack) {
    EngineHost host;
    host.set(0, CTRL_CHAN_MAX_VOICES, 2);
    host.note_on(0, 60);
    host.render(64, 64);
    host.silence(0);
    host.note_on(0, 60, 100, 1);
    host.note_on(0, 65, 100, 1);
    host.render(64, 64);
    EXPECT_EQ(host->get_voice_pool().voices_used(), 3);
    host.render(192, 64);
    EXPECT_EQ(host->get_voice_pool().voices_used(), 2) << "none of the new notes was stolen";
    host.note_off(0, 60);
    host.note_off(0, 65);
    host.render(44096);
    EXPECT_EQ(host->get_voice_pool().voices_used(), 0) << "the note-offs were the new notes'";

    host.note_on(0, 64);
    host.silence(0, true, 10);
    host.note_on(0, 67, 100, 20);
    host.silence(0, true, 30); // while the first still fades
    host.silence(0, true, 31);
    host.render(320, 64);
    EXPECT_EQ(host->get_voice_pool().voices_used(), 0);
}

TEST(SilenceEvent, AbsurdLevelsDoNotRingOnForMinutes) {
    Tapped synth;
    EngineHost& host = synth.host;
    host.set_plain(0, OSC_SAW);
    host.set(0, CTRL_AUX1_LEVEL, 127);
    host.set(0, CTRL_REVERB_ROOMSIZE, 127);
    host.set(0, CTRL_FILTER1_TYPE, 10);
    host.set(0, CTRL_FILTER1_DEPTH, 4);
    host.set(0, CTRL_FILTER1_RESONANCE, 127);
    host.set(0, CTRL_FILTER1_CUTOFF, 90);
    host.set(0, CTRL_CUTOFF1_INFLUENCE1_SOURCE, INFL_OSC1);
    host.set(0, CTRL_CUTOFF1_INFLUENCE1_AMOUNT, 126);
    host.note_on(0, 60);
    host.note_off(0, 60, 22000);
    synth.render(44096);
    EXPECT_GT(peak(synth.sound[0]), 1e15F);
    EXPECT_TRUE(std::isfinite(peak(synth.sound[0])));
    host.render(35 * SAMPLE_RATE / 64 * 64, 64);
    EXPECT_LT(peak(host.render(44096)), 0.1F);
}

} // namespace

} // namespace tarquil

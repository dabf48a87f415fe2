// Tests of the tempo that CLAP hosts tell.

#include <gtest/gtest.h>

#include "tests/formats/clap/clap_host.h"
#include "tests/formats/common/tempo_song.h"

namespace tarquil {

namespace {

clap_beattime beats(double quarters) {
    return clap_beattime(std::llround(quarters * double(CLAP_BEATTIME_FACTOR)));
}

clap_event_transport transport_at(uint32_t frame, double rate) {
    clap_event_transport transport{};
    transport.header = {.size = sizeof(transport),
                        .time = 0,
                        .space_id = CLAP_CORE_EVENT_SPACE_ID,
                        .type = CLAP_EVENT_TRANSPORT,
                        .flags = 0};
    transport.flags = CLAP_TRANSPORT_HAS_TEMPO | CLAP_TRANSPORT_HAS_BEATS_TIMELINE |
                      CLAP_TRANSPORT_HAS_TIME_SIGNATURE | CLAP_TRANSPORT_IS_PLAYING;
    transport.tempo = tempo_at(frame);
    transport.song_pos_beats = beats(position_at(frame, rate));
    transport.bar_start = beats(bar_start_at(frame, rate));
    transport.tsig_num = uint16_t(BEATS_PER_BAR);
    transport.tsig_denom = 4;
    return transport;
}

StereoSound song(double rate, bool with_tempo) {
    ClapTestHost host(false, nullptr, following_state());
    EXPECT_TRUE(host.activate(rate));
    return render_tempo_song(
        [&](uint32_t frame) {
            host.transport = transport_at(frame, rate);
            host.has_transport = with_tempo;
        },
        [&](const auto& messages, float* left, float* right, uint32_t frames) {
            for (const SongMessage& message : messages)
                host.midi(message.bytes, message.frame);
            host.process(left, right, frames);
        });
}

TEST(ClapTempo, ASongFollowsTheHost) {
    for (const double rate : {44100.0, 48000.0}) {
        const StereoSound followed = song(rate, true);
        EXPECT_EQ(followed.hash(), hosted_tempo_song(rate).hash()) << rate;
        EXPECT_NE(followed.hash(), song(rate, false).hash()) << rate;
    }
}

TEST(ClapTempo, TransportEventsActOnTheirFrame) {
    const auto sound = [](uint32_t frame) {
        ClapTestHost host(false, nullptr, following_state());
        EXPECT_TRUE(host.activate());
        host.midi({0x90, 60, 100}, 0);
        host.add_transport(transport_at(TEMPO_CHANGE, 44100), frame);
        return host.render(30000);
    };
    EXPECT_NE(sound(640), sound(12800));
    EXPECT_NE(sound(640), sound(641)); // its beats are a sample later
}

TEST(ClapTempo, ParametersThatFollowAreShownAsNoteLengths) {
    ClapTestHost host(false, nullptr, following_state());
    EXPECT_EQ(host.text(CTRL_DELAY_LEFT_TIME, 31), "1/8");
    double value = 0;
    EXPECT_TRUE(host.params().text_to_value(host.plugin, CTRL_RETRIGGER_BPM, "1/4", &value));
    EXPECT_EQ(host.text(CTRL_RETRIGGER_BPM, value), "1/4");
    ASSERT_TRUE(host.load(following_state(false)));
    EXPECT_EQ(host.text(CTRL_DELAY_LEFT_TIME, 31), "252 ms");
}

} // namespace

} // namespace tarquil

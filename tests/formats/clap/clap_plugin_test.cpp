// Tests of the CLAP plug-in as a whole: factory, ports, activation, states, what it tells the host.

#include <gtest/gtest.h>

#include <limits>

#include "formats/clap/abi/note_name.h"
#include "formats/clap/abi/render.h"
#include "formats/clap/abi/tail.h"
#include "formats/clap/abi/voice_info.h"
#include "formats/common/host_controls.h"
#include "tests/formats/clap/clap_host.h"
#include "tests/support/engine_host.h"

namespace tarquil {

namespace {

TEST(ClapFactory, GivesTheOnePluginAndNothingElse) {
    const clap_plugin_entry& entry = ClapTestHost::entry();
    EXPECT_EQ(entry.clap_version.major, 1U);
    EXPECT_EQ(entry.get_factory("clap.plugin-factory/2"), nullptr);
    EXPECT_EQ(entry.get_factory(""), nullptr);
    EXPECT_EQ(entry.get_factory(nullptr), nullptr);
    const clap_plugin_factory& factory = ClapTestHost::factory();
    ASSERT_EQ(factory.get_plugin_count(&factory), 1U);
    EXPECT_EQ(factory.get_plugin_descriptor(&factory, 1), nullptr);
    EXPECT_EQ(factory.get_plugin_descriptor(&factory, UINT32_MAX), nullptr);

    const clap_plugin_descriptor& descriptor = *factory.get_plugin_descriptor(&factory, 0);
    EXPECT_STREQ(descriptor.id, PLUGIN_ID);
    EXPECT_STREQ(descriptor.name, "Tarquil");
    EXPECT_STREQ(descriptor.version, PROJECT_VERSION);

    clap_host host = {};
    host.clap_version = CLAP_VERSION;
    host.get_extension = [](const clap_host*, const char*) -> const void* { return nullptr; };
    for (const char* wrong : {"", "org.tarquil", "org.tarquil.tarquil2", "Tarquil"})
        EXPECT_EQ(factory.create_plugin(&factory, &host, wrong), nullptr) << wrong;
    EXPECT_EQ(factory.create_plugin(&factory, &host, nullptr), nullptr);
    EXPECT_EQ(factory.create_plugin(&factory, nullptr, PLUGIN_ID), nullptr);
    host.clap_version = {0, 27, 0};
    EXPECT_EQ(factory.create_plugin(&factory, &host, PLUGIN_ID), nullptr) << "before 1.0";
}

TEST(ClapPlugin, HasOneStereoOutputAndOneInputOfNotes) {
    const ClapTestHost host;
    const auto& audio = host.get<clap_plugin_audio_ports>(CLAP_EXT_AUDIO_PORTS);
    EXPECT_EQ(audio.count(host.plugin, true), 0U);
    ASSERT_EQ(audio.count(host.plugin, false), 1U);
    clap_audio_port_info port = {};
    ASSERT_TRUE(audio.get(host.plugin, 0, false, &port));
    EXPECT_EQ(port.channel_count, 2U);
    EXPECT_STREQ(port.port_type, CLAP_PORT_STEREO);
    EXPECT_FALSE(audio.get(host.plugin, 0, true, &port));
    EXPECT_FALSE(audio.get(host.plugin, 1, false, &port));

    const auto& notes = host.get<clap_plugin_note_ports>(CLAP_EXT_NOTE_PORTS);
    EXPECT_EQ(notes.count(host.plugin, false), 0U);
    ASSERT_EQ(notes.count(host.plugin, true), 1U);
    clap_note_port_info input = {};
    ASSERT_TRUE(notes.get(host.plugin, 0, true, &input));
    EXPECT_EQ(input.supported_dialects, unsigned(CLAP_NOTE_DIALECT_CLAP | CLAP_NOTE_DIALECT_MIDI));
    EXPECT_EQ(input.preferred_dialect, unsigned(CLAP_NOTE_DIALECT_MIDI));
    EXPECT_FALSE(notes.get(host.plugin, 1, true, &input));
}

TEST(ClapPlugin, AnswersWhatHostsAskOfVoicesTailsAndExports) {
    const ClapTestHost host;
    EXPECT_EQ(host.get<ClapPluginTail>(CLAP_TAIL).get(host.plugin), UINT32_MAX);
    ClapVoiceInfo voices;
    ASSERT_TRUE(host.get<ClapPluginVoiceInfo>(CLAP_VOICE_INFO).get(host.plugin, &voices));
    EXPECT_EQ(voices.voice_capacity, 192U) << "General MIDI's drums have an engine of their own";
    const auto& names = host.get<ClapPluginNoteName>(CLAP_NOTE_NAME);
    ClapNoteName name;
    EXPECT_EQ(names.count(host.plugin), 0U) << "in the native dialect";
    EXPECT_FALSE(names.get(host.plugin, 0, &name));
    const auto& render = host.get<ClapPluginRender>(CLAP_RENDER);
    EXPECT_FALSE(render.has_hard_realtime_requirement(host.plugin));
    EXPECT_TRUE(render.set(host.plugin, CLAP_RENDER_OFFLINE));
    EXPECT_FALSE(render.set(host.plugin, 2));
    EXPECT_EQ(host.plugin->get_extension(host.plugin, "clap.no-such-thing"), nullptr);
    EXPECT_EQ(host.plugin->get_extension(host.plugin, nullptr), nullptr);
}

TEST(ClapPlugin, TellsTheLatencyOfEachRateWhileItIsActivated) {
    ClapTestHost host;
    const auto& latency = host.get<clap_plugin_latency>(CLAP_EXT_LATENCY);
    int changes = 0;
    for (const double rate : {44100.0, 48000.0, 48000.0, 96000.0, 44100.0}) {
        HostedPlayer reference;
        ASSERT_TRUE(reference.activate(rate));
        const bool is_new = latency.get(host.plugin) != reference.latency_frames();
        ASSERT_TRUE(host.activate(rate));
        EXPECT_EQ(latency.get(host.plugin), reference.latency_frames()) << rate;
        changes += is_new ? 1 : 0;
        EXPECT_EQ(host.latency_changes, changes) << rate;
        host.deactivate();
    }
    EXPECT_EQ(changes, 4);
}

TEST(ClapPlugin, RefusesWhatItCanNotProcess) {
    ClapTestHost host;
    float left[16];
    float right[16];
    EXPECT_EQ(host.process(left, right, 16), CLAP_PROCESS_ERROR) << "not active";
    EXPECT_FALSE(host.activate(0));
    EXPECT_FALSE(host.activate(std::numeric_limits<double>::quiet_NaN()));
    ASSERT_TRUE(host.activate(48000));
    EXPECT_FALSE(host.activate(44100)) << "active already";
    EXPECT_EQ(host.process(left, nullptr, 16), CLAP_PROCESS_ERROR);
    host.midi({0xC3, 9, 0});
    EXPECT_EQ(host.process(nullptr, nullptr, 0), CLAP_PROCESS_CONTINUE) << "an empty block";
    EXPECT_EQ(host.value(0x1003), 9);
    EXPECT_EQ(host.plugin->process(host.plugin, nullptr), CLAP_PROCESS_ERROR);
    const clap_process nothing = {};
    EXPECT_EQ(host.plugin->process(host.plugin, &nothing), CLAP_PROCESS_CONTINUE);
    EXPECT_EQ(host.process(left, right, 16), CLAP_PROCESS_CONTINUE);
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

TEST(ClapState, TheHostReadsEverythingAgainAfterALoad) {
    ClapTestHost host;
    host.set(CTRL_PANNING, 17);
    host.set(CHANNEL_PROGRAM_ID + 3, 99);
    host.set(EDITED_PROGRAM_ID, 5);
    host.set(CTRL_OSC1_TYPE, 2);
    host.flush();
    ClapTestHost second;
    ASSERT_TRUE(second.load(host.save()));
    EXPECT_EQ(second.rescanned, unsigned(CLAP_PARAM_RESCAN_VALUES | CLAP_PARAM_RESCAN_TEXT));
    for (const HostControl& control : host_controls())
        EXPECT_EQ(second.value(control.id), host.value(control.id)) << control.name;
    second.rescanned = 0;
    EXPECT_FALSE(second.load("a state of another plug-in"));
    EXPECT_EQ(second.rescanned, 0U);
}

TEST(ClapState, AStreamThatFailsFailsTheWhole) {
    ClapTestHost host;
    const auto& state = host.get<clap_plugin_state>(CLAP_EXT_STATE);
    const clap_istream bad_in = {
        .ctx = nullptr, .read = [](const clap_istream*, void*, uint64_t) { return int64_t(-1); }};
    EXPECT_FALSE(state.load(host.plugin, &bad_in));
    const clap_istream lying = {
        .ctx = nullptr,
        .read = [](const clap_istream*, void*, uint64_t size) { return int64_t(size) + 1; }};
    EXPECT_FALSE(state.load(host.plugin, &lying));
    for (const int64_t answer : {int64_t(-1), int64_t(0), int64_t(1) << 40U}) {
        int64_t result = answer;
        const clap_ostream bad_out = {
            .ctx = &result, .write = [](const clap_ostream* stream, const void*, uint64_t) {
                return *static_cast<int64_t*>(stream->ctx);
            }};
        EXPECT_FALSE(state.save(host.plugin, &bad_out)) << answer;
    }
    EXPECT_FALSE(state.load(host.plugin, nullptr));
    EXPECT_FALSE(state.save(host.plugin, nullptr));
}

TEST(ClapPlugin, LivesWithAHostThatHasNoExtensions) {
    ClapTestHost host(true);
    ASSERT_TRUE(host.activate(48000));
    host.midi({0x90, 60, 100});
    host.set(0x1010, 5);
    EXPECT_TRUE(is_bounded(host.render(512)));
    EXPECT_TRUE(host.load(host.save()));
    host.idle();
    host.plugin->reset(host.plugin);
    host.deactivate();
}

TEST(ClapPlugin, AResetReleasesEveryNote) {
    ClapTestHost host;
    ASSERT_TRUE(host.activate());
    host.midi({0x90, 60, 127});
    EXPECT_GT(peak(host.render(4096).left), 0.0F);
    host.plugin->reset(host.plugin);
    host.render(5 * 44100);
    EXPECT_EQ(peak(host.render(512).left), 0.0F);
}

} // namespace

} // namespace tarquil

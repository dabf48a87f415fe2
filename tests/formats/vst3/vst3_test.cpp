#include <algorithm>
#include <cmath>
#include <limits>
#include <set>

#include <gtest/gtest.h>

#include "formats/vst3/parameters.h"
#include "formats/vst3/text.h"
#include "tests/formats/common/tempo_song.h"
#include "tests/formats/vst3/vst3_host.h"
#include "tests/support/engine_host.h"

namespace tarquil::vst3 {
namespace {

constexpr double RATE = 48000;

std::vector<ParameterInfo> all_infos(Vst3Host& host) {
    std::vector<ParameterInfo> infos(size_t(host.controller->get_parameter_count()));
    for (size_t i = 0; i < infos.size(); i++)
        EXPECT_EQ(host.controller->get_parameter_info(int32_t(i), &infos[i]), OK);
    return infos;
}

ParameterInfo info_of(Vst3Host& host, ParameterId id) {
    const std::vector<ParameterInfo> infos = all_infos(host);
    const auto found = std::ranges::find(infos, id, &ParameterInfo::id);
    EXPECT_NE(found, infos.end()) << "no parameter " << id;
    return found != infos.end() ? *found : ParameterInfo{};
}

TEST(Vst3Factory, OffersOneInstrument) {
    Factory* const factory = module_factory();
    EXPECT_EQ(factory->count_classes(), 1);
    ClassInfo info{};
    EXPECT_EQ(factory->get_class_info(0, &info), OK);
    EXPECT_STREQ(info.category, "Audio Module Class");
    EXPECT_NE(factory->get_class_info(1, &info), OK);
    void* object = factory;
    const Id unknown{};
    EXPECT_NE(factory->create_instance(unknown.data(), Component::ID.data(), &object), OK);
    EXPECT_EQ(object, nullptr);
    EXPECT_NE(factory->create_instance(info.id.data(), Stream::ID.data(), &object), OK);
    const Held<Factory3> newest(factory);
    ClassInfo3 wide{};
    EXPECT_EQ(newest->get_class_info_unicode(0, &wide), OK);
    EXPECT_EQ(get_text(wide.name, 64), "Tarquil");
    EXPECT_STREQ(wide.sub_categories, "Instrument|Synth|Stereo");
}

TEST(Vst3, ParametersHaveForEverTheirIds) {
    Vst3Host host(RATE);
    std::set<ParameterId> ids;
    for (const ParameterInfo& info : all_infos(host)) {
        // Hidden ones last, for hosts that cut the list.
        EXPECT_EQ((info.flags & IS_HIDDEN) != 0, ids.size() >= host_controls().size());
        EXPECT_TRUE(ids.insert(info.id).second) << info.id;
        EXPECT_NE(info.title[0], 0);
        EXPECT_GE(info.default_value, 0);
        EXPECT_LE(info.default_value, 1);
        EXPECT_GE(info.unit, 0);
        EXPECT_LT(info.unit, host.units->get_unit_count());
    }
    ParameterInfo info{};
    EXPECT_NE(host.controller->get_parameter_info(-1, &info), OK);
    EXPECT_NE(host.controller->get_parameter_info(host.controller->get_parameter_count(), &info),
              OK);
    EXPECT_EQ(get_text(info_of(host, CTRL_FILTER1_CUTOFF).title, 128), "Filter cutoff");
    EXPECT_EQ(info_of(host, 0x1003).flags & IS_PROGRAM_CHANGE, IS_PROGRAM_CHANGE);
    EXPECT_EQ(get_text(info_of(host, 0x10000 + 0x200 + 64).title, 128), "Channel 3 controller 64");
}

TEST(Vst3, EveryControllerOfEachChannelCanBeLearned) {
    Vst3Host host(RATE);
    EXPECT_LT(host.controller->get_parameter_count(), 1000) << "hosts cut longer lists";
    EXPECT_EQ(get_text(info_of(host, 0x11000 + 20).title, 128), "Any channel controller 20");
    for (unsigned number = 0; number < NUM_MIDI_CONTROLLERS; number++) {
        ParameterId id = 0;
        for (int16_t channel = 0; channel < 16; channel++)
            EXPECT_EQ(host.mapping->get_assignment(0, channel, int16_t(number), &id) == OK,
                      number != 122) // local control, which nobody has
                << number;
        if (!is_learnable(number))
            continue;
        HostedPlayer taught;
        LearnedControls learned;
        learned.learn(number, CTRL_PANNING);
        taught.player().set_learned(learned);
        ASSERT_TRUE(host.load(taught.save_state()));
        host.add({0, {uint8_t(0xB0 + number % 16), uint8_t(number), 100}});
        host.run(64);
        EXPECT_NEAR(host.controller->get_normalized(CTRL_PANNING), 100.0 / 127, 1e-9) << number;
    }
}

TEST(Vst3, ValuesAsTextsBothWays) {
    Vst3Host host(RATE);
    String128 text;
    for (const HostControl& control : host_controls()) {
        for (int value = control.first; value <= control.last; value += 9) {
            const double wanted = normalized(control, value);
            ASSERT_EQ(host.controller->get_parameter_text(control.id, wanted, text), OK);
            double back = -1;
            if (host.controller->get_parameter_by_text(control.id, text, &back) != OK)
                continue; // "switched off" and the like
            String128 again;
            host.controller->get_parameter_text(control.id, back, again);
            EXPECT_EQ(get_text(again, 128), get_text(text, 128)) << control.name;
        }
        const double plain = host.controller->normalized_to_plain(control.id, 1);
        EXPECT_EQ(plain, control.last);
        EXPECT_EQ(host.controller->plain_to_normalized(control.id, plain), 1);
    }
    host.controller->get_parameter_text(CTRL_FILTER1_CUTOFF, 1, text);
    EXPECT_NE(get_text(text, 128).find("Hz"), std::string::npos) << get_text(text, 128);
    EXPECT_NE(host.controller->get_parameter_text(0x999, 0, text), OK);
    EXPECT_NE(host.controller->get_parameter_text(CTRL_PANNING, 2, text), OK);
    const double nan = std::numeric_limits<double>::quiet_NaN();
    EXPECT_NE(host.controller->get_parameter_text(CTRL_PANNING, nan, text), OK);
}

TEST(Vst3, WhatIsShownSoundsWithABlockOrASave) {
    Vst3Host host(RATE);
    const std::string before = host.save();
    // What stands for messages, as hosts restore it at each load.
    ParameterId reset = 0;
    ASSERT_EQ(host.mapping->get_assignment(0, 4, 121, &reset), OK);
    EXPECT_EQ(host.controller->set_normalized(reset, 1), OK);
    host.run(256);
    EXPECT_EQ(host.save(), before);
    // An older value than a block's is for showing alone.
    EXPECT_EQ(host.controller->set_normalized(CTRL_PANNING, 0.1), OK);
    EXPECT_EQ(host.controller->get_normalized(CTRL_PANNING), 0.1);
    host.changes.add(CTRL_PANNING, 0, 0.25);
    host.run(256);
    host.save();
    EXPECT_NEAR(host.controller->get_normalized(CTRL_PANNING), 0.25, 1.0 / 127);
    // One that no block has brought is saved.
    EXPECT_EQ(host.controller->set_normalized(CTRL_PANNING, 1), OK);
    Vst3Host other(RATE);
    EXPECT_TRUE(other.load(host.save()));
    EXPECT_EQ(other.controller->get_normalized(CTRL_PANNING), 1);

    host.changes.add(CTRL_PANNING, 0, 0.75);
    host.run(256);
    EXPECT_NEAR(host.controller->get_normalized(CTRL_PANNING), 0.75, 1.0 / 127);
    host.changes.add(CTRL_PANNING, 0, std::numeric_limits<double>::quiet_NaN());
    host.changes.add(12345678, 0, 1);
    host.run(256);
    EXPECT_NEAR(host.controller->get_normalized(CTRL_PANNING), 0.75, 1.0 / 127);
}

TEST(Vst3, EveryParameterSentAtTheStartIsNoMessage) {
    const auto play = [](bool is_dumped) {
        Vst3Host host(RATE);
        host.add({10, {0x90, 60, 100}});
        for (const ParameterInfo& info : all_infos(host)) {
            // Ardour leaves the programs out.
            if (is_dumped && (info.flags & IS_PROGRAM_CHANGE) == 0)
                host.changes.add(info.id, 0, host.controller->get_normalized(info.id));
        }
        return host.run(4096);
    };
    EXPECT_EQ(play(true), play(false));
}

TEST(Vst3, BlocksWithoutFramesOrOutputsHandOverParameters) {
    Vst3Host host(RATE);
    host.changes.add(CTRL_PANNING, 0, 0);
    host.run(nullptr, nullptr, 0);
    EXPECT_EQ(host.answer, OK);
    EXPECT_EQ(host.controller->get_normalized(CTRL_PANNING), 0);
    ProcessData data{};
    data.num_frames = 100;
    EXPECT_EQ(host.processor->process(&data), OK);
    data.sample_size = SAMPLE_64;
    EXPECT_NE(host.processor->process(&data), OK);
    EXPECT_NE(host.processor->process(nullptr), OK);
}

TEST(Vst3, BusesRatesAndActivation) {
    Vst3Host host(0);
    BusInfo bus{};
    EXPECT_EQ(host.component->get_bus_info(EVENT, INPUT, 0, &bus), OK);
    EXPECT_EQ(bus.num_channels, 16);
    EXPECT_EQ(host.component->get_bus_count(AUDIO, INPUT), 0);
    EXPECT_NE(host.component->get_bus_info(AUDIO, INPUT, 0, &bus), OK);
    SpeakerArrangement mono = 1 << 19;
    SpeakerArrangement stereo = STEREO;
    EXPECT_NE(host.processor->set_bus_arrangements(nullptr, 0, &mono, 1), OK);
    EXPECT_EQ(host.processor->set_bus_arrangements(nullptr, 0, &stereo, 1), OK);
    EXPECT_NE(host.processor->can_process_sample_size(SAMPLE_64), OK);
    EXPECT_EQ(host.processor->get_tail_frames(), INFINITE_TAIL);
    EXPECT_TRUE(host.activate(RATE));
}

TEST(Vst3, ChannelsAreUnitsWithPrograms) {
    Vst3Host host(RATE);
    EXPECT_EQ(host.units->get_program_list_count(), 16);
    for (int32_t channel = 0; channel < 16; channel++) {
        int32_t unit = -1;
        ASSERT_EQ(host.units->get_unit_by_bus(EVENT, INPUT, 0, channel, &unit), OK);
        ProgramListInfo list{};
        ASSERT_EQ(host.units->get_program_list_info(channel, &list), OK);
        EXPECT_EQ(list.num_programs, 128);
        EXPECT_EQ(info_of(host, CHANNEL_PROGRAM_ID + uint32_t(channel)).unit, unit);
        UnitInfo info{};
        host.units->get_unit_info(unit, &info);
        EXPECT_EQ(info.program_list, list.id);
    }
    String128 name;
    EXPECT_EQ(host.units->get_program_name(1, 127, name), OK);
    EXPECT_EQ(get_text(name, 128), "instrument_127");
    EXPECT_NE(host.units->get_program_name(1, 128, name), OK);
    EXPECT_NE(host.units->get_program_name(99, 0, name), OK);
}

// Of a host that does not say all.
StereoSound tempo_song_without(uint32_t hidden_flags) {
    Vst3Host host(48000, following_state());
    ProcessContext context{};
    return render_tempo_song(
        [&](uint32_t frame) {
            context = context_at(frame, 48000);
            context.state &= ~hidden_flags;
            host.context = &context;
        },
        [&](const auto& messages, float* left, float* right, uint32_t frames) {
            for (const SongMessage& message : messages)
                host.add(message);
            host.run(left, right, frames);
        });
}

TEST(Vst3Tempo, OnlyWhatTheHostKnowsCounts) {
    const StereoSound followed = hosted_tempo_song(48000);
    EXPECT_NE(followed.hash(), tempo_song_without(HAS_TEMPO).hash());
    EXPECT_NE(followed.hash(), tempo_song_without(IS_PLAYING).hash());
    EXPECT_EQ(tempo_song_without(IS_PLAYING).hash(), tempo_song_without(HAS_POSITION).hash());
}

TEST(Vst3Text, Utf16BothWays) {
    String128 wide;
    for (const std::string text : {"", "Hz", "Flügel", "日本", "𝄞 clef"}) {
        put_text(wide, text);
        EXPECT_EQ(get_text(wide, 128), text);
    }
    put_text(wide, std::string("a\xFF") + "b");
    EXPECT_EQ(get_text(wide, 128), "a?b");
    char16_t small[3];
    put_text(small, 3, "a𝄞");
    EXPECT_EQ(get_text(small, 3), "a");
    EXPECT_EQ(get_text(u"\xD800x", 2), "?x");
}

} // namespace
} // namespace tarquil::vst3

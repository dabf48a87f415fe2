#include <cmath>
#include <limits>
#include <random>
#include <set>

#include <gtest/gtest.h>

#include "formats/vst3/parameters.h"
#include "formats/vst3/text.h"
#include "tests/formats/common/format_song.h"
#include "tests/formats/vst3/vst3_host.h"

namespace tarquil::vst3 {
namespace {

constexpr double RATE = 48000;

float peak(const std::vector<float>& samples) {
    float highest = 0;
    for (const float sample : samples)
        highest = std::max(highest, std::abs(sample));
    return highest;
}

ParameterInfo info_of(Vst3Host& host, ParameterId id) {
    ParameterInfo info{};
    for (int32_t i = 0; i < host.controller->get_parameter_count(); i++) {
        host.controller->get_parameter_info(i, &info);
        if (info.id == id)
            return info;
    }
    ADD_FAILURE() << "no parameter " << id;
    return info;
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

TEST(Vst3, PlaysAsThePlayerDoesAtAnyRateInBlocksOfAnyLength) {
    for (const double rate : {44100.0, 48000.0, 96000.0}) {
        // The song without the controllers that no hidden parameter stands for.
        const auto is_mapped = [](const SongMessage& message) {
            return (message.bytes[0] & 0xF0U) != 0xB0 || midi_parameter_id(0, message.bytes[1]);
        };
        HostedPlayer player;
        ASSERT_TRUE(player.activate(rate));
        const auto play = [&](auto messages, float* left, float* right, uint32_t frames) {
            std::erase_if(messages, [&](const SongMessage& m) { return !is_mapped(m); });
            // Parameters come first within a frame.
            std::ranges::stable_sort(messages, [](const SongMessage& a, const SongMessage& b) {
                const auto is_note = [](const SongMessage& m) { return m.bytes[0] < 0xA0; };
                return a.frame != b.frame ? a.frame < b.frame : !is_note(a) && is_note(b);
            });
            render_block(player, messages, left, right, frames);
        };
        const StereoSound wanted = render_song(song_blocks(SONG_FRAMES, false), play);
        for (const uint32_t longest : {1U, 64U, 1024U}) {
            Vst3Host host(rate);
            EXPECT_EQ(host.processor->get_latency_frames(), player.latency_frames());
            const auto run = [&](const auto& messages, float* left, float* right, uint32_t frames) {
                for (const SongMessage& m : messages)
                    host.add_message(int32_t(m.frame), m.bytes[0], m.bytes[1], m.bytes[2]);
                EXPECT_EQ(host.run(left, right, int32_t(frames)), OK);
            };
            EXPECT_EQ(render_song(song_blocks(longest, longest > 1), run).hash(), wanted.hash())
                << rate << " Hz, blocks up to " << longest;
        }
    }
}

TEST(Vst3, ANewInstancePlaysGeneralMidi) {
    Vst3Host host(RATE, "");
    const uint8_t note[] = {0x99, 36, 100};
    InstancePlayer player;
    ASSERT_TRUE(player.activate(RATE));
    StereoSound wanted{std::vector<float>(4096), std::vector<float>(4096)};
    player.begin_block(wanted.left.data(), wanted.right.data(), 4096);
    player.add_message(note, 0);
    player.end_block();
    host.add_message(0, 0x99, 36, 100);
    EXPECT_EQ(host.run(4096), wanted.left);
    EXPECT_GT(peak(wanted.left), 0.01F);
}

TEST(Vst3, PointsOfAParameterAreHeardAtTheirFrames) {
    constexpr uint32_t FRAMES = 4096;
    const uint8_t note[] = {0x90, 60, 100};
    HostedPlayer player;
    ASSERT_TRUE(player.activate(RATE));
    StereoSound wanted{std::vector<float>(FRAMES), std::vector<float>(FRAMES)};
    player.begin_block(wanted.left.data(), wanted.right.data(), FRAMES);
    player.add_message(note, 0);
    player.set_controller(CTRL_PANNING, 0, 1000);
    player.set_controller(CTRL_PANNING, 127, 2000);
    player.end_block();

    const auto play = [&](int32_t first, int32_t second) {
        Vst3Host host(RATE);
        host.add_message(0, 0x90, 60, 100);
        host.changes.add(CTRL_PANNING, first, 0);
        host.changes.add(CTRL_PANNING, second, 1);
        StereoSound sound{std::vector<float>(FRAMES), std::vector<float>(FRAMES)};
        host.run(sound.left.data(), sound.right.data(), int32_t(FRAMES));
        return sound;
    };
    EXPECT_TRUE(play(1000, 2000) == wanted);
    EXPECT_FALSE(play(0, 2000) == wanted);
}

TEST(Vst3, ParametersHaveForEverTheirIds) {
    Vst3Host host(RATE);
    std::set<ParameterId> ids;
    for (int32_t i = 0; i < host.controller->get_parameter_count(); i++) {
        ParameterInfo info{};
        ASSERT_EQ(host.controller->get_parameter_info(i, &info), OK);
        EXPECT_TRUE(ids.insert(info.id).second) << info.id;
        EXPECT_NE(info.title[0], 0);
        EXPECT_GE(info.default_value, 0);
        EXPECT_LE(info.default_value, 1);
        EXPECT_GE(info.unit, 0);
        EXPECT_LT(info.unit, host.units->get_unit_count());
        // Hidden ones last, for hosts that cut the list.
        EXPECT_EQ((info.flags & IS_HIDDEN) != 0, i >= int32_t(host_controls().size()));
    }
    ParameterInfo info{};
    EXPECT_NE(host.controller->get_parameter_info(-1, &info), OK);
    EXPECT_NE(host.controller->get_parameter_info(host.controller->get_parameter_count(), &info),
              OK);
    EXPECT_EQ(get_text(info_of(host, CTRL_FILTER1_CUTOFF).title, 128), "Filter cutoff");
    EXPECT_EQ(info_of(host, 0x1003).flags & IS_PROGRAM_CHANGE, IS_PROGRAM_CHANGE);
    EXPECT_EQ(get_text(info_of(host, 0x10000 + 0x200 + 64).title, 128), "Channel 3 controller 64");
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
    EXPECT_EQ(other.load(host.save()), OK);
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
        host.add_message(10, 0x90, 60, 100);
        for (int32_t i = 0; is_dumped && i < host.controller->get_parameter_count(); i++) {
            ParameterInfo info{};
            host.controller->get_parameter_info(i, &info);
            // Ardour leaves the programs out.
            if ((info.flags & IS_PROGRAM_CHANGE) == 0)
                host.changes.add(info.id, 0, host.controller->get_normalized(info.id));
        }
        return host.run(4096);
    };
    EXPECT_EQ(play(true), play(false));
}

TEST(Vst3, StatesInPiecesOfAnySizeAndGarbage) {
    Vst3Host host(RATE);
    host.changes.add(CTRL_PANNING, 0, 0.25);
    host.changes.add(CHANNEL_PROGRAM_ID + 3, 0, 77 / 127.0);
    host.changes.add(EDITED_PROGRAM_ID, 0, 0);
    host.run(64);
    const std::string state = host.save();
    for (const int32_t piece : {1, 7, 4096}) {
        EXPECT_EQ(host.save(piece), state) << piece;
        Vst3Host other(RATE);
        EXPECT_EQ(other.load(state, piece), OK);
        EXPECT_EQ(other.save(), state) << piece;
        EXPECT_NEAR(other.controller->get_normalized(CTRL_PANNING), 32 / 127.0, 1e-6);
        EXPECT_NEAR(other.controller->get_normalized(CHANNEL_PROGRAM_ID + 3), 77 / 127.0, 1e-6);
    }
    std::mt19937 random(3);
    std::string noise(5000, '\0');
    for (char& c : noise)
        c = char(random());
    for (const std::string& garbage : {std::string(), std::string("nonsense"), noise,
                                       std::string(state.begin(), state.begin() + 5)}) {
        EXPECT_NE(host.load(garbage), OK);
        EXPECT_EQ(host.save(), state);
    }
    EXPECT_NE(host.component->set_state(nullptr), OK);
    EXPECT_NE(host.component->get_state(nullptr), OK);
}

TEST(Vst3, ManyEventsInDisorderAndBeyondTheBlock) {
    Vst3Host host(RATE);
    for (int i = 0; i < 5000; i++)
        host.add_message(1000 - i, uint8_t(i % 2 == 0 ? 0x90 : 0x80), uint8_t(i / 2 % 128), 100);
    for (int i = 0; i < 20000; i++)
        host.changes.add(CTRL_PANNING, i, 0.5);
    for (int i = 0; i < 128; i++)
        host.add_message(INT32_MAX, 0x80, uint8_t(i), 0);
    Event odd{};
    odd.type = NOTE_ON;
    odd.note_on = {-3, 200, 0, std::numeric_limits<float>::quiet_NaN(), 0, -1};
    host.events.add_event(&odd);
    odd.type = 999;
    host.events.add_event(&odd);
    for (const float sample : host.run(512))
        ASSERT_TRUE(std::isfinite(sample));
    host.run(96000);
    EXPECT_EQ(peak(host.run(4800)), 0) << "a note hangs";
}

TEST(Vst3, BlocksWithoutFramesOrOutputsHandOverParameters) {
    Vst3Host host(RATE);
    host.changes.add(CTRL_PANNING, 0, 0);
    EXPECT_EQ(host.run(nullptr, nullptr, 0), OK);
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
    for (const double rate : {0.0, -5.0, 1e12, std::nan("")})
        EXPECT_NE(host.setup(rate), OK) << rate;
    std::mt19937 random(5);
    for (int i = 0; i < 30; i++) {
        const double rates[] = {8000, 22050, 44100, 48000, 192000, 384000};
        ASSERT_EQ(host.setup(rates[random() % 6]), OK);
        host.add_message(0, 0x90, 60, 100);
        host.run(int32_t(random() % 3000));
        if (random() % 2 == 0)
            host.component->set_active(0);
    }
    EXPECT_EQ(host.setup(RATE), OK);
    host.run(96000);
    EXPECT_EQ(peak(host.run(4096)), 0) << "a note of before the activation";
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

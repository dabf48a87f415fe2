// Tests of the CLAP plug-in's parameters: ids for ever, texts both ways, values at their frame.

#include <gtest/gtest.h>

#include <limits>
#include <set>

#include "formats/common/host_controls.h"
#include "tests/formats/clap/clap_host.h"
#include "tests/support/engine_host.h"

namespace tarquil {

namespace {

constexpr double NOT_A_NUMBER = std::numeric_limits<double>::quiet_NaN();

std::vector<clap_param_info> all_infos(const ClapTestHost& host) {
    std::vector<clap_param_info> infos(host.params().count(host.plugin));
    for (uint32_t i = 0; i < infos.size(); i++)
        EXPECT_TRUE(host.params().get_info(host.plugin, i, &infos[i]));
    return infos;
}

TEST(ClapParameters, KeepTheirIdsOrderAndRanges) {
    ClapTestHost host(false, nullptr, "");
    uint32_t hash = 0x811C9DC5;
    const auto add = [&](uint32_t value) { hash = (hash ^ value) * 0x01000193; };
    std::set<std::string> names;
    for (const clap_param_info& info : all_infos(host)) {
        add(info.id);
        add(uint32_t(info.min_value));
        add(uint32_t(info.max_value));
        add(info.flags);
        EXPECT_EQ(host.value(info.id), info.default_value) << info.name;
        EXPECT_GE(info.default_value, info.min_value) << info.name;
        EXPECT_LE(info.default_value, info.max_value) << info.name;
        EXPECT_NE(info.module[0], '\0') << info.name;
        EXPECT_TRUE(names.insert(info.name).second) << info.name;
    }
    // Hosts keep these in songs.  New parameters go behind the last one that is there now.
    EXPECT_EQ(host.params().count(host.plugin), 187U);
    EXPECT_EQ(hash, 1219134227U);
    clap_param_info none;
    EXPECT_FALSE(host.params().get_info(host.plugin, 187, &none));
    for (const uint32_t id : {uint32_t(CTRL_PITCH_BEND_MSB), uint32_t(CTRL_PITCH_BEND_LSB), 206U,
                              0xFFFU, 0x1011U, UINT32_MAX})
        EXPECT_EQ(find_host_control(id), nullptr) << id;
}

TEST(ClapParameters, TextsMeanTheValuesThatTheyShow) {
    ClapTestHost host;
    for (const clap_param_info& info : all_infos(host)) {
        for (double value = info.min_value; value <= info.max_value; value++) {
            const std::string text = host.text(info.id, value);
            double parsed = -1;
            ASSERT_TRUE(host.params().text_to_value(host.plugin, info.id, text.c_str(), &parsed))
                << info.name << " " << text;
            EXPECT_EQ(host.text(info.id, parsed), text) << info.name;
        }
    }
    EXPECT_EQ(host.text(CTRL_OSC1_TYPE, 1), host.text(CTRL_OSC1_TYPE, 1.2)) << "the nearest";
    EXPECT_EQ(host.text(CHANNEL_PROGRAM_ID, 5), "5: instrument_5");
    double value = -1;
    EXPECT_TRUE(
        host.params().text_to_value(host.plugin, CHANNEL_PROGRAM_ID, "instrument_9", &value));
    EXPECT_EQ(value, 9);
    char text[4];
    EXPECT_TRUE(host.params().value_to_text(host.plugin, CHANNEL_PROGRAM_ID, 5, text, 4));
    EXPECT_STREQ(text, "5: ") << "cut where the host's memory ends";
    EXPECT_FALSE(host.params().value_to_text(host.plugin, 4711, 5, text, 4));
    EXPECT_FALSE(host.params().value_to_text(host.plugin, CTRL_PANNING, NOT_A_NUMBER, text, 4));
    EXPECT_FALSE(host.params().text_to_value(host.plugin, CTRL_PANNING, "loud", &value));
    EXPECT_FALSE(host.params().text_to_value(host.plugin, CHANNEL_PROGRAM_ID, "128", &value));
    EXPECT_FALSE(host.params().get_value(host.plugin, 4711, &value));
}

TEST(ClapParameters, ThatFollowTheTempoAreShownAsNoteLengths) {
    ClapTestHost host(false, nullptr, following_state());
    EXPECT_EQ(host.text(CTRL_DELAY_LEFT_TIME, 31), "1/8");
    double value = 0;
    EXPECT_TRUE(host.params().text_to_value(host.plugin, CTRL_RETRIGGER_BPM, "1/4", &value));
    EXPECT_EQ(host.text(CTRL_RETRIGGER_BPM, value), "1/4");
    ASSERT_TRUE(host.load(following_state(false)));
    EXPECT_EQ(host.text(CTRL_DELAY_LEFT_TIME, 31), "252 ms");
}

TEST(ClapParameters, GiveTheSameStateByProcessingAndByFlushingActiveOrNot) {
    enum class Way { PROCESS, FLUSH, INACTIVE_FLUSH };
    const auto state_after = [](Way way) {
        ClapTestHost host;
        EXPECT_TRUE(way == Way::INACTIVE_FLUSH || host.activate());
        std::mt19937 random(7);
        host.set(EDITED_PROGRAM_ID, 3);
        for (const clap_param_info& info : all_infos(host)) {
            if (info.id == EDITED_PROGRAM_ID)
                continue;
            const double range = info.max_value - info.min_value;
            host.set(info.id, info.min_value + range * double(random() % 1000) / 999, 0,
                     random() % 2 == 0 ? info.cookie : nullptr);
        }
        if (way == Way::PROCESS)
            host.render(256);
        else
            host.flush();
        EXPECT_TRUE(host.output.empty()) << "a host is not told what it has set";
        return host.save();
    };
    const std::string by_process = state_after(Way::PROCESS);
    EXPECT_EQ(state_after(Way::FLUSH), by_process);
    EXPECT_EQ(state_after(Way::INACTIVE_FLUSH), by_process);
    EXPECT_NE(ClapTestHost().save(), by_process);
}

TEST(ClapParameters, TakeTheNearestValueAndNothingForNoNumber) {
    ClapTestHost host;
    ASSERT_TRUE(host.activate());
    const auto after = [&](clap_id id, double value) {
        host.set(id, value);
        host.render(16);
        return host.value(id);
    };
    EXPECT_EQ(after(CTRL_PANNING, 12.4), 12);
    EXPECT_EQ(after(CTRL_PANNING, NOT_A_NUMBER), 12);
    EXPECT_EQ(after(CTRL_PANNING, 1e300), 127);
    EXPECT_EQ(after(CTRL_PANNING, -std::numeric_limits<double>::infinity()), 0);
    EXPECT_EQ(after(CTRL_CHAN_MAX_VOICES, 0), 1);
    EXPECT_EQ(after(EDITED_PROGRAM_ID, 128), 127);
    EXPECT_EQ(after(CHANNEL_PROGRAM_ID + 15, -3), 0);
    // A parameter that is not there, another name space, an event that is too short, a wrong
    // cookie.
    const std::string before = host.save();
    host.set(4711, 1);
    host.set(CTRL_PANNING, 3);
    host.last<clap_event_header>().space_id = 1;
    host.set(CTRL_PANNING, 3);
    host.last<clap_event_header>().size = sizeof(clap_event_header) + 4;
    host.render(16);
    EXPECT_EQ(host.save(), before);
    int elsewhere = 0;
    host.set(CTRL_PANNING, 3, 0, &elsewhere);
    host.render(16);
    EXPECT_EQ(host.value(CTRL_PANNING), 3);
}

TEST(ClapParameters, TheHostReadsAgainWhatAnotherProgramOrTypeChanges) {
    ClapTestHost host;
    ASSERT_TRUE(host.activate());
    host.set(CTRL_PANNING, 3);
    host.render(16);
    EXPECT_EQ(host.callback_requests, 0) << "a value by itself changes nothing else";
    host.set(EDITED_PROGRAM_ID, 4);
    host.render(16);
    EXPECT_EQ(host.rescanned, 0U) << "not on the audio thread";
    host.idle();
    EXPECT_EQ(host.rescanned, unsigned(CLAP_PARAM_RESCAN_VALUES | CLAP_PARAM_RESCAN_TEXT));
    EXPECT_NE(host.value(CTRL_PANNING), 3) << "of another program";

    host.rescanned = 0;
    const std::string before = host.text(CTRL_CHANFX1_PARAM1, 64);
    for (int round = 0; round < 3; round++) {
        host.set(CTRL_CHANFX1_TYPE, 1);
        host.render(16);
    }
    EXPECT_EQ(host.callback_requests, 1) << "when it changes";
    host.idle();
    EXPECT_EQ(host.rescanned, unsigned(CLAP_PARAM_RESCAN_TEXT));
    EXPECT_NE(host.text(CTRL_CHANFX1_PARAM1, 64), before);
    EXPECT_EQ(host.wrong_threads, 0);
}

TEST(ClapParameters, ProgramChangesByMidiAreToldAndNotRecorded) {
    ClapTestHost host;
    ASSERT_TRUE(host.activate());
    host.midi({0xC2, 40, 0}, 3);
    host.takes_output = false;
    host.render(64);
    host.takes_output = true;
    host.render(64); // what a host did not take comes again
    ASSERT_EQ(host.output.size(), 1U);
    const auto& told = host.output[0].as<clap_event_param_value>();
    EXPECT_EQ(told.header.type, CLAP_EVENT_PARAM_VALUE);
    EXPECT_EQ(told.header.flags, unsigned(CLAP_EVENT_DONT_RECORD));
    EXPECT_EQ(told.param_id, CHANNEL_PROGRAM_ID + 2);
    EXPECT_EQ(told.value, 40);
    EXPECT_EQ(host.value(CHANNEL_PROGRAM_ID + 2), 40);
    host.output.clear();
    host.set(CHANNEL_PROGRAM_ID + 2, 41);
    host.render(64);
    EXPECT_EQ(host.value(CHANNEL_PROGRAM_ID + 2), 41);
    EXPECT_TRUE(host.output.empty());
}

} // namespace

} // namespace tarquil

// Tests of the CLAP plug-in's state: what the host reads again, and streams that fail.

#include <gtest/gtest.h>

#include "formats/common/host_controls.h"
#include "tests/formats/clap/clap_host.h"

namespace tarquil {

namespace {

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

} // namespace

} // namespace tarquil

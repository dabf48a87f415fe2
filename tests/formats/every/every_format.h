// What a test of all formats that play at any rate is given.

#pragma once

#include <gtest/gtest.h>

#include "tests/formats/drivers/format_driver.h"

namespace tarquil {

struct Format {
    const char* name;
    std::unique_ptr<FormatDriver> (*start)();
};

class EveryFormat : public testing::TestWithParam<Format> {
  protected:
    // With `state`; nothing: a new instance's.
    static std::unique_ptr<FormatDriver> start(const std::string& state = plain_state()) {
        std::unique_ptr<FormatDriver> plugin = GetParam().start();
        if (!state.empty()) {
            EXPECT_TRUE(plugin->load(state));
        }
        return plugin;
    }
    static std::unique_ptr<FormatDriver> start_at(double rate,
                                                  const std::string& state = plain_state()) {
        std::unique_ptr<FormatDriver> plugin = start(state);
        EXPECT_TRUE(plugin->activate(rate));
        return plugin;
    }
    static StereoSound play_song(FormatDriver& plugin, const std::vector<uint32_t>& blocks) {
        return render_song(blocks,
                           [&](const auto& messages, float* left, float* right, uint32_t frames) {
                               for (const SongMessage& message : messages)
                                   plugin.add(message);
                               plugin.run(left, right, frames);
                           });
    }
};

#define FOR_EVERY_FORMAT(Suite)                                                                    \
    INSTANTIATE_TEST_SUITE_P(Formats, Suite,                                                       \
                             testing::Values(Format{"clap", drive_clap},                           \
                                             Format{"vst3", drive_vst3},                           \
                                             Format{"lv2", drive_lv2}),                            \
                             [](const auto& given) { return std::string(given.param.name); })

} // namespace tarquil

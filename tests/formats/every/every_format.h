// What a test of all formats is given.

#pragma once

#include <gtest/gtest.h>

#include <span>

#include "tests/formats/drivers/format_driver.h"

namespace tarquil {

struct Format {
    const char* name;
    std::unique_ptr<FormatDriver> (*start)();
    double rate = 48000; // VST 2's is the engine's own
};

class EveryFormat : public testing::TestWithParam<Format> {
  protected:
    static double rate() { return GetParam().rate; }
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

inline constexpr Format FORMATS[] = {{"clap", drive_clap},
                                     {"vst3", drive_vst3},
                                     {"lv2", drive_lv2},
                                     {"vst2", drive_vst2, SAMPLE_RATE}};

#define FOR_FORMATS(Suite, formats)                                                                \
    INSTANTIATE_TEST_SUITE_P(Formats, Suite, testing::ValuesIn(formats),                           \
                             [](const auto& given) { return std::string(given.param.name); })
#define FOR_EVERY_FORMAT(Suite) FOR_FORMATS(Suite, FORMATS)
// VST 2 renders in granules, at one rate, and has no tempo of its own here.
#define FOR_FORMATS_AT_ANY_RATE(Suite) FOR_FORMATS(Suite, std::span(FORMATS).first(3))

} // namespace tarquil

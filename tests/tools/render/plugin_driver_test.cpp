// Tests of renders with a plug-in.

#include <dlfcn.h>
#include <sndfile.h>

#include <cstdlib>

#include "instrument/settings.h"
#include "tests/tools/audio/read_sound.h"
#include "tests/tools/render/render_fixture.h"

namespace tarquil {

namespace {

// Two channels with a program change, bends, controllers and keys that are left down; a tick is a
// millisecond.
SmfBytes busy_song() {
    return make_smf(0, 0xE728, // 25 frames a second of 40 ticks each
                    {{0x00, 0xC0, 0x05, 0x00, 0x90, 0x3C, 0x64, 0x03, 0xE0, 0x11, 0x50, 0x05, 0xB0,
                      0x4A, 0x50, 0x07, 0x91, 0x30, 0x7F, 0x13, 0xC1, 0x06, 0x02, 0x91, 0x40, 0x33,
                      0x21, 0xB1, 0x0A, 0x10, 0x09, 0xE1, 0x7F, 0x7F, 0x40, 0x80, 0x3C, 0x00, 0x51,
                      0xB0, 0x4D, 0x7F, 0x00, 0x90, 0x48, 0x50, 0x82, 0x00, 0xFF, 0x2F, 0x00}});
}

class PluginRender : public RenderFixture {
  protected:
    void SetUp() override {
        save("song.mid", busy_song());
        TarqSettings bank;
        bank.get_instrument(5).set_controller(CTRL_OSC1_COARSE_TUNE, 100);
        bank.get_instrument(6).set_controller(CTRL_AUX1_LEVEL, 100);
        bank.set_global_controller(CTRL_GLOBAL_FILTER1_TYPE, 1);
        ASSERT_EQ(bank.text_save(bank_path), 0);
    }

    std::string rendered(std::vector<std::string> options) {
        options.insert(options.end(), {"--quiet", "--bits", "float"});
        return RenderFixture::rendered(options);
    }

    std::string bank_path = directory.path("bank.tqb");
};

TEST_F(PluginRender, TarquilSoundsAsWhenLinkedIn) {
    const std::string plain = rendered({"--midi", "native"});
    const std::string banked = rendered({"--bank", bank_path});
    EXPECT_NE(plain, banked);
    EXPECT_TRUE(rendered({"--plugin", TARQUIL_PLUGIN}) == plain);
    EXPECT_TRUE(rendered({"--plugin", TARQUIL_PLUGIN, "--bank", bank_path}) == banked);
    EXPECT_FALSE(rendered({"--plugin", TARQUIL_PLUGIN, "--bank", bank_path, "--block", "12"}) ==
                 banked);
    EXPECT_TRUE(rendered({"--bank", bank_path, "--block", "12"}) == banked);
    EXPECT_TRUE(rendered({"--plugin", TARQUIL_PLUGIN, "--channels", "2"}) ==
                rendered({"--midi", "native", "--channels", "2"}));
}

TEST_F(PluginRender, TheSongsTempoReachesEitherWay) {
    // Chords at 120 and, from the second bar on, at 197.25 a minute, three quarters to the bar.
    const SmfBytes bytes = make_smf(
        0, 96, {{0x00, 0xFF, 0x58, 0x04, 3,    2,    24,   8,    0x00, 0xC0, 0x05, 0x00, 0x90, 0x3C,
                 0x64, 0x30, 0x90, 0x40, 0x64, 0x82, 0x10, 0xFF, 0x51, 0x03, 0x04, 0xA4, 0x23, 0x11,
                 0x90, 0x43, 0x64, 0x84, 0x00, 0x80, 0x3C, 0x00, 0x00, 0xFF, 0x2F, 0x00}});
    save("song.mid", bytes);
    TarqSettings bank;
    bank.get_instrument(5).set_controller(CTRL_AUX2_LEVEL, 100);
    bank.get_instrument(5).set_controller(CTRL_OSC1_INFLUENCE_SOURCE, 4); // LFO 1
    bank.get_instrument(5).set_controller(CTRL_OSC1_INFLUENCE_AMOUNT, 70);
    bank.set_global_controller(CTRL_RETRIGGER_SPEEDUP, 65);
    bank.set_global_controller(CTRL_RETRIGGER_WET_LEVEL, 64);
    ASSERT_EQ(bank.text_save(bank_path), 0);
    const std::string untimed = rendered({"--bank", bank_path});
    bank.set_tempo_sync(true);
    ASSERT_EQ(bank.text_save(bank_path), 0);
    const std::string followed = rendered({"--bank", bank_path});
    EXPECT_FALSE(followed == untimed);
    EXPECT_TRUE(rendered({"--plugin", TARQUIL_PLUGIN, "--bank", bank_path}) == followed);
}

TEST_F(PluginRender, OneOutputIsHeardOnBothSides) {
    const SmfBytes bytes =
        make_smf(0, 0xE728, {{0x0A, 0x90, 0x3C, 0x64, 0x0A, 0x90, 0x3C, 0x00, 0x0A, 0x90,
                              0x3C, 0x64, 0x0A, 0x90, 0x3C, 0x00, 0x00, 0xFF, 0x2F, 0x00}});
    save("song.mid", bytes);
    rendered({"--plugin", TOY_PLUGIN});
    const Sound sound = read_sound(out);
    ASSERT_EQ(sound.info.frames, 1764 + 22050); // ends with half a second of silence
    for (size_t i = 0; i < 1764; i++) {
        const float expected = i / 441 % 2 == 1 ? 0.25F : 0.0F;
        ASSERT_EQ(sound.samples[2 * i], expected) << i;
        ASSERT_EQ(sound.samples[2 * i + 1], expected) << i;
    }
}

TEST_F(PluginRender, WhatCanNotBePlayedIsOneLine) {
    const auto refuses = [this](std::vector<std::string> arguments, const char* reason) {
        arguments.insert(arguments.begin(), "render");
        arguments.insert(arguments.end(), {song, out});
        EXPECT_THAT(refusal(arguments), HasSubstr(reason));
        EXPECT_NE(access(out.c_str(), F_OK), 0);
    };
    // The same module for a processor of 32 bits: the fifth byte tells.
    std::string module = file_text(TOY_PLUGIN);
    module[4] = 1;
    const std::string narrow = directory.path("narrow.so");
    ASSERT_EQ(save_file_to_string(narrow, module), 0);
    refuses({"--plugin", narrow}, "narrow.so: wrong ELF class");
    refuses({"--plugin", directory.path("none.so")}, "none.so: cannot open");
    refuses({"--plugin", "/dev/zero"}, "/dev/zero: is no file");
    refuses({"--plugin", bank_path}, "bank.tqb: invalid ELF header");
    Dl_info library{};
    ASSERT_NE(dladdr(reinterpret_cast<const void*>(&sf_open), &library), 0);
    refuses({"--plugin", library.dli_fname}, "is no VST 2 plug-in");
    refuses({"--plugin", TOY_PLUGIN, "--bank", bank_path}, "only Tarquil takes banks");
    refuses({"--plugin", TARQUIL_PLUGIN, "--seed", "1"}, "--seed excludes --plugin");
    refuses({"--plugin", TARQUIL_PLUGIN, "--stems", "s"}, "--stems excludes --plugin");
    refuses({"--plugin", TARQUIL_PLUGIN, "--instrument", "1=a.tqi"}, "excludes --plugin");
    setenv("TOY_EFFECT", "1", 1);
    refuses({"--plugin", TOY_PLUGIN}, "is no instrument");
    unsetenv("TOY_EFFECT");
}

} // namespace

} // namespace tarquil

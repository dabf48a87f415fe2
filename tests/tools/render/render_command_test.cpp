// Tests of the render command as a whole.

#include <cmath>
#include <filesystem>
#include <nlohmann/json.hpp>

#include "instrument/settings.h"
#include "tests/decimal_comma_locale.h"
#include "tests/tools/audio/read_sound.h"
#include "tests/tools/render/render_fixture.h"

namespace tarquil {

namespace {

// A folder with the small song and, besides it, one on two channels.
class RenderCommand : public RenderFixture {
  protected:
    void SetUp() override {
        save("song.mid", small_song());
        save("duet.mid",
             make_smf(1, 0xE728, {{0x00, 0x90, 48,   100,  0x00, 0x92, 60,   100,  0x83, 0x74, 0x80,
                                   48,   0,    0x00, 0x82, 60,   0,    0x00, 0xFF, 0x2F, 0x00}}));
    }

    // The file that a render with these options makes.
    std::string rendered(std::vector<std::string> arguments, const std::string& name = "out.wav") {
        arguments.push_back(directory.path(name));
        const CommandRun run = render(arguments);
        EXPECT_EQ(run.status, 0) << run.errors;
        return file_text(directory.path(name));
    }

    std::string duet = directory.path("duet.mid");
};

TEST_F(RenderCommand, TheFileIsTheSameOnAnyNumberOfThreads) {
    const std::string bank = directory.path("heavy.tqb");
    TarqSettings heavy;
    for (unsigned program = 0; program < 3; program++)
        heavy.get_instrument(program).set_controller(CTRL_OSC1_MULTI_COUNT, 127);
    ASSERT_EQ(heavy.text_save(bank), 0);
    for (const char* played : {bank.c_str(), "gm"}) {
        for (const char* name : {"out.wav", "out.ogg"}) {
            const std::string alone = rendered({"--bank", played, "--tail", "1", duet}, name);
            for (const char* threads : {"2", "3"})
                EXPECT_TRUE(rendered({"--bank", played, "--tail", "1", "--threads", threads, duet},
                                     name) == alone)
                    << played << ", " << name << ", " << threads;
        }
    }
    EXPECT_EQ(render({"--threads", "0", song, out}).status, 2);
}

TEST_F(RenderCommand, WritesTheSoundAndTellsAboutIt) {
    const CommandRun run = render({"--json", "--tail", "1", song, out});
    EXPECT_EQ(run.status, 0);
    const auto summary = nlohmann::json::parse(run.results);
    EXPECT_EQ(summary["frames"], 38587 + 44100);
    EXPECT_EQ(summary["rate"], 44100);
    const Sound sound = read_sound(out);
    ASSERT_EQ(sound.info.frames, 38587 + 44100);
    float peak = 0.0F;
    for (const float sample : sound.samples)
        peak = std::max(peak, std::fabs(sample));
    EXPECT_NEAR(summary["peak_dbfs"], 20.0 * std::log10(double(peak)), 0.01);
    EXPECT_GT(summary["peak_dbfs"], -30.0);
    EXPECT_GT(summary["loudness_lufs"], -40.0);

    const CommandRun plain = render({"--tail", "1", song, out});
    EXPECT_EQ(plain.results, "");
    EXPECT_THAT(plain.errors, HasSubstr("out.wav: 1.87 s, wav 24 44100 Hz, peak "));
    EXPECT_EQ(render({"--quiet", "--tail", "1", song, out}).errors, "");
}

TEST_F(RenderCommand, SilenceHasNoLevels) {
    const CommandRun run = render({"--json", "--normalize", "-1", "--channels", "5", song, out});
    const auto summary = nlohmann::json::parse(run.results);
    EXPECT_TRUE(summary["peak_dbfs"].is_null());
    EXPECT_TRUE(summary["loudness_lufs"].is_null());
    EXPECT_EQ(summary["frames"], 38587 + 22050); // half a second of silence ends it
    EXPECT_THAT(render({"--channels", "5", song, out}).errors, HasSubstr("-inf dBFS, -inf LUFS"));
}

TEST_F(RenderCommand, TheSameInputGivesTheSameBytes) {
    const std::string first = rendered({song});
    EXPECT_EQ(rendered({song}), first);
    EXPECT_EQ(rendered({"--seed", "1", "--block", "256", "--channels", "1-16", song}), first);
    const CommandRun piped = render({song, "-"});
    EXPECT_EQ(piped.results, first); // and nothing else
    const DecimalCommaLocale locale;
    if (locale.available()) {
        EXPECT_EQ(rendered({song}), first);
        EXPECT_EQ(rendered({"--tail", "0.5", song}).size(), 44 + size_t(38587 + 22050) * 6);
        EXPECT_THAT(render({"--tail", "0.5", song, out}).errors, HasSubstr(": 1.37 s,"));
    }
}

TEST_F(RenderCommand, ProgramsAndInstrumentsReachTheirChannels) {
    auto bank = std::make_unique<TarqSettings>();
    bank->get_instrument(5).set_controller(CTRL_OSC1_COARSE_TUNE, 100);
    const std::string bank_path = directory.path("bank.tqb");
    ASSERT_EQ(bank->text_save(bank_path), 0);
    Instrument instrument;
    instrument.set_controller(CTRL_OSC1_COARSE_TUNE, 100);
    const std::string instrument_path = directory.path("lead.tqi");
    ASSERT_EQ(save_file_to_string(instrument_path, instrument.save_to_string()), 0);

    const std::string plain = rendered({"--midi", "native", song});
    const std::string banked = rendered({"--bank", bank_path, song}); // program 5 on channel 1
    EXPECT_NE(banked, plain);
    EXPECT_EQ(rendered({"--instrument", "1=" + instrument_path, song}), banked);
    EXPECT_EQ(rendered({"--instrument", "2=" + instrument_path, song}), plain);
    EXPECT_EQ(rendered({"--instrument", "1=" + instrument_path, "--instrument",
                        "3=" + instrument_path, song}),
              banked);
    EXPECT_EQ(rendered({"--bank", bank_path, duet}), rendered({"--midi", "native", duet}));
}

TEST_F(RenderCommand, StemsAreTheChannelsThatPlay) {
    const std::string stems = directory.path("stems");
    rendered({"--bits", "float", "--tail", "1", "--stems", stems, duet});
    const std::string both[] = {file_text(stems + "/channel-01.wav"),
                                file_text(stems + "/channel-03.wav")};
    EXPECT_NE(both[0], both[1]);
    EXPECT_FALSE(std::filesystem::exists(stems + "/channel-02.wav"));
    EXPECT_EQ(read_sound(stems + "/channel-01.wav").info.frames, read_sound(out).info.frames);

    // Each is the same when the other is not played.
    for (const size_t i : {0U, 1U}) {
        const std::string alone = directory.path("alone" + std::to_string(i));
        const std::string channel = std::to_string(1 + 2 * i);
        rendered({"--bits", "float", "--tail", "1", "--stems", alone, "--channels", channel, duet},
                 "other.wav");
        EXPECT_TRUE(file_text(alone + "/channel-0" + channel + ".wav") == both[i]) << i;
        const std::string other = "/channel-0" + std::to_string(3 - 2 * i) + ".wav";
        EXPECT_FALSE(std::filesystem::exists(alone + other));
    }
}

TEST_F(RenderCommand, NormalizesToThePeak) {
    for (const char* rate : {"44100", "48000"}) {
        rendered({"--bits", "float", "--normalize", "-6", "--rate", rate, song});
        const Sound sound = read_sound(out);
        float peak = 0.0F;
        for (const float sample : sound.samples)
            peak = std::max(peak, std::fabs(sample));
        EXPECT_NEAR(peak, std::pow(10.0, -6.0 / 20.0), 1e-6);
    }
}

TEST_F(RenderCommand, DamagedSongsLeaveNothingBehind) {
    const SmfBytes whole = small_song();
    const std::set<std::string> before = names_in(directory.path());
    for (size_t length = 0; length < whole.size(); length++) {
        save("song.mid", SmfBytes(whole.begin(), whole.begin() + long(length)));
        ASSERT_THAT(refusal({"render", song, out}), HasSubstr("tarquil: " + song + ": ")) << length;
    }
    EXPECT_EQ(names_in(directory.path()), before);
}

TEST_F(RenderCommand, BadInputIsStatus2WithItsReason) {
    const auto file = [this](const std::string& name, const std::string& text) {
        EXPECT_EQ(save_file_to_string(directory.path(name), text), 0);
        return directory.path(name);
    };
    struct Case {
        std::vector<std::string> arguments;
        const char* reason;
    };
    const Case cases[] = {
        {{"--bank", file("empty.tqb", ""), song, out}, "empty.tqb: is empty"},
        {{"--bank", file("device.tqb", "instrument0 = /dev/zero\n"), song, out}, "/dev/zero"},
        {{"--bank", directory.path("none.tqb"), song, out}, "none.tqb: cannot be opened"},
        {{"--instrument", "1=" + file("broken.tqi", "name = x\nx\n"), song, out},
         "broken.tqi: line 2"},
        {{"--instrument", "1=/none", song, out}, "/none: cannot be opened"},
        {{"--instrument", "0=a.tqi", song, out}, "channels are numbers"},
        {{directory.path("none.mid"), out}, "none.mid: cannot be opened"},
        {{directory.path(), out}, "cannot be read"},
        {{"/dev/zero", out}, "cannot be read"},
        {{song, directory.path("none/out.wav")}, "none/out.wav: cannot be written"},
        {{"--format", "wav", song, directory.path()}, "cannot be written"},
        {{song, "/dev/full"}, "/dev/full: cannot be written: No space left"},
        {{"--stems", song, song, out}, "cannot be written"},
        {{"--rate", "0", song, out}, "--rate 0"},
        {{"--frobnicate", song, out}, "--frobnicate"},
        {{song}, "OUT"},
        {{"--channels", "0", song, out}, "--channels 0"},
        {{"--block", "6", song, out}, "--block 6"},
    };
    const std::set<std::string> before = names_in(directory.path());
    for (const Case& c : cases) {
        std::vector<std::string> command = c.arguments;
        command.insert(command.begin(), "render");
        EXPECT_THAT(refusal(command), HasSubstr(c.reason));
        EXPECT_EQ(names_in(directory.path()), before) << c.reason;
    }
}

} // namespace

} // namespace tarquil

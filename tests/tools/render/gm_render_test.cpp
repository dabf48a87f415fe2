// Renders of General MIDI songs: which dialect is chosen, block lengths, sets and reports.

#include <nlohmann/json.hpp>

#include "instrument/settings.h"
#include "tests/tools/render/render_fixture.h"

namespace tarquil {
namespace {

class GmRender : public RenderFixture {
  protected:
    void SetUp() override {
        // Volume, a pedal, a note, a drum, a volume change and "GM on" at the end.
        const SmfBytes file =
            make_smf(0, 0xE728,
                     {{0x00, 0xB0, 7,    90,   0x00, 0xB0, 64,   127,  0x00, 0x90, 60,  100,  0x00,
                       0x99, 36,   90,   0x0A, 0x80, 60,   0,    0x0A, 0xB0, 7,    40,  0x83, 0x00,
                       0xF0, 5,    0x7E, 0x7F, 9,    1,    0xF7, 0x00, 0xFF, 0x2F, 0x00}});
        save("song.mid", file);
        ASSERT_EQ(TarqSettings().text_save(directory.path("bank.tqb")), 0);
        save("map.tqm", "melodic_bank = bank.tqb\ndrum_bank = bank.tqb\nfamily = kick\n"
                        "k00_036 = kick 1 50 100 64 100\n");
    }
};

TEST_F(GmRender, TheBankChoosesTheDialect) {
    const std::string bank = directory.path("bank.tqb");
    const std::string native = rendered({"--midi", "native"});
    const std::string general = rendered({"--midi", "gm"});
    EXPECT_NE(native, general);
    EXPECT_EQ(rendered({}), general);
    EXPECT_EQ(rendered({"--bank", "gm"}), general);
    EXPECT_EQ(rendered({"--bank", bank}), native);
    TarqSettings made_for_gm;
    made_for_gm.set_midi_dialect(MidiDialect::GENERAL_MIDI);
    ASSERT_EQ(made_for_gm.text_save(bank), 0);
    const std::string own_sounds = rendered({"--bank", bank});
    EXPECT_NE(own_sounds, native);
    EXPECT_EQ(rendered({"--bank", bank, "--midi", "gm"}), own_sounds);
    EXPECT_EQ(rendered({"--bank", bank, "--midi", "native"}), native);
}

TEST_F(GmRender, TheNameOfAShippedBankIsNoFile) {
    const InTempDirectory current;
    ASSERT_EQ(save_file_to_string("originals", "no bank"), 0);
    EXPECT_EQ(render_song({"--bank", "originals"}).status, 0);
    EXPECT_EQ(render_song({"--bank", "./originals"}).status, 2);
    EXPECT_EQ(render_song({"--bank", "original"}).status, 2);
}

TEST_F(GmRender, BytesDoNotDependOnBlocks) {
    const std::string map = directory.path("map.tqm");
    const std::string once = rendered({"--map", map});
    for (const char* block : {"4", "64", "1004", "2048"})
        EXPECT_EQ(rendered({"--map", map, "--block", block}), once) << block;
    EXPECT_NE(rendered({}), once); // without a set there are no drums
}

TEST_F(GmRender, ReportsEveryMessage) {
    const CommandRun run = render_song({"--json", "--report", "--map", directory.path("map.tqm")});
    const auto report = nlohmann::json::parse(run.results)["midi"];
    EXPECT_EQ(report["messages"], 7);
    EXPECT_EQ(report["played"]["drums"], 1);
    EXPECT_EQ(report["played"]["controller 7 (volume)"], 2);
    EXPECT_EQ(report["played"]["resets"], 1);
    EXPECT_TRUE(report["ignored"].empty());
    EXPECT_THAT(render_song({"--report"}).errors, HasSubstr("drums 1"));
}

TEST_F(GmRender, SaysWhatDoesNotGoTogether) {
    const std::string map = directory.path("map.tqm");
    EXPECT_THAT(render_song({"--midi", "xg"}).errors,
                HasSubstr("--midi xg: not auto, gm or native"));
    EXPECT_EQ(render_song({"--midi", "native", "--map", map}).status, 2);
    EXPECT_THAT(render_song({"--midi", "gm", "--stems", directory.path("s")}).errors,
                HasSubstr("--stems: does not go with General MIDI"));
    save("map.tqm", "drum_bank = nothing.tqb\n");
    EXPECT_THAT(render_song({"--map", map}).errors, HasSubstr("nothing.tqb: cannot be opened"));
    save("map.tqm", "family = a\nk00_036 = b 1 60 100 64 1\n");
    EXPECT_THAT(refusal({"map", "check", map}),
                HasSubstr("map.tqm: line 2: k00_036: unknown family 'b'"));
}

TEST_F(GmRender, MapsAreLookedOver) {
    const std::string map = directory.path("map.tqm");
    EXPECT_THAT(run_command({"map", "check", map}).results,
                HasSubstr("families 1, kits 1, drums 1, laws 0"));
    EXPECT_EQ(run_command({"map", "list", map}).results,
              "kit   0  key  36  kick, instrument 1, note 50, 100 ms\n");
}

} // namespace
} // namespace tarquil

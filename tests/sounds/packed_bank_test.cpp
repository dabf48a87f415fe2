// Banks in few bytes come back as they were.

#include "sounds/packed_bank.h"

#include <gtest/gtest.h>

#include "instrument/names.h"
#include "tests/support/bank_text.h"

namespace tarquil {
namespace {

TEST(PackedBank, ComesBackWhole) {
    TarqSettings bank;
    set_default_names(bank);
    bank.set_song_title("Title");
    bank.set_song_author(std::string(300, 'a')); // longer than one byte counts
    bank.set_midi_dialect(MidiDialect::GENERAL_MIDI);
    bank.set_global_controller(CTRL_REVERB_WET, 3);
    Instrument& last = bank.get_instrument(127);
    last.set_name("bell");
    last.set_text(InstrumentText::CATEGORY, "bells");
    last.set_text(InstrumentText::COMMENT, "of \xC3\xA9tain");
    for (const ControllerInfo& info : channel_controller_rows()) // all differ
        last.set_controller(info.number, last.get_controller(info.number) == 1 ? 2 : 1);
    const std::string packed = pack_bank(bank);
    EXPECT_EQ(text_of(unpack_bank(packed)), text_of(bank));
    EXPECT_EQ(pack_bank(unpack_bank(packed)), packed);
}

} // namespace
} // namespace tarquil

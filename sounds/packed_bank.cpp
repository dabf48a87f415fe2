// A bank in few bytes.
//
// The dialect, title and author, the changed global bytes, then each instrument: name, what is said
// about it, changed bytes.  A text is its length in two bytes and itself, a list of changed bytes
// its length and pairs of number and byte.

#include "sounds/packed_bank.h"

#include "common/assertion.h"
#include "instrument/names.h"

namespace tarquil {

namespace {

constexpr InstrumentText SAID[] = {InstrumentText::AUTHOR, InstrumentText::CATEGORY,
                                   InstrumentText::TAGS, InstrumentText::COMMENT};

void pack_number(std::string& out, size_t number) {
    TARQ_ASSERT(number < 256);
    out += char(number);
}

void pack_text(std::string& out, std::string_view text) {
    pack_number(out, text.size() / 256);
    pack_number(out, text.size() % 256);
    out += text;
}

void pack_changes(std::string& out, const ControllerBytes& bytes, const ControllerBytes& defaults) {
    std::string pairs;
    for (unsigned number = 0; number < NUM_CONTROLLERS; number++)
        if (bytes[number] != defaults[number])
            pairs += {char(number), char(bytes[number])};
    pack_number(out, pairs.size() / 2);
    out += pairs;
}

ControllerBytes global_bytes(const TarqSettings& bank) {
    ControllerBytes bytes = default_controller_bytes();
    for (const ControllerInfo& info : global_controller_rows())
        bytes[info.number] = uint8_t(bank.get_global_controller(info.number));
    return bytes;
}

// Takes from the front of what is left.
class PackReader {
  public:
    explicit PackReader(std::string_view packed) : left(packed) {}

    unsigned number() { return uint8_t(take(1)[0]); }

    std::string_view text() {
        const unsigned high = number();
        return take(256U * high + number());
    }

    void changes(ControllerBytes& bytes) {
        for (unsigned count = number(); count > 0; count--) {
            const unsigned controller = number();
            TARQ_ASSERT(controller < NUM_CONTROLLERS);
            bytes[controller] = uint8_t(number());
        }
    }

  private:
    std::string_view take(size_t size) {
        TARQ_ASSERT(size <= left.size());
        const std::string_view front = left.substr(0, size);
        left.remove_prefix(size);
        return front;
    }

    std::string_view left;
};

} // namespace

std::string pack_bank(const TarqSettings& bank) {
    std::string out;
    pack_number(out, size_t(bank.get_midi_dialect()));
    pack_text(out, bank.get_song_title());
    pack_text(out, bank.get_song_author());
    pack_changes(out, global_bytes(bank), default_controller_bytes());
    const Instrument plain;
    for (unsigned i = 0; i < MAX_INSTRUMENTS; i++) {
        const Instrument& instrument = bank.get_instrument(i);
        pack_text(out, instrument.get_name());
        for (const InstrumentText said : SAID)
            pack_text(out, instrument.get_text(said));
        pack_changes(out, instrument.get_bytes(), plain.get_bytes());
    }
    return out;
}

TarqSettings unpack_bank(std::string_view packed) {
    PackReader reader(packed);
    TarqSettings bank;
    bank.set_midi_dialect(MidiDialect(reader.number()));
    bank.set_song_title(reader.text());
    bank.set_song_author(reader.text());
    ControllerBytes globals = default_controller_bytes();
    reader.changes(globals);
    bank.set_global_bytes(globals);
    for (unsigned i = 0; i < MAX_INSTRUMENTS; i++) {
        Instrument& instrument = bank.get_instrument(i);
        instrument = built_in_instrument(i);
        instrument.set_name(reader.text());
        for (const InstrumentText said : SAID)
            instrument.set_text(said, reader.text());
        ControllerBytes bytes = instrument.get_bytes();
        reader.changes(bytes);
        instrument.set_bytes(bytes);
    }
    return bank;
}

} // namespace tarquil

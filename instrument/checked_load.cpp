// Loads that succeed as a whole or change nothing.

#include "instrument/checked_load.h"

#include <memory>

#include "common/load_string.h"
#include "instrument/names.h"
#include "instrument/text_error.h"
#include "instrument/text_kind.h"
#include "instrument/text_source.h"

namespace tarquil {

void clamp_choices(Instrument& instrument) {
    for (const ControllerInfo& info : channel_controller_rows())
        instrument.set_controller(
            info.number, filter_controller(info.number, instrument.get_controller(info.number)));
}

namespace {

void clamp_choices(TarqSettings& bank) {
    for (const ControllerInfo& info : global_controller_rows())
        bank.set_global_controller(
            info.number, filter_controller(info.number, bank.get_global_controller(info.number)));
    for (unsigned i = 0; i < MAX_INSTRUMENTS; i++)
        clamp_choices(bank.get_instrument(i));
    remove_lone_blanks(bank);
}

// The copy keeps the names that the loaded text does not mention.
template <typename Object, typename Load> int load_checked(Object& object, const Load& load) {
    const auto fresh = std::make_unique<Object>(object);
    const int error = load(*fresh);
    if (error != 0)
        return error;
    clamp_choices(*fresh);
    object = std::move(*fresh);
    return 0;
}

} // namespace

int load_bank_checked(TarqSettings& bank, const std::string& path, LoadReport* report) {
    std::string text;
    const int error = load_file_to_string(path, text);
    return error != 0 ? error : load_bank_checked_from_string(bank, text, report);
}

int load_bank_checked_from_string(TarqSettings& bank, std::string_view text, LoadReport* report) {
    if (!is_text_of(TextKind::BANK, text))
        return WRONG_KIND;
    return load_checked(
        bank, [&](TarqSettings& fresh) { return fresh.text_load_from_string(text, report); });
}

int load_instrument_checked(Instrument& instrument, const std::string& path, LoadReport* report) {
    std::string text;
    int error = load_text_source(path, text);
    if (error == 0)
        error = load_instrument_checked_from_string(instrument, text, report);
    if (error == 0)
        instrument.set_filename(path);
    return error;
}

int load_instrument_checked_from_string(Instrument& instrument, std::string_view text,
                                        LoadReport* report) {
    if (!is_text_of(TextKind::INSTRUMENT, text))
        return WRONG_KIND;
    return load_checked(instrument,
                        [&](Instrument& fresh) { return fresh.load_from_string(text, report); });
}

} // namespace tarquil

// Loads that succeed as a whole or change nothing.

#include "instrument/checked_load.h"

#include <memory>

#include "instrument/names.h"

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
    return load_checked(bank, [&](TarqSettings& fresh) { return fresh.text_load(path, report); });
}

int load_bank_checked_from_string(TarqSettings& bank, std::string_view text, LoadReport* report) {
    return load_checked(
        bank, [&](TarqSettings& fresh) { return fresh.text_load_from_string(text, report); });
}

int load_instrument_checked(Instrument& instrument, const std::string& path, LoadReport* report) {
    return load_checked(instrument, [&](Instrument& fresh) {
        const int error = fresh.text_load(path, report);
        if (error == 0)
            fresh.set_filename(path);
        return error;
    });
}

int load_instrument_checked_from_string(Instrument& instrument, std::string_view text,
                                        LoadReport* report) {
    return load_checked(instrument,
                        [&](Instrument& fresh) { return fresh.load_from_string(text, report); });
}

} // namespace tarquil

// Instruments: what loads saves to a text that loads as the same instrument.

#include <cstdint>

#include "common/assertion.h"
#include "instrument/checked_load.h"

namespace tarquil {

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size);

int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    const std::string_view text(reinterpret_cast<const char*>(data), size);
    Instrument instrument;
    const std::string before = instrument.save_to_string();
    const int error = instrument.load_from_string(text);
    const std::string saved = instrument.save_to_string();
    TARQ_ASSERT(error == 0 || (error == 6 && saved == before));

    Instrument checked;
    const int checked_error = load_instrument_checked_from_string(checked, text);
    TARQ_ASSERT(checked_error == error || checked_error == 7);
    if (checked_error == 7) // holds no instrument
        return 0;
    for (const ControllerInfo& info : channel_controller_rows()) {
        const int byte = checked.get_controller(info.number);
        TARQ_ASSERT(byte == filter_controller(info.number, byte));
        TARQ_ASSERT(byte == filter_controller(info.number, instrument.get_controller(info.number)));
    }
    // An empty name comes back as "_": from its first load on the text is stable.
    if (error == 0) {
        Instrument again;
        TARQ_ASSERT(again.load_from_string(saved) == 0);
        const std::string second = again.save_to_string();
        TARQ_ASSERT(second == saved || instrument.get_name().empty());
    }
    return 0;
}

} // namespace tarquil

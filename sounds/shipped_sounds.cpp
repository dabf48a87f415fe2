// The banks that come with the program.

#include "sounds/shipped_sounds.h"

#include "common/assertion.h"
#include "midi/gm/gm_map_file.h"
#include "sounds/packed_bank.h"
#include "sounds/shipped_data.h"

namespace tarquil {

const TarqSettings& shipped_gm_bank() {
    static const TarqSettings bank = unpack_bank(packed_gm_bank());
    return bank;
}

const TarqSettings& shipped_gm_drums() {
    static const TarqSettings bank = unpack_bank(packed_gm_drums());
    return bank;
}

const TarqSettings& shipped_originals() {
    static const TarqSettings bank = unpack_bank(packed_originals());
    return bank;
}

const GmMap& shipped_gm_map() {
    static const GmMap map = [] {
        GmMap read;
        const std::string error = load_gm_map_from_string(read, gm_map_text());
        TARQ_ASSERT(error.empty());
        return read;
    }();
    return map;
}

const TarqSettings* find_shipped_bank(std::string_view name) {
    if (name == GM_BANK_NAME)
        return &shipped_gm_bank();
    if (name == GM_DRUMS_NAME)
        return &shipped_gm_drums();
    if (name == ORIGINALS_NAME)
        return &shipped_originals();
    return nullptr;
}

} // namespace tarquil

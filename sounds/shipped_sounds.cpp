// The banks that come with the program.

#include "sounds/shipped_sounds.h"

#include <utility>

#include "common/assertion.h"
#include "midi/gm/gm_map_file.h"
#include "sounds/packed_bank.h"
#include "sounds/shipped_data.h"

namespace tarquil {

const TarqSettings& shipped_gm_bank() {
    static const TarqSettings bank = unpack_bank(packed_gm_bank());
    return bank;
}

const TarqSettings& shipped_originals() {
    static const TarqSettings bank = unpack_bank(packed_originals());
    return bank;
}

std::shared_ptr<const GmSet> shipped_gm_set() {
    static const std::shared_ptr<const GmSet> set = [] {
        auto unpacked = std::make_shared<GmSet>();
        GmMap originals;
        for (const auto& [map, text] : {std::pair(&unpacked->map, gm_map_text()),
                                        std::pair(&originals, originals_map_text())}) {
            const std::string error = load_gm_map_from_string(*map, text);
            TARQ_ASSERT(error.empty());
        }
        unpacked->guest_rules = std::move(originals.programs);
        unpacked->drums = std::make_unique<TarqSettings>(unpack_bank(packed_gm_drums()));
        for (unsigned i = 0; i < GM_PROGRAMS; i++) {
            unpacked->names[i] = shipped_gm_bank().get_instrument(i).get_name();
            unpacked->guest_names[i] = shipped_originals().get_instrument(i).get_name();
        }
        return unpacked;
    }();
    return set;
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

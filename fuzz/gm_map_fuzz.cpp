// Fuzz target of map files: any text loads, or says in one line why not and changes nothing.

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "common/assertion.h"
#include "midi/gm/gm_map_file.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size);

int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    using namespace tarquil;
    GmMap map;
    map.title = "before";
    const std::string error =
        load_gm_map_from_string(map, {reinterpret_cast<const char*>(data), size});
    if (!error.empty()) {
        TARQ_ASSERT(map.title == "before" && map.families.empty());
        return 0;
    }
    TARQ_ASSERT(map.families.size() <= MAX_FAMILIES);
    for (unsigned program = 0; program < GM_PROGRAMS; program++) {
        for (const NoteLaw& law : map.programs.laws_of(program))
            TARQ_ASSERT(is_note_controller(law.controller));
        for (unsigned key = 0; key < NUM_KEYS; key++) {
            const DrumKey* drum = map.find_drum(program, key);
            TARQ_ASSERT(drum == nullptr ||
                        (drum->family < map.families.size() && drum->instrument < GM_PROGRAMS &&
                         drum->note < NUM_KEYS && drum->num_chokes <= MAX_CHOKES));
        }
    }
    return 0;
}

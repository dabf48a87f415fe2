// Reading of a General MIDI set.

#include "tools/render/gm_set.h"

#include <filesystem>

#include "common/failure.h"
#include "instrument/checked_load.h"
#include "instrument/load_error.h"
#include "midi/gm/gm_map_file.h"
#include "player/gm_sounds_of.h"

namespace tarquil {

namespace {

void load_bank_beside(const std::string& map_path, const std::string& name, TarqSettings& bank,
                      LoadReport* report) {
    const std::string path = (std::filesystem::path(map_path).parent_path() / name).string();
    const int error = load_bank_checked(bank, path, report);
    if (error != 0)
        throw BadInput(map_path + ": " + explain_bank_error(path, error));
}

} // namespace

void load_gm_set(const std::string& path, GmSet& set, TarqSettings& melodic, LoadReport* report) {
    const std::string error = load_gm_map(set.map, path);
    if (!error.empty())
        throw BadInput(error);
    if (!set.map.melodic_bank.empty())
        load_bank_beside(path, set.map.melodic_bank, melodic, report);
    if (!set.map.drum_bank.empty()) {
        set.drums = std::make_unique<TarqSettings>();
        load_bank_beside(path, set.map.drum_bank, *set.drums, report);
    }
    const std::string conflict = find_family_conflict(set.map, sounds_of(melodic, set.drums.get()));
    if (!conflict.empty())
        throw BadInput(path + ": " + conflict);
}

} // namespace tarquil

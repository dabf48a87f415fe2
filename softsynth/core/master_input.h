// A block on its way to the master section, when that renders it later than the channels do.

#pragma once

#include <cstdint>
#include <optional>
#include <vector>

#include "softsynth/core/master_settings.h"
#include "softsynth/parameters/tempo.h"

namespace tarquil {

struct MasterInput {
    uint32_t time = 0; // of its start
    uint32_t size = 0; // frames
    MasterSettings settings;
    Tempo tempo;
    std::optional<uint32_t> silence; // of the echoes
    std::vector<float> buses;        // one after the other
};

} // namespace tarquil

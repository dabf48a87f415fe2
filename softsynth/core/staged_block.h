// A block on its way through an engine that renders it in stages.

#pragma once

#include <cstdint>
#include <optional>
#include <vector>

#include "softsynth/core/master_settings.h"
#include "softsynth/parameters/constants.h"
#include "softsynth/parameters/tempo.h"
#include "softsynth/voices/chain_step.h"

namespace tarquil {

struct StagedBlock {
    uint32_t time = 0; // of its start
    uint32_t size = 0; // frames
    Tempo tempo;
    MasterSettings settings;
    std::optional<uint32_t> silence; // of the echoes

    ChainRecord channels[NUM_CHANNELS]; // from the first stage to the second
    std::vector<float> buses;           // from the second to the third, one after the other
};

} // namespace tarquil

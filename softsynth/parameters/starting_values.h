// Where the controllers of an effect or a filter start when its type is chosen by hand: their
// defaults silence many types, or leave the sound as it is.

#pragma once

#include <cstdint>
#include <vector>

#include "softsynth/parameters/controller_bytes.h"

namespace tarquil {

struct StartingValue {
    unsigned number = 0; // of the controller
    uint8_t byte = 0;
};

// The changes that go with a change of controller `number` to `byte`, from `bytes`: none where it
// chooses no such type, or where its controllers stand elsewhere than at their defaults or at the
// starting values of the type before, which somebody has set.
std::vector<StartingValue> starting_values(unsigned number, int byte, const ControllerBytes& bytes);

} // namespace tarquil

// The pitch bend's frequency factors.

#include "softsynth/voices/pitch_bend.h"

#include <cmath>

namespace tarquil {

float pitch_bend_mulfac_table[PITCH_BEND_STEPS];

void generate_pitch_bend_table() {
    static const bool is_generated = [] {
        constexpr int CENTRE = PITCH_BEND_STEPS / 2;
        for (int k = 0; k < PITCH_BEND_STEPS; k++)
            pitch_bend_mulfac_table[k] = float(std::exp2(double(k - CENTRE) / CENTRE));
        return true;
    }();
    static_cast<void>(is_generated);
}

} // namespace tarquil

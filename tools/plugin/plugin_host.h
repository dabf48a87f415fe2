// What a plug-in may ask of the program that plays it.

#pragma once

#include <cstdint>

#include "softsynth/parameters/tempo.h"
#include "vst/abi/vst2.h"

namespace tarquil {

// A plug-in asks before it has a record to be known by, so there is one host in a process.
class PluginHost {
  public:
    // The largest number of frames that a plug-in is asked for at once, before it is loaded.
    static void set_block_size(uint32_t frames);

    // Where the next block starts, in samples.
    static void set_time(uint32_t time);
    // Its place among the beats, and its tempo.
    static void set_tempo(double quarters_per_minute, const Tempo& tempo);

    static intptr_t VST_CALL answer(AEffect* effect, int32_t opcode, int32_t index, intptr_t value,
                                    void* ptr, float opt);
};

} // namespace tarquil

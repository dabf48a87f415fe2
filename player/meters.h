// What the audio thread tells the editor, without locks.

#pragma once

#include <atomic>
#include <cstdint>

#include "common/sample_ring.h"
#include "common/shared_record.h"
#include "softsynth/effects/multi_compressor.h"
#include "softsynth/parameters/note_view.h"
#include "softsynth/signal/buffer.h"

namespace tarquil {

// What is kept for a scope: nothing, the whole output, or what the channels that play the edited
// program add to the main bus before the master section.
enum class OutputWatch : uint8_t { NOTHING, WHOLE, PROGRAM };

// Written once a block; who shows a value takes it and starts it anew.
struct Meters {
    std::atomic<bool> watched{false}; // nothing is measured for nobody

    // The highest absolute sample since it was taken.
    std::atomic<float> peak_left{0.0F};
    std::atomic<float> peak_right{0.0F};

    std::atomic<uint32_t> played_channels{0}; // bit c: channel c had a note-on since it was taken
    std::atomic<int> voices{0};               // sounding now

    // Of the master compressor's bands, linear, at the block's end: the follower's level and the
    // gain without makeup.
    std::atomic<float> band_levels[MC_N_BANDS]{};
    std::atomic<float> band_gains[MC_N_BANDS]{};

    // Quarter notes a minute, as the host says it or as it goes on by itself.
    std::atomic<double> tempo{120.0};

    // The last note of the edited program, every VIEW_PERIOD frames.
    SharedRecord<NoteView> note;
    static constexpr uint32_t VIEW_PERIOD = 256;

    // At the engine's rate.  Half of it can be read at once.
    std::atomic<OutputWatch> output_watch{OutputWatch::NOTHING};
    SampleRing<1U << 15U> output;
    // NUM_CHANNELS buffers, for a program by itself.
    std::atomic<StereoBuffer*> taps{nullptr};
};

} // namespace tarquil

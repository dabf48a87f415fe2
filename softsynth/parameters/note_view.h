// What a sounding note shows of its insides at one moment.

#pragma once

#include <cstdint>

#include "softsynth/parameters/families.h"

namespace tarquil {

enum class EnvelopeStage : uint32_t { ATTACK, DECAY, SUSTAIN, RELEASE, DONE };

// Where an envelope is.
struct EnvelopePosition {
    EnvelopeStage stage = EnvelopeStage::DONE;
    float seconds = 0.0F; // in the stage
    float level = 0.0F;   // of the attack's peak

    bool operator==(const EnvelopePosition&) const = default;
};

// Whole words only: it is published word by word.
struct NoteView {
    uint32_t is_sounding = 0; // 0: there is no note, and nothing else means anything
    uint32_t start_time = 0;  // tells notes apart
    uint32_t note = 0;
    EnvelopePosition envelopes[NUM_ENVELOPES];
    // In cycles, 0..1; of LFOs that move nothing they stand still.
    float lfo_phases[NUM_LFOS] = {};
    // Octaves above 20 Hz, with modulation, without the key's frequency: at the end of the last
    // block, and over all of it.
    float cutoff = 0.0F;
    float lowest_cutoff = 0.0F;
    float highest_cutoff = 0.0F;
    float resonance = 0.0F; // with modulation, at the end of the last block

    bool operator==(const NoteView&) const = default;
};

} // namespace tarquil

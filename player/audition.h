// A sound that is tried: a phrase through an engine of its own, beside all that is played.

#pragma once

#include <array>
#include <cstdint>
#include <vector>

#include "instrument/phrase.h"
#include "player/bank_bytes.h"
#include "player/side_engine.h"
#include "softsynth/parameters/constants.h"

namespace tarquil {

// What the control side asks for.
struct AuditionRequest {
    // Nothing is played, and what was ends.
    AuditionRequest() = default;
    AuditionRequest(const ControllerBytes& sound, const Phrase& phrase);

    ControllerBytes bytes{};
    std::vector<midi_event> notes{}; // by time from the beginning
};

// For the audio thread: nothing is allocated.
class Audition {
  public:
    // What it played before ends within a few milliseconds.  The request stays until the next;
    // `globals` is the master section's bytes.
    void begin(const AuditionRequest& request, const ControllerBytes& globals);
    void end();

    // Adds `frames` (whole granules) that start at `time` to interleaved stereo.
    void run(Tarquil* engine, float* pcm, uint32_t frames, uint32_t time);

  private:
    // A silence, a sound with the master section, and a piece's share of notes.
    static constexpr uint32_t CAPACITY = NUM_CONTROLLERS + 1 + MAX_PHRASE_NOTES;
    // What never dies away by itself is ended that long after the phrase.
    static constexpr uint32_t LONGEST_TAIL = 10 * SAMPLE_RATE;
    // Echoes may be a second apart.
    static constexpr uint32_t REST_AFTER = 3 * SAMPLE_RATE / 2;

    void put(const midi_event& event, uint32_t time);

    const AuditionRequest* playing = nullptr;
    ControllerBytes globals_now{};
    bool is_beginning = false; // the sound is yet to be sent
    bool is_ending = false;    // so is a silence
    size_t next_note = 0;
    uint32_t played = 0; // frames of the phrase
    SideEngine side{REST_AFTER};
    std::array<midi_event, CAPACITY> events;
    uint32_t num_events = 0;
};

} // namespace tarquil

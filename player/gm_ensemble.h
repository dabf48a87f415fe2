// Two engines behind the General MIDI dialect: one for the melodic parts, one for the drums, and
// the limiter that their sum meets.
//
// It renders in quanta of one length, so that its sound does not depend on how anyone cuts time.
// The drums' engine is only run while drums sound.

#pragma once

#include <array>
#include <cstdint>
#include <memory>
#include <span>

#include "instrument/settings.h"
#include "midi/gm/gm_dialect.h"
#include "softsynth/core/core.h"
#include "softsynth/effects/limiter.h"

namespace tarquil {

class GmEnsemble {
  public:
    static constexpr uint32_t QUANTUM = 64; // frames
    // How much later than its message a sound comes, beyond the quantum's wait.
    static constexpr uint32_t LATENCY = Limiter::LOOK_AHEAD;

    // `drums` and `map` may be null: no drums, no laws.  All stay as long as the object.
    GmEnsemble(const TarqSettings& melodic, const TarqSettings* drums, const GmMap* map,
               uint32_t seed);

    // Plays a message (a status byte and its data, or a whole system exclusive message) at `time`,
    // within the next quantum.  False, and nothing happens, when there is no room.
    bool add_message(uint32_t time, std::span<const uint8_t> message);

    // Lets all keys and pedals go.
    void release_all(uint32_t time);

    // The next QUANTUM frames of interleaved stereo.
    void render(float* pcm);

    // The first sample of the next quantum.
    [[nodiscard]] uint32_t get_time() const { return time; }
    [[nodiscard]] const GmReport& report() const { return dialect.report(); }

    // The most voices that one engine has sounded at once.
    [[nodiscard]] unsigned get_most_voices() const { return most_voices; }

  private:
    static constexpr uint32_t CAPACITY = 4 * GmDialect::MAX_EVENTS_PER_CALL;

    // The events of the next quantum, each engine's in order.
    class Queues : public EngineEvents {
      public:
        void put(unsigned engine, const midi_event& event) override;
        [[nodiscard]] bool has_room() const;

        std::array<std::array<midi_event, CAPACITY>, NUM_GM_ENGINES> events;
        std::array<uint32_t, NUM_GM_ENGINES> counts{};

      private:
        void push(unsigned engine, const midi_event& event);
    };

    [[nodiscard]] bool drums_sound() const { return engines[RHYTHM_ENGINE] && quiet < STOP_AFTER; }
    void run(unsigned engine, float* pcm);
    void add_drums(float* pcm);

    // The drums' engine stops after half a second of silence.
    static constexpr uint32_t STOP_AFTER = SAMPLE_RATE / 2 / QUANTUM;

    ControllerBytes globals{}; // of the melodic bank
    GmDialect dialect;
    std::array<std::unique_ptr<Tarquil>, NUM_GM_ENGINES> engines;
    std::unique_ptr<Queues> queues;
    Limiter limiter;
    uint32_t time = 0;
    uint32_t quiet = STOP_AFTER; // quanta in which the drums' engine was silent
    unsigned most_voices = 0;
};

} // namespace tarquil

// One channel of an engine as the dialect sees it: what it was told last, so that only changes are.

#pragma once

#include <cstdint>

#include "instrument/controller_bytes.h"
#include "midi/gm/engine_events.h"
#include "midi/gm/glide.h"

namespace tarquil {

constexpr bool is_bend_controller(unsigned number) {
    return number == CTRL_PITCH_BEND_MSB || number == CTRL_PITCH_BEND_LSB;
}

class EngineChannel {
  public:
    void place(unsigned engine_index, unsigned channel_index);

    // Lets the next set_sound say everything, as for a new engine.
    void forget();

    // Makes the channel's controllers `bytes`, but not its bend, which is centred once.
    void set_sound(uint32_t time, const ControllerBytes& bytes, EngineEvents& out);

    // After a set_sound.  `glide` moves there in small steps; only volume and panning can.
    void set(uint32_t time, unsigned controller, uint8_t value, EngineEvents& out);
    void glide(uint32_t time, unsigned controller, uint8_t value, EngineEvents& out);
    void bend(uint32_t time, unsigned value, EngineEvents& out);

    void note_on(uint32_t time, unsigned note, unsigned velocity, EngineEvents& out) const;
    void note_off(uint32_t time, unsigned note, EngineEvents& out) const;
    void silence(uint32_t time, EngineEvents& out) const;

    // What the channel was told last.
    [[nodiscard]] uint8_t byte(unsigned controller) const { return sent[controller]; }

    // The glides' next step, and all steps that are due at `time`.
    [[nodiscard]] DueTime due() const { return earlier(volume.due(), panning.due()); }
    void run_due(uint32_t time, EngineEvents& out);

    void move_clock_back(uint32_t frames);

  private:
    Glide& glide_of(unsigned controller);
    void put(uint32_t time, unsigned kind, unsigned data1, unsigned data2, EngineEvents& out) const;

    unsigned engine = 0;
    unsigned channel = 0;
    bool is_known = false;
    ControllerBytes sent{};
    Glide volume;
    Glide panning;
};

} // namespace tarquil

// Controllers: one sound parameter's value changes within a block, mapped to floats.
//
// A controller's timeline holds the value in force at the block's start and every change within the
// block, in time order.  After a channel has rendered, its timelines are reset to their last
// values.

#pragma once

#include <cstdint>

#include "common/assertion.h"
#include "softsynth/parameters/controller_table.h"
#include "softsynth/parameters/effect_parameter.h"
#include "softsynth/signal/buffer.h"
#include "softsynth/voices/timeline_memory.h"

namespace tarquil {

class Controller {
  public:
    Controller() = default;
    ~Controller();
    Controller(const Controller&) = delete;
    Controller& operator=(const Controller&) = delete;

    // Appends a change; events come in time order.  The timeline doubles when it is full.
    void push_back(const ControllerEvent& event);

    // Keeps one event: the last value, at the first event's time.
    void reset();

    // A flag that is set and a number that grows with every change, or none.
    void set_change_notes(bool* flag, uint32_t* count) {
        changed_flag = flag;
        change_count = count;
    }
    // Where the timeline finds room when it grows; from the heap without.
    void use_memory(TimelineMemory& timelines) { memory = &timelines; }

    // Lets the clock start `frames` later: all times become smaller by that, 0 at least.
    void move_clock_back(uint32_t frames);

    [[nodiscard]] bool has_multiple_values() const { return num_events >= 2; }
    [[nodiscard]] int get_last_int_value() const { return last_value; }
    [[nodiscard]] float get_last_value() const { return do_mapping(last_value); }
    [[nodiscard]] float get_last_cubed_value() const { return cubed(get_last_value()); }

    void set_mapping(float new_offset, float new_scale);
    [[nodiscard]] float do_mapping(int value) const { return offset + scale * float(value); }

    // The mapped value in force at each of the buffer's samples, the first of which is at the
    // absolute time `time`; cubed when asked for.
    void render(MonoBuffer& buf, uint32_t time, bool is_cubed) const;
    void render_cubed(MonoBuffer& buf, uint32_t time) const { render(buf, time, true); }

    // As render, but only at every CONTROL_PERIOD samples from the buffer's sample `first` on.
    void render_controls(MonoBuffer& buf, uint32_t time, uint32_t first, bool is_cubed) const;

    // The same with a value for each byte of a table.
    void render_controls(MonoBuffer& buf, uint32_t time, uint32_t first,
                         const float* by_byte) const;

    // Constant-power gains of the mapped value x: `buf` gets sqrt(1 - x), `buf2` sqrt(x).
    void render_sqr(MonoBuffer& buf, MonoBuffer& buf2, uint32_t time) const;

    [[nodiscard]] uint32_t size() const { return num_events; }
    [[nodiscard]] const ControllerEvent& event(uint32_t index) const { return events[index]; }

  private:
    // Calls fill(byte, first sample, one past the last sample) for each step of the block.
    template <typename Fill>
    void for_each_step(uint32_t time, uint32_t num_samples, const Fill& fill) const;

    ControllerEvent* take_timeline(uint32_t count);
    void give_back_timeline(ControllerEvent* timeline);

    static constexpr uint32_t OWN_EVENTS = 8;

    int32_t last_value = 0;
    uint32_t num_events = 1;
    uint32_t capacity = OWN_EVENTS;
    float offset = 0.0F;
    float scale = 1.0F / 127;
    bool* changed_flag = nullptr;
    uint32_t* change_count = nullptr;
    TimelineMemory* memory = nullptr;
    ControllerEvent* events = own_events;
    ControllerEvent own_events[OWN_EVENTS];
};

// The controllers of one channel, indexed by number.  The global controllers live in channel 0's.
class ControllerArray {
  public:
    ControllerArray();
    ControllerArray(const ControllerArray&) = delete;
    ControllerArray& operator=(const ControllerArray&) = delete;

    // As Controller::use_memory, for all.
    void use_memory(TimelineMemory& timelines);

    Controller& get_controller(unsigned num) {
        TARQ_ASSERT(num < NUM_CONTROLLERS);
        return controllers[num];
    }
    [[nodiscard]] const Controller& get_controller(unsigned num) const {
        TARQ_ASSERT(num < NUM_CONTROLLERS);
        return controllers[num];
    }

    // Changes so far.
    [[nodiscard]] uint32_t get_change_count() const { return change_count; }
    // True when none has changed since the last reset: each has one value.
    [[nodiscard]] bool is_still() const { return change_count == count_at_reset; }

    // Resets those that have changed; to the others it would do nothing.
    void reset() {
        if (!is_still())
            reset_changed();
    }
    void move_clock_back(uint32_t frames);

  private:
    void reset_changed();

    uint32_t change_count = 0;
    uint32_t count_at_reset = 0;
    Controller controllers[NUM_CONTROLLERS];
    bool changed[NUM_CONTROLLERS] = {};
};

} // namespace tarquil

// Controllers: one sound parameter's value changes within a block, mapped to floats.

#include "softsynth/voices/controller.h"

#include <algorithm>
#include <cmath>
#include <cstring>
#include <new>

#include "common/assertion.h"

namespace tarquil {

Controller::~Controller() {
    if (events != own_events)
        give_back_timeline(events);
}

ControllerEvent* Controller::take_timeline(uint32_t count) {
    return memory != nullptr ? memory->take(count) : new (std::nothrow) ControllerEvent[count];
}

void Controller::give_back_timeline(ControllerEvent* timeline) {
    if (memory != nullptr)
        memory->give_back(timeline);
    else
        delete[] timeline;
}

void Controller::push_back(const ControllerEvent& event) {
    if (num_events == capacity) {
        ControllerEvent* const full = events;
        events = take_timeline(2 * capacity);
        TARQ_ASSERT(events);
        std::copy_n(full, num_events, events);
        if (full != own_events)
            give_back_timeline(full);
        capacity *= 2;
    }
    events[num_events] = event;
    num_events++;
    last_value = event.value;
    if (changed_flag != nullptr) {
        *changed_flag = true;
        ++*change_count;
    }
}

void Controller::reset() {
    TARQ_ASSERT(num_events > 0);
    own_events[0] = {events[0].time, last_value};
    num_events = 1;
    if (events != own_events) {
        give_back_timeline(events);
        events = own_events;
        capacity = OWN_EVENTS;
    }
}

void Controller::move_clock_back(uint32_t frames) {
    for (uint32_t i = 0; i < num_events; i++)
        events[i].time -= std::min(events[i].time, frames);
}

void Controller::set_mapping(float new_offset, float new_scale) {
    offset = new_offset;
    scale = new_scale;
}

template <typename Fill>
void Controller::for_each_step(uint32_t time, uint32_t num_samples, const Fill& fill) const {
    TARQ_ASSERT(time >= events[0].time && num_events > 0);
    const uint32_t end_time = time + num_samples;
    const uint32_t nEvs = num_events;
    uint32_t step_start = time;
    for (uint32_t evIdx = 0; step_start < end_time; evIdx++) {
        TARQ_ASSERT(evIdx < nEvs);
        TARQ_ASSERT(events[evIdx].time < end_time);
        const uint32_t step_end = evIdx + 1 < nEvs ? events[evIdx + 1].time : end_time;
        TARQ_ASSERT(step_end <= end_time);
        if (step_end <= step_start)
            continue;
        fill(events[evIdx].value, step_start - time, step_end - time);
        step_start = step_end;
    }
}

void Controller::render(MonoBuffer& buf, uint32_t time, bool is_cubed) const {
    float* samples = buf.get_first_sample_ptr();
    for_each_step(time, buf.get_buf_size(), [&](int byte, uint32_t first, uint32_t end) {
        const float value = do_mapping(byte);
        std::fill(samples + first, samples + end, is_cubed ? cubed(value) : value);
    });
}

void Controller::render_controls(MonoBuffer& buf, uint32_t time, uint32_t first,
                                 bool is_cubed) const {
    float* samples = buf.get_first_sample_ptr();
    if (!has_multiple_values()) {
        const float value = is_cubed ? get_last_cubed_value() : get_last_value();
        for (uint32_t i = first; i < buf.get_buf_size(); i += CONTROL_PERIOD)
            samples[i] = value;
        return;
    }
    uint32_t i = first;
    for_each_step(time, buf.get_buf_size(), [&](int byte, uint32_t /*first*/, uint32_t end) {
        const float value = do_mapping(byte);
        for (; i < end; i += CONTROL_PERIOD)
            samples[i] = is_cubed ? cubed(value) : value;
    });
}

void Controller::render_controls(MonoBuffer& buf, uint32_t time, uint32_t first,
                                 const float* by_byte) const {
    float* samples = buf.get_first_sample_ptr();
    uint32_t i = first;
    for_each_step(time, buf.get_buf_size(), [&](int byte, uint32_t /*first*/, uint32_t end) {
        for (; i < end; i += CONTROL_PERIOD)
            samples[i] = by_byte[byte];
    });
}

void Controller::render_sqr(MonoBuffer& buf, MonoBuffer& buf2, uint32_t time) const {
    float* falling = buf.get_first_sample_ptr();
    float* rising = buf2.get_first_sample_ptr();
    for_each_step(time, buf.get_buf_size(), [&](int byte, uint32_t first, uint32_t end) {
        const float value = do_mapping(byte);
        std::fill(falling + first, falling + end, std::sqrt(1.0F - value));
        std::fill(rising + first, rising + end, std::sqrt(value));
    });
}

ControllerArray::ControllerArray() {
    for (const ControllerInfo& info : controller_rows()) {
        if (info.mapping.exists)
            controllers[info.number].set_mapping(info.mapping.offset, info.mapping.scale);
    }
    for (unsigned c = 0; c < NUM_CONTROLLERS; c++)
        controllers[c].set_change_notes(&changed[c], &change_count);
}

void ControllerArray::use_memory(TimelineMemory& timelines) {
    for (Controller& controller : controllers)
        controller.use_memory(timelines);
}

void ControllerArray::reset_changed() {
    count_at_reset = change_count;
    // Few change in a block: looking at the flags alone keeps the timelines out of the caches.
    const auto next_changed = [this](size_t first) {
        return static_cast<bool*>(std::memchr(changed + first, true, NUM_CONTROLLERS - first));
    };
    for (bool* flag = next_changed(0); flag != nullptr;
         flag = next_changed(size_t(flag - changed))) {
        controllers[flag - changed].reset();
        *flag = false;
    }
}

void ControllerArray::move_clock_back(uint32_t frames) {
    for (Controller& controller : controllers)
        controller.move_clock_back(frames);
}

} // namespace tarquil

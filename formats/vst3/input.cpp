// What a host hands over with a block, brought into the order of its frames.

#include "formats/vst3/input.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "formats/vst3/parameters.h"
#include "midi/midi_message.h"
#include "softsynth/parameters/midi_event.h"

namespace tarquil::vst3 {

namespace {

// 0..1 as one of `last` + 1 steps; what is no number counts as 0.
unsigned steps(double value, unsigned last) {
    const double clamped = value > 0 ? std::min(value, 1.0) : 0.0;
    return unsigned(std::lround(clamped * last));
}

bool is_key(int16_t channel, int16_t key) {
    return channel >= 0 && channel < int(NUM_CHANNELS) && key >= 0 && key < 128;
}

void play_message(HostedPlayer& hosted, unsigned kind, unsigned channel, unsigned first,
                  unsigned second, uint32_t frame) {
    const uint8_t message[] = {midi_status(kind, channel), uint8_t(first), uint8_t(second)};
    hosted.add_message(message, frame);
}

void play_parameter(HostedPlayer& hosted, const MidiParameter& parameter, double value,
                    uint32_t frame) {
    if (parameter.number == MAPPED_BEND) {
        const unsigned bend = steps(value, 16383);
        play_message(hosted, MIDI_PITCH_BEND, parameter.channel, bend % 128, bend / 128, frame);
    } else if (parameter.number == MAPPED_PRESSURE) {
        play_message(hosted, MIDI_CHANNEL_PRESSURE, parameter.channel, steps(value, 127), 0, frame);
    } else {
        play_message(hosted, MIDI_CONTROL_CHANGE, parameter.channel, parameter.number,
                     steps(value, 127), frame);
    }
}

bool is_message(ParameterId id) {
    return find_midi_parameter(id) || find_learning_parameter(id);
}

void play_point(HostedPlayer& hosted, ParameterId id, double value, uint32_t frame) {
    if (const auto midi = find_midi_parameter(id)) {
        play_parameter(hosted, *midi, value, frame);
    } else if (const auto learned = find_learning_parameter(id)) {
        hosted.move_learned(*learned, steps(value, 127), frame);
    } else if (const HostControl* const control = find_host_control(id)) {
        if (const auto said = value_of(*control, value))
            set_control(hosted, *control, *said, frame);
    }
}

void play_event(HostedPlayer& hosted, const Event& event, uint32_t frame) {
    switch (event.type) {
    case NOTE_ON:
        // A note-on of velocity 0 is one, not a note-off.
        if (is_key(event.note_on.channel, event.note_on.key))
            play_message(hosted, MIDI_NOTE_ON, unsigned(event.note_on.channel),
                         unsigned(event.note_on.key),
                         std::max(1U, steps(double(event.note_on.velocity), 127)), frame);
        break;
    case NOTE_OFF:
        if (is_key(event.note_off.channel, event.note_off.key))
            play_message(hosted, MIDI_NOTE_OFF, unsigned(event.note_off.channel),
                         unsigned(event.note_off.key), steps(double(event.note_off.velocity), 127),
                         frame);
        break;
    case KEY_PRESSURE:
        if (is_key(event.key_pressure.channel, event.key_pressure.key))
            play_message(hosted, MIDI_POLYPHONIC_PRESSURE, unsigned(event.key_pressure.channel),
                         unsigned(event.key_pressure.key),
                         steps(double(event.key_pressure.pressure), 127), frame);
        break;
    case DATA:
        if (event.data.type == 0 && event.data.bytes != nullptr)
            hosted.add_message({event.data.bytes, event.data.size}, frame);
        break;
    default:
        break;
    }
}

} // namespace

void Input::add(HostedPlayer& hosted, ProcessData& data, const Item& item) {
    if (num_items == CAPACITY)
        play_items(hosted, data); // what comes later is late
    items[num_items] = item;
    items[num_items].order = num_items;
    num_items++;
}

void Input::play(HostedPlayer& hosted, ProcessData& data) {
    num_items = 0;
    const int32_t num_changes =
        data.input_changes != nullptr ? data.input_changes->get_parameter_count() : 0;
    // At the start some hosts send all parameters as they were saved.  What stands for messages is
    // no state, and would silence every channel.
    const bool is_dump = std::exchange(is_first, false) && num_changes >= num_midi_parameters();
    for (int32_t i = 0; i < num_changes; i++) {
        ParameterPoints* const points = data.input_changes->get_parameter_data(i);
        const int32_t num_points = points != nullptr ? points->get_point_count() : 0;
        if (num_points > 0 && is_dump && is_message(points->get_parameter_id()))
            continue;
        for (int32_t j = 0; j < num_points; j++) {
            Item item;
            item.id = points->get_parameter_id();
            if (points->get_point(j, &item.frame, &item.value) == OK)
                add(hosted, data, item);
        }
    }
    const int32_t num_events =
        data.input_events != nullptr ? data.input_events->get_event_count() : 0;
    for (int32_t i = 0; i < num_events; i++) {
        Event event{};
        if (data.input_events->get_event(i, &event) == OK)
            add(hosted, data, {.frame = event.frame, .event = i});
    }
    play_items(hosted, data);
}

void Input::play_items(HostedPlayer& hosted, ProcessData& data) {
    std::sort(items.begin(), items.begin() + num_items, [](const Item& a, const Item& b) {
        return a.frame != b.frame ? a.frame < b.frame : a.order < b.order;
    });
    for (uint32_t i = 0; i < num_items; i++) {
        const Item& item = items[i];
        const auto frame = uint32_t(std::max(item.frame, 0));
        if (item.id != NOTE) {
            play_point(hosted, item.id, item.value, frame);
            continue;
        }
        Event event{};
        if (data.input_events->get_event(item.event, &event) == OK)
            play_event(hosted, event, frame);
    }
    num_items = 0;
}

} // namespace tarquil::vst3

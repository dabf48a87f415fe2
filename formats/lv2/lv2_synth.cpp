// The LV2 plug-in: ports and events.

#include "formats/lv2/lv2_synth.h"

#include <algorithm>
#include <cstring>
#include <limits>

namespace tarquil {

Lv2Synth::Lv2Synth(double host_rate, LV2_URID_Map& map, const LV2_Worker_Schedule* worker,
                   const Lv2PortChangeRequest* request)
    : rate(host_rate), urids(map), schedule(worker), port_changes(request),
      controls(lv2_controls()), control_ports(controls.size()) {
    for (const Lv2Control& control : controls)
        taken.push_back(control.first_byte());
    seen.assign(controls.size(), std::numeric_limits<float>::quiet_NaN());
    lv2_atom_forge_init(&forge, &map);
}

bool Lv2Synth::activate() {
    if (!hosted.activate(rate))
        return false;
    told_changes = player().num_changes();
    return true;
}

void Lv2Synth::connect(uint32_t port, void* data) {
    switch (port) {
    case LV2_PORT_EVENTS:
        events = static_cast<const LV2_Atom_Sequence*>(data);
        break;
    case LV2_PORT_NOTIFY:
        notify = static_cast<LV2_Atom_Sequence*>(data);
        break;
    case LV2_PORT_LEFT:
        left = static_cast<float*>(data);
        break;
    case LV2_PORT_RIGHT:
        right = static_cast<float*>(data);
        break;
    case LV2_PORT_LATENCY:
        latency = static_cast<float*>(data);
        break;
    default:
        if (port - NUM_FIXED_LV2_PORTS < control_ports.size())
            control_ports[port - NUM_FIXED_LV2_PORTS] = static_cast<const float*>(data);
    }
}

void Lv2Synth::hold_port(uint32_t port) {
    const size_t control = port - NUM_FIXED_LV2_PORTS;
    if (control < controls.size())
        hosted.hold_controller(controls[control].number());
}

void Lv2Synth::take_ports() {
    const bool only_look = is_restored.exchange(false);
    for (size_t i = 0; i < controls.size(); i++) {
        if (control_ports[i] == nullptr || *control_ports[i] == seen[i])
            continue;
        seen[i] = *control_ports[i];
        // Hosts read a default value with fewer digits.
        const int byte = controls[i].byte(seen[i]);
        if (byte < 0 || byte == taken[i])
            continue;
        taken[i] = byte;
        if (!only_look)
            hosted.set_controller(controls[i].number(), byte, 0);
    }
}

void Lv2Synth::run(uint32_t frames) {
    if (latency != nullptr)
        *latency = float(hosted.latency_frames());
    begin_notifications();
    // Without room for sound a host only hands over what has changed.
    const uint32_t played = left != nullptr && right != nullptr ? frames : 0;
    hosted.begin_block(left, right, played);
    take_ports();
    if (events != nullptr) {
        LV2_ATOM_SEQUENCE_FOREACH(events, event)
        take_event(*event, uint32_t(std::clamp<int64_t>(event->time.frames, 0, frames)));
    }
    hosted.end_block();
    tell_moves();
    const uint32_t changes = player().num_changes();
    if (changes != told_changes)
        tell_state_change();
    told_changes = changes;
    end_notifications();
}

void Lv2Synth::take_event(const LV2_Atom_Event& event, uint32_t frame) {
    const LV2_Atom& body = event.body;
    const auto* bytes = static_cast<const uint8_t*>(LV2_ATOM_BODY_CONST(&body));
    if (body.type == urids.midi_event) {
        hosted.add_message({bytes, body.size}, frame);
    } else if (lv2_atom_forge_is_object_type(&forge, body.type)) {
        const auto& object = *reinterpret_cast<const LV2_Atom_Object*>(&body);
        if (object.body.otype == urids.time_position)
            take_position(object, frame);
        else
            take_patch(object, frame);
    }
}

std::optional<double> Lv2Synth::number(const LV2_Atom* atom) const {
    if (atom == nullptr)
        return std::nullopt;
    const void* const body = LV2_ATOM_BODY_CONST(atom);
    const auto read = [&]<typename Number>(Number value) -> std::optional<double> {
        if (atom->size < sizeof(value))
            return std::nullopt;
        std::memcpy(&value, body, sizeof(value));
        return double(value);
    };
    if (atom->type == urids.atom_double)
        return read(double());
    if (atom->type == urids.atom_float)
        return read(float());
    if (atom->type == urids.atom_long)
        return read(int64_t());
    return atom->type == urids.atom_int ? read(int32_t()) : std::nullopt;
}

void Lv2Synth::take_position(const LV2_Atom_Object& position, uint32_t frame) {
    const LV2_Atom* bar = nullptr;
    const LV2_Atom* bar_beat = nullptr;
    const LV2_Atom* beats_per_bar = nullptr;
    const LV2_Atom* beat_unit = nullptr;
    const LV2_Atom* beats_per_minute = nullptr;
    const LV2_Atom* speed = nullptr;
    lv2_atom_object_get(&position, urids.time_bar, &bar, urids.time_bar_beat, &bar_beat,
                        urids.time_beats_per_bar, &beats_per_bar, urids.time_beat_unit, &beat_unit,
                        urids.time_beats_per_minute, &beats_per_minute, urids.time_speed, &speed,
                        0);
    host_time.bar = number(bar).value_or(host_time.bar);
    host_time.bar_beat = number(bar_beat).value_or(host_time.bar_beat);
    host_time.beats_per_bar = number(beats_per_bar).value_or(host_time.beats_per_bar);
    host_time.beat_unit = number(beat_unit).value_or(host_time.beat_unit);
    host_time.beats_per_minute = number(beats_per_minute).value_or(host_time.beats_per_minute);
    host_time.speed = number(speed).value_or(host_time.speed);
    const auto in_quarters = [this](double beats) { return quarters(beats, host_time.beat_unit); };
    HostTempo said{.quarters_per_minute = in_quarters(host_time.beats_per_minute)};
    if (host_time.speed > 0.0 && bar_beat != nullptr) {
        const double bar_start = in_quarters(host_time.bar * host_time.beats_per_bar);
        said.place = HostTempo::Place{.position = bar_start + in_quarters(host_time.bar_beat),
                                      .bar_start = bar_start,
                                      .bar_length = in_quarters(host_time.beats_per_bar)};
    }
    hosted.set_tempo(said, frame);
}

void Lv2Synth::take_patch(const LV2_Atom_Object& message, uint32_t frame) {
    const LV2_Atom* property = nullptr;
    const LV2_Atom* value = nullptr;
    lv2_atom_object_get(&message, urids.patch_property, &property, urids.patch_value, &value, 0);
    const LV2_URID wanted = property != nullptr && property->type == urids.atom_urid
                                ? reinterpret_cast<const LV2_Atom_URID*>(property)->body
                                : 0;
    if (message.body.otype == urids.patch_get) {
        if (wanted == 0 || wanted == urids.program)
            tell_program();
    } else if (message.body.otype == urids.patch_set && value != nullptr) {
        if (wanted == urids.program)
            set_program(*value, frame);
        else if (wanted == urids.file)
            load_file(*value);
    }
}

void Lv2Synth::set_program(const LV2_Atom& value, uint32_t frame) {
    if (value.type != urids.atom_int || value.size < sizeof(int32_t))
        return;
    const int32_t program = reinterpret_cast<const LV2_Atom_Int&>(value).body;
    if (program < 0 || program >= int32_t(MAX_INSTRUMENTS))
        return;
    hosted.set_program(0, unsigned(program), frame);
}

void Lv2Synth::load_file(const LV2_Atom& value) {
    if ((value.type != urids.atom_path && value.type != urids.atom_string) || schedule == nullptr)
        return;
    schedule->schedule_work(schedule->handle, value.size, LV2_ATOM_BODY_CONST(&value));
}

void Lv2Synth::begin_notifications() {
    can_notify = notify != nullptr && notify->atom.size >= sizeof(LV2_Atom_Sequence_Body);
    if (!can_notify)
        return;
    const uint32_t room = notify->atom.size + uint32_t(sizeof(LV2_Atom));
    lv2_atom_forge_set_buffer(&forge, reinterpret_cast<uint8_t*>(notify), room);
    can_notify = lv2_atom_forge_sequence_head(&forge, &sequence, 0) != 0;
}

void Lv2Synth::end_notifications() {
    if (can_notify)
        lv2_atom_forge_pop(&forge, &sequence);
}

void Lv2Synth::tell_program() {
    // A message that does not fit as a whole is not begun.
    constexpr uint32_t MESSAGE_BYTES = 256;
    if (!can_notify || forge.size - forge.offset < MESSAGE_BYTES)
        return;
    LV2_Atom_Forge_Frame object;
    lv2_atom_forge_frame_time(&forge, 0);
    lv2_atom_forge_object(&forge, &object, 0, urids.patch_set);
    lv2_atom_forge_key(&forge, urids.patch_property);
    lv2_atom_forge_urid(&forge, urids.program);
    lv2_atom_forge_key(&forge, urids.patch_value);
    lv2_atom_forge_int(&forge, int32_t(player().edited_program()));
    lv2_atom_forge_pop(&forge, &object);
}

// What learned controllers have moved; a window writes the ports itself.
void Lv2Synth::tell_moves() {
    if (port_changes == nullptr || player().meters().watched.load(std::memory_order_relaxed))
        return;
    player().moved_controls().take([this](unsigned number) {
        const uint32_t port = lv2_port_of(number);
        if (port == 0)
            return;
        hold_port(port);
        const Lv2Control& control = controls[port - NUM_FIXED_LV2_PORTS];
        port_changes->request_change(port_changes->handle, port,
                                     control.value(hosted.get_controller(number)));
    });
}

void Lv2Synth::tell_state_change() {
    tell_program();
    constexpr uint32_t MESSAGE_BYTES = 128;
    if (!can_notify || forge.size - forge.offset < MESSAGE_BYTES)
        return;
    LV2_Atom_Forge_Frame object;
    lv2_atom_forge_frame_time(&forge, 0);
    lv2_atom_forge_object(&forge, &object, 0, urids.state_changed);
    lv2_atom_forge_pop(&forge, &object);
}

} // namespace tarquil

// The General MIDI dialect: channel messages.

#include "midi/gm/gm_dialect.h"

#include "midi/gm/channel_sound.h"
#include "softsynth/parameters/controller_table.h"

namespace tarquil {

namespace {

const GmMap NO_MAP;

bool is_mode(unsigned controller) {
    return controller >= MIDI_SOUND_OFF;
}

} // namespace

GmDialect::GmDialect() : melodic(state), rhythm(state) {
    set_sounds(GmSounds(), nullptr);
    start(0);
}

void GmDialect::set_sounds(const GmSounds& sounds, const GmMap* map,
                           const SoundRules* guest_rules) {
    state.sounds = sounds;
    state.map = map != nullptr ? map : &NO_MAP;
    state.guest_rules = guest_rules;
}

void GmDialect::start(uint32_t time) {
    now = time;
    is_due_known = false;
    for (unsigned i = 0; i < NUM_MIDI_CHANNELS; i++)
        state.channels[i].set_defaults(i);
    state.master = GmMaster();
    state.xg_banks = false;
    state.report = GmReport();
    melodic.start();
    rhythm.start();
    changed_globals.reset();
}

void GmDialect::advance(uint32_t until, EngineEvents& out) {
    for (;;) {
        if (!is_due_known)
            next_due = earlier(melodic.due(), rhythm.due());
        is_due_known = true;
        if (!next_due || !is_before(*next_due, until))
            break;
        now = *next_due;
        melodic.run_due(now, out);
        rhythm.run_due(now, out);
        is_due_known = false;
    }
    if (is_before(now, until))
        now = until;
}

uint32_t GmDialect::step_to(uint32_t time, EngineEvents& out) {
    advance(time, out);
    is_due_known = false; // after what the caller does
    return now;
}

void GmDialect::translate(const midi_event& message, EngineEvents& out) {
    if (message.status == GM_RELEASE_ALL) {
        release_all(message.time, out);
        return;
    }
    midi_event now_due = message;
    now_due.time = step_to(message.time, out);
    state.report.messages++;
    if (message.status == GM_DAMAGED)
        state.report.count(GmMessage::DAMAGED);
    else if (message.status == GM_OTHER_SYSTEM)
        state.report.count(GmMessage::OTHER_SYSTEM);
    else if (message.status >= GM_SYSEX)
        play_sysex(now_due.time, sysex_of(message), out);
    else
        play_channel_message(now_due, out);
}

void GmDialect::play_channel_message(const midi_event& message, EngineEvents& out) {
    const uint32_t time = message.time;
    const unsigned index = midi_channel(message.status);
    const unsigned data = message.data1;
    GmChannel& channel = state.channels[index];
    switch (midi_kind(message.status)) {
    case MIDI_NOTE_ON:
        if (message.data2 > 0) {
            note_on(time, index, data, message.data2, out);
            break;
        }
        [[fallthrough]];
    case MIDI_NOTE_OFF:
        state.report.count(GmMessage::NOTE_OFFS);
        note_off(time, index, data, out);
        break;
    case MIDI_POLYPHONIC_PRESSURE:
        state.report.count(GmMessage::KEY_PRESSURE);
        break;
    case MIDI_CONTROL_CHANGE:
        state.report.controllers[data]++;
        change_controller(time, index, data, message.data2, out);
        break;
    case MIDI_PROGRAM_CHANGE:
        state.report.count(GmMessage::PROGRAMS);
        choose_program(index, data);
        break;
    case MIDI_CHANNEL_PRESSURE:
        state.report.count(GmMessage::CHANNEL_PRESSURE);
        channel.pressure = uint8_t(data);
        melodic.update_vibrato(time, index);
        break;
    default: // a bend
        state.report.count(GmMessage::BENDS);
        channel.bend = uint16_t(unsigned(message.data2) << 7U | data);
        if (channel.is_rhythm && channel.bend != BEND_CENTRE)
            state.report.count(GmShortfall::RHYTHM_CONTROLLER);
        melodic.update_bend(time, index, out);
        break;
    }
}

void GmDialect::note_on(uint32_t time, unsigned channel, unsigned key, unsigned velocity,
                        EngineEvents& out) {
    if (!state.channels[channel].is_rhythm) {
        state.report.count(GmMessage::NOTES);
        melodic.note_on(time, channel, key, velocity, out);
        return;
    }
    const bool has_sound = rhythm.note_on(time, channel, key, velocity, out);
    state.report.count(has_sound ? GmMessage::DRUMS : GmMessage::DRUMS_WITHOUT_SOUND);
}

void GmDialect::note_off(uint32_t time, unsigned channel, unsigned key, EngineEvents& out) {
    // Both: the channel may have changed its kind while the key was down.
    melodic.note_off(time, channel, key, out);
    rhythm.note_off(time, channel, key, out);
}

void GmDialect::choose_program(unsigned index, unsigned program) {
    GmChannel& channel = state.channels[index];
    channel.set_program(program, state.xg_banks);
    if (!channel.is_rhythm &&
        (channel.value(MIDI_BANK_MSB) != 0 || channel.value(MIDI_BANK_LSB) != 0))
        state.report.count(GmShortfall::BANK_NOT_KNOWN);
}

void GmDialect::change_controller(uint32_t time, unsigned channel, unsigned controller,
                                  unsigned value, EngineEvents& out) {
    if (is_mode(controller)) {
        change_mode(time, channel, controller, out);
        return;
    }
    switch (controller) {
    case MIDI_DATA_MSB:
    case MIDI_DATA_LSB:
    case MIDI_DATA_INCREMENT:
    case MIDI_DATA_DECREMENT:
        enter_data(time, channel, controller, value, out);
        break;
    case MIDI_NRPN_LSB:
    case MIDI_NRPN_MSB:
    case MIDI_RPN_LSB:
    case MIDI_RPN_MSB:
        state.channels[channel].select_parameter(controller, value);
        break;
    case MIDI_SUSTAIN:
    case MIDI_SOSTENUTO:
        change_pedal(time, channel, controller, value, out);
        break;
    default:
        state.channels[channel].set_value(controller, value);
        update(time, channel, controller, out);
        break;
    }
}

void GmDialect::change_pedal(uint32_t time, unsigned channel, unsigned pedal, unsigned value,
                             EngineEvents& out) {
    GmChannel& settings = state.channels[channel];
    const bool was_down = settings.is_down(pedal);
    settings.set_value(pedal, value);
    if (settings.is_down(pedal) == was_down)
        return;
    if (pedal == MIDI_SOSTENUTO)
        melodic.set_sostenuto(time, channel, !was_down, out);
    else
        melodic.release_unheld(time, channel, out);
}

void GmDialect::change_mode(uint32_t time, unsigned channel, unsigned controller,
                            EngineEvents& out) {
    switch (controller) {
    case MIDI_SOUND_OFF:
        melodic.silence(time, channel, out);
        rhythm.silence(time, channel, out);
        break;
    case MIDI_RESET:
        reset_controllers(time, channel, out);
        break;
    case MIDI_ALL_NOTES_OFF:
    case MIDI_OMNI_OFF:
    case MIDI_OMNI_ON:
    case MIDI_MONO:
    case MIDI_POLY:
        melodic.release_keys(time, channel, out);
        rhythm.release_keys(time, channel, out);
        if (controller == MIDI_MONO || controller == MIDI_POLY)
            state.channels[channel].is_mono = controller == MIDI_MONO;
        break;
    default:
        break;
    }
}

void GmDialect::reset_controllers(uint32_t time, unsigned channel, EngineEvents& out) {
    state.channels[channel].reset_controllers();
    melodic.set_sostenuto(time, channel, false, out);
    melodic.update_bend(time, channel, out);
    for (const unsigned controller : {MIDI_EXPRESSION, MIDI_SOFT, MIDI_PORTAMENTO})
        update(time, channel, controller, out);
}

void GmDialect::update(uint32_t time, unsigned channel, unsigned midi_controller,
                       EngineEvents& out) {
    const std::span<const unsigned> controllers = controllers_behind(midi_controller);
    melodic.update(time, channel, controllers, out);
    rhythm.update(time, channel, controllers, out);
    if (midi_controller == MIDI_MODULATION || midi_controller == MIDI_VIBRATO_DEPTH)
        melodic.update_vibrato(time, channel);
}

void GmDialect::enter_data(uint32_t time, unsigned channel, unsigned controller, unsigned value,
                           EngineEvents& out) {
    GmChannel& settings = state.channels[channel];
    switch (settings.data_target) {
    case DataTarget::NOTHING:
    case DataTarget::UNKNOWN:
        state.report.count(GmShortfall::DATA_WITHOUT_TARGET);
        return;
    case DataTarget::ENGINE_CONTROLLER:
        if (controller == MIDI_DATA_MSB)
            set_engine_controller(time, channel, value, out);
        return;
    case DataTarget::SOUND_CONTROLLER:
        if (controller == MIDI_DATA_MSB) {
            settings.set_value(settings.data_number, value);
            update(time, channel, settings.data_number, out);
        }
        return;
    default:
        break;
    }
    if (controller == MIDI_DATA_INCREMENT || controller == MIDI_DATA_DECREMENT)
        settings.step_data(controller == MIDI_DATA_INCREMENT ? 1 : -1);
    else
        settings.enter_data(controller, value);
    melodic.update_bend(time, channel, out);
    melodic.update_vibrato(time, channel);
}

void GmDialect::set_engine_controller(uint32_t time, unsigned channel, unsigned value,
                                      EngineEvents& out) {
    GmChannel& settings = state.channels[channel];
    const unsigned number = settings.data_number;
    const ControllerInfo* info = find_controller(number);
    if (info == nullptr || is_bend_controller(number)) {
        state.report.count(GmShortfall::DATA_WITHOUT_TARGET);
        return;
    }
    const auto byte = uint8_t(filter_controller(number, int(value)));
    if (info->scope != ControllerScope::CHANNEL) {
        changed_globals.set(number);
        put_global(time, number, byte, out);
        return;
    }
    if (settings.is_rhythm) {
        state.report.count(GmShortfall::RHYTHM_CONTROLLER);
        return;
    }
    settings.overrides[number] = byte;
    const unsigned changed[] = {number};
    melodic.update(time, channel, changed, out);
}

void GmDialect::release_all(uint32_t time, EngineEvents& out) {
    time = step_to(time, out);
    for (unsigned channel = 0; channel < NUM_MIDI_CHANNELS; channel++) {
        for (const unsigned pedal : {MIDI_SUSTAIN, MIDI_SOSTENUTO})
            change_pedal(time, channel, pedal, 0, out);
        melodic.release_keys(time, channel, out);
        rhythm.release_keys(time, channel, out);
    }
}

void GmDialect::panic(uint32_t time, EngineEvents& out) {
    silence_all(step_to(time, out), out);
}

void GmDialect::refresh(uint32_t time, EngineEvents& out) {
    time = step_to(time, out);
    melodic.update_all(time, out);
    rhythm.update_all(time, out);
}

void GmDialect::refresh_byte(uint32_t time, unsigned program, unsigned controller,
                             EngineEvents& out) {
    time = step_to(time, out);
    if (find_controller(controller) == nullptr)
        return;
    if (!is_global_controller(controller))
        melodic.update_program(time, program, controller, out);
    else if (state.sounds.globals != nullptr)
        put_global(time, controller, (*state.sounds.globals)[controller], out);
}

void GmDialect::put_global(uint32_t time, unsigned number, uint8_t byte, EngineEvents& out) {
    out.put(MELODIC_ENGINE, {.time = time,
                             .status = midi_status(MIDI_CONTROL_CHANGE, 0),
                             .data1 = uint8_t(number),
                             .data2 = byte});
}

void GmDialect::move_clock_back(uint32_t frames) {
    now -= frames;
    is_due_known = false;
    melodic.move_clock_back(frames);
    rhythm.move_clock_back(frames);
}

} // namespace tarquil

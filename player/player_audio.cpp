// The audio side of a player: the engine, the events on their way to it, and the clock.

#include "player/player_audio.h"

#include <algorithm>

#include "common/log/log.h"
#include "midi/gm/gm_message.h"
#include "midi/midifilter.h"
#include "player/controller_events.h"

namespace tarquil {

PlayerAudio::PlayerAudio(PlayerLink& control_link)
    : link(control_link), playing(wanted_programs()) {}

ChannelPrograms PlayerAudio::wanted_programs() const {
    ChannelPrograms programs;
    for (unsigned channel = 0; channel < programs.size(); channel++)
        programs[channel] = link.channel_programs[channel].load(std::memory_order_relaxed);
    return programs;
}

void PlayerAudio::follow_edits() {
    follow_dialect();
    follows_tempo = link.tempo_sync.load(std::memory_order_relaxed);
    if (link.audition.take())
        audition.begin(link.audition.current(), link.bank.current().global());
    // Those that come meanwhile wait for the next call: a writer may be faster than this.
    PlayerEdit edit;
    for (uint32_t count = link.edits.size(); count > 0 && link.edits.pop(edit); count--)
        follow(edit);
    refresh_if_asked();
    if (link.edits_lost.load(std::memory_order_relaxed) && link.edits_lost.exchange(false)) {
        playing = wanted_programs();
        if (plays_gm())
            for (unsigned channel = 0; channel < playing.size(); channel++)
                gm->choose_program(channel, playing[channel]);
        refresh();
    }
    if (link.messages_lost.load(std::memory_order_relaxed) && release_all(curr_time))
        link.messages_lost = false;
}

// Sends the bank once for many edits that ask for it.  A refresh brings the values of the edits
// around it as well, so only what depends on the order has it made first.
void PlayerAudio::refresh_if_asked() {
    if (is_refresh_asked)
        refresh();
    is_refresh_asked = false;
}

void PlayerAudio::follow(const PlayerEdit& edit) {
    const bool depends_on_order =
        edit.kind == PlayerEdit::Kind::CHANNEL_PROGRAM || edit.kind == PlayerEdit::Kind::SILENCE ||
        edit.kind == PlayerEdit::Kind::MESSAGE || edit.kind == PlayerEdit::Kind::STRIKE_AGAIN;
    if (depends_on_order)
        refresh_if_asked();
    const uint32_t time = edit.time == PLAY_NOW ? curr_time : edit.time;
    if (plays_gm() && follow_in_gm(edit, time))
        return;
    switch (edit.kind) {
    case PlayerEdit::Kind::BYTE:
        send_byte(edit.program, edit.number, edit.value, time);
        break;
    case PlayerEdit::Kind::BEND:
        send_bend(edit.program, edit.value, edit.fine);
        break;
    case PlayerEdit::Kind::CHANNEL_PROGRAM:
        play_program(edit.number, edit.program, time);
        break;
    case PlayerEdit::Kind::REFRESH:
        is_refresh_asked = true;
        break;
    case PlayerEdit::Kind::SILENCE:
        silence();
        break;
    case PlayerEdit::Kind::MESSAGE: {
        const uint8_t message[] = {edit.program, edit.number, edit.value};
        add_message(message, curr_time);
        break;
    }
    case PlayerEdit::Kind::STRIKE_AGAIN:
        strike_again(edit.program);
        break;
    }
}

void PlayerAudio::strike_again(unsigned program) {
    for (unsigned channel = 0; channel < playing.size(); channel++) {
        const bool has_kit = plays_gm() && gm->channel(channel).is_rhythm;
        if (playing[channel] != program || has_kit)
            continue;
        for (unsigned key = 0; key < NUM_KEYS; key++) {
            const uint8_t velocity = keys_down.velocity(channel, key);
            const uint8_t up[] = {midi_status(MIDI_NOTE_OFF, channel), uint8_t(key), 64};
            const uint8_t down[] = {midi_status(MIDI_NOTE_ON, channel), uint8_t(key), velocity};
            if (velocity > 0 && events.room() >= 2 && add_message(up, curr_time))
                add_message(down, curr_time);
        }
    }
}

// A learned number is its control's alone, whatever the dialect makes of it and on any channel.
bool PlayerAudio::take_learned(const uint8_t* message, uint32_t time) {
    if (midi_kind(message[0]) != MIDI_CONTROL_CHANGE || is_midi_status(message[1]) ||
        is_midi_status(message[2]))
        return false;
    return move_learned(message[1], message[2], time);
}

bool PlayerAudio::move_learned(unsigned midi_controller, unsigned data, uint32_t time) {
    if (link.learned.hears(midi_controller))
        return true;
    const std::optional<LearnedControl> learned = link.learned.get(midi_controller);
    if (!learned)
        return false;
    const int before = get_controller(learned->target);
    set_controller(learned->target, learned->value(data), time);
    if (get_controller(learned->target) != before)
        link.moved.note(learned->target);
    return true;
}

bool PlayerAudio::add_message(const uint8_t* message, uint32_t time) {
    if (take_learned(message, time))
        return true;
    if (plays_gm())
        return add_gm_message(gm_message(time, {message, 3}));
    if (!is_playable_message(message))
        return true;
    midi_event filtered[MAX_OUT_EVENTS];
    const unsigned count = filter_event(time, message, filtered);
    // The two halves of a bend belong together.
    if (midi_kind(message[0]) == MIDI_PITCH_BEND)
        return events.push({filtered, count});
    for (unsigned i = 0; i < count; i++) {
        const midi_event& event = filtered[i];
        if (events.room() == 0)
            return false;
        const unsigned channel = midi_channel(event.status);
        if (midi_kind(event.status) == MIDI_PROGRAM_CHANGE) {
            play_program(channel, event.data1, event.time);
            link.channel_programs[channel].store(event.data1, std::memory_order_relaxed);
            link.note_change();
        } else {
            events.push({&event, 1});
        }
        note_played(event);
    }
    return true;
}

void PlayerAudio::note_played(const midi_event& event) {
    if (midi_kind(event.status) != MIDI_NOTE_ON || event.data2 == 0)
        return;
    const unsigned channel = midi_channel(event.status);
    link.meters.played_channels.fetch_or(1U << channel, std::memory_order_relaxed);
    link.keys.channels[channel].note_struck(event.data1);
}

bool PlayerAudio::release_all(uint32_t time) {
    if (plays_gm())
        return add_gm_message({.time = time, .status = GM_RELEASE_ALL});
    bool is_queued = true;
    for (unsigned channel = 0; channel < unsigned(NUM_CHANNELS); channel++) {
        const uint8_t message[] = {midi_status(MIDI_CONTROL_CHANGE, channel), MIDI_ALL_NOTES_OFF,
                                   0};
        is_queued = add_message(message, time) && is_queued;
    }
    return is_queued;
}

void PlayerAudio::set_controller(unsigned number, int value, uint32_t time) {
    const unsigned program = link.edited_program.load(std::memory_order_relaxed);
    value = filter_controller(number, value);
    BankBytes& bank = link.bank.current();
    if (is_global_controller(number))
        bank.set_global(number, value);
    else
        bank.set(program, number, value);
    if (plays_gm())
        set_gm_controller(program, number, value, time);
    else
        send_byte(program, number, value, time);
    link.note_change();
}

int PlayerAudio::get_controller(unsigned number) const {
    return is_global_controller(number)
               ? link.bank.current().get_global(number)
               : link.bank.current().get(link.edited_program.load(std::memory_order_relaxed),
                                         number);
}

void PlayerAudio::send_byte(unsigned program, unsigned number, int value, uint32_t time) {
    if (is_global_controller(number)) {
        const midi_event event = controller_event(0, number, value, time);
        if (!events.push({&event, 1}))
            globals_wait = true;
        return;
    }
    for (unsigned channel = 0; channel < unsigned(NUM_CHANNELS); channel++) {
        if (playing[channel] != program)
            continue;
        const midi_event event = controller_event(channel, number, value, time);
        if (!events.push({&event, 1}))
            waiting_channels |= 1U << channel;
    }
}

void PlayerAudio::send_bend(unsigned program, int coarse, int fine) {
    for (unsigned channel = 0; channel < unsigned(NUM_CHANNELS); channel++) {
        if (playing[channel] != program)
            continue;
        const midi_event halves[] = {
            controller_event(channel, CTRL_PITCH_BEND_MSB, coarse, curr_time),
            controller_event(channel, CTRL_PITCH_BEND_LSB, fine, curr_time)};
        if (!events.push(halves))
            waiting_channels |= 1U << channel;
    }
}

void PlayerAudio::play_program(unsigned channel, unsigned program, uint32_t time) {
    playing[channel] = uint8_t(program);
    send_program(channel, time);
}

void PlayerAudio::send_program(unsigned channel, uint32_t time) {
    midi_event emitted[NUM_CONTROLLERS];
    const uint32_t bit = 1U << channel;
    const unsigned count =
        program_events(link.bank.current().program(playing[channel]), channel, time, emitted);
    // Room for every controller is asked for, whatever their number.
    const bool is_sent = events.room() >= NUM_CONTROLLERS && events.push({emitted, count});
    waiting_channels = is_sent ? waiting_channels & ~bit : waiting_channels | bit;
}

void PlayerAudio::play_sound(unsigned channel, const ControllerBytes& bytes, uint32_t time) {
    midi_event emitted[NUM_CONTROLLERS];
    events.push({emitted, program_events(bytes, channel, time, emitted)});
}

void PlayerAudio::send_globals(uint32_t time) {
    midi_event emitted[NUM_CONTROLLERS];
    const unsigned count = global_events(link.bank.current().global(), time, emitted);
    globals_wait = !events.push({emitted, count});
}

void PlayerAudio::refresh() {
    link.bank.take();
    if (plays_gm()) {
        gm->copy_bank(link.bank.current());
        gm->refresh(curr_time);
        return;
    }
    for (unsigned channel = 0; channel < unsigned(NUM_CHANNELS); channel++)
        send_program(channel, curr_time);
    send_globals(curr_time);
}

void PlayerAudio::silence() {
    keys_down.clear();
    audition.end();
    if (plays_gm()) {
        silence_waits = !gm->panic(curr_time);
        return;
    }
    midi_event silences[NUM_CHANNELS];
    for (unsigned channel = 0; channel < unsigned(NUM_CHANNELS); channel++)
        silences[channel] = {.time = curr_time,
                             .status = midi_status(MIDI_SILENCE, channel),
                             .data1 = SILENCE_MASTER};
    silence_waits = !events.push(silences);
}

void PlayerAudio::reset() {
    follow_edits();
    events.clear();
    tempo_clock.clear();
    audition.end();
    if (plays_gm()) {
        begin_gm();
        return;
    }
    silence();
    refresh();
}

// The engine must not be left with another sound than the bank's.
void PlayerAudio::send_what_found_no_room() {
    for (unsigned channel = 0; waiting_channels >> channel != 0; channel++) {
        if ((waiting_channels >> channel & 1U) != 0)
            send_program(channel, curr_time);
    }
    if (globals_wait)
        send_globals(curr_time);
}

void PlayerAudio::run(float* pcm, uint32_t frames) {
    follow_edits();
    if (events.size() >= EventQueue::CAPACITY)
        logPrintf("run_synth with %d events, %d is max - very likely a midi event overflow\n",
                  int(events.size()), int(EventQueue::CAPACITY));
    Tarquil* const engine = link.engine.load(std::memory_order_acquire);
    if (engine == nullptr) {
        std::fill_n(pcm, size_t(2) * frames, 0.0F);
        return;
    }
    follow_watch(*engine);
    engine->set_output_bound(output_bound());
    const uint32_t start = curr_time;
    if (plays_gm())
        run_gm(*engine, pcm, frames);
    else
        run_native(*engine, pcm, frames);
    audition.run(link.audition_engine.load(std::memory_order_acquire), pcm, frames, start);
    if (link.meters.watched.load(std::memory_order_relaxed))
        measure(*engine, pcm, frames);
    keep_clock_low(*engine);
    finish_run();
}

void PlayerAudio::finish_run() {
    if (plays_gm())
        gm->refresh_if_waiting(curr_time);
    else
        send_what_found_no_room();
    if (silence_waits)
        silence();
}

Tempo PlayerAudio::next_tempo(uint32_t frames) {
    const Tempo now = tempo_clock.advance(curr_time, frames);
    link.meters.tempo.store(tempo_clock.quarters_per_minute(), std::memory_order_relaxed);
    return follows_tempo ? now : Tempo{};
}

void PlayerAudio::pass_tempo(Tarquil& engine, uint32_t frames) {
    const Tempo now = next_tempo(frames);
    Tarquil* const drums = link.drum_engine.load(std::memory_order_acquire);
    Tarquil* const tried = link.audition_engine.load(std::memory_order_acquire);
    for (Tarquil* const one : {&engine, drums, tried}) {
        if (one != nullptr)
            one->set_tempo(now);
    }
}

void PlayerAudio::run_native(Tarquil& engine, float* pcm, uint32_t frames) {
    const std::span<const midi_event> due = events.take(curr_time, curr_time + frames);
    pass_tempo(engine, frames);
    for (const midi_event& event : due) {
        link.keys.follow(event);
        keys_down.follow_event(event);
    }
    engine.run(pcm, frames, due.data(), uint32_t(due.size()), curr_time);
    show_run(engine, frames);
    if (gm != nullptr && gm->has_rest())
        gm->run_rest(link.drum_engine.load(std::memory_order_acquire), pcm, frames, curr_time);
    curr_time += frames;
}

void PlayerAudio::keep_clock_low(Tarquil& engine) {
    const uint32_t frames = clock_excess();
    if (frames == 0)
        return;
    engine.move_clock_back(frames, curr_time);
    if (Tarquil* const drums = link.drum_engine.load(std::memory_order_acquire))
        drums->move_clock_back(frames, curr_time);
    if (Tarquil* const tried = link.audition_engine.load(std::memory_order_acquire))
        tried->move_clock_back(frames, curr_time);
    move_clock_back(frames);
}

void PlayerAudio::move_clock_back(uint32_t frames) {
    if (gm != nullptr)
        gm->move_clock_back(frames);
    events.move_clock_back(frames);
    tempo_clock.move_clock_back(frames);
    curr_time -= frames;
}

} // namespace tarquil

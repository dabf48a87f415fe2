// The audio side of a player: what it does in the General MIDI dialect.

#include <algorithm>
#include <bitset>

#include "midi/gm/gm_message.h"
#include "player/player_audio.h"

namespace tarquil {

namespace {

std::bitset<GM_PROGRAMS> bits_of(const PlayerLink::ProgramBits& words) {
    constexpr unsigned WORD = 64;
    return std::bitset<GM_PROGRAMS>(words[0].load(std::memory_order_relaxed)) |
           std::bitset<GM_PROGRAMS>(words[1].load(std::memory_order_relaxed)) << WORD;
}

} // namespace

void PlayerAudio::follow_dialect() {
    const MidiDialect wanted = link.dialect.load(std::memory_order_acquire);
    if (wanted != dialect) {
        dialect = wanted;
        // Messages on their way have been made for the other one.
        events.clear();
        keys_down.clear();
        if (plays_gm())
            begin_gm();
        else
            end_gm();
    } else if (plays_gm() && gm->has_room() && link.gm_set.take()) {
        gm->replace_set(curr_time, link.gm_set.current());
    }
    if (plays_gm())
        gm->set_lawful(bits_of(link.lawful), bits_of(link.lawful_guests));
}

void PlayerAudio::begin_gm() {
    gm = link.ensemble.load(std::memory_order_acquire);
    link.bank.take();
    link.gm_set.take();
    waiting_channels = 0;
    globals_wait = silence_waits = false;
    gm->copy_bank(link.bank.current());
    gm->begin(curr_time, link.gm_set.current(), playing);
}

void PlayerAudio::end_gm() {
    gm->end(curr_time);
    silence();
    refresh();
    for (SoundingKeys::Channel& channel : link.keys.channels) {
        channel.modulation.store(0, std::memory_order_relaxed);
        channel.is_sustained.store(false, std::memory_order_relaxed);
    }
}

// False for what is done as in the native dialect.
bool PlayerAudio::follow_in_gm(const PlayerEdit& edit, uint32_t time) {
    switch (edit.kind) {
    case PlayerEdit::Kind::BYTE:
        gm->set_byte(time, edit.program, edit.number, edit.value);
        return true;
    case PlayerEdit::Kind::BEND:
        gm->set_byte(time, edit.program, CTRL_PITCH_BEND_MSB, edit.value);
        gm->set_byte(time, edit.program, CTRL_PITCH_BEND_LSB, edit.fine);
        return true;
    case PlayerEdit::Kind::CHANNEL_PROGRAM:
        if (edit.time == PLAY_NOW ||
            !add_gm_message({.time = time,
                             .status = midi_status(MIDI_PROGRAM_CHANGE, edit.number),
                             .data1 = edit.program}))
            gm->choose_program(edit.number, edit.program);
        return true;
    default:
        return false;
    }
}

bool PlayerAudio::add_gm_message(const midi_event& record) {
    return events.push({&record, 1});
}

bool PlayerAudio::add_exclusive(std::span<const uint8_t> message, uint32_t time) {
    return !plays_gm() || add_gm_message(gm_message(time, message));
}

void PlayerAudio::set_gm_controller(unsigned program, unsigned number, int value, uint32_t time) {
    if (!add_gm_message({.time = time,
                         .status = uint8_t(program),
                         .data1 = uint8_t(number),
                         .data2 = uint8_t(value)}))
        gm->set_byte(curr_time, program, number, uint8_t(value));
}

void PlayerAudio::play_due_in_gm(uint32_t frames) {
    const std::span<const midi_event> due = events.take(curr_time, curr_time + frames);
    for (size_t i = 0; i < due.size(); i++) {
        if (!gm->play(due[i])) {
            events.push(due.subspan(i)); // for the next run
            break;
        }
        note_played(due[i]);
        keys_down.follow_message(due[i]);
    }
}

void PlayerAudio::run_gm(Tarquil& engine, float* pcm, uint32_t frames) {
    const GmEnsemble::Engines engines = {&engine, link.drum_engine.load(std::memory_order_acquire)};
    for (uint32_t done = 0; done < frames;) {
        const uint32_t piece = std::min(frames - done, GmEnsemble::LONGEST_RUN);
        play_due_in_gm(piece);
        pass_tempo(engine, piece);
        gm->run(engines, pcm + size_t(2) * done, piece, curr_time);
        show_run(engine, piece);
        curr_time += piece;
        done += piece;
    }
    publish_gm_programs();
    if (link.meters.watched.load(std::memory_order_relaxed))
        publish_gm_keys();
}

void PlayerAudio::publish_gm_keys() {
    const ChannelKeys held = gm->held_keys();
    for (unsigned index = 0; index < held.size(); index++) {
        const GmChannel& from = gm->channel(index);
        SoundingKeys::Channel& shown = link.keys.channels[index];
        shown.set_held(held[index]);
        shown.bend.store(from.bend, std::memory_order_relaxed);
        shown.modulation.store(uint8_t(from.value(MIDI_MODULATION)), std::memory_order_relaxed);
        shown.is_sustained.store(from.is_down(MIDI_SUSTAIN), std::memory_order_relaxed);
    }
}

void PlayerAudio::publish_gm_programs() {
    for (unsigned channel = 0; channel < playing.size(); channel++) {
        const auto program = uint8_t(gm->program(channel));
        if (program == playing[channel])
            continue;
        playing[channel] = program;
        link.channel_programs[channel].store(program, std::memory_order_relaxed);
        link.note_change();
    }
}

} // namespace tarquil

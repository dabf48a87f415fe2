// A player as plug-in formats and the stand-alone program use it.

#include "player/hosted_player.h"

#include <algorithm>
#include <array>

#include "instrument/state_text.h"
#include "midi/midi_message.h"
#include "player/checked_replace.h"

namespace tarquil {

int HostedPlayer::load_state(std::string_view state) {
    const int error = sound.load_state(state);
    const bool is_program =
        error != 0 && !is_image_state(state) && replace_program(sound, state) == 0;
    return is_program ? 0 : error;
}

int HostedPlayer::load_file(const std::string& path) {
    const int error = replace_bank_by_file(sound, path);
    return error != 0 && replace_program_by_file(sound, path) == 0 ? 0 : error;
}

bool HostedPlayer::activate(double rate) {
    if (!stream.activate(rate))
        return false;
    host_rate = rate;
    sound.start();
    return true;
}

void HostedPlayer::reset() {
    sound.audio().reset();
    stream.reset();
}

void HostedPlayer::begin_block(float* left, float* right, uint32_t frames) {
    block_left = left;
    block_right = right;
    block_frames = frames;
    rendered = 0;
    last_frame = 0;
    sound.audio().follow_edits();
}

uint32_t HostedPlayer::event_time(uint32_t frame) {
    last_frame = std::clamp(frame, last_frame, std::max(block_frames, 1U) - 1);
    return stream.event_time(last_frame - rendered);
}

bool HostedPlayer::add_message(std::span<const uint8_t> message, uint32_t frame) {
    if (message.empty() || message[0] > MIDI_SYSTEM)
        return true;
    if (message[0] == MIDI_SYSTEM)
        return sound.audio().add_exclusive(message, event_time(frame));
    std::array<uint8_t, 3> channel_message{};
    std::copy_n(message.begin(), std::min(message.size(), channel_message.size()),
                channel_message.begin());
    const uint32_t time = event_time(frame);
    // One message may become one for each of 128 keys, or a whole program.
    make_room(NUM_CONTROLLERS);
    return sound.audio().add_message(channel_message.data(), time);
}

void HostedPlayer::move_learned(unsigned midi_controller, unsigned data, uint32_t frame) {
    const uint32_t time = event_time(frame);
    make_room(NUM_CONTROLLERS);
    sound.audio().move_learned(midi_controller, data, time);
}

void HostedPlayer::set_tempo(const HostTempo& said, uint32_t frame) {
    const uint32_t time = event_time(frame);
    if (!sound.audio().has_room_for_tempo())
        render_until(last_frame);
    sound.audio().add_tempo(said, time);
}

void HostedPlayer::release_all(uint32_t frame) {
    const uint32_t time = event_time(frame);
    make_room(NUM_CHANNELS * NUM_KEYS);
    sound.audio().release_all(time);
}

void HostedPlayer::make_room(uint32_t events) {
    if (sound.audio().room_for_events() < events)
        render_until(last_frame);
}

void HostedPlayer::hold_controller(unsigned number) {
    constexpr double SECONDS = 0.5;
    held_until[number] = played.load() + uint64_t(SECONDS * host_rate);
}

void HostedPlayer::set_controller(unsigned number, int value, uint32_t frame) {
    if (is_held(number))
        return;
    const uint32_t time = event_time(frame);
    make_room(NUM_CONTROLLERS);
    sound.audio().set_controller(number, value, time);
}

void HostedPlayer::set_program(unsigned channel, unsigned program, uint32_t frame) {
    const uint8_t message[] = {midi_status(MIDI_PROGRAM_CHANGE, channel), uint8_t(program), 0};
    add_message(message, frame);
    sound.set_edited_program(program);
}

void HostedPlayer::end_block() {
    render_until(block_frames);
    played.fetch_add(block_frames, std::memory_order_relaxed);
}

void HostedPlayer::render_until(uint32_t frame) {
    if (frame <= rendered)
        return;
    stream.render(block_left + rendered, block_right + rendered, frame - rendered);
    rendered = frame;
}

} // namespace tarquil

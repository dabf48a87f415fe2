// An engine that plays a song, block by block.

#include "tools/render/engine_driver.h"

#include <algorithm>

#include "tools/failure.h"
#include "util/midifilter.h"

namespace {

constexpr unsigned KIND = 0xF0;
constexpr unsigned CHANNEL = 0x0F;
constexpr unsigned NOTE_OFF = 0x80;
constexpr unsigned NOTE_ON = 0x90;
constexpr unsigned CONTROL_CHANGE = 0xB0;
constexpr unsigned PROGRAM_CHANGE = 0xC0;
constexpr uint8_t ALL_NOTES_OFF = 123;

// What a full event queue of the plug-in holds; a block of a real song needs a few hundred.
constexpr size_t USUAL_EVENTS = 16384;

// A file made to fill the memory with program changes at one time stops here.
constexpr size_t MAX_EVENTS = 16 * USUAL_EVENTS;

} // namespace

ChannelSet find_used_channels(const Song& song, const ChannelSet& channels) {
    ChannelSet used;
    for (const SongMessage& message : song.messages)
        if ((message.bytes[0] & KIND) == NOTE_ON && message.bytes[2] != 0)
            used.set(message.bytes[0] & CHANNEL);
    return used & channels;
}

EngineDriver::EngineDriver(const Song& played_song, const Orchestra& players, uint32_t seed)
    : song(played_song), orchestra(players), synth(new Tarquil(nullptr)) {
    synth->seed_phases(seed);
    events.reserve(USUAL_EVENTS); // also gives the engine a pointer when there are no events
    queue_first_instruments();
}

void EngineDriver::keep_channels() {
    taps.resize(NUM_CHANNELS);
    synth->set_channel_taps(taps.data());
}

void EngineDriver::render(float* pcm, uint32_t num_samples) {
    const uint32_t block_end = curr_time + num_samples;
    for (; next_message < song.messages.size(); next_message++) {
        const SongMessage& message = song.messages[next_message];
        if (message.time >= block_end)
            break;
        queue_message(message);
    }
    if (!keys_released && song.end_time < block_end)
        queue_releases();
    synth->run(pcm, num_samples, events.data(), uint32_t(events.size()), curr_time);
    events.clear();
    curr_time = block_end;
}

void EngineDriver::queue_first_instruments() {
    for (unsigned channel = 0; channel < unsigned(NUM_CHANNELS); channel++) {
        const std::optional<Instrument>& fixed = orchestra.fixed_instruments[channel];
        queue_instrument(fixed ? *fixed : orchestra.bank.get_instrument(channel), channel, 0);
    }
    const size_t count = events.size();
    events.resize(count + NUM_CONTROLLERS);
    events.resize(count +
                  orchestra.bank.emit_global_controllers(&events[count], 0, NUM_CONTROLLERS));
}

void EngineDriver::queue_message(const SongMessage& message) {
    const unsigned kind = message.bytes[0] & KIND;
    const unsigned channel = message.bytes[0] & CHANNEL;
    const bool is_note = kind == NOTE_ON || kind == NOTE_OFF;
    if (is_note && !orchestra.channels[channel])
        return;
    if (kind == PROGRAM_CHANGE && orchestra.fixed_instruments[channel])
        return;
    queue_filtered(message.time, message.bytes);
    if (events.size() > MAX_EVENTS)
        throw BadInput("sample " + std::to_string(message.time) + ": more than " +
                       std::to_string(MAX_EVENTS) + " events at once");
}

void EngineDriver::queue_filtered(uint32_t time, const uint8_t* bytes) {
    if (!is_playable_message(bytes))
        return;
    const midi_event* filtered = nullptr;
    const unsigned count = filter_event(time, bytes, &filtered);
    for (unsigned i = 0; i < count; i++) {
        const midi_event& event = filtered[i];
        if ((event.status & KIND) == PROGRAM_CHANGE)
            queue_instrument(orchestra.bank.get_instrument(event.data1), event.status & CHANNEL,
                             time);
        else
            events.push_back(event);
    }
}

void EngineDriver::queue_instrument(const Instrument& instrument, unsigned channel, uint32_t time) {
    const size_t count = events.size();
    events.resize(count + NUM_CONTROLLERS);
    events.resize(count +
                  instrument.emit_program_change(&events[count], channel, time, NUM_CONTROLLERS));
}

void EngineDriver::queue_releases() {
    keys_released = true;
    for (unsigned channel = 0; channel < unsigned(NUM_CHANNELS); channel++) {
        const uint8_t message[] = {uint8_t(CONTROL_CHANGE | channel), ALL_NOTES_OFF, 0};
        queue_filtered(song.end_time, message);
    }
}

// An engine that plays a song.

#include "tools/render/engine_driver.h"

#include "midi/midifilter.h"
#include "player/shared_waveforms.h"

namespace tarquil {

ChannelSet find_used_channels(const Song& song, const ChannelSet& channels) {
    ChannelSet used;
    for (const SongMessage& message : song.messages)
        if (midi_kind(message.bytes[0]) == MIDI_NOTE_ON && message.bytes[2] != 0)
            used.set(midi_channel(message.bytes[0]));
    return used & channels;
}

EngineDriver::EngineDriver(const Song& played_song, const Orchestra& players, uint32_t seed)
    : SongDriver(played_song, players.channels), orchestra(players),
      synth(new Tarquil(players.bank, shared_waveforms())) {
    synth->seed_phases(seed);
    events.reserve(USUAL_EVENTS); // also gives the engine a pointer when there are no events
    queue_first_instruments();
}

void EngineDriver::keep_channels() {
    taps.resize(NUM_CHANNELS);
    synth->set_channel_taps(taps.data());
}

void EngineDriver::run(float* pcm, uint32_t num_samples, uint32_t block_start) {
    synth->run(pcm, num_samples, events.data(), uint32_t(events.size()), block_start);
    events.clear();
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

size_t EngineDriver::queue_message(uint32_t time, uint32_t /*block_start*/, const uint8_t* bytes) {
    const bool is_program = midi_kind(bytes[0]) == MIDI_PROGRAM_CHANGE;
    if (!is_playable_message(bytes) ||
        (is_program && orchestra.fixed_instruments[midi_channel(bytes[0])]))
        return events.size();
    midi_event filtered[MAX_OUT_EVENTS];
    const unsigned count = filter_event(time, bytes, filtered);
    for (unsigned i = 0; i < count; i++) {
        const midi_event& event = filtered[i];
        if (midi_kind(event.status) == MIDI_PROGRAM_CHANGE)
            queue_instrument(orchestra.bank.get_instrument(event.data1), midi_channel(event.status),
                             time);
        else
            events.push_back(event);
    }
    return events.size();
}

void EngineDriver::queue_instrument(const Instrument& instrument, unsigned channel, uint32_t time) {
    const size_t count = events.size();
    events.resize(count + NUM_CONTROLLERS);
    events.resize(count +
                  instrument.emit_program_change(&events[count], channel, time, NUM_CONTROLLERS));
}

} // namespace tarquil

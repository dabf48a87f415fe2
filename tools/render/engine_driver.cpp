// A player that plays a song.

#include "tools/render/engine_driver.h"

#include <algorithm>
#include <exception>
#include <iterator>

#include "common/failure.h"
#include "midi/midi_message.h"

namespace tarquil {

ChannelSet find_used_channels(const Song& song, const ChannelSet& channels) {
    ChannelSet used;
    for (const SongMessage& message : song.messages)
        if (midi_kind(message.bytes[0]) == MIDI_NOTE_ON && message.bytes[2] != 0)
            used.set(midi_channel(message.bytes[0]));
    return used & channels;
}

namespace {

[[noreturn]] void fail_on_crowd(uint32_t time) {
    throw BadInput("sample " + std::to_string(time) + ": more than " +
                   std::to_string(EventQueue::CAPACITY) + " events at once");
}

} // namespace

EngineDriver::EngineDriver(const Song& played_song, const Orchestra& players,
                           const std::shared_ptr<const GmSet>& set, uint32_t seed, unsigned threads)
    : SongDriver(played_song, players.channels), orchestra(players), workers(threads),
      is_deferring(threads > 1 && set != nullptr) {
    if (threads > 1 && !is_deferring)
        player.set_runner(workers);
    player.set_gm_set(set);
    player.set_bank(orchestra.bank);
    player.set_dialect(set != nullptr ? MidiDialect::GENERAL_MIDI : MidiDialect::NATIVE);
    player.start(seed);
    player.audio().follow_edits();
    for (unsigned channel = 0; channel < unsigned(NUM_CHANNELS); channel++) {
        if (orchestra.fixed_instruments[channel])
            player.audio().play_sound(channel, orchestra.fixed_instruments[channel]->get_bytes(),
                                      0);
    }
}

void EngineDriver::keep_channels() {
    is_deferring = false;
    taps.resize(NUM_CHANNELS);
    player.set_channel_taps(taps.data());
}

void EngineDriver::render(float* pcm, const Beside& beside) {
    if (!is_deferring) {
        SongDriver::render(pcm, beside);
        return;
    }
    while (later[1].get_runs().empty())
        render_ahead([] {});
    render_ahead(beside);
    player.audio().mix(later[0], pcm);
}

void EngineDriver::render_ahead(const Beside& beside) {
    std::rotate(later, later + 1, std::end(later));
    later[2].clear();
    for (uint32_t done = 0; done < DEFERRED_FRAMES; done += QuantumStream::QUANTUM)
        play_next(QuantumStream::QUANTUM, nullptr);
    const uint32_t num_parts = player.audio().num_parts();
    std::exception_ptr failure; // of what is done beside
    const auto work = [&](uint32_t job) {
        if (job < num_parts) {
            player.audio().perform(later[2], job);
        } else if (job == num_parts) {
            player.audio().go_on(later[1]);
        } else if (job == num_parts + 1) {
            player.audio().finish(later[0]);
        } else {
            try {
                beside();
            } catch (...) {
                failure = std::current_exception();
            }
        }
    };
    workers.run(
        num_parts + 3,
        [](const void* context, uint32_t job) {
            (*static_cast<const decltype(work)*>(context))(job);
        },
        &work);
    if (failure)
        std::rethrow_exception(failure);
}

void EngineDriver::run(float* pcm, uint32_t frames, uint32_t /*block_start*/) {
    if (is_deferring)
        player.audio().defer(later[2], frames);
    else
        player.audio().run(pcm, frames);
}

void EngineDriver::queue_message(uint32_t time, uint32_t block_start, const uint8_t* bytes) {
    if (midi_kind(bytes[0]) == MIDI_PROGRAM_CHANGE &&
        orchestra.fixed_instruments[midi_channel(bytes[0])])
        return;
    if (!player.audio().add_message(bytes, player_time(time, block_start)))
        fail_on_crowd(time);
}

void EngineDriver::queue_exclusive(const SongExclusive& message, uint32_t block_start) {
    if (!player.audio().add_exclusive(message.bytes, player_time(message.time, block_start)))
        fail_on_crowd(message.time);
}

void EngineDriver::queue_tempo(const HostTempo& said, uint32_t time, uint32_t block_start) {
    player.audio().add_tempo(said, player_time(time, block_start));
}

void EngineDriver::queue_releases(uint32_t end_time, uint32_t block_start) {
    if (!player.audio().release_all(player_time(end_time, block_start)))
        fail_on_crowd(end_time);
}

} // namespace tarquil

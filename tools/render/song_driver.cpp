// Whatever plays a song, block by block.

#include "tools/render/song_driver.h"

#include "common/failure.h"
#include "midi/midi_message.h"
#include "player/song_tempo.h"

namespace tarquil {

void SongDriver::render(float* pcm, const Beside& beside) {
    beside();
    play_next(block(), pcm);
}

void SongDriver::play_next(uint32_t frames, float* pcm) {
    const uint32_t block_end = curr_time + frames;
    queue_tempos(block_end);
    queue_song(block_end);
    if (!keys_released && song.end_time < block_end) {
        keys_released = true;
        queue_releases(song.end_time, curr_time);
    }
    run(pcm, frames, curr_time);
    curr_time = block_end;
}

void SongDriver::queue_tempos(uint32_t block_end) {
    for (; next_tempo < song.tempos.size(); next_tempo++) {
        const SongTempo& tempo = song.tempos[next_tempo];
        if (tempo.time >= block_end)
            break;
        queue_tempo(host_tempo(tempo), tempo.time, curr_time);
    }
}

void SongDriver::queue_song(uint32_t block_end) {
    for (; next_message < song.messages.size(); next_message++) {
        const SongMessage& message = song.messages[next_message];
        if (message.time >= block_end)
            break;
        queue_exclusives(block_end);
        const unsigned kind = midi_kind(message.bytes[0]);
        const bool is_note = kind == MIDI_NOTE_ON || kind == MIDI_NOTE_OFF;
        if (is_note && !channels[midi_channel(message.bytes[0])])
            continue;
        queue_message(message.time, curr_time, message.bytes);
    }
    queue_exclusives(block_end);
}

void SongDriver::queue_exclusives(uint32_t block_end) {
    for (; next_exclusive < song.exclusives.size(); next_exclusive++) {
        const SongExclusive& exclusive = song.exclusives[next_exclusive];
        if (exclusive.position > next_message || exclusive.time >= block_end)
            break;
        queue_exclusive(exclusive, curr_time);
    }
}

void SongDriver::queue_releases(uint32_t end_time, uint32_t block_start) {
    for (unsigned channel = 0; channel < unsigned(NUM_CHANNELS); channel++) {
        const uint8_t message[] = {midi_status(MIDI_CONTROL_CHANGE, channel), MIDI_ALL_NOTES_OFF,
                                   0};
        queue_message(end_time, block_start, message);
    }
}

} // namespace tarquil

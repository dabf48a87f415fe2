// Messages from an ALSA sequencer port.

#include "standalone/alsa_midi.h"

#include <algorithm>

#include "standalone/device_player.h"

namespace tarquil {

namespace {

double seconds_of(const snd_seq_real_time_t& time) {
    constexpr double NANOSECOND = 1e-9;
    return time.tv_sec + NANOSECOND * time.tv_nsec;
}

} // namespace

AlsaMidi::AlsaMidi() {
    if (snd_seq_open(&sequencer, "default", SND_SEQ_OPEN_DUPLEX, SND_SEQ_NONBLOCK) < 0) {
        sequencer = nullptr;
        return;
    }
    snd_seq_set_client_name(sequencer, "Tarquil");
    snd_midi_event_new(size_t(MAX_MESSAGE), &decoder);
    snd_midi_event_no_status(decoder, 1);
    snd_seq_queue_status_malloc(&status);
    snd_seq_port_info_t* port = nullptr;
    snd_seq_port_info_malloc(&port);
    snd_seq_port_info_set_name(port, "midi");
    snd_seq_port_info_set_capability(port, SND_SEQ_PORT_CAP_WRITE | SND_SEQ_PORT_CAP_SUBS_WRITE);
    snd_seq_port_info_set_type(port, SND_SEQ_PORT_TYPE_MIDI_GENERIC | SND_SEQ_PORT_TYPE_SYNTH);
    if (open_queue()) {
        snd_seq_port_info_set_timestamping(port, 1);
        snd_seq_port_info_set_timestamp_real(port, 1);
        snd_seq_port_info_set_timestamp_queue(port, queue);
    }
    snd_seq_create_port(sequencer, port);
    snd_seq_port_info_free(port);
}

AlsaMidi::~AlsaMidi() {
    if (sequencer == nullptr)
        return;
    snd_seq_queue_status_free(status);
    snd_midi_event_free(decoder);
    snd_seq_close(sequencer);
}

// A queue that runs is a clock that stamps what comes in.
bool AlsaMidi::open_queue() {
    queue = snd_seq_alloc_queue(sequencer);
    if (queue < 0)
        return false;
    snd_seq_start_queue(sequencer, queue, nullptr);
    snd_seq_drain_output(sequencer);
    return true;
}

double AlsaMidi::now() const {
    if (queue < 0 || snd_seq_get_queue_status(sequencer, queue, status) < 0)
        return 0;
    return seconds_of(*snd_seq_queue_status_get_real_time(status));
}

void AlsaMidi::play_block(DevicePlayer& player, uint32_t block_frames) {
    if (sequencer == nullptr)
        return;
    clock.begin_block(now());
    while (next_event != nullptr || snd_seq_event_input(sequencer, &next_event) >= 0) {
        const int64_t frame = queue < 0 ? 0 : clock.frame_of(seconds_of(next_event->time.time));
        if (frame >= int64_t(block_frames))
            return;
        uint8_t bytes[MAX_MESSAGE];
        const long size = snd_midi_event_decode(decoder, bytes, MAX_MESSAGE, next_event);
        next_event = nullptr;
        constexpr uint8_t EXCLUSIVE_END = 0xF7;
        const bool is_piece = size > 3 && (bytes[0] != 0xF0 || bytes[size - 1] != EXCLUSIVE_END);
        if (size > 0 && !is_piece)
            player.play({bytes, size_t(size)}, uint32_t(std::max<int64_t>(frame, 0)));
    }
    next_event = nullptr;
}

} // namespace tarquil

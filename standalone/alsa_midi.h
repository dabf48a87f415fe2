// Messages from an ALSA sequencer port, with the times at which they came.

#pragma once

#include <alsa/asoundlib.h>

#include <cstdint>

#include "standalone/block_clock.h"

namespace tarquil {

class DevicePlayer;

class AlsaMidi {
  public:
    // Without a sequencer there are no messages.
    AlsaMidi();
    AlsaMidi(const AlsaMidi&) = delete;
    AlsaMidi& operator=(const AlsaMidi&) = delete;
    ~AlsaMidi();

    // Before the device's first block, and after a gap.
    void start(double rate, uint32_t block_frames) { clock.start(rate, block_frames); }

    // Plays all that belongs to the block that begins now, or earlier.
    void play_block(DevicePlayer& player, uint32_t block_frames);

  private:
    // A sequencer cuts longer messages into pieces, none of which is a message.
    static constexpr long MAX_MESSAGE = 256;

    bool open_queue();
    [[nodiscard]] double now() const;

    snd_seq_t* sequencer = nullptr;
    snd_midi_event_t* decoder = nullptr;
    snd_seq_queue_status_t* status = nullptr;
    int queue = -1;
    snd_seq_event_t* next_event = nullptr; // that belongs to a later block
    BlockClock clock;
};

} // namespace tarquil

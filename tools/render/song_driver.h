// Whatever plays a song, block by block.
//
// It is given raw messages at their times; the notes of channels that are left out are kept from
// it.  At the song's end every key is released.

#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>

#include "midi/smf/smf_reader.h"
#include "player/host_tempo.h"
#include "tools/render/render_options.h"

namespace tarquil {

class SongDriver {
  public:
    // The song stays where it is as long as the driver.
    SongDriver(const Song& played_song, const ChannelSet& sounding_channels)
        : song(played_song), channels(sounding_channels) {}
    SongDriver(const SongDriver&) = delete;
    SongDriver& operator=(const SongDriver&) = delete;
    virtual ~SongDriver() = default;

    // The frames of each block, at most MAX_NUM_SAMPLES.
    [[nodiscard]] virtual uint32_t block() const = 0;

    // Renders the next block, interleaved, and calls `beside` once, before or meanwhile.
    using Beside = std::function<void()>;
    virtual void render(float* pcm, const Beside& beside);

  protected:
    // Queues what sounds in the next `frames`, and runs them.
    void play_next(uint32_t frames, float* pcm);

    // Takes a message of three bytes that sounds at `time`, in the block that begins at
    // `block_start`.  BadInput when there are more at once than the instrument takes.
    virtual void queue_message(uint32_t time, uint32_t block_start, const uint8_t* bytes) = 0;

    // Takes a system exclusive message, as queue_message does.
    virtual void queue_exclusive(const SongExclusive& /*message*/, uint32_t /*block_start*/) {}

    // Takes the song's tempo and place at `time`, before the messages of the block.
    virtual void queue_tempo(const HostTempo& /*said*/, uint32_t /*time*/,
                             uint32_t /*block_start*/) {}

    // Lets every key go at the song's end.
    virtual void queue_releases(uint32_t end_time, uint32_t block_start);

    // Plays what was queued.
    virtual void run(float* pcm, uint32_t frames, uint32_t block_start) = 0;

  private:
    void queue_tempos(uint32_t block_end);
    void queue_song(uint32_t block_end);
    void queue_exclusives(uint32_t block_end);

    const Song& song;
    const ChannelSet channels;
    size_t next_message = 0;
    size_t next_exclusive = 0;
    size_t next_tempo = 0;
    uint32_t curr_time = 0;
    bool keys_released = false;
};

} // namespace tarquil

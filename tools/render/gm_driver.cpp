// A General MIDI ensemble that plays a song.

#include "tools/render/gm_driver.h"

#include "common/failure.h"
#include "midi/midi_message.h"

namespace tarquil {

namespace {

[[noreturn]] void fail_on_crowd(uint32_t time) {
    throw BadInput("sample " + std::to_string(time) + ": too many messages at once");
}

} // namespace

GmDriver::GmDriver(const Song& played_song, const ChannelSet& sounding_channels,
                   const TarqSettings& melodic, const GmSet& set, uint32_t seed)
    : SongDriver(played_song, sounding_channels),
      ensemble(std::make_unique<GmEnsemble>(melodic, set.has_drums ? &set.drums : nullptr,
                                            set.has_map ? &set.map : nullptr, seed)) {}

void GmDriver::render(float* pcm) {
    if (!has_begun)
        SongDriver::render(pcm); // what the limiter holds back
    has_begun = true;
    SongDriver::render(pcm);
}

void GmDriver::queue_message(uint32_t time, uint32_t /*block_start*/, const uint8_t* bytes) {
    if (!ensemble->add_message(time, {bytes, size_t(1) + num_midi_data_bytes(bytes[0])}))
        fail_on_crowd(time);
}

void GmDriver::queue_exclusive(const SongExclusive& message) {
    if (!ensemble->add_message(message.time, message.bytes))
        fail_on_crowd(message.time);
}

void GmDriver::queue_releases(uint32_t end_time, uint32_t /*block_start*/) {
    ensemble->release_all(end_time);
}

void GmDriver::run(float* pcm, uint32_t /*block_start*/) {
    ensemble->render(pcm);
}

} // namespace tarquil

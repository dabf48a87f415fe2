// A plug-in that plays a song: a host without a clock.

#include "tools/render/plugin_driver.h"

#include <cstring>
#include <string>

#include "common/failure.h"
#include "tools/plugin/plugin_host.h"

namespace tarquil {

PluginDriver::PluginDriver(const Song& played_song, const RenderOptions& options,
                           const TarqSettings* bank)
    : SongDriver(played_song, options.channels), block_size(options.block),
      plugin(options.plugin_path, options.block) {
    if (bank != nullptr) {
        if (!plugin.is_tarquil())
            throw BadInput("--bank " + options.bank_path + ": only Tarquil takes banks, not " +
                           plugin.get_name());
        std::string chunk;
        if (bank->text_save_to_string(chunk) != 0 || !plugin.set_state(chunk))
            throw Failure(STATUS_CANNOT, options.plugin_path + ": refuses the bank");
    }
    plugin.start();
}

void PluginDriver::queue_message(uint32_t time, uint32_t block_start, const uint8_t* bytes) {
    VstMidiEvent message;
    message.deltaFrames = int32_t(time - block_start);
    std::memcpy(message.midiData, bytes, 3);
    if (messages.size() == MAX_EVENTS)
        throw BadInput("sample " + std::to_string(time) + ": more than " +
                       std::to_string(MAX_EVENTS) + " events at once");
    messages.push_back(message);
}

void PluginDriver::queue_tempo(const HostTempo& said, uint32_t time, uint32_t /*block_start*/) {
    tempo_clock.add(said, time);
}

void PluginDriver::run(float* pcm, uint32_t frames, uint32_t block_start) {
    const Tempo tempo = tempo_clock.advance(block_start, frames);
    PluginHost::set_tempo(tempo_clock.quarters_per_minute(), tempo);
    if (!messages.empty())
        plugin.send(messages);
    plugin.render(pcm, frames, block_start);
    messages.clear();
}

} // namespace tarquil

// A plug-in of any format as what plays a block of messages.

#pragma once

#include <functional>
#include <memory>

#include "tests/formats/common/format_song.h"

namespace tarquil {

class FormatPlayer {
  public:
    FormatPlayer() = default;
    FormatPlayer(const FormatPlayer&) = delete;
    FormatPlayer& operator=(const FormatPlayer&) = delete;
    virtual ~FormatPlayer() = default;

    virtual void play(const std::vector<SongMessage>& messages, float* left, float* right,
                      uint32_t frames) = 0;
    // Once something has been played.
    [[nodiscard]] virtual uint32_t latency_frames() = 0;
};

// A new instance of the built module at a rate in Hz, in General MIDI; in VST 2, which starts in
// the native dialect, with the state of another format's instance.
std::unique_ptr<FormatPlayer> play_vst2(double rate);
std::unique_ptr<FormatPlayer> play_clap(double rate);
std::unique_ptr<FormatPlayer> play_vst3(double rate);
std::unique_ptr<FormatPlayer> play_lv2(double rate);

} // namespace tarquil

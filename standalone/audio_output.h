// Where the stand-alone editor's sound goes and its notes come from.

#pragma once

#include <cstdint>
#include <memory>
#include <string>

namespace tarquil {

class Player;

// Renders the player on a thread of its own from its making to its end.
class AudioOutput {
  public:
    AudioOutput() = default;
    AudioOutput(const AudioOutput&) = delete;
    AudioOutput& operator=(const AudioOutput&) = delete;
    virtual ~AudioOutput() = default;

    // For people: "JACK, 256 frames".
    [[nodiscard]] virtual std::string name() const = 0;
};

// Null, and a reason, when there is no such output at 44100 Hz.  The player outlives it.
std::unique_ptr<AudioOutput> make_jack_output(Player& played, std::string& reason);
std::unique_ptr<AudioOutput> make_alsa_output(Player& played, std::string& reason);

// Plays to nobody, in real time.
std::unique_ptr<AudioOutput> make_silent_output(Player& played);

} // namespace tarquil

// A synthesizer that writes down what is played by hand.

#pragma once

#include <string>
#include <utility>

#include "editor/model/bank_synth.h"

namespace tarquil {

class RecordingSynth : public BankSynth {
  public:
    // "1:60+100" strikes key 60 of channel 1 with velocity 100, "1:60-" lets it go.
    void play_key(unsigned channel, unsigned key, unsigned velocity) override {
        BankSynth::play_key(channel, key, velocity);
        write(channel, std::to_string(key) + (velocity > 0 ? "+" + std::to_string(velocity) : "-"));
    }
    void bend(unsigned channel, unsigned value) override {
        BankSynth::bend(channel, value);
        write(channel, "bend " + std::to_string(value));
    }
    void set_sustain(unsigned channel, bool is_down) override {
        BankSynth::set_sustain(channel, is_down);
        write(channel, is_down ? "down" : "up");
    }

    // What was played since the last call.
    std::string take() { return std::exchange(played, ""); }

  private:
    void write(unsigned channel, const std::string& text) {
        played += (played.empty() ? "" : " ") + std::to_string(channel + 1) + ":" + text;
    }

    std::string played;
};

} // namespace tarquil

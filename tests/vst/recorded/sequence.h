// One random use of a plug-in by a host, from a seed, and a hash of everything that came back.

#pragma once

#include <cstdint>
#include <random>
#include <string>

#include "tests/support/byte_hash.h"
#include "tests/vst/plugin_host.h"

namespace tarquil {

class RecordedSequence {
  public:
    explicit RecordedSequence(uint32_t new_seed);

    // Plays it in a fresh instance.
    uint64_t play();

  private:
    // 0..limit - 1, the same with every library.
    uint32_t any(uint32_t limit) { return uint32_t(random() % limit); }
    bool one_in(uint32_t count) { return any(count) == 0; }
    // Often at the ends and in the middle of the range.
    uint32_t any_byte();
    int32_t any_delay(int32_t frames);

    void set_parameter();
    void set_up_programs();
    void send_message(int32_t frames);
    void act();
    void save_or_load_preset();
    void save_and_load_bank();
    void render(int32_t frames);

    std::mt19937 random;
    int32_t max_frames;
    PluginHost host;
    std::string preset; // saved before
    ByteHash hash;
};

} // namespace tarquil

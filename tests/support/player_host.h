// Drives a player from tests: messages now, then sound.

#pragma once

#include <gtest/gtest.h>

#include <vector>

#include "player/player.h"
#include "tests/support/engine_host.h"

namespace tarquil {

class PlayerHost {
  public:
    explicit PlayerHost(bool is_started = true) {
        if (is_started)
            player.start();
    }
    PlayerHost(const PlayerHost&) = delete;
    PlayerHost& operator=(const PlayerHost&) = delete;

    void midi(unsigned status, unsigned data1, unsigned data2 = 0) {
        player.audio().follow_edits();
        const uint8_t message[] = {uint8_t(status), uint8_t(data1), uint8_t(data2)};
        ASSERT_TRUE(player.audio().add_message(message, player.audio().time()));
    }
    // Interleaved.
    std::vector<float> render(uint32_t frames, uint32_t block = 64) {
        std::vector<float> sound(size_t(2) * frames);
        for (uint32_t done = 0; done < frames; done += block)
            player.audio().run(&sound[size_t(2) * done], block);
        return sound;
    }
    uint32_t num_queued() {
        player.audio().follow_edits();
        return player.audio().num_queued_events();
    }

    Player& operator*() { return player; }
    Player* operator->() { return &player; }

  private:
    Player player;
};

} // namespace tarquil

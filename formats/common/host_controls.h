// The parameters that plug-in formats show of a player: every controller but the pitch bend, the
// program of each MIDI channel, and the program that the others belong to.
//
// A parameter's value is a whole number, within a controller's choices its byte.  Ids are for ever:
// hosts keep them in their songs.

#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>

#include "player/hosted_player.h"

namespace tarquil {

struct HostControl {
    enum class Kind : uint8_t { CONTROLLER, CHANNEL_PROGRAM, EDITED_PROGRAM };

    uint32_t id = 0;
    Kind kind = Kind::CONTROLLER;
    unsigned number = 0; // of the controller, or the channel
    int first = 0;
    int last = 127;
    int default_value = 0;
    bool is_list = false; // it picks one of a list
    std::string name;
    std::string group; // "Program/Oscillator 1"
};

// A controller's id is its number, 0..205.
inline constexpr uint32_t CHANNEL_PROGRAM_ID = 0x1000; // and the channel, 0..15
inline constexpr uint32_t EDITED_PROGRAM_ID = 0x1010;

// In the order in which hosts list them.  The first call makes the table, so not on the audio
// thread.
std::span<const HostControl> host_controls();
// Null for a number that is no id.
const HostControl* find_host_control(uint32_t id);

// The value nearest to what a host says; nothing for what is no number.
std::optional<int> control_value(const HostControl& control, double said);

// For any thread but the audio thread.  What a controller shows depends on the player's others.
int get_control(Player& player, const HostControl& control);
void set_control(Player& player, const HostControl& control, int value);
std::string control_text(Player& player, const HostControl& control, int value);
std::optional<int> parse_control(Player& player, const HostControl& control, std::string_view text);

// The same on the audio thread, within a block and at one of its frames.
int get_control(HostedPlayer& hosted, const HostControl& control);
void set_control(HostedPlayer& hosted, const HostControl& control, int value, uint32_t frame);

} // namespace tarquil

// The parameters that plug-in formats show of a player.

#include "formats/common/host_controls.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <vector>

#include "softsynth/parameters/control_text.h"
#include "softsynth/parameters/host_parameters.h"
#include "softsynth/parameters/midi_event.h"
#include "softsynth/parameters/parameter_group.h"
#include "sounds/shipped_sounds.h"

namespace tarquil {

namespace {

constexpr int LAST_PROGRAM = int(MAX_INSTRUMENTS) - 1;

// What a controller is in a new instance: the first program's byte, or the bank's.
int first_byte(unsigned number) {
    const TarqSettings& bank = shipped_gm_bank();
    return is_global_controller(number) ? bank.get_global_controller(number)
                                        : bank.get_instrument(0).get_controller(number);
}

HostControl of_controller(const ControllerInfo& row) {
    const auto number = unsigned(row.number);
    return {.id = number,
            .kind = HostControl::Kind::CONTROLLER,
            .number = number,
            .first = row.choices.first,
            .last = row.choices.last,
            .default_value = first_byte(number),
            .is_list = !row.choices.labels.empty(),
            .name = row.name,
            .group = std::string(parameter_group(number))};
}

HostControl of_channel(unsigned channel) {
    return {.id = CHANNEL_PROGRAM_ID + channel,
            .kind = HostControl::Kind::CHANNEL_PROGRAM,
            .number = channel,
            .last = LAST_PROGRAM,
            .default_value = usual_channel_programs(MidiDialect::GENERAL_MIDI)[channel],
            .is_list = true,
            .name = "Channel " + std::to_string(channel + 1) + " program",
            .group = "Channels"};
}

std::vector<HostControl> make_table() {
    std::vector<HostControl> table;
    for (const ControllerInfo& row : controller_rows()) {
        if (is_automatable_controller(unsigned(row.number)))
            table.push_back(of_controller(row));
    }
    for (unsigned channel = 0; channel < unsigned(NUM_CHANNELS); channel++)
        table.push_back(of_channel(channel));
    table.push_back({.id = EDITED_PROGRAM_ID,
                     .kind = HostControl::Kind::EDITED_PROGRAM,
                     .last = LAST_PROGRAM,
                     .is_list = true,
                     .name = "Edited program",
                     .group = "Channels"});
    return table;
}

std::string program_text(Player& player, int program) {
    return std::to_string(program) + ": " + player.program_name(unsigned(program));
}

// "5", "5: Wide pad", or a name.
std::optional<int> parse_program(Player& player, std::string_view text) {
    int program = 0;
    const char* const end = text.data() + text.size();
    const auto [rest, error] = std::from_chars(text.data(), end, program);
    if (error == std::errc() && (rest == end || *rest == ':') && program >= 0 &&
        program <= LAST_PROGRAM)
        return program;
    for (program = 0; program <= LAST_PROGRAM; program++) {
        if (player.program_name(unsigned(program)) == text)
            return program;
    }
    return std::nullopt;
}

} // namespace

std::span<const HostControl> host_controls() {
    static const std::vector<HostControl> table = make_table();
    return table;
}

const HostControl* find_host_control(uint32_t id) {
    const std::span<const HostControl> table = host_controls();
    size_t index = table.size();
    if (id >= CHANNEL_PROGRAM_ID && id <= EDITED_PROGRAM_ID) {
        index = table.size() - 1 - (EDITED_PROGRAM_ID - id);
    } else if (const auto row = find_host_parameter(id)) {
        // Rows before it that are left out move it forward.
        index = std::min(size_t(*row), table.size() - 1);
        while (table[index].id != id && index > 0)
            index--;
    }
    return index < table.size() && table[index].id == id ? &table[index] : nullptr;
}

std::optional<int> control_value(const HostControl& control, double said) {
    if (std::isnan(said))
        return std::nullopt;
    return int(std::lround(std::clamp(said, double(control.first), double(control.last))));
}

int get_control(Player& player, const HostControl& control) {
    switch (control.kind) {
    case HostControl::Kind::CHANNEL_PROGRAM:
        return int(player.channel_program(control.number));
    case HostControl::Kind::EDITED_PROGRAM:
        return int(player.edited_program());
    default:
        return player.get_controller(control.number);
    }
}

void set_control(Player& player, const HostControl& control, int value) {
    switch (control.kind) {
    case HostControl::Kind::CHANNEL_PROGRAM:
        player.set_channel_program(control.number, unsigned(value));
        break;
    case HostControl::Kind::EDITED_PROGRAM:
        player.set_edited_program(unsigned(value));
        break;
    default:
        player.set_controller(control.number, value);
    }
}

std::string control_text(Player& player, const HostControl& control, int value) {
    if (control.kind != HostControl::Kind::CONTROLLER)
        return program_text(player, value);
    return control_text(control.number, value, player.edited_bytes(), player.tempo_sync());
}

std::optional<int> parse_control(Player& player, const HostControl& control,
                                 std::string_view text) {
    if (control.kind != HostControl::Kind::CONTROLLER)
        return parse_program(player, text);
    return parse_control(control.number, text, player.edited_bytes(), player.tempo_sync());
}

int get_control(HostedPlayer& hosted, const HostControl& control) {
    // Only the controllers' bytes stand behind a lock.
    return control.kind == HostControl::Kind::CONTROLLER ? hosted.get_controller(control.number)
                                                         : get_control(hosted.player(), control);
}

void set_control(HostedPlayer& hosted, const HostControl& control, int value, uint32_t frame) {
    switch (control.kind) {
    case HostControl::Kind::CHANNEL_PROGRAM: {
        const uint8_t message[] = {midi_status(MIDI_PROGRAM_CHANGE, control.number), uint8_t(value),
                                   0};
        hosted.add_message(message, frame);
        break;
    }
    case HostControl::Kind::EDITED_PROGRAM:
        hosted.player().set_edited_program(unsigned(value));
        break;
    default:
        hosted.set_controller(control.number, value, frame);
    }
}

} // namespace tarquil

// The plug-in's parameters as a document.

#include "tools/parameters/parameter_list.h"

#include <string_view>

#include "softsynth/parameters/controller_display.h"
#include "vst/plugin_parameters.h"

namespace tarquil {

namespace {

constexpr const char* INTRODUCTION = R"(# Parameters of the plug-in

Made by `tarquil parameters > docs/parameters.md` from the table that the engine itself uses; a test compares the two.

A host sees values from 0 to 1 in 128 steps: value 0 is the left end of the range, value 1 the right end. Where a
parameter picks from a list, choice n (counted from 0) is the value n / 127.

*Program* parameters belong to the current one of the 128 programs and sound on every channel that plays it; *all*
parameters belong to the master section behind all channels.

| Index | Name | What it is | Of | Range | Unit | Default | Automatable |
|---|---|---|---|---|---|---|---|
)";

// A longer list is not repeated in every row.
constexpr int MAX_LISTED_IN_ROW = 3;

std::string_view shown_unit(const ControllerInfo& info) {
    return info.choices.labels.empty() ? unit_name(info.unit) : "";
}

int num_choices(const ControllerInfo& info) {
    return info.choices.last - info.choices.first + 1;
}

std::string listed(const ControllerInfo& info) {
    std::string text;
    for (int i = 0; i < num_choices(info); i++)
        text += (i > 0 ? ", " : "") + controller_display(info.number, info.choices.first + i);
    return text;
}

std::string range(const ControllerInfo& info) {
    if (!info.choices.labels.empty() && num_choices(info) <= MAX_LISTED_IN_ROW)
        return listed(info);
    return controller_display(info.number, info.choices.first) + " to " +
           controller_display(info.number, info.choices.last);
}

std::string row(int32_t index) {
    const std::string number = "| " + std::to_string(index) + " | ";
    const ControllerInfo* info = find_controller(host_parameter_controller(index));
    if (info == nullptr)
        return number + "(none) | Without a use | | 0 to 127 | | 0 | yes |\n";
    const bool is_channel = info->scope == ControllerScope::CHANNEL;
    return number + "`" + info->key + "` | " + info->name + " | " +
           (is_channel ? "program" : "all") + " | " + range(*info) + " | " +
           std::string(shown_unit(*info)) + " | " +
           controller_display(info->number, default_byte(*info)) + " | " +
           (is_automatable_vst_param(index) ? "yes" : "no") + " |\n";
}

// Each long list once, with the parameters that choose from it.
std::string lists() {
    std::string text = "\n## Choices\n";
    const auto rows = controller_rows();
    for (size_t i = 0; i < rows.size(); i++) {
        const auto same_list = [&](const ControllerInfo& other) {
            return other.choices.labels.data() == rows[i].choices.labels.data() &&
                   num_choices(other) == num_choices(rows[i]);
        };
        bool is_first = num_choices(rows[i]) > MAX_LISTED_IN_ROW && !rows[i].choices.labels.empty();
        for (size_t before = 0; before < i; before++)
            is_first = is_first && !same_list(rows[before]);
        if (!is_first)
            continue;
        text += "\n**`" + std::string(rows[i].key) + "`**";
        for (size_t after = i + 1; after < rows.size(); after++)
            if (same_list(rows[after]))
                text += ", `" + std::string(rows[after].key) + "`";
        text += ": " + listed(rows[i]) + ".\n";
    }
    return text;
}

} // namespace

std::string parameter_list() {
    std::string text = INTRODUCTION;
    for (int32_t index = 0; index < NUM_HOST_PARAMETERS; index++)
        text += row(index);
    return text + lists();
}

} // namespace tarquil

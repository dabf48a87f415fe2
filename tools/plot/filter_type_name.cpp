// Filter types as they are typed in a shell.

#include "tools/plot/filter_type_name.h"

#include <optional>

#include "common/characters.h"
#include "common/failure.h"
#include "softsynth/parameters/controller_table.h"

namespace tarquil {

namespace {

std::string letters_and_digits(std::string_view text) {
    std::string result;
    for (const char c : text) {
        const char lower = lower_case(c);
        if ((lower >= 'a' && lower <= 'z') || is_digit(c))
            result += lower;
    }
    return result;
}

void append_to_list(std::string& list, const char* item) {
    list.append(list.empty() ? "" : ", ").append(item);
}

} // namespace

FilterType find_filter_type(const std::string& name) {
    const std::string wanted = letters_and_digits(name);
    const auto labels = find_controller(CTRL_FILTER1_TYPE)->choices.labels;
    std::optional<size_t> found;
    bool several = false;
    std::string alike;
    std::string all;
    for (size_t i = 0; i < labels.size(); i++) {
        const std::string label = letters_and_digits(labels[i]);
        if (label == wanted)
            return FilterType(i);
        append_to_list(all, labels[i]);
        if (!wanted.empty() && label.starts_with(wanted)) {
            append_to_list(alike, labels[i]);
            if (found)
                several = true;
            found = i;
        }
    }
    if (!found)
        throw BadInput("--type " + name + ": not one of: " + all);
    if (several)
        throw BadInput("--type " + name + ": more than one: " + alike);
    return FilterType(*found);
}

} // namespace tarquil

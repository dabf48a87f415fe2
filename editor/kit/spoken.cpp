// What a screen reader is told of a part of the window.

#include "editor/kit/spoken.h"

#include <algorithm>

namespace tarquil {

Spoken spoken_of_tooltip(const std::string& tooltip) {
    if (tooltip.empty())
        return {};
    const size_t end = std::min(tooltip.find('\n'), tooltip.size());
    Spoken spoken{SpokenRole::PICTURE, tooltip.substr(0, end)};
    spoken.help = tooltip.substr(std::min(end + 1, tooltip.size()));
    return spoken;
}

} // namespace tarquil

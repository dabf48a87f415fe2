// How much of a window the windows around it leave to be seen.

#pragma once

#include <cstdint>
#include <optional>

namespace tarquil {

struct VisibleSize {
    int width = 0;
    int height = 0;
};

// In pixels from the window's upper left corner, as if it were as large as could be; the screen's
// edges do not count.  Nothing while one of the windows is not shown.  Under an XErrorTrap.
std::optional<VisibleSize> find_visible_size(uintptr_t window);

} // namespace tarquil

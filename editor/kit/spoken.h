// What a screen reader is told of a part of the window, and what its user can do with it.

#pragma once

#include <cstddef>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "editor/kit/geometry.h"

namespace tarquil {

enum class SpokenRole {
    NONE, // not told of
    WINDOW,
    GROUP,
    LABEL,
    PICTURE,
    BUTTON,
    SWITCH,
    CHOICE,
    SLIDER,
    FIELD,
    TAB,
    LIST,
    ITEM,
    MENU,
    MENU_ITEM,
    DIALOG,
    MESSAGE,
};

struct SpokenRange {
    double now = 0.0;
    double lowest = 0.0;
    double highest = 1.0;
    double step = 1.0;

    bool operator==(const SpokenRange& other) const = default;
};

// Made anew each time: the functions hold until the next event only.
struct Spoken {
    SpokenRole role = SpokenRole::NONE;
    std::string name;
    std::string text{}; // of its value, with the unit; of a field, what stands in it
    std::string help{}; // what it is for, and why it has no effect
    Rect area{};
    bool is_enabled = true; // false: it has no effect now, or can not be pressed
    bool is_on = false;     // lit, checked or chosen
    bool is_focused = false;
    std::optional<SpokenRange> range{};
    size_t caret = 0; // of a field, in characters

    std::function<void()> press{};
    std::function<void(double)> set{};
    std::function<bool(const std::string&)> type{}; // replaces the text; false: it is refused
    std::function<void()> focus{};

    std::vector<Spoken> items{};
    const void* identity = nullptr; // among its siblings; by their order where it is null
};

// A picture's, from its tooltip: the first line is its name.  Nothing of an empty one.
Spoken spoken_of_tooltip(const std::string& tooltip);

} // namespace tarquil

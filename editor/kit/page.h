// A page: panels with titles, and the widgets on them.

#pragma once

#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "editor/kit/widget.h"

namespace tarquil {

struct Panel {
    Rect area;
    std::string title;
};

struct Page {
    std::string title;
    std::vector<Panel> panels;
    std::vector<std::unique_ptr<Widget>> widgets;

    template <typename Kind, typename... Arguments> Kind& add(Arguments&&... arguments) {
        auto widget = std::make_unique<Kind>(std::forward<Arguments>(arguments)...);
        Kind& added = *widget;
        widgets.push_back(std::move(widget));
        return added;
    }
};

} // namespace tarquil

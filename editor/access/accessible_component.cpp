// Where a part is: the interface Component of AT-SPI 2, and Action, which presses it.

#include "editor/access/accessible_object.h"

#include <cmath>

namespace tarquil {

namespace {

// AtspiCoordType and AtspiComponentLayer
constexpr int OF_SCREEN = 0;
constexpr int OF_PARENT = 2;
constexpr uint32_t WIDGET_LAYER = 3;
constexpr uint32_t WINDOW_LAYER = 7;

} // namespace

void AccessibleObject::write_extents(BusWriter& answer, int kind) const {
    const WindowPlace& place = world.place;
    const Rect& area = node->spoken->area;
    double x = area.x * place.scale;
    double y = area.y * place.scale;
    if (kind == OF_SCREEN) {
        x += place.x;
        y += place.y;
    } else if (const AccessibleNode* parent = world.tree.find(node->parent);
               kind == OF_PARENT && parent != nullptr) {
        x -= parent->spoken->area.x * place.scale;
        y -= parent->spoken->area.y * place.scale;
    }
    answer.integer(int(std::lround(x))).integer(int(std::lround(y)));
}

bool AccessibleObject::answer_component(const std::string& member, BusReader& arguments,
                                        BusWriter& answer) {
    const WindowPlace& place = world.place;
    const auto pixels = [&](double units) { return int(std::lround(units * place.scale)); };
    const auto point = [&] {
        const int x = arguments.integer().value_or(0);
        const int y = arguments.integer().value_or(0);
        const bool is_of_screen = arguments.integer().value_or(OF_SCREEN) == OF_SCREEN;
        return Point{(x - (is_of_screen ? place.x : 0)) / place.scale,
                     (y - (is_of_screen ? place.y : 0)) / place.scale};
    };
    const Rect& area = node->spoken->area;
    const bool is_window = node->spoken->role == SpokenRole::WINDOW;
    if (member == "Contains") {
        answer.boolean(area.contains(point()));
    } else if (member == "GetAccessibleAtPoint") {
        answer.reference(reference(world.tree.at(point())));
    } else if (member == "GetExtents") {
        answer.structure([&](BusWriter& inside) {
            write_extents(inside, arguments.integer().value_or(OF_SCREEN));
            inside.integer(pixels(area.w)).integer(pixels(area.h));
        });
    } else if (member == "GetPosition") {
        write_extents(answer, arguments.integer().value_or(OF_SCREEN));
    } else if (member == "GetSize") {
        answer.integer(pixels(area.w)).integer(pixels(area.h));
    } else if (member == "GetLayer") {
        answer.word(is_window ? WINDOW_LAYER : WIDGET_LAYER);
    } else if (member == "GetAlpha") {
        answer.real(1.0);
    } else if (member == "GrabFocus") {
        const bool can_focus = bool(node->spoken->focus);
        if (can_focus)
            world.act(std::function<void()>(node->spoken->focus));
        answer.boolean(can_focus);
    } else {
        return false;
    }
    return true;
}

bool AccessibleObject::answer_action(const std::string& member, BusReader& arguments,
                                     BusWriter& answer) {
    const bool is_there = arguments.integer().value_or(0) == 0;
    if (member == "GetName" || member == "GetLocalizedName") {
        answer.text(is_there ? "press" : "");
    } else if (member == "GetDescription" || member == "GetKeyBinding") {
        answer.text("");
    } else if (member == "GetActions") {
        answer.array("(sss)", [](BusWriter& actions) {
            actions.structure([](BusWriter& one) { one.text("press").text("").text(""); });
        });
    } else if (member == "DoAction") {
        if (is_there)
            world.act(std::function<void()>(node->spoken->press));
        answer.boolean(is_there);
    } else {
        return false;
    }
    return true;
}

} // namespace tarquil

// One of the window's parts, or the program, as AT-SPI 2 asks for it.

#include "editor/access/accessible_object.h"

#include <algorithm>
#include <charconv>
#include <cmath>

#include "common/utf8.h"

namespace tarquil {

namespace {

constexpr std::string_view FOLDER = "/org/a11y/atspi/accessible/";
constexpr std::string_view PROGRAM = "root";
constexpr const char* NO_OBJECT = "/org/a11y/atspi/null";
constexpr const char* PROGRAM_NAME = "Tarquil";
constexpr std::string_view PREFIX = "org.a11y.atspi.";
constexpr const char* VERSION = "2.1"; // of the protocol, as other toolkits say

// AtspiRole
constexpr uint32_t APPLICATION_ROLE = 75;
struct RoleName {
    uint32_t number;
    const char* name;
};
RoleName role_of(SpokenRole role) {
    switch (role) {
    case SpokenRole::WINDOW:
        return {23, "frame"};
    case SpokenRole::LABEL:
        return {29, "label"};
    case SpokenRole::PICTURE:
        return {27, "image"};
    case SpokenRole::BUTTON:
        return {43, "push button"};
    case SpokenRole::SWITCH:
        return {62, "toggle button"};
    case SpokenRole::CHOICE:
        return {11, "combo box"};
    case SpokenRole::SLIDER:
        return {51, "slider"};
    case SpokenRole::FIELD:
        return {79, "entry"};
    case SpokenRole::TAB:
        return {37, "page tab"};
    case SpokenRole::LIST:
        return {31, "list"};
    case SpokenRole::ITEM:
        return {32, "list item"};
    case SpokenRole::MENU:
        return {33, "menu"};
    case SpokenRole::MENU_ITEM:
        return {35, "menu item"};
    case SpokenRole::DIALOG:
        return {16, "dialog"};
    case SpokenRole::MESSAGE:
        return {101, "notification"};
    case SpokenRole::GROUP:
    case SpokenRole::NONE:
        break;
    }
    return {39, "panel"};
}

// AtspiStateType
enum State : unsigned {
    ACTIVE = 1,
    CHECKED = 4,
    EDITABLE = 7,
    ENABLED = 8,
    FOCUSABLE = 11,
    FOCUSED = 12,
    MODAL = 16,
    PRESSED = 20,
    SELECTABLE = 22,
    SELECTED = 23,
    SENSITIVE = 24,
    SHOWING = 25,
    SINGLE_LINE = 26,
    VISIBLE = 30,
    CHECKABLE = 41,
};

// AtspiCoordType and AtspiComponentLayer
constexpr int OF_SCREEN = 0;
constexpr int OF_PARENT = 2;
constexpr uint32_t WIDGET_LAYER = 3;
constexpr uint32_t WINDOW_LAYER = 7;

// The bytes of characters from..to of a text.
std::string characters(const std::string& text, int from, int to) {
    std::string part;
    int index = -1;
    for (const char c : text) {
        index += is_utf8_continuation(c) ? 0 : 1;
        if (index >= from && index < to)
            part += c;
    }
    return part;
}

int num_characters(const std::string& text) {
    return int(
        std::count_if(text.begin(), text.end(), [](char c) { return !is_utf8_continuation(c); }));
}

} // namespace

std::string AccessibleObject::path_of(unsigned number) {
    return std::string(FOLDER) +
           (number == AccessibleTree::NOBODY ? std::string(PROGRAM) : std::to_string(number));
}

std::optional<unsigned> AccessibleObject::number_of(const std::string& path) {
    if (!path.starts_with(FOLDER))
        return std::nullopt;
    const std::string_view name = std::string_view(path).substr(FOLDER.size());
    if (name == PROGRAM)
        return AccessibleTree::NOBODY;
    unsigned number = 0;
    const auto [end, error] = std::from_chars(name.data(), name.data() + name.size(), number);
    const bool is_number = error == std::errc() && end == name.data() + name.size();
    return is_number && number != AccessibleTree::NOBODY ? std::optional(number) : std::nullopt;
}

BusReference AccessibleObject::reference(unsigned number) const {
    return {world.owner, path_of(number)};
}

std::vector<unsigned> AccessibleObject::children() const {
    return node != nullptr ? node->children : std::vector<unsigned>{world.tree.window()};
}

bool AccessibleObject::has_text() const {
    const SpokenRole role = node->spoken->role;
    return role == SpokenRole::FIELD || role == SpokenRole::CHOICE;
}

std::vector<std::string> AccessibleObject::interfaces() const {
    std::vector<std::string> names = {"Accessible"};
    if (node == nullptr) {
        names.emplace_back("Application");
    } else {
        names.emplace_back("Component");
        if (node->spoken->press)
            names.emplace_back("Action");
        if (node->spoken->range)
            names.emplace_back("Value");
        if (has_text())
            names.emplace_back("Text");
        if (node->spoken->type)
            names.emplace_back("EditableText");
    }
    for (std::string& name : names)
        name.insert(0, PREFIX);
    return names;
}

bool AccessibleObject::answer(const BusMessage& call, BusWriter& answer) {
    std::string interface = call.interface();
    const std::string member = call.member();
    BusReader arguments(world.dbus, call);
    if (interface == "org.freedesktop.DBus.Properties")
        return answer_properties(member, arguments, answer);
    const std::vector<std::string> known = interfaces();
    if (std::find(known.begin(), known.end(), interface) == known.end())
        return false;
    interface.erase(0, PREFIX.size());
    if (interface == "Accessible")
        return answer_accessible(member, arguments, answer);
    if (interface == "Component")
        return answer_component(member, arguments, answer);
    if (interface == "Action")
        return answer_action(member, arguments, answer);
    if (interface == "Text" || interface == "EditableText")
        return answer_text(member, arguments, answer);
    if (interface == "Application" && member == "GetLocale") {
        answer.text("en");
        return true;
    }
    return false;
}

bool AccessibleObject::answer_properties(const std::string& member, BusReader& arguments,
                                         BusWriter& answer) {
    const std::string interface = arguments.text().value_or("");
    const std::string name = arguments.text().value_or("");
    if (member == "Get")
        return write_property(interface, name, answer);
    std::optional<BusReader> value = arguments.inside();
    return member == "Set" && value && set_property(name, *value);
}

bool AccessibleObject::write_property(const std::string& interface, const std::string& name,
                                      BusWriter& answer) {
    const auto text = [&](const std::string& value) {
        answer.variant("s", [&](BusWriter& inside) { inside.text(value); });
        return true;
    };
    const auto integer = [&](int value) {
        answer.variant("i", [&](BusWriter& inside) { inside.integer(value); });
        return true;
    };
    const auto real = [&](double value) {
        answer.variant("d", [&](BusWriter& inside) { inside.real(value); });
        return true;
    };
    if (name == "Name")
        return text(node != nullptr ? node->spoken->name : PROGRAM_NAME);
    if (name == "Description")
        return text(node != nullptr ? node->spoken->help : "");
    if (name == "Locale")
        return text("en");
    if (name == "AccessibleId" || name == "HelpText")
        return text("");
    if (name == "ChildCount")
        return integer(int(children().size()));
    if (name == "Parent") {
        const BusReference parent = node != nullptr ? reference(node->parent) : world.desktop;
        answer.variant("(so)", [&](BusWriter& inside) { inside.reference(parent); });
        return true;
    }
    if (node == nullptr) {
        if (name == "ToolkitName")
            return text(PROGRAM_NAME);
        return name == "Id" ? integer(0)
                            : (name == "Version" || name == "AtspiVersion") && text(VERSION);
    }
    const Spoken& spoken = *node->spoken;
    if (name == "NActions")
        return integer(spoken.press ? 1 : 0);
    if (name == "CharacterCount")
        return integer(num_characters(spoken.text));
    if (name == "CaretOffset")
        return integer(int(spoken.caret));
    if (name == "Text" && interface.ends_with("Value"))
        return text(spoken.text);
    if (!spoken.range)
        return false;
    if (name == "CurrentValue")
        return real(spoken.range->now);
    if (name == "MinimumValue")
        return real(spoken.range->lowest);
    if (name == "MaximumValue")
        return real(spoken.range->highest);
    return name == "MinimumIncrement" && real(spoken.range->step);
}

bool AccessibleObject::set_property(const std::string& name, BusReader& value) {
    if (node == nullptr)
        return name == "Id";
    const std::optional<double> wanted = value.real();
    if (name != "CurrentValue" || !wanted)
        return false;
    // A value that means nothing is no error: the readers' library (2.46) would end the reader.
    if (std::isfinite(*wanted) && node->spoken->set)
        world.act([set = node->spoken->set, wanted = *wanted] { set(wanted); });
    return true;
}

void AccessibleObject::write_states(BusWriter& answer) const {
    uint64_t states = 0;
    const auto add = [&](State state, bool is_on = true) {
        states |= is_on ? uint64_t(1) << state : 0;
    };
    add(VISIBLE);
    add(SHOWING);
    if (node != nullptr) {
        const Spoken& spoken = *node->spoken;
        const SpokenRole role = spoken.role;
        // What has no effect now can be set all the same.
        add(ENABLED, spoken.is_enabled);
        add(SENSITIVE, spoken.is_enabled || spoken.set || spoken.type);
        add(FOCUSABLE, spoken.focus || spoken.is_focused);
        add(FOCUSED, spoken.is_focused);
        add(EDITABLE, bool(spoken.type));
        add(SINGLE_LINE, role == SpokenRole::FIELD);
        add(MODAL, role == SpokenRole::DIALOG);
        add(ACTIVE, role == SpokenRole::WINDOW && world.place.is_active);
        const bool is_chosen = role == SpokenRole::ITEM || role == SpokenRole::TAB;
        add(SELECTABLE, is_chosen);
        add(SELECTED, is_chosen && spoken.is_on);
        const bool is_checked = role == SpokenRole::SWITCH || role == SpokenRole::MENU_ITEM;
        add(CHECKABLE, role == SpokenRole::SWITCH);
        add(CHECKED, is_checked && spoken.is_on);
        add(PRESSED, role == SpokenRole::SWITCH && spoken.is_on);
    }
    answer.array(
        "u", [&](BusWriter& words) { words.word(uint32_t(states)).word(uint32_t(states >> 32U)); });
}

bool AccessibleObject::answer_accessible(const std::string& member, BusReader& arguments,
                                         BusWriter& answer) {
    const auto child = [&](int index) {
        const std::vector<unsigned> all = children();
        return index >= 0 && size_t(index) < all.size() ? reference(all[size_t(index)])
                                                        : BusReference{"", NO_OBJECT};
    };
    const RoleName role =
        node != nullptr ? role_of(node->spoken->role) : RoleName{APPLICATION_ROLE, "application"};
    if (member == "GetChildAtIndex")
        answer.reference(child(arguments.integer().value_or(-1)));
    else if (member == "GetChildren")
        answer.array("(so)", [&](BusWriter& items) {
            for (const unsigned number : children())
                items.reference(reference(number));
        });
    else if (member == "GetIndexInParent")
        answer.integer(node != nullptr ? int(node->index) : -1);
    else if (member == "GetRelationSet")
        answer.array("(ua(so))", [](BusWriter&) {});
    else if (member == "GetRole")
        answer.word(role.number);
    else if (member == "GetRoleName" || member == "GetLocalizedRoleName")
        answer.text(role.name);
    else if (member == "GetState")
        write_states(answer);
    else if (member == "GetAttributes")
        answer.array("{ss}", [&](BusWriter& pairs) {
            pairs.entry([](BusWriter& pair) { pair.text("toolkit").text(PROGRAM_NAME); });
            if (node != nullptr && !node->spoken->text.empty())
                pairs.entry(
                    [&](BusWriter& pair) { pair.text("valuetext").text(node->spoken->text); });
        });
    else if (member == "GetApplication")
        answer.reference(reference(AccessibleTree::NOBODY));
    else if (member == "GetInterfaces")
        answer.array("s", [&](BusWriter& items) {
            for (const std::string& name : interfaces())
                items.text(name);
        });
    else
        return false;
    return true;
}

void AccessibleObject::write_cache_item(BusWriter& items) const {
    items.structure([&](BusWriter& item) {
        item.reference(reference(node != nullptr ? node->number : AccessibleTree::NOBODY));
        item.reference(reference(AccessibleTree::NOBODY));
        item.reference(node != nullptr ? reference(node->parent) : world.desktop);
        item.integer(node != nullptr ? int(node->index) : -1);
        item.integer(int(children().size()));
        item.array("s", [&](BusWriter& names) {
            for (const std::string& name : interfaces())
                names.text(name);
        });
        item.text(node != nullptr ? node->spoken->name : PROGRAM_NAME);
        item.word(node != nullptr ? role_of(node->spoken->role).number : APPLICATION_ROLE);
        item.text(node != nullptr ? node->spoken->help : "");
        write_states(item);
    });
}

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

// Whatever part of the text around a place is asked for, it is all of it: one line.
bool AccessibleObject::answer_text(const std::string& member, BusReader& arguments,
                                   BusWriter& answer) {
    const std::string& text = node->spoken->text;
    const int length = num_characters(text);
    if (member == "GetText") {
        const int from = arguments.integer().value_or(0);
        const int to = arguments.integer().value_or(-1);
        answer.text(characters(text, from, to < 0 ? length : to));
    } else if (member == "GetCharacterAtOffset") {
        const int at = arguments.integer().value_or(0);
        const std::string one = characters(text, at, at + 1);
        answer.integer(one.size() == 1 ? one[0] : 0);
    } else if (member == "GetStringAtOffset" || member == "GetTextAtOffset") {
        const int at = arguments.integer().value_or(0);
        constexpr int CHARACTER = 0;
        if (arguments.integer().value_or(CHARACTER) == CHARACTER)
            answer.text(characters(text, at, at + 1)).integer(at).integer(std::min(at + 1, length));
        else
            answer.text(text).integer(0).integer(length);
    } else if (member == "GetNSelections") {
        answer.integer(0);
    } else if (member == "GetAttributes" || member == "GetDefaultAttributes") {
        answer.array("{ss}", [](BusWriter&) {});
        if (member == "GetAttributes")
            answer.integer(0).integer(length);
    } else if (member == "SetTextContents" && node->spoken->type) {
        bool is_taken = false;
        world.act([&is_taken, type = node->spoken->type, wanted = arguments.text().value_or("")] {
            is_taken = type(wanted);
        });
        answer.boolean(is_taken);
    } else {
        return false;
    }
    return true;
}

} // namespace tarquil

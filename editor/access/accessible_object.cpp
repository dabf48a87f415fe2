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

AccessibleRole AccessibleObject::own_role() const {
    return node != nullptr ? accessible_role(node->spoken->role) : APPLICATION_ROLE;
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
        return integer(int(utf8_count(spoken.text)));
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
    const uint64_t states = node != nullptr
                                ? accessible_states(*node->spoken, world.place.is_active)
                                : accessible_program_states();
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
    const AccessibleRole role = own_role();
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
        item.word(own_role().number);
        item.text(node != nullptr ? node->spoken->help : "");
        write_states(item);
    });
}

} // namespace tarquil

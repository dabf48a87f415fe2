// One of the window's parts, or the program, as AT-SPI 2 asks for it: the interfaces
// org.a11y.atspi.{Accessible,Application,Component,Action,Value,Text,EditableText} and their
// properties (the XML of at-spi2-core 2.46 describes them).

#pragma once

#include <functional>
#include <string>

#include "editor/access/accessible_role.h"
#include "editor/access/accessible_tree.h"
#include "editor/access/bus_message.h"

namespace tarquil {

// Where the window is on the screen, in pixels.
struct WindowPlace {
    int x = 0;
    int y = 0;
    double scale = 1.0;
    bool is_active = false; // it has the keyboard

    bool operator==(const WindowPlace& other) const = default;
};

class AccessibleObject {
  public:
    // What all objects of a window share.
    struct World {
        const DBusLibrary& dbus;
        const AccessibleTree& tree;
        std::string owner; // their name on the bus
        BusReference desktop;
        WindowPlace place;
        // Does what the user wants, and describes the window anew.
        std::function<void(const std::function<void()>&)> act;
    };

    // `node` is null for the program itself.
    AccessibleObject(const World& its_world, const AccessibleNode* its_node)
        : world(its_world), node(its_node) {}

    // False when the object has no such thing.
    bool answer(const BusMessage& call, BusWriter& answer);

    // Its entry in what org.a11y.atspi.Cache gives, all that is asked for most at once.
    void write_cache_item(BusWriter& items) const;
    static constexpr const char* CACHE_ITEM = "((so)(so)(so)iiassusau)";

    // "/org/a11y/atspi/accessible/12"; the program for NOBODY.
    static std::string path_of(unsigned number);
    // The number in a path; nothing when it is none of ours.
    static std::optional<unsigned> number_of(const std::string& path);

  private:
    bool answer_properties(const std::string& member, BusReader& arguments, BusWriter& answer);
    bool write_property(const std::string& interface, const std::string& name, BusWriter& answer);
    bool set_property(const std::string& name, BusReader& value);
    bool answer_accessible(const std::string& member, BusReader& arguments, BusWriter& answer);
    bool answer_component(const std::string& member, BusReader& arguments, BusWriter& answer);
    bool answer_action(const std::string& member, BusReader& arguments, BusWriter& answer);
    bool answer_text(const std::string& member, BusReader& arguments, BusWriter& answer);
    bool answer_editable_text(const std::string& member, BusReader& arguments, BusWriter& answer);
    void write_states(BusWriter& answer) const;
    void write_extents(BusWriter& answer, int kind) const;

    [[nodiscard]] BusReference reference(unsigned number) const;
    [[nodiscard]] std::vector<unsigned> children() const;
    [[nodiscard]] std::vector<std::string> interfaces() const;
    [[nodiscard]] AccessibleRole own_role() const;
    [[nodiscard]] bool has_text() const;

    const World& world;
    const AccessibleNode* const node;
};

} // namespace tarquil

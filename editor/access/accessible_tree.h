// The window's parts as numbered objects, which keep their numbers while they are there, and what
// has changed in them since a screen reader was told last.

#pragma once

#include <cstdint>
#include <map>
#include <memory>
#include <string>
#include <tuple>
#include <vector>

#include "editor/kit/spoken.h"

namespace tarquil {

struct AccessibleNode {
    const Spoken* spoken = nullptr; // until the next update
    unsigned number = 0;
    unsigned parent = 0; // AccessibleTree::NOBODY for the window
    unsigned index = 0;  // among its siblings
    std::vector<unsigned> children;
};

struct AccessibleChange {
    enum class Kind {
        CHILD_REMOVED,
        CHILD_ADDED,
        NAME,
        HELP,
        VALUE,
        ENABLED,
        ON,
        TEXT_REMOVED,
        TEXT_INSERTED,
        CARET,
        SHOWN, // a message that has appeared
        FOCUSED,
    };
    unsigned number = 0;
    Kind kind = Kind::NAME;
    unsigned at = 0;     // a state as 0 or 1; a child's place; a place in the text
    unsigned length = 0; // of the text, in characters
    unsigned child = 0;
    std::string text{};

    bool operator==(const AccessibleChange& other) const = default;
};

class AccessibleTree {
  public:
    static constexpr unsigned NOBODY = 0;

    // The window's parts now; what differs from the last time, in an order that makes sense to who
    // is told.
    std::vector<AccessibleChange> update(Spoken window);

    // Null where there is none of that number.
    [[nodiscard]] const AccessibleNode* find(unsigned number) const;
    [[nodiscard]] const std::map<unsigned, AccessibleNode>& all() const { return nodes; }
    [[nodiscard]] unsigned window() const { return window_number; }
    [[nodiscard]] unsigned focused() const { return focus; }
    // The deepest one there, the window at least.  In the editor's units.
    [[nodiscard]] unsigned at(Point place) const;

  private:
    // Parent, identity, order, text.
    using Key = std::tuple<unsigned, const void*, size_t, std::string>;
    using Nodes = std::map<unsigned, AccessibleNode>;

    unsigned add(const Spoken& spoken, unsigned parent, unsigned index);
    void compare(const AccessibleNode& before, const AccessibleNode& now,
                 std::vector<AccessibleChange>& changes) const;
    void compare_children(const AccessibleNode& before, const AccessibleNode& now,
                          std::vector<AccessibleChange>& changes) const;

    std::unique_ptr<Spoken> told;
    Nodes nodes;
    std::map<Key, unsigned> numbers;
    std::map<Key, unsigned> new_numbers; // while it is updated
    unsigned last_number = 0;
    unsigned window_number = NOBODY;
    unsigned focus = NOBODY;
};

} // namespace tarquil

// The window's parts as numbered objects, and what has changed in them.

#include "editor/access/accessible_tree.h"

#include <algorithm>

#include "common/utf8.h"

namespace tarquil {

namespace {

using Kind = AccessibleChange::Kind;

bool has(const std::vector<unsigned>& numbers, unsigned wanted) {
    return std::find(numbers.begin(), numbers.end(), wanted) != numbers.end();
}

// The middle that differs goes and comes.
void compare_text(unsigned number, const std::string& before, const std::string& now,
                  std::vector<AccessibleChange>& changes) {
    size_t start = 0;
    while (start < std::min(before.size(), now.size()) && before[start] == now[start])
        start++;
    while (start > 0 && ((start < before.size() && is_utf8_continuation(before[start])) ||
                         (start < now.size() && is_utf8_continuation(now[start]))))
        start--;
    size_t rest = 0;
    while (rest < std::min(before.size(), now.size()) - start &&
           before[before.size() - 1 - rest] == now[now.size() - 1 - rest])
        rest++;
    while (rest > 0 && is_utf8_continuation(now[now.size() - rest]))
        rest--;
    const auto place = unsigned(utf8_count(std::string_view(now).substr(0, start)));
    const std::string gone = before.substr(start, before.size() - rest - start);
    const std::string come = now.substr(start, now.size() - rest - start);
    if (!gone.empty())
        changes.push_back({number, Kind::TEXT_REMOVED, place, unsigned(utf8_count(gone)), 0, gone});
    if (!come.empty())
        changes.push_back(
            {number, Kind::TEXT_INSERTED, place, unsigned(utf8_count(come)), 0, come});
}

} // namespace

unsigned AccessibleTree::add(const Spoken& spoken, unsigned parent, unsigned index) {
    // Another message is another object: those are told of when they appear.
    const bool is_message = spoken.role == SpokenRole::MESSAGE;
    const Key key{parent, spoken.identity, spoken.identity == nullptr ? index : 0,
                  is_message ? spoken.name : ""};
    const auto known = numbers.find(key);
    const unsigned number = known != numbers.end() ? known->second : ++last_number;
    new_numbers[key] = number;
    if (spoken.is_focused)
        focus = number;
    std::vector<unsigned> children;
    for (const Spoken& item : spoken.items)
        children.push_back(add(item, number, unsigned(children.size())));
    nodes[number] = {&spoken, number, parent, index, std::move(children)};
    return number;
}

void AccessibleTree::compare_children(const AccessibleNode& before, const AccessibleNode& now,
                                      std::vector<AccessibleChange>& changes) const {
    for (unsigned i = 0; i < before.children.size(); i++) {
        if (!has(now.children, before.children[i]))
            changes.push_back({now.number, Kind::CHILD_REMOVED, i, 0, before.children[i]});
    }
    for (unsigned i = 0; i < now.children.size(); i++) {
        const unsigned child = now.children[i];
        if (has(before.children, child))
            continue;
        changes.push_back({now.number, Kind::CHILD_ADDED, i, 0, child});
        if (nodes.at(child).spoken->role == SpokenRole::MESSAGE)
            changes.push_back({child, Kind::SHOWN, 1});
    }
}

void AccessibleTree::compare(const AccessibleNode& before, const AccessibleNode& now,
                             std::vector<AccessibleChange>& changes) const {
    const Spoken& old = *before.spoken;
    const Spoken& fresh = *now.spoken;
    compare_children(before, now, changes);
    if (old.name != fresh.name)
        changes.push_back({now.number, Kind::NAME, 0, 0, 0, fresh.name});
    if (old.help != fresh.help)
        changes.push_back({now.number, Kind::HELP, 0, 0, 0, fresh.help});
    if (old.is_enabled != fresh.is_enabled)
        changes.push_back({now.number, Kind::ENABLED, fresh.is_enabled ? 1U : 0U});
    if (old.is_on != fresh.is_on)
        changes.push_back({now.number, Kind::ON, fresh.is_on ? 1U : 0U});
    if (fresh.range && (old.range != fresh.range || old.text != fresh.text))
        changes.push_back({now.number, Kind::VALUE});
    if (fresh.role != SpokenRole::FIELD)
        return;
    compare_text(now.number, old.text, fresh.text, changes);
    if (old.caret != fresh.caret)
        changes.push_back({now.number, Kind::CARET, unsigned(fresh.caret)});
}

std::vector<AccessibleChange> AccessibleTree::update(Spoken window) {
    const std::unique_ptr<Spoken> before_told = std::move(told);
    const Nodes before = std::move(nodes);
    const unsigned focus_before = focus;
    told = std::make_unique<Spoken>(std::move(window));
    nodes.clear();
    new_numbers.clear();
    focus = NOBODY;
    window_number = add(*told, NOBODY, 0);
    numbers = std::move(new_numbers);
    std::vector<AccessibleChange> changes;
    if (before.empty())
        return changes;
    for (const auto& [number, now] : nodes) {
        if (const auto old = before.find(number); old != before.end())
            compare(old->second, now, changes);
    }
    if (focus == focus_before)
        return changes;
    if (nodes.contains(focus_before))
        changes.push_back({focus_before, Kind::FOCUSED, 0});
    if (focus != NOBODY)
        changes.push_back({focus, Kind::FOCUSED, 1});
    return changes;
}

const AccessibleNode* AccessibleTree::find(unsigned number) const {
    const auto found = nodes.find(number);
    return found != nodes.end() ? &found->second : nullptr;
}

// What stands last lies on top.
unsigned AccessibleTree::at(Point place) const {
    unsigned deepest = window_number;
    for (bool goes_on = deepest != NOBODY; goes_on;) {
        const std::vector<unsigned>& children = nodes.at(deepest).children;
        goes_on = false;
        for (auto child = children.rbegin(); child != children.rend() && !goes_on; ++child) {
            const Spoken& spoken = *nodes.at(*child).spoken;
            const bool has_area = spoken.area.w > 0.0 && spoken.area.h > 0.0;
            // A group without a place of its own may have the part in it.
            if (has_area
                    ? spoken.area.contains(place)
                    : std::any_of(spoken.items.begin(), spoken.items.end(),
                                  [&](const Spoken& item) { return item.area.contains(place); })) {
                deepest = *child;
                goes_on = true;
            }
        }
    }
    return deepest;
}

} // namespace tarquil

// What has been made from keys, kept while it is used.
//
// A value is a function of its key alone, so none can be out of date.  What was not used since the
// store was last half full goes when it is half full again.

#pragma once

#include <cstddef>
#include <unordered_map>
#include <utility>

namespace tarquil {

template <typename Key, typename Value, typename Hash> class RecentStore {
  public:
    // Bytes of the values; without a limit nothing is kept but the last.
    void set_limit(size_t bytes) { half = bytes / 2; }

    // Null where there is none.  Stays until the next call of either.
    Value* find(const Key& key) {
        const auto found = newer.values.find(key);
        if (found != newer.values.end())
            return &found->second.value;
        auto node = older.values.extract(key);
        return node.empty() ? nullptr : keep(std::move(node));
    }

    Value& add(const Key& key, Value value, size_t bytes) {
        Half made;
        made.values.emplace(key, Entry{std::move(value), bytes});
        return *keep(made.values.extract(made.values.begin()));
    }

    [[nodiscard]] size_t bytes() const { return newer.bytes + older.bytes; }

  private:
    struct Entry {
        Value value;
        size_t bytes = 0;
    };
    struct Half {
        std::unordered_map<Key, Entry, Hash> values;
        size_t bytes = 0;
    };

    Value* keep(typename std::unordered_map<Key, Entry, Hash>::node_type node) {
        const size_t added = node.mapped().bytes;
        if (newer.bytes + added > half) {
            older = std::move(newer);
            newer = {};
        }
        newer.bytes += added;
        return &newer.values.insert(std::move(node)).position->second.value;
    }

    Half newer;
    Half older;
    size_t half = 0;
};

} // namespace tarquil

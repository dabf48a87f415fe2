// What the control side replaces as a whole while the audio side reads the one before.

#pragma once

#include <algorithm>
#include <atomic>
#include <utility>
#include <vector>

#include "common/assertion.h"
#include "common/spsc_queue.h"

namespace tarquil {

// `Owner`: a smart pointer, never null.
template <typename Owner> class Handover {
  public:
    using Value = typename Owner::element_type;

    explicit Handover(Owner first) : played(first.get()) {
        owned.reserve(USUAL_OWNED);
        owned.push_back(std::move(first));
    }
    Handover(const Handover&) = delete;
    Handover& operator=(const Handover&) = delete;

    // For the control side, one thread at a time.
    [[nodiscard]] Value& latest() const { return *owned.back(); }
    // The audio side takes `fresh` when it next looks.  Returns those that nobody reads any more.
    [[nodiscard]] std::vector<Owner> offer(Owner fresh) {
        std::vector<Owner> unused;
        owned.push_back(std::move(fresh));
        Value* retired = nullptr;
        while (retired_values.pop(retired))
            give_up(retired, unused);
        give_up(next.exchange(owned.back().get(), std::memory_order_acq_rel), unused);
        return unused;
    }

    // For the audio side.
    [[nodiscard]] Value& current() const { return *played; }
    // True when the current one is another now.
    bool take() {
        Value* const fresh = next.exchange(nullptr, std::memory_order_acq_rel);
        if (fresh == nullptr)
            return false;
        const bool is_handed_back = retired_values.push(played);
        TARQ_ASSERT(is_handed_back);
        played = fresh;
        return true;
    }

  private:
    // The latest, the one that the audio side plays, and one on its way between them.
    static constexpr size_t USUAL_OWNED = 4;

    void give_up(const Value* unread, std::vector<Owner>& unused) {
        const auto found = std::find_if(owned.begin(), owned.end(),
                                        [&](const Owner& owner) { return owner.get() == unread; });
        if (found == owned.end())
            return;
        unused.push_back(std::move(*found));
        owned.erase(found);
    }

    // The last is the latest, those before are still known to the audio side.
    std::vector<Owner> owned;
    std::atomic<Value*> next{nullptr};
    // To be freed elsewhere: two at most, since each new one frees those before.
    SpscQueue<Value*, 4> retired_values;
    Value* played; // the audio side's
};

} // namespace tarquil

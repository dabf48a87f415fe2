// What MIDI controllers have been taught, without locks.

#include "player/learned_table.h"

namespace tarquil {

void LearnedTable::set(const LearnedControls& learned) {
    for (unsigned i = 0; i < NUM_MIDI_CONTROLLERS; i++) {
        const auto& control = learned.get(i);
        const uint32_t packed = control ? IS_THERE | uint32_t(control->target) << 16U |
                                              uint32_t(control->first) << 8U | control->last
                                        : 0U;
        entries[i].store(packed, std::memory_order_relaxed);
    }
}

std::optional<LearnedControl> LearnedTable::get(unsigned midi_controller) const {
    const uint32_t packed = entries[midi_controller].load(std::memory_order_relaxed);
    if (packed == 0)
        return std::nullopt;
    return LearnedControl{uint8_t(packed >> 16U), uint8_t(packed >> 8U), uint8_t(packed)};
}

void LearnedTable::listen(bool is_on) {
    heard.store(NOTHING, std::memory_order_relaxed);
    is_listening.store(is_on, std::memory_order_relaxed);
}

std::optional<unsigned> LearnedTable::take_heard() {
    const uint32_t taken = heard.exchange(NOTHING, std::memory_order_relaxed);
    return taken == NOTHING ? std::nullopt : std::optional(unsigned(taken));
}

bool LearnedTable::hears(unsigned midi_controller) {
    if (!is_listening.load(std::memory_order_relaxed) || !is_learnable(midi_controller))
        return false;
    heard.store(midi_controller, std::memory_order_relaxed);
    return true;
}

} // namespace tarquil

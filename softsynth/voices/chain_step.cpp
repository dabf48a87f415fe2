// What a channel's chain is told in a block, at once or, through a record, later.

#include "softsynth/voices/chain_step.h"

#include <algorithm>

namespace tarquil {

template <typename Scratch, typename Act>
void ChainRecord::for_each_row(const ChainStep& step, const ChainSettings& settings,
                               Scratch& scratch, const Act& act) {
    if (step.kind != ChainStep::Kind::PAST && step.kind != ChainStep::Kind::PRESENT)
        return;
    if (step.has_sound)
        act(scratch.signal);
    if (!step.is_still) {
        act(scratch.volume);
        act(scratch.left_gain);
        act(scratch.right_gain);
    }
    for (unsigned i = 0; i < NUM_MONO_EFFECTS; i++) {
        if (settings.inserts[i].type != MonoEffectType::MONO_EFFECT_FILTER)
            continue;
        act(scratch.cutoff[i]);
        act(scratch.resonance[i]);
    }
}

void ChainRecord::add(const ChainStep& step, const ChainSettings& settings,
                      const ChannelScratch& scratch) {
    entries.push_back({step, settings});
    for_each_row(step, settings, scratch, [this](const MonoBuffer& row) {
        rows.insert(rows.end(), row.get_first_sample_ptr(), row.get_first_sample_ptr() + size);
    });
}

const float* ChainRecord::give_back(const Entry& entry, const float* from,
                                    ChannelScratch& scratch) const {
    scratch.init(size);
    if (!entry.step.has_sound)
        scratch.signal.nullify();
    for_each_row(entry.step, entry.settings, scratch, [&](MonoBuffer& row) {
        std::copy_n(from, size, row.get_first_sample_ptr());
        from += size;
    });
    return from;
}

} // namespace tarquil

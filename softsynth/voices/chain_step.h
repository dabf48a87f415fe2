// What a channel's chain is told in a block, at once or, through a record, later.

#pragma once

#include <cstdint>
#include <span>
#include <vector>

#include "softsynth/voices/chain_settings.h"
#include "softsynth/voices/channel_scratch.h"

namespace tarquil {

struct ChainStep {
    enum class Kind {
        FORGET,     // the echoes
        BEGIN_FADE, // what sounds becomes the past, which fades; a fresh chain follows
        PAST,       // renders what the scratch holds
        PRESENT,
    };

    Kind kind = Kind::FORGET;
    StereoEffect::effect_type past_type = StereoEffect::STEREO_EFFECT_OFF; // when a fade begins
    bool has_sound = false; // otherwise the signal is silence
    bool is_still = false;  // the settings hold throughout, there are no rows
    int32_t fade_age = 0;   // the past's, at the block's start
};

// The steps of one channel's block, with what each needs.  Allocates until it has grown.
class ChainRecord {
  public:
    void clear(uint32_t new_size) {
        size = new_size;
        entries.clear();
        rows.clear();
    }
    [[nodiscard]] uint32_t get_size() const { return size; }

    void add(const ChainStep& step, const ChainSettings& settings, const ChannelScratch& scratch);

    // Calls act(step, settings) for each step, with its rows back in the scratch.
    template <typename Act> void for_each(ChannelScratch& scratch, const Act& act) const {
        const float* next = rows.data();
        for (const Entry& entry : entries) {
            next = give_back(entry, next, scratch);
            act(entry.step, entry.settings);
        }
    }

  private:
    struct Entry {
        ChainStep step;
        ChainSettings settings;
    };

    // Calls act(buffer of the scratch) for each row that the step has.
    template <typename Scratch, typename Act>
    static void for_each_row(const ChainStep& step, const ChainSettings& settings, Scratch& scratch,
                             const Act& act);
    const float* give_back(const Entry& entry, const float* from, ChannelScratch& scratch) const;

    uint32_t size = 0;
    std::vector<Entry> entries;
    std::vector<float> rows;
};

} // namespace tarquil

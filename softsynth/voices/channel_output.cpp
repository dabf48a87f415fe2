// What a channel's block gives: added to the buses when it is the channel's turn, since the order
// of sums is part of the sound.

#include "softsynth/voices/channel_output.h"

#include <algorithm>
#include <iterator>

#include "common/assertion.h"

namespace tarquil {

ChannelOutput::Part& ChannelOutput::next_part(const ChainSettings& settings) {
    TARQ_ASSERT(num_parts < std::size(parts));
    Part& part = parts[num_parts++];
    std::copy_n(settings.levels, NUM_AUX_BUSES, part.levels);
    return part;
}

StereoBuffer& ChannelOutput::add(const ChainSettings& settings) {
    Part& part = next_part(settings);
    part.is_silence = false;
    part.mix.init(size);
    return part.mix;
}

void ChannelOutput::add_silence(const ChainSettings& settings) {
    next_part(settings).is_silence = true;
}

void ChannelOutput::add_to(StereoBuffer* buses, StereoBuffer* tap) const {
    if (tap != nullptr) {
        tap->init(size);
        tap->nullify();
    }
    for (uint32_t p = 0; p < num_parts; p++) {
        const Part& part = parts[p];
        for (int bus = 0; bus < NUM_AUX_BUSES; bus++) {
            TARQ_ASSERT(part.levels[bus] >= 0.0F);
            if (part.levels[bus] == 0.0F)
                continue;
            if (part.is_silence)
                buses[bus] += 0.0F;
            else
                Buffer::add_scaled(part.mix, part.levels[bus], buses[bus]);
        }
        if (tap == nullptr || part.is_silence)
            continue;
        if (p > 0)
            *tap += part.mix;
        else
            Buffer::copy(part.mix, *tap);
    }
}

} // namespace tarquil

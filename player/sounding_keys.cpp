// Which keys of which channels sound.

#include "player/sounding_keys.h"

#include "softsynth/parameters/controller_number.h"

namespace tarquil {

namespace {

constexpr unsigned WORD_BITS = 64;

uint64_t bit_of(unsigned key) {
    return uint64_t(1) << key % WORD_BITS;
}

} // namespace

SoundingKeys::Keys SoundingKeys::Channel::take_keys() {
    Keys keys;
    for (unsigned word = 2; word-- > 0;) {
        const uint64_t bits = held[word].load(std::memory_order_relaxed) |
                              struck[word].exchange(0, std::memory_order_relaxed);
        keys = keys << WORD_BITS | Keys(bits);
    }
    return keys;
}

void SoundingKeys::Channel::note_struck(unsigned key) {
    struck[key / WORD_BITS].fetch_or(bit_of(key), std::memory_order_relaxed);
}

void SoundingKeys::Channel::hold(unsigned key, bool is_held) {
    std::atomic<uint64_t>& word = held[key / WORD_BITS];
    const uint64_t bits = word.load(std::memory_order_relaxed);
    word.store(is_held ? bits | bit_of(key) : bits & ~bit_of(key), std::memory_order_relaxed);
}

void SoundingKeys::Channel::set_held(const Keys& keys) {
    held[0].store((keys & Keys(UINT64_MAX)).to_ullong(), std::memory_order_relaxed);
    held[1].store((keys >> WORD_BITS).to_ullong(), std::memory_order_relaxed);
}

void SoundingKeys::follow(const midi_event& event) {
    Channel& channel = channels[midi_channel(event.status)];
    switch (midi_kind(event.status)) {
    case MIDI_NOTE_ON:
        channel.hold(event.data1, true);
        break;
    case MIDI_NOTE_OFF:
        channel.hold(event.data1, false);
        break;
    case MIDI_SILENCE:
        channel.set_held(Keys());
        break;
    case MIDI_CONTROL_CHANGE: {
        constexpr unsigned FINE = 0x7F;
        const unsigned bend = channel.bend.load(std::memory_order_relaxed);
        if (event.data1 == CTRL_PITCH_BEND_MSB)
            channel.bend.store(uint16_t(unsigned(event.data2) << 7U | (bend & FINE)),
                               std::memory_order_relaxed);
        else if (event.data1 == CTRL_PITCH_BEND_LSB)
            channel.bend.store(uint16_t((bend & ~FINE) | event.data2), std::memory_order_relaxed);
        break;
    }
    default:
        break;
    }
}

} // namespace tarquil

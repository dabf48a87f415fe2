// The melodic parts: keys, pedals, and the notes that they hold.

#include <algorithm>
#include <cmath>

#include "midi/gm/channel_sound.h"
#include "midi/gm/melodic_parts.h"
#include "softsynth/parameters/constants.h"

namespace tarquil {

namespace {

constexpr double SOFT_PEDAL_VELOCITY = 0.75;

// What a released note fades over, by the byte of envelope 1.
uint32_t release_samples(uint8_t byte) {
    const float root = map_char_to_float(CTRL_ENV1_RELEASE, byte);
    return uint32_t(root * root * root);
}

} // namespace

void MelodicParts::note_on(uint32_t time, unsigned channel, unsigned key_number, unsigned velocity,
                           EngineEvents& out) {
    const GmChannel& settings = state.channels[channel];
    Key& key = keys[channel][key_number];
    if (key.part != NONE)
        release(time, channel, key_number, out);
    if (settings.is_mono)
        for (unsigned other = 0; other < NUM_KEYS; other++)
            if (keys[channel][other].part != NONE)
                release(time, channel, other, out);
    relieve(time, out);

    const unsigned part_index = find_part(time, channel, out);
    Part& part = parts[part_index];
    if (part.num_notes == 0) {
        place_bend(part);
        part.vibrato.start_note(time);
    }
    const unsigned note = engine_note(part, key_number);
    if (part.keys[note] != NONE)
        release(time, channel, part.keys[note], out);
    apply_laws(time, part, key_number, velocity, out);
    if (!send_bend(time, part, out))
        state.report.count(GmShortfall::BEND_CLAMPED);
    part.engine.note_on(time, note, velocity_of(part, key_number, velocity), out);

    key.part = uint8_t(part_index);
    key.engine_note = uint8_t(note);
    key.velocity = uint8_t(velocity);
    key.is_down = true;
    key.start = time;
    key.release = release_samples(part.engine.byte(CTRL_ENV1_RELEASE));
    part.keys[note] = uint8_t(key_number);
    part.num_notes++;
    part.last_start = time;
    budget.add_note();
    start_vibrato(time, part);
}

void MelodicParts::note_off(uint32_t time, unsigned channel, unsigned key_number,
                            EngineEvents& out) {
    Key& key = keys[channel][key_number];
    key.is_down = false;
    if (key.part != NONE && !is_held(channel, key))
        release(time, channel, key_number, out);
}

void MelodicParts::release_keys(uint32_t time, unsigned channel, EngineEvents& out) {
    for (unsigned key = 0; key < NUM_KEYS; key++)
        note_off(time, channel, key, out);
}

void MelodicParts::release_unheld(uint32_t time, unsigned channel, EngineEvents& out) {
    for (unsigned key = 0; key < NUM_KEYS; key++)
        if (keys[channel][key].part != NONE && !is_held(channel, keys[channel][key]))
            release(time, channel, key, out);
}

void MelodicParts::set_sostenuto(uint32_t time, unsigned channel, bool is_down, EngineEvents& out) {
    for (Key& key : keys[channel])
        key.is_caught = is_down && key.is_down;
    if (!is_down)
        release_unheld(time, channel, out);
}

bool MelodicParts::is_held(unsigned channel, const Key& key) const {
    return key.is_down || key.is_caught || state.channels[channel].is_down(MIDI_SUSTAIN);
}

void MelodicParts::release(uint32_t time, unsigned channel, unsigned key_number,
                           EngineEvents& out) {
    Key& key = keys[channel][key_number];
    parts[key.part].engine.note_off(time, key.engine_note, out);
    drop(time, key);
}

void MelodicParts::drop(uint32_t time, Key& key) {
    Part& part = parts[key.part];
    const uint32_t end = time + std::max(key.release, SILENCE_FADE_SAMPLES);
    if (!part.has_tail || is_before(part.tail_end, end))
        part.tail_end = end;
    part.has_tail = true;
    part.keys[key.engine_note] = NONE;
    part.num_notes--;
    budget.release_note(time, end);
    key.part = NONE;
}

void MelodicParts::silence(uint32_t time, unsigned channel, EngineEvents& out) {
    for (unsigned i = 0; i < NUM_PARTS; i++)
        if (parts[i].is_assigned && parts[i].channel == channel && may_echo(parts[i], time))
            fade(time, i, out);
    keys[channel].fill(Key());
}

void MelodicParts::silence_all(uint32_t time, EngineEvents& out) {
    for (unsigned channel = 0; channel < NUM_MIDI_CHANNELS; channel++)
        silence(time, channel, out);
    for (Part& part : parts) {
        part.is_assigned = part.vibrates = part.has_tail = false;
        part.vibrato_semitones = 0.0;
    }
}

void MelodicParts::relieve(uint32_t time, EngineEvents& out) {
    const unsigned used = budget.count(time);
    const unsigned wanted = used >= VoiceBudget::VERY_SCARCE ? 2
                            : used >= VoiceBudget::SCARCE    ? 1
                                                             : 0;
    for (unsigned i = 0; i < wanted && release_quietest(time, out); i++)
        state.report.count(GmShortfall::NOTE_RELEASED);
}

// Of the notes that only a pedal holds, the one that has died away most; the highest and the lowest
// note of all are spared, since they carry melody and bass.
bool MelodicParts::release_quietest(uint32_t time, EngineEvents& out) {
    constexpr double DECAY_DB_PER_SECOND = 12.0;
    unsigned lowest = NUM_KEYS;
    unsigned highest = 0;
    for (const auto& channel : keys) {
        for (const Key& key : channel) {
            if (key.part == NONE)
                continue;
            lowest = std::min<unsigned>(lowest, key.engine_note);
            highest = std::max<unsigned>(highest, key.engine_note);
        }
    }
    const Key* quietest = nullptr;
    double least_level = 0.0;
    unsigned quietest_channel = 0;
    for (unsigned channel = 0; channel < NUM_MIDI_CHANNELS; channel++) {
        for (const Key& key : keys[channel]) {
            if (key.part == NONE || key.is_down || key.engine_note == lowest ||
                key.engine_note == highest)
                continue;
            const double level = 20.0 * std::log10(level_gain(key.velocity)) -
                                 DECAY_DB_PER_SECOND * double(time - key.start) / SAMPLE_RATE;
            if (quietest == nullptr || level < least_level) {
                quietest = &key;
                quietest_channel = channel;
                least_level = level;
            }
        }
    }
    if (quietest == nullptr)
        return false;
    release(time, quietest_channel, unsigned(quietest - keys[quietest_channel].data()), out);
    return true;
}

unsigned MelodicParts::engine_note(const Part& part, unsigned key) {
    constexpr int OCTAVE = 12;
    const GmChannel& settings = state.channels[part.channel];
    const int coarse = int(settings.coarse_tuning >> 7U) - int(MIDI_CENTRE) +
                       int(state.master.coarse_tuning) - int(MIDI_CENTRE);
    int note = int(key) + coarse + part.shift;
    if (note < 0 || note >= int(NUM_KEYS))
        state.report.count(GmShortfall::NOTE_MOVED);
    while (note < 0)
        note += OCTAVE;
    while (note >= int(NUM_KEYS))
        note -= OCTAVE;
    return unsigned(note);
}

void MelodicParts::apply_laws(uint32_t time, Part& part, unsigned key, unsigned velocity,
                              EngineEvents& out) {
    for (const NoteLaw& law : state.rules_of(part.program).laws_of(part.program)) {
        const uint8_t base =
            channel_byte(state, state.channels[part.channel], own_bytes(part), law.controller);
        part.engine.set(time, law.controller, law_byte(law, base, key, velocity), out);
    }
}

unsigned MelodicParts::velocity_of(const Part& part, unsigned key, unsigned velocity) const {
    const GmChannel& settings = state.channels[part.channel];
    const SoundRules& rules = state.rules_of(part.program);
    const ControllerBytes& own = own_bytes(part);
    const double soft = settings.is_down(MIDI_SOFT) ? SOFT_PEDAL_VELOCITY : 1.0;
    const VelocityLaw law = find_velocity_law(rules.velocity[part.program], own);
    return engine_velocity(velocity * soft, law,
                           volume_correction(channel_volume(state, settings, own)) *
                               rules.level[part.program].gain(key, velocity));
}

void MelodicParts::add_held_keys(ChannelKeys& held) const {
    for (const Part& part : parts) {
        if (part.num_notes == 0)
            continue;
        for (const uint8_t key : part.keys)
            if (key != NONE)
                held[part.channel].set(key);
    }
}

unsigned MelodicParts::num_held_notes() const {
    unsigned count = 0;
    for (const Part& part : parts)
        count += part.num_notes;
    return count;
}

} // namespace tarquil

// The rhythm parts: drum kits on the second engine.

#include "midi/gm/rhythm_parts.h"

#include <algorithm>

#include "midi/gm/channel_sound.h"
#include "softsynth/parameters/constants.h"

namespace tarquil {

RhythmParts::RhythmParts(GmState& shared) : state(shared) {
    for (unsigned i = 0; i < MAX_FAMILIES; i++)
        families[i].engine.place(RHYTHM_ENGINE, i);
}

void RhythmParts::start() {
    hit_count = 0;
    for (Family& family : families) {
        family.engine.forget();
        family.is_used = false;
    }
}

template <typename Match>
void RhythmParts::end_hits(uint32_t time, const Match& match, EngineEvents& out) {
    unsigned kept = 0;
    for (unsigned i = 0; i < hit_count; i++) {
        const Hit hit = hits[i];
        if (match(hit))
            families[hit.family].engine.note_off(time, hit.note, out);
        else
            hits[kept++] = hit;
    }
    hit_count = kept;
}

bool RhythmParts::note_on(uint32_t time, unsigned channel, unsigned key, unsigned velocity,
                          EngineEvents& out) {
    const DrumKey* drum = state.map->find_drum(state.channels[channel].program, key);
    if (drum == nullptr || state.sounds.drums[drum->instrument] == nullptr)
        return false;
    const auto chokes = std::span(drum->chokes).first(drum->num_chokes);
    end_hits(
        time,
        [&](const Hit& hit) {
            const bool is_choked = hit.channel == channel &&
                                   std::find(chokes.begin(), chokes.end(), hit.key) != chokes.end();
            return is_choked || (hit.family == drum->family && hit.note == drum->note);
        },
        out);

    Family& family = families[drum->family];
    family.is_used = true;
    family.channel = uint8_t(channel);
    family.instrument = drum->instrument;
    family.pan = drum->pan;
    prepare(time, family, key, velocity, out);

    constexpr double PERCENT = 100.0;
    const ControllerBytes& own = *state.sounds.drums[drum->instrument];
    const VelocityLaw law = find_velocity_law(state.map->drums.velocity[drum->instrument], own);
    const double correction =
        volume_correction(channel_volume(state, state.channels[channel], own));
    family.engine.note_on(
        time, drum->note,
        engine_velocity(velocity * drum->velocity_percent / PERCENT, law, correction), out);
    constexpr uint32_t MILLISECONDS = 1000;
    schedule(time,
             {.channel = uint8_t(channel),
              .key = uint8_t(key),
              .family = drum->family,
              .note = drum->note,
              .is_timed = drum->milliseconds != 0,
              .end = time + drum->milliseconds * uint32_t(SAMPLE_RATE) / MILLISECONDS},
             out);
    return true;
}

void RhythmParts::prepare(uint32_t time, Family& family, unsigned key, unsigned velocity,
                          EngineEvents& out) {
    const ControllerBytes& own = *state.sounds.drums[family.instrument];
    ControllerBytes bytes{};
    for (const ControllerInfo& info : channel_controller_rows())
        bytes[info.number] =
            drum_byte(state, state.channels[family.channel], own, family.pan, info.number);
    for (const NoteLaw& law : state.map->drums.laws_of(family.instrument))
        bytes[law.controller] = law_byte(law, bytes[law.controller], key, velocity);
    family.engine.set_sound(time, bytes, out);
}

void RhythmParts::schedule(uint32_t time, const Hit& hit, EngineEvents& out) {
    if (hit_count == MAX_HITS) {
        families[hits[0].family].engine.note_off(time, hits[0].note, out);
        std::copy(hits.begin() + 1, hits.end(), hits.begin());
        hit_count--;
    }
    hits[hit_count++] = hit;
}

void RhythmParts::note_off(uint32_t time, unsigned channel, unsigned key, EngineEvents& out) {
    end_hits(
        time,
        [&](const Hit& hit) { return !hit.is_timed && hit.channel == channel && hit.key == key; },
        out);
}

void RhythmParts::release_keys(uint32_t time, unsigned channel, EngineEvents& out) {
    end_hits(
        time, [&](const Hit& hit) { return !hit.is_timed && hit.channel == channel; }, out);
}

void RhythmParts::silence(uint32_t time, unsigned channel, EngineEvents& out) {
    for (unsigned i = 0; i < MAX_FAMILIES; i++) {
        const bool has_hit =
            std::any_of(hits.begin(), hits.begin() + hit_count,
                        [&](const Hit& hit) { return hit.family == i && hit.channel == channel; });
        if (has_hit || (families[i].is_used && families[i].channel == channel))
            silence_family(time, i, out);
    }
}

void RhythmParts::silence_all(uint32_t time, EngineEvents& out) {
    for (unsigned i = 0; i < MAX_FAMILIES; i++)
        if (families[i].is_used)
            silence_family(time, i, out);
}

void RhythmParts::silence_family(uint32_t time, unsigned family_index, EngineEvents& out) {
    families[family_index].engine.silence(time, out);
    families[family_index].is_used = false;
    const auto last = std::remove_if(hits.begin(), hits.begin() + hit_count,
                                     [&](const Hit& hit) { return hit.family == family_index; });
    hit_count = unsigned(last - hits.begin());
}

void RhythmParts::update(uint32_t time, unsigned channel, std::span<const unsigned> controllers,
                         EngineEvents& out) {
    for (Family& family : families) {
        if (!family.is_used || family.channel != channel ||
            state.sounds.drums[family.instrument] == nullptr)
            continue;
        for (const unsigned controller : controllers) {
            const uint8_t byte =
                drum_byte(state, state.channels[channel], *state.sounds.drums[family.instrument],
                          family.pan, controller);
            if (controller == CTRL_MAIN_VOLUME || controller == CTRL_PANNING)
                family.engine.glide(time, controller, byte, out);
            else
                family.engine.set(time, controller, byte, out);
        }
    }
}

void RhythmParts::update_all(uint32_t time, EngineEvents& out) {
    constexpr unsigned MOVED_BY_MASTER[] = {CTRL_MAIN_VOLUME, CTRL_PANNING};
    // What else was edited comes with the next hit.
    for (unsigned channel = 0; channel < NUM_MIDI_CHANNELS; channel++)
        update(time, channel, MOVED_BY_MASTER, out);
}

void RhythmParts::add_held_keys(ChannelKeys& held) const {
    for (unsigned i = 0; i < hit_count; i++)
        held[hits[i].channel].set(hits[i].key);
}

DueTime RhythmParts::due() const {
    DueTime first;
    for (unsigned i = 0; i < hit_count; i++)
        if (hits[i].is_timed)
            first = earlier(first, hits[i].end);
    for (const Family& family : families)
        first = earlier(first, family.engine.due());
    return first;
}

void RhythmParts::run_due(uint32_t time, EngineEvents& out) {
    end_hits(
        time, [time](const Hit& hit) { return hit.is_timed && hit.end == time; }, out);
    for (Family& family : families)
        family.engine.run_due(time, out);
}

void RhythmParts::move_clock_back(uint32_t frames) {
    for (Hit& hit : hits)
        hit.end -= frames;
    for (Family& family : families)
        family.engine.move_clock_back(frames);
}

} // namespace tarquil

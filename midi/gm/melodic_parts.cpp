// The melodic parts: which engine channel plays a sound, and what it is told.

#include "midi/gm/melodic_parts.h"

#include <algorithm>
#include <cmath>

#include "midi/gm/channel_sound.h"
#include "softsynth/parameters/constants.h"

namespace tarquil {

namespace {

// The engine's bend reaches this far.
constexpr double MAX_BEND_SEMITONES = 12.0;

} // namespace

MelodicParts::MelodicParts(GmState& shared) : state(shared) {
    for (unsigned i = 0; i < NUM_PARTS; i++)
        parts[i].engine.place(MELODIC_ENGINE, i);
    start();
}

void MelodicParts::start() {
    for (Part& part : parts) {
        part.engine.forget();
        part.is_assigned = part.vibrates = part.has_tail = false;
        part.num_notes = 0;
        part.keys.fill(NONE);
    }
    for (auto& channel : keys)
        channel.fill(Key());
    budget.clear();
    next_tick.reset();
    tick_origin = 0;
}

unsigned MelodicParts::find_part(uint32_t time, unsigned channel, EngineEvents& out) {
    const unsigned program = state.channels[channel].program;
    for (unsigned i = 0; i < NUM_PARTS; i++)
        if (parts[i].is_assigned && parts[i].channel == channel && parts[i].program == program)
            return i;
    const unsigned chosen = choose_part(time, channel);
    Part& part = parts[chosen];
    if (part.is_assigned && is_sounding(part, time)) {
        if (part.num_notes > 0)
            state.report.count(GmShortfall::PART_TAKEN);
        fade(time, chosen, out);
    }
    assign(time, part, channel, out);
    return chosen;
}

unsigned MelodicParts::choose_part(uint32_t time, unsigned channel) const {
    if (!parts[channel].is_assigned)
        return channel;
    // Unassigned before silent before fading before held; of equals the one with the oldest note.
    const auto rank = [time](const Part& part) {
        if (!part.is_assigned)
            return 0;
        if (part.num_notes > 0)
            return 3;
        return is_sounding(part, time) ? 2 : 1;
    };
    const auto best =
        std::min_element(parts.begin(), parts.end(), [&](const Part& a, const Part& b) {
            const int rank_a = rank(a);
            const int rank_b = rank(b);
            return rank_a != rank_b ? rank_a < rank_b
                                    : rank_a > 0 && is_before(a.last_start, b.last_start);
        });
    return unsigned(best - parts.begin());
}

void MelodicParts::assign(uint32_t time, Part& part, unsigned channel, EngineEvents& out) {
    const GmChannel& settings = state.channels[channel];
    part.is_assigned = true;
    part.channel = uint8_t(channel);
    part.program = settings.program;
    part.shift = 0;
    part.vibrates = false;
    part.vibrato_semitones = 0.0;
    part.vibrato.stop();
    ControllerBytes bytes{};
    for (const ControllerInfo& info : channel_controller_rows())
        bytes[info.number] = channel_byte(state, settings, own_bytes(part), info.number);
    part.engine.set_sound(time, bytes, out);
}

const ControllerBytes& MelodicParts::own_bytes(const Part& part) const {
    const ControllerBytes* bytes = state.sounds.melodic[part.program];
    return bytes != nullptr ? *bytes : default_controller_bytes();
}

bool MelodicParts::is_sounding(const Part& part, uint32_t time) {
    return part.num_notes > 0 || (part.has_tail && is_before(time, part.tail_end));
}

bool MelodicParts::may_echo(const Part& part, uint32_t time) {
    // The engine lets a channel's echoes ring for two seconds.
    constexpr uint32_t LONGEST_ECHO = 2 * SAMPLE_RATE;
    return part.num_notes > 0 || (part.has_tail && is_before(time, part.tail_end + LONGEST_ECHO));
}

void MelodicParts::fade(uint32_t time, unsigned part_index, EngineEvents& out) {
    parts[part_index].engine.silence(time, out);
    forget_notes(time, part_index);
    parts[part_index].has_tail = false;
}

void MelodicParts::forget_notes(uint32_t time, unsigned part_index) {
    for (Key& key : keys[parts[part_index].channel]) {
        if (key.part != part_index)
            continue;
        key.release = 0;
        drop(time, key);
    }
}

double MelodicParts::wanted_semitones(const Part& part) const {
    return state.channels[part.channel].bend_semitones() + state.master.fine_semitones();
}

void MelodicParts::place_bend(Part& part) {
    const double wanted = wanted_semitones(part);
    part.shift = std::abs(wanted) <= MAX_BEND_SEMITONES ? 0 : int(std::lround(wanted));
}

bool MelodicParts::send_bend(uint32_t time, Part& part, EngineEvents& out) {
    const double bend = wanted_semitones(part) + part.vibrato_semitones - part.shift;
    part.engine.bend(time, bend_value(bend), out);
    return std::abs(bend) <= MAX_BEND_SEMITONES;
}

void MelodicParts::send(uint32_t time, Part& part, unsigned controller, EngineEvents& out) {
    const uint8_t byte =
        channel_byte(state, state.channels[part.channel], own_bytes(part), controller);
    const bool can_glide = controller == CTRL_MAIN_VOLUME || controller == CTRL_PANNING;
    if (can_glide && is_sounding(part, time))
        part.engine.glide(time, controller, byte, out);
    else
        part.engine.set(time, controller, byte, out);
}

void MelodicParts::update(uint32_t time, unsigned channel, std::span<const unsigned> controllers,
                          EngineEvents& out) {
    for (Part& part : parts) {
        if (!part.is_assigned || part.channel != channel)
            continue;
        for (const unsigned controller : controllers)
            send(time, part, controller, out);
    }
}

void MelodicParts::update_all(uint32_t time, EngineEvents& out) {
    for (Part& part : parts) {
        if (!part.is_assigned)
            continue;
        for (const ControllerInfo& info : channel_controller_rows())
            if (!is_bend_controller(info.number))
                send(time, part, info.number, out);
        send_bend(time, part, out);
    }
}

void MelodicParts::update_program(uint32_t time, unsigned program, unsigned controller,
                                  EngineEvents& out) {
    if (is_bend_controller(controller))
        return;
    for (Part& part : parts)
        if (part.is_assigned && part.program == program)
            send(time, part, controller, out);
}

void MelodicParts::update_bend(uint32_t time, unsigned channel, EngineEvents& out) {
    bool reached = true;
    for (Part& part : parts)
        if (part.is_assigned && part.channel == channel)
            reached = (send_bend(time, part, out) || !is_sounding(part, time)) && reached;
    if (!reached)
        state.report.count(GmShortfall::BEND_CLAMPED);
}

void MelodicParts::update_vibrato(uint32_t time, unsigned channel) {
    for (Part& part : parts)
        if (part.is_assigned && part.channel == channel && is_sounding(part, time))
            start_vibrato(time, part);
}

void MelodicParts::start_vibrato(uint32_t time, Part& part) {
    if (part.vibrates || !Vibrato::is_wanted(state.rules_of(part.program).vibrato[part.program],
                                             state.channels[part.channel]))
        return;
    part.vibrates = true;
    // All parts step at the same times, so that what is heard does not hang on who began.
    if (!next_tick)
        next_tick = time + Vibrato::PERIOD - (time - tick_origin) % Vibrato::PERIOD;
}

uint32_t MelodicParts::channels_of(unsigned program) const {
    uint32_t channels = 0;
    for (unsigned i = 0; i < NUM_PARTS; i++)
        if (parts[i].is_assigned && parts[i].program == program)
            channels |= 1U << i;
    return channels;
}

DueTime MelodicParts::due() const {
    DueTime first = next_tick;
    for (const Part& part : parts)
        first = earlier(first, part.engine.due());
    return first;
}

void MelodicParts::run_due(uint32_t time, EngineEvents& out) {
    for (Part& part : parts)
        part.engine.run_due(time, out);
    if (next_tick != DueTime(time))
        return;
    next_tick.reset();
    for (Part& part : parts) {
        if (!part.vibrates)
            continue;
        const OwnVibrato& own = state.rules_of(part.program).vibrato[part.program];
        const GmChannel& channel = state.channels[part.channel];
        part.vibrates = is_sounding(part, time) && Vibrato::is_wanted(own, channel);
        if (part.vibrates) {
            part.vibrato_semitones = part.vibrato.step(own, channel, time);
            next_tick = time + Vibrato::PERIOD;
        } else {
            part.vibrato_semitones = 0.0;
            part.vibrato.stop();
        }
        send_bend(time, part, out);
    }
}

void MelodicParts::move_clock_back(uint32_t frames) {
    for (Part& part : parts) {
        part.engine.move_clock_back(frames);
        part.vibrato.move_clock_back(frames);
        part.last_start -= frames;
        part.tail_end -= frames;
    }
    for (auto& channel : keys)
        for (Key& key : channel)
            key.start -= frames;
    budget.move_clock_back(frames);
    if (next_tick)
        *next_tick -= frames;
    tick_origin -= frames;
}

} // namespace tarquil

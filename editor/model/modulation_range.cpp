// How far modulation moves a control.

#include "editor/model/modulation_range.h"

#include <algorithm>
#include <cmath>
#include <initializer_list>

#include "softsynth/parameters/controller_table.h"
#include "softsynth/parameters/families.h"
#include "softsynth/parameters/influence.h"

namespace tarquil {

namespace {

struct Range {
    double lowest = 0.0;
    double highest = 0.0;
};

// In the unit of the target: octaves, Q, or for pitches the frequency ratio.
struct Moved {
    Range range;
    unsigned source = INFL_NONE;
};

double mapped(unsigned number, const ControllerBytes& bytes) {
    return double(map_char_to_float(number, bytes[number]));
}

Range source_range(unsigned source, const ControllerBytes& bytes) {
    if (source <= INFL_ENV3)
        return {0.0, 1.0};
    if (source == INFL_RESONANCE)
        return {0.0, mapped(CTRL_FILTER1_RESONANCE, bytes)};
    return {-1.0, 1.0};
}

Range product(const Range& a, const Range& b) {
    const auto [lowest, highest] = std::minmax(
        {a.lowest * b.lowest, a.lowest * b.highest, a.highest * b.lowest, a.highest * b.highest});
    return {lowest, highest};
}

void move(Moved& target, unsigned slot, const ControllerBytes& bytes) {
    const ModulationRows rows = modulation_rows(slot);
    const unsigned source = bytes[rows.source];
    if (source == INFL_NONE)
        return;
    if (target.source == INFL_NONE)
        target.source = source;
    const Range moving = source_range(source, bytes);
    if (bytes[rows.amount] == MULTIPLYING_AMOUNT) {
        target.range = product(target.range, moving);
        return;
    }
    const double amount = mapped(rows.amount, bytes) + mapped(rows.fine_amount, bytes);
    const Range added = product(moving, {amount, amount});
    target.range.lowest += added.lowest;
    target.range.highest += added.highest;
}

double byte_of(unsigned number, double value) {
    const ControllerMapping& mapping = find_controller(number)->mapping;
    return (value - double(mapping.offset)) / double(mapping.scale);
}

// A ratio of frequencies in semitones; five octaves stand for what is lower or turned round.
double semitones(double ratio) {
    return 12.0 * std::log2(std::max(ratio, 1.0 / 32));
}

} // namespace

std::optional<ModulationRange> modulation_range(unsigned number, const ControllerBytes& bytes) {
    const unsigned oscillator = number - CTRL_OSC1_COARSE_TUNE;
    Moved moved;
    if (oscillator < NUM_OSCILLATORS) {
        moved.range = {1.0, 1.0};
        move(moved, FIRST_PITCH_SLOT + oscillator, bytes);
        const double tune = mapped(number, bytes);
        moved.range = {tune + semitones(moved.range.lowest), tune + semitones(moved.range.highest)};
    } else if (number == CTRL_FILTER1_RESONANCE || number == CTRL_FILTER1_CUTOFF) {
        const double value = mapped(number, bytes);
        moved.range = {value, value};
        const bool is_cutoff = number == CTRL_FILTER1_CUTOFF;
        const unsigned first = is_cutoff ? FIRST_CUTOFF_SLOT : RESONANCE_SLOT;
        for (unsigned i = 0; i < (is_cutoff ? NUM_CUTOFF_SLOTS : 1); i++)
            move(moved, first + i, bytes);
    }
    if (moved.source == INFL_NONE || moved.range.lowest == moved.range.highest)
        return std::nullopt;
    return ModulationRange{byte_of(number, moved.range.lowest),
                           byte_of(number, moved.range.highest), moved.source};
}

std::optional<double> modulated_byte(unsigned number, const NoteView& note) {
    if (note.is_sounding == 0)
        return std::nullopt;
    if (number == CTRL_FILTER1_CUTOFF)
        return byte_of(number, double(note.cutoff));
    if (number == CTRL_FILTER1_RESONANCE)
        return byte_of(number, double(note.resonance));
    return std::nullopt;
}

} // namespace tarquil

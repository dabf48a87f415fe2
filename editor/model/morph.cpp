// The way between two versions of a sound.

#include "editor/model/morph.h"

#include <algorithm>
#include <cmath>

#include "common/characters.h"
#include "common/number_text.h"
#include "softsynth/parameters/coarse_and_fine.h"
#include "softsynth/parameters/control_meaning.h"
#include "softsynth/parameters/controller_display.h"
#include "softsynth/parameters/controller_table.h"
#include "softsynth/parameters/note_length.h"

namespace tarquil {

namespace {

constexpr double MIDDLE = 0.5;

bool is_same_quantity(const ControlMeaning& one, const ControlMeaning& other) {
    return std::string_view(one.label) == other.label && one.quantity == other.quantity &&
           one.unit == other.unit && one.choices.data() == other.choices.data();
}

class Way {
  public:
    Way(const ControllerBytes& way_from, const ControllerBytes& way_to, double at)
        : from(way_from), to(way_to), position(at) {}

    [[nodiscard]] uint8_t byte(unsigned number) const {
        if (const auto whole = stepped(number))
            return *whole;
        return uint8_t(std::lround(from[number] + position * (to[number] - from[number])));
    }

    [[nodiscard]] PairBytes pair(const CoarseAndFine& rows) const {
        const PairBytes first{from[rows.coarse], from[rows.fine]};
        const PairBytes last{to[rows.coarse], to[rows.fine]};
        const auto whole = stepped(rows.coarse);
        const bool is_step = whole || is_multiplying(rows.coarse, first.coarse) !=
                                          is_multiplying(rows.coarse, last.coarse);
        if (is_step || first == last)
            return is_first(rows.coarse) ? first : last;
        const double start = pair_quantity(rows, first);
        return nearest_pair(rows, start + position * (pair_quantity(rows, last) - start));
    }

  private:
    // One or the other, where nothing lies between.
    [[nodiscard]] std::optional<uint8_t> stepped(unsigned number) const {
        const ControlMeaning first = meaning_of(number, from);
        const ControlMeaning last = meaning_of(number, to);
        const bool has_between =
            is_same_quantity(first, last) && first.choices.empty() && first.is_used == last.is_used;
        return has_between ? std::nullopt
                           : std::optional(is_first(number) ? from[number] : to[number]);
    }

    [[nodiscard]] bool is_first(unsigned number) const {
        const ControlMeaning first = meaning_of(number, from);
        const ControlMeaning last = meaning_of(number, to);
        if (first.is_used != last.is_used && first.choices.empty() && last.choices.empty())
            return first.is_used;
        return position < MIDDLE;
    }

    const ControllerBytes& from;
    const ControllerBytes& to;
    const double position;
};

} // namespace

ControllerBytes morphed(const ControllerBytes& from, const ControllerBytes& to, double position) {
    if (position <= 0.0)
        return from;
    if (position >= 1.0)
        return to;
    ControllerBytes bytes = from;
    const Way way(from, to, position);
    for (const ControllerInfo& info : channel_controller_rows())
        bytes[info.number] = way.byte(info.number);
    const auto put = [&](const CoarseAndFine& rows) {
        const PairBytes between = way.pair(rows);
        bytes[rows.coarse] = uint8_t(between.coarse);
        bytes[rows.fine] = uint8_t(between.fine);
    };
    for (unsigned slot = 0; slot < NUM_MODULATION_SLOTS; slot++)
        put(amount_pair(slot));
    put(BEND_PAIR);
    return bytes;
}

double MorphLength::seconds(double quarters_per_minute) const {
    return is_in_quarters ? value * 60.0 / quarters_per_minute : value;
}

std::string MorphLength::text() const {
    if (!is_in_quarters)
        return trimmed_number(value, 2) + " s";
    for (const NoteLength& length : note_lengths()) {
        if (length.quarters == value)
            return length.name;
    }
    return trimmed_number(value / 4, 3) + " notes";
}

std::optional<MorphLength> parse_morph_length(std::string_view text) {
    constexpr double SHORTEST_SECONDS = 0.1;
    constexpr double LONGEST_SECONDS = 600.0;
    if (const NoteLength* const note = find_note_length(text))
        return MorphLength{note->quarters, true};
    std::string_view number = trimmed(text);
    if (number.ends_with('s'))
        number = trimmed(number.substr(0, number.size() - 1));
    const bool is_number = !number.empty() && std::ranges::all_of(number, [](char c) {
        return is_digit(c) || c == '.';
    });
    const double value = is_number ? text_to_number(number) : 0.0;
    if (!(value >= SHORTEST_SECONDS && value <= LONGEST_SECONDS))
        return std::nullopt;
    return MorphLength{value, false};
}

void MorphRun::start(double position) {
    way = position < 1.0 || swings ? position : 0.0;
    is_on = true;
}

double MorphRun::advance(double part) {
    way += std::max(part, 0.0);
    if (swings) {
        way = std::fmod(way, 2.0);
    } else if (way >= 1.0) {
        way = 1.0;
        is_on = false;
    }
    return way <= 1.0 ? way : 2.0 - way;
}

} // namespace tarquil

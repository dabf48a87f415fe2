// The tempo and the place in the song at each run of a player.

#include "player/tempo_clock.h"

#include <algorithm>
#include <cmath>

#include "softsynth/parameters/constants.h"

namespace tarquil {

namespace {

constexpr double SAMPLES_PER_MINUTE = 60.0 * SAMPLE_RATE;

// What a host says is taken within these.
constexpr double SLOWEST = 1.0;
constexpr double FASTEST = 4000.0;
constexpr double FARTHEST = 1e9; // quarter notes

// Hosts count in ticks: what is nearer than a millisecond is the same place.
constexpr double SAME_PLACE = SAMPLE_RATE / 1000.0; // samples

bool is_tempo(double value) {
    return value >= SLOWEST && value <= FASTEST;
}

bool is_place(const HostTempo::Place& place) {
    return std::fabs(place.position) <= FARTHEST && std::fabs(place.bar_start) <= FARTHEST;
}

} // namespace

double TempoClock::samples_per_quarter() const {
    return SAMPLES_PER_MINUTE / tempo;
}

bool TempoClock::add(const HostTempo& said, uint32_t time) {
    const bool fits = has_room();
    if (!fits) {
        std::copy(items.begin() + 1, items.end(), items.begin());
        count--;
    }
    items[count++] = {said, time};
    return fits;
}

Tempo TempoClock::advance(uint32_t start, uint32_t frames) {
    size_t taken = 0;
    for (; taken < count && int32_t(items[taken].time - (start + frames)) < 0; taken++)
        take(items[taken].said, double(int32_t(start - items[taken].time)));
    std::copy(items.begin() + ptrdiff_t(taken), items.begin() + ptrdiff_t(count), items.begin());
    count -= taken;
    const Tempo now = {.samples_per_quarter = samples_per_quarter(),
                       .position = here.position,
                       .bar_start = here.bar_start,
                       .bar_length = here.bar_length};
    here.position += double(frames) / samples_per_quarter();
    return now;
}

// `samples_since`: from what is said to the run's start.
void TempoClock::take(const HostTempo& said, double samples_since) {
    const bool has_changed =
        is_tempo(said.quarters_per_minute) && said.quarters_per_minute != tempo;
    if (has_changed)
        tempo = said.quarters_per_minute;
    if (!said.place || !is_place(*said.place))
        return;
    const double position = said.place->position + samples_since / samples_per_quarter();
    const double samples_off = std::fabs(position - here.position) * samples_per_quarter();
    if (has_changed || samples_off > SAME_PLACE)
        here.position = position;
    here.bar_start = said.place->bar_start;
    // Not a number is none.
    here.bar_length = said.place->bar_length > 0.0 && said.place->bar_length <= FARTHEST
                          ? said.place->bar_length
                          : 0.0;
}

void TempoClock::move_clock_back(uint32_t frames) {
    for (size_t i = 0; i < count; i++)
        items[i].time -= frames;
}

} // namespace tarquil

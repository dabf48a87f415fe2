// The course of an instrument's envelopes.

#include "curves/envelope_shape.h"

#include <algorithm>
#include <cstdint>
#include <set>

#include "softsynth/parameters/constants.h"
#include "softsynth/parameters/controller_table.h"
#include "softsynth/parameters/families.h"
#include "softsynth/parameters/voice_quantities.h"
#include "softsynth/voices/envelope.h"

namespace tarquil {

namespace {

Envelope make_envelope(const ControllerBytes& bytes, unsigned index) {
    const EnvelopeRows rows = envelope_rows(index);
    const auto value = [&](unsigned number) { return map_char_to_float(number, bytes[number]); };
    Envelope envelope;
    env_init(&envelope, 0, envelope_samples(value(rows.attack)),
             envelope_samples(value(rows.decay)), cubed(value(rows.sustain)),
             envelope_samples(value(rows.release)), 1.0F);
    return envelope;
}

} // namespace

std::vector<PlotPoint> envelope_points(const ControllerBytes& bytes, unsigned index, double hold) {
    Envelope envelope = make_envelope(bytes, index);
    env_set_release_time(&envelope, uint32_t(hold * SAMPLE_RATE));
    const uint32_t length = env_get_done_time(&envelope) + 1;
    std::vector<float> levels(length);
    env_render(&envelope, levels.data(), 0, length);
    // An envelope is straight from corner to corner, and at each it may turn or fall between the
    // sample before and its own.
    std::set<uint32_t> times{0};
    for (const uint32_t corner :
         {envelope.attack_time, envelope.attack_time + envelope.decay_time,
          envelope.release_start_time, envelope.release_start_time + envelope.release_time}) {
        times.insert(std::min(corner, length) - (corner > 0 ? 1 : 0));
        times.insert(std::min(corner, length - 1));
    }
    // The first sample is one step of the attack above silence.
    std::vector<PlotPoint> points{{0.0, 0.0}};
    for (const uint32_t time : times)
        points.push_back({double(time) / SAMPLE_RATE, double(levels[time])});
    return points;
}

} // namespace tarquil

// A four-pole transistor ladder with a saturation in every stage, at four times the sample rate.

#include "softsynth/filters/ladderfilter.h"

#include <algorithm>
#include <cmath>

#include "softsynth/filters/cutoff_angle.h"
#include "softsynth/kernels/kernels.h"
#include "softsynth/parameters/filter_quantities.h"
#include "softsynth/signal/control_segments.h"
#include "softsynth/signal/finite.h"

namespace tarquil {

namespace {

constexpr uint32_t OVERSAMPLING = LadderLanes::OVERSAMPLING;

constexpr float MAX_RESONANCE = 4.0F;
constexpr float RESONANCE_SCALE = 0.5333333333333333F; // 7.5 becomes 4

constexpr uint32_t ESTIMATE_LENGTH = 1024;

// Weights of the input (after feedback) and of the four stages.
constexpr float WEIGHTS[][5] = {
    {0, 1, 0, 0, 0},   // low-pass, 6 dB/oct
    {0, 0, 1, 0, 0},   // 12
    {0, 0, 0, 1, 0},   // 18
    {0, 0, 0, 0, 1},   // 24
    {1, -2, 1, 0, 0},  // high-pass
    {0, 0, 1, -2, 1},  // band-pass
    {1, -2, 4, -4, 0}, // notch
};

} // namespace

LadderFilter::LadderFilter() {
    init(FILTER_LADDER_START_MARKER, 0.0F);
    update();
}

void LadderFilter::init(FilterType new_type, float key_frequency) {
    if (!is_ladder_filter(new_type))
        TARQ_ASSERT(0);
    type = new_type;
    key_follow = key_frequency * RADIANS_PER_HZ;
    is_stale = true;
    std::copy_n(WEIGHTS[type - FILTER_LADDER_START_MARKER], 5, coefficients.c);
    memory = LadderMemory();
}

void LadderFilter::clear_if_not_finite() {
    const bool finite = all_finite(memory.y, 4) && all_finite(memory.t, 4) &&
                        std::isfinite(memory.y4_prev) && std::isfinite(memory.feedback) &&
                        memory.decimate_88khz.is_finite() && memory.decimate_176khz.is_finite();
    if (!finite)
        memory = LadderMemory();
}

void LadderFilter::set_octaves_cutoff(float octaves) {
    if (octaves == octaves_set)
        return;
    octaves_set = octaves;
    cutoff = cutoff_omega(octaves);
    is_stale = true;
}

void LadderFilter::set_resonance(float r) {
    const float scaled = r * RESONANCE_SCALE;
    const float bounded = scaled > 0.0F ? std::min(scaled, MAX_RESONANCE) : 0.0F;
    is_stale = is_stale || resonance != bounded;
    resonance = bounded;
}

void LadderFilter::update() {
    if (!is_stale)
        return;
    is_stale = false;
    // Written so that not a number ends at a bound, too.
    float w = (cutoff + key_follow) * 0.25F;
    w = w < MAX_CUTOFF_ANGLE ? w : MAX_CUTOFF_ANGLE;
    w = w > MIN_CUTOFF_ANGLE ? w : MIN_CUTOFF_ANGLE;
    const float w2 = w * w;
    coefficients.k = resonance * (0.9968F + 0.58597666F * w - 0.3988407F * w2);
    coefficients.gain = 1.0F + 1.25F * resonance;
    coefficients.g =
        1.0F - std::exp(-2.0F * w *
                        (0.9988F - 0.20658311F * w + 0.050204646F * w2 + 0.060407124F * w2 * w));
}

void LadderFilter::render_chunk(const float* in, float* out, uint32_t n) {
    run_ladder(coefficients, memory, in, out, n);
}

void LadderFilter::render(float* buf, uint32_t buf_size, const float* cutoff_octaves,
                          const float* resonance_signal, uint32_t control_step) {
    TARQ_ASSERT(buf_size <= MAX_NUM_SAMPLES);
    alignas(64) float scratch[LadderLanes::SCRATCH_OF_ONE];
    LadderMemory* memories[] = {&memory};
    const LadderCoefficients* all_coefficients[] = {&coefficients};
    const LadderLanes lanes = {&buf, memories, all_coefficients, 1, scratch};
    for_each_control_segment(buf_size, cutoff_octaves, resonance_signal, control_step,
                             [&](uint32_t first, uint32_t end, float octaves, float q) {
                                 set_octaves_cutoff(octaves);
                                 set_resonance(q);
                                 update();
                                 kernels().ladder_lanes(lanes, first, end - first);
                             });
    clear_if_not_finite();
}

float LadderFilter::estimate_transfer_function(float omega) {
    float sine[ESTIMATE_LENGTH];
    float real = 1.0F;
    float imaginary = 0.0F;
    const float turn_real = std::cos(omega);
    const float turn_imaginary = std::sin(omega);
    float energy = 0.0F;
    for (float& sample : sine) {
        sample = imaginary;
        energy += sample * sample;
        const float turned = real * turn_real - imaginary * turn_imaginary;
        imaginary = real * turn_imaginary + imaginary * turn_real;
        real = turned;
    }
    // Its own scratch: a display may ask while the audio thread renders with other filters.
    float out[OVERSAMPLING * ESTIMATE_LENGTH];
    render_chunk(sine, out, ESTIMATE_LENGTH);
    memory.decimate_176khz.resample(out, out, 2 * ESTIMATE_LENGTH);
    memory.decimate_88khz.resample(out, out, ESTIMATE_LENGTH);
    float product = 0.0F;
    for (uint32_t i = 0; i < ESTIMATE_LENGTH; i++)
        product += sine[i] * out[i];
    return product / energy;
}

} // namespace tarquil

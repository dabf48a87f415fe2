// A four-pole transistor ladder with a saturation in every stage, at four times the sample rate.

#include "softsynth/ladderfilter.h"

#include <algorithm>
#include <cmath>

#include "softsynth/control_segments.h"
#include "softsynth/finite.h"

namespace {

constexpr uint32_t OVERSAMPLING = 4;

constexpr float PI = 3.1415927F;
constexpr float MIN_OMEGA = 0.001F;
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

// Shared by all ladder filters: rendering is not reentrant.
alignas(16) float samples_176khz[OVERSAMPLING * MAX_NUM_SAMPLES];
alignas(16) float samples_88khz[2 * MAX_NUM_SAMPLES];

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
    const float* weights = WEIGHTS[type - FILTER_LADDER_START_MARKER];
    c0 = weights[0];
    c1 = weights[1];
    c2 = weights[2];
    c3 = weights[3];
    c4 = weights[4];
    clear();
}

void LadderFilter::clear() {
    stages = Stages();
    decimate_88khz.init();
    decimate_176khz.init();
}

bool LadderFilter::is_finite() const {
    const auto& [y1, y2, y3, y4, y4_prev, feedback, t1, t2, t3, t4] = stages;
    const float memory[] = {y1, y2, y3, y4, y4_prev, feedback, t1, t2, t3, t4};
    return all_finite(memory, uint32_t(std::size(memory))) && decimate_88khz.is_finite() &&
           decimate_176khz.is_finite();
}

void LadderFilter::set_octaves_cutoff(float octaves) {
    cutoff = std::exp2(octaves) * OMEGA_20HZ;
}

void LadderFilter::set_resonance(float r) {
    const float scaled = r * RESONANCE_SCALE;
    resonance = scaled > 0.0F ? std::min(scaled, MAX_RESONANCE) : 0.0F;
}

void LadderFilter::update() {
    // Written so that not a number ends at a bound, too.
    float w = (cutoff + key_follow) * 0.25F;
    w = w < PI ? w : PI;
    w = w > MIN_OMEGA ? w : MIN_OMEGA;
    const float w2 = w * w;
    k = resonance * (0.9968F + 0.58597666F * w - 0.3988407F * w2);
    gain = 1.0F + 1.25F * resonance;
    g = 1.0F - std::exp(-2.0F * w *
                        (0.9988F - 0.20658311F * w + 0.050204646F * w2 + 0.060407124F * w2 * w));
}

void LadderFilter::render_chunk(const float* in, float* out, uint32_t n) {
    // Held in registers: `out` could overlap the members.
    auto [y1, y2, y3, y4, y4_prev, feedback, t1, t2, t3, t4] = stages;
    for (uint32_t i = 0; i < n; i++) {
        const float x = in[i];
        for (uint32_t step = 0; step < OVERSAMPLING; step++) {
            const float u = x - k * feedback;
            y1 += (tanh_approx(u) - t1) * g;
            t1 = tanh_approx(y1);
            y2 += (t1 - t2) * g;
            t2 = tanh_approx(y2);
            y3 += (t2 - t3) * g;
            t3 = tanh_approx(y3);
            y4 += (t3 - t4) * g;
            t4 = tanh_approx(y4);
            feedback = (y4 + y4_prev) * 0.5F;
            y4_prev = y4;
            *out++ = (c0 * u + c1 * t1 + c2 * t2 + c3 * t3 + c4 * t4) * gain;
        }
    }
    stages = {y1, y2, y3, y4, y4_prev, feedback, t1, t2, t3, t4};
}

void LadderFilter::render(float* buf, uint32_t buf_size, const float* cutoff_octaves,
                          const float* resonance_signal, uint32_t control_step) {
    TARQ_ASSERT(buf_size <= MAX_NUM_SAMPLES);
    for_each_control_segment(buf_size, cutoff_octaves, resonance_signal, control_step,
                             [&](uint32_t first, uint32_t end, float octaves, float q) {
                                 set_octaves_cutoff(octaves);
                                 set_resonance(q);
                                 update();
                                 render_chunk(buf + first, samples_176khz + first * OVERSAMPLING,
                                              end - first);
                             });
    decimate_176khz.resample(samples_176khz, samples_88khz, 2 * buf_size);
    decimate_88khz.resample(samples_88khz, buf, buf_size);
    if (!is_finite())
        clear();
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
    decimate_176khz.resample(out, out, 2 * ESTIMATE_LENGTH);
    decimate_88khz.resample(out, out, ESTIMATE_LENGTH);
    float product = 0.0F;
    for (uint32_t i = 0; i < ESTIMATE_LENGTH; i++)
        product += sine[i] * out[i];
    return product / energy;
}

// The oscillators' waveform at a note.

#include "curves/wave_shape.h"

#include <algorithm>
#include <cmath>
#include <memory>

#include "softsynth/parameters/constants.h"
#include "softsynth/parameters/controller_table.h"
#include "softsynth/parameters/effect_parameter.h"
#include "softsynth/parameters/note_frequency.h"
#include "softsynth/wavetables/oscillator_group.h"
#include "softsynth/wavetables/phase_random.h"

namespace tarquil {

namespace {

float mapped(const ControllerBytes& bytes, unsigned number) {
    return map_char_to_float(number, bytes[number]);
}

constexpr double RANDOM_TO_CYCLES = 1.0 / 2147483648.0;

// The copies of one group start as those of a voice do (see Voice::init_oscillators).
void start_copies(OscillatorGroup& group, const WaveformStore& waves, const ControllerBytes& bytes,
                  float note, unsigned index, WaveCopies copies) {
    group.init(OscType(bytes[CTRL_OSC1_TYPE + index]));
    if (copies == WaveCopies::ONE) {
        group.add_copy(waves, note_frequency(note), 0.0F);
        return;
    }
    const int count = int(mapped(bytes, CTRL_OSC1_MULTI_COUNT + index));
    const int half = count / 2;
    const float spread = cubed(mapped(bytes, CTRL_OSC1_SPREAD + index));
    const float step = half == 0 ? 0.0F : spread / float(half);
    PhaseRandom random;
    for (int j = -half; j <= half; j++) {
        const double phase = random.next() * RANDOM_TO_CYCLES * bytes[CTRL_OSC1_RANDOMIZE_PHASE];
        group.add_copy(waves, note_frequency(note + step * float(j)), float(phase));
    }
}

// Copies in random phases add up in power, copies in phase in amplitude.
float group_scale(const ControllerBytes& bytes, int count) {
    return bytes[CTRL_OSC1_RANDOMIZE_PHASE] != 0 ? 1.0F / std::sqrt(float(count))
                                                 : 1.0F / float(count);
}

std::vector<float> render_oscillator(const WaveformStore& waves, const ControllerBytes& bytes,
                                     int note, unsigned index, uint32_t num_samples,
                                     WaveCopies copies) {
    const float tuned_note = float(note) + mapped(bytes, CTRL_OSC1_COARSE_TUNE + index) +
                             mapped(bytes, CTRL_OSC1_FINE_TUNE + index);
    const auto group = std::make_unique<OscillatorGroup>();
    start_copies(*group, waves, bytes, tuned_note, index, copies);
    const float scale = group_scale(bytes, group->get_count());
    const auto pitch = std::make_unique<MonoBuffer>();
    const auto out = std::make_unique<MonoBuffer>();
    pitch->init(MAX_NUM_SAMPLES);
    std::fill_n(pitch->get_first_sample_ptr(), MAX_NUM_SAMPLES, 1.0F);
    std::vector<float> samples;
    while (samples.size() < num_samples) {
        out->init(MAX_NUM_SAMPLES);
        group->render(*out, *pitch, 0);
        const auto count = std::min(size_t(MAX_NUM_SAMPLES), num_samples - samples.size());
        samples.insert(samples.end(), out->get_first_sample_ptr(),
                       out->get_first_sample_ptr() + count);
    }
    for (float& sample : samples)
        sample *= scale;
    return samples;
}

// Levels of the oscillators in the mix.
std::array<float, NUM_OSCILLATORS> mix_levels(const ControllerBytes& bytes) {
    const float balance = mapped(bytes, CTRL_OSC1_OSC2_MIX);
    const float volume = mapped(bytes, CTRL_OSC3_VOLUME);
    const bool ring = bytes[CTRL_OSC1_OSC2_RING_MODULATOR] != 0;
    return {ring ? 1.0F : 1.0F - balance, ring ? 1.0F : balance, cubed(volume)};
}

} // namespace

WaveShape render_wave_shape(const WaveformStore& waves, const ControllerBytes& bytes, int note,
                            uint32_t num_samples, WaveCopies copies) {
    const std::array<float, NUM_OSCILLATORS> levels = mix_levels(bytes);
    const bool ring = bytes[CTRL_OSC1_OSC2_RING_MODULATOR] != 0;
    WaveShape shape;
    for (unsigned i = 0; i < NUM_OSCILLATORS; i++) {
        if (levels[i] == 0.0F || bytes[CTRL_OSC1_TYPE + i] == OSC_NONE)
            continue;
        shape.parts[i] = render_oscillator(waves, bytes, note, i, num_samples, copies);
        for (float& sample : shape.parts[i])
            sample *= levels[i];
    }
    const auto part = [&](unsigned index, uint32_t sample) {
        return shape.parts[index].empty() ? 0.0F : shape.parts[index][sample];
    };
    for (uint32_t i = 0; i < num_samples; i++) {
        const float pair = ring ? part(0, i) * part(1, i) : part(0, i) + part(1, i);
        shape.mix.push_back(pair + part(2, i));
    }
    return shape;
}

} // namespace tarquil

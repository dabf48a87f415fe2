// The oscillators' waveform at a note.

#include "tools/plot/wave_shape.h"

#include <algorithm>

#include "softsynth/constants.h"
#include "softsynth/note_frequency.h"
#include "softsynth/oscillator.h"

namespace {

float mapped(const Instrument& instrument, unsigned number) {
    return map_char_to_float(number, instrument.get_controller(number));
}

std::vector<float> render_oscillator(const Instrument& instrument, int note, unsigned index,
                                     uint32_t num_samples) {
    const float tuned_note = float(note) + mapped(instrument, CTRL_OSC1_COARSE_TUNE + index) +
                             mapped(instrument, CTRL_OSC1_FINE_TUNE + index);
    Oscillator oscillator;
    oscillator.init(OscType(instrument.get_controller(CTRL_OSC1_TYPE + index)),
                    note_frequency(tuned_note), 0.0F);
    static MonoBuffer pitch;
    static MonoBuffer out;
    pitch.init(MAX_NUM_SAMPLES);
    std::fill_n(pitch.get_first_sample_ptr(), MAX_NUM_SAMPLES, 1.0F);
    std::vector<float> samples;
    while (samples.size() < num_samples) {
        out.init(MAX_NUM_SAMPLES);
        oscillator.render(out, pitch, 0);
        const auto count = std::min(size_t(MAX_NUM_SAMPLES), num_samples - samples.size());
        samples.insert(samples.end(), out.get_first_sample_ptr(),
                       out.get_first_sample_ptr() + count);
    }
    return samples;
}

// Levels of the oscillators in the mix.
std::array<float, NUM_OSCILLATORS> mix_levels(const Instrument& instrument) {
    const float balance = mapped(instrument, CTRL_OSC1_OSC2_MIX);
    const float volume = mapped(instrument, CTRL_OSC3_VOLUME);
    const bool ring = instrument.get_controller(CTRL_OSC1_OSC2_RING_MODULATOR) != 0;
    return {ring ? 1.0F : 1.0F - balance, ring ? 1.0F : balance, volume * volume * volume};
}

} // namespace

WaveShape render_wave_shape(const Instrument& instrument, int note, uint32_t num_samples) {
    const std::array<float, NUM_OSCILLATORS> levels = mix_levels(instrument);
    const bool ring = instrument.get_controller(CTRL_OSC1_OSC2_RING_MODULATOR) != 0;
    WaveShape shape;
    for (unsigned i = 0; i < NUM_OSCILLATORS; i++) {
        if (levels[i] == 0.0F || instrument.get_controller(CTRL_OSC1_TYPE + i) == OSC_NONE)
            continue;
        shape.parts[i] = render_oscillator(instrument, note, i, num_samples);
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

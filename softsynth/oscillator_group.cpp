// The detuned copies of one oscillator of a voice.

#include "softsynth/oscillator_group.h"

#include <algorithm>

#include "common/assertion.h"
#include "softsynth/oscillator.h"

void OscillatorGroup::init(OscType new_type) {
    type = new_type;
    count = 0;
}

void OscillatorGroup::add_copy(float frequency, float start_phase) {
    TARQ_ASSERT(count < MAX_MULTI_OSC_WIDTH);
    if (type != OSC_NONE) {
        Wavetable_ret wavetable;
        WaveformStore::instance().getWavetable(type, frequency, &wavetable);
        table[count] = wavetable.data;
        table_shift = wavetable.shift; // the same for all tables of a waveform
        increment_scale[count] = float(PHASE_INCREMENT_PER_HZ * double(frequency));
        phase[count] = uint32_t(int64_t(start_phase * 65536.0F * 65536.0F));
    }
    count++;
}

void OscillatorGroup::render(MonoBuffer& out, const MonoBuffer& pitch, uint32_t offset) {
    if (type == OSC_NONE) {
        out.nullify();
        return;
    }
    float* samples = out.get_first_sample_ptr();
    const float* pitches = pitch.get_first_sample_ptr();
    const uint32_t size = out.get_buf_size();
    for (uint32_t t = offset; t < size; t += CONTROL_PERIOD) {
        const uint32_t length = std::min(CONTROL_PERIOD, size - t);
        float sums[CONTROL_PERIOD];
        for (uint32_t copy = 0; copy < count; copy++) {
            const uint32_t increment = phase_increment(pitches[t], increment_scale[copy]);
            const float* data = table[copy];
            uint32_t p = phase[copy];
            // The sum starts with the first copy's samples, not with 0: 0 + -0 is 0.
            for (uint32_t i = 0; i < length; i++) {
                const float sample = data[p >> table_shift];
                sums[i] = copy == 0 ? sample : sums[i] + sample;
                p += increment;
            }
            phase[copy] = p;
        }
        std::copy_n(sums, length, samples + t);
    }
}

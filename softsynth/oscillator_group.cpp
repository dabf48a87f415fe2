// The detuned copies of one oscillator of a voice.

#include "softsynth/oscillator_group.h"

#include "common/assertion.h"
#include "softsynth/kernels/kernels.h"
#include "softsynth/oscillator.h"

void OscillatorGroup::init(OscType new_type) {
    type = new_type;
    count = 0;
    runs = 0;
}

void OscillatorGroup::add_copy(float frequency, float start_phase) {
    TARQ_ASSERT(count < MAX_MULTI_OSC_WIDTH);
    if (type != OSC_NONE) {
        Wavetable_ret wavetable;
        WaveformStore::instance().getWavetable(type, frequency, &wavetable);
        if (count == 0 || wavetable.data != table[count - 1])
            runs++;
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
    if (offset >= out.get_buf_size())
        return;
    const OscillatorCopies copies = {phase, increment_scale, table, count, runs, table_shift};
    kernels().oscillator_copies(copies, out.get_first_sample_ptr() + offset,
                                pitch.get_first_sample_ptr() + offset, out.get_buf_size() - offset);
}

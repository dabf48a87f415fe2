// The detuned copies of one oscillator of a voice.

#include "softsynth/wavetables/oscillator_group.h"

#include <algorithm>

#include "softsynth/kernels/kernels.h"
#include "softsynth/wavetables/oscillator.h"

namespace tarquil {

void OscillatorGroup::init(const TunedCopies& tuned, const uint32_t* phases) {
    copies = tuned;
    std::copy_n(phases, copies.get_count(), phase);
}

void OscillatorGroup::add_copy(const WaveformStore& waves, float frequency, float start_phase) {
    copies.add(waves, frequency);
    phase[copies.get_count() - 1] = oscillator_phase(start_phase);
}

void OscillatorGroup::render(MonoBuffer& out, const MonoBuffer& pitch, uint32_t offset) {
    if (copies.get_type() == OSC_NONE) {
        out.nullify();
        return;
    }
    if (offset >= out.get_buf_size())
        return;
    const auto render_copies = oscillator_kernel(copies.get_count());
    render_copies(copies.with_phases(phase), out.get_first_sample_ptr() + offset,
                  pitch.get_first_sample_ptr() + offset, out.get_buf_size() - offset);
}

} // namespace tarquil

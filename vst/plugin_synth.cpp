// The plug-in as the editor sees it.

#include "vst/plugin_synth.h"

#include "player/shared_waveforms.h"
#include "softsynth/core/core.h"
#include "vst/tarq_vst.h"

namespace tarquil {

PluginSynth::PluginSynth(TarqVST& edited_plugin) : plugin(edited_plugin) {}

void PluginSynth::read_state(EditorState& state) {
    const LockHolder holder(synth_lock);
    read_bank(plugin.bank(), unsigned(plugin.getProgram()), state);
    for (unsigned channel = 0; channel < unsigned(NUM_CHANNELS); channel++)
        state.channel_programs[channel] = uint8_t(plugin.get_current_instrument(int(channel)));
}

EditorMeters PluginSynth::read_meters() {
    Meters& meters = plugin.meters;
    EditorMeters shown;
    shown.peaks = {meters.peak_left.exchange(0.0F), meters.peak_right.exchange(0.0F)};
    for (unsigned band = 0; band < MC_N_BANDS; band++) {
        shown.band_levels[band] = meters.band_levels[band].load(std::memory_order_relaxed);
        shown.band_gains[band] = meters.band_gains[band].load(std::memory_order_relaxed);
    }
    shown.voices = unsigned(meters.voices.load(std::memory_order_relaxed));
    shown.active_channels = meters.played_channels.exchange(0);
    return shown;
}

int PluginSynth::host_parameter(unsigned number) const {
    return controller_to_vst_param(int(number));
}

void PluginSynth::begin_edit(unsigned number) {
    plugin.beginEdit(host_parameter(number));
}

void PluginSynth::set_controller(unsigned number, int value) {
    plugin.set_program_controller(int(number), value);
    plugin.automate(host_parameter(number), byte_to_vst_value(value));
}

void PluginSynth::end_edit(unsigned number) {
    plugin.endEdit(host_parameter(number));
}

void PluginSynth::set_program(unsigned program) {
    plugin.setProgram(int32_t(program));
    plugin.updateDisplay();
}

void PluginSynth::set_channel_program(unsigned channel, unsigned program) {
    plugin.changeInstrument(int(channel), int(program), plugin.get_time());
}

Instrument PluginSynth::get_instrument(unsigned program) {
    return plugin.get_instrument(int(program));
}

void PluginSynth::set_instrument(unsigned program, const Instrument& instrument) {
    plugin.set_instrument(int(program), instrument);
    plugin.updateDisplay();
}

void PluginSynth::copy_bank(TarqSettings& bank) {
    bank = plugin.get_bank();
}

void PluginSynth::set_bank(const TarqSettings& bank) {
    plugin.set_bank(bank);
    plugin.updateDisplay();
}

void PluginSynth::set_song(const std::string& title, const std::string& author) {
    plugin.set_song(title, author);
}

const WaveformStore& PluginSynth::get_waves() {
    return shared_waveforms();
}

bool PluginSynth::is_band_muted(unsigned band) const {
    return plugin.is_band_muted(band);
}

void PluginSynth::set_band_muted(unsigned band, bool muted) {
    plugin.set_band_muted(band, muted);
}

void PluginSynth::panic() {
    plugin.release_all_notes();
}

} // namespace tarquil

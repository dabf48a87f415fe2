// The plug-in as the editor sees it: its player, and a host that is told of each edit.

#include "vst/plugin_synth.h"

#include "vst/tarq_vst.h"

namespace tarquil {

PluginSynth::PluginSynth(TarqVST& edited_plugin)
    : PlayerSynth(edited_plugin.player()), plugin(edited_plugin) {}

int PluginSynth::host_parameter(unsigned number) const {
    return controller_to_vst_param(int(number));
}

void PluginSynth::begin_edit(unsigned number) {
    plugin.beginEdit(host_parameter(number));
}

void PluginSynth::set_controller(unsigned number, int value) {
    PlayerSynth::set_controller(number, value);
    plugin.automate(host_parameter(number), byte_to_vst_value(value));
}

void PluginSynth::end_edit(unsigned number) {
    plugin.endEdit(host_parameter(number));
}

void PluginSynth::set_program(unsigned program) {
    plugin.setProgram(int32_t(program));
    plugin.updateDisplay();
}

void PluginSynth::set_instrument(unsigned program, const Instrument& instrument) {
    PlayerSynth::set_instrument(program, instrument);
    plugin.updateDisplay();
}

void PluginSynth::set_dialect(MidiDialect dialect) {
    PlayerSynth::set_dialect(dialect);
    plugin.updateDisplay();
}

void PluginSynth::set_bank(const TarqSettings& bank) {
    PlayerSynth::set_bank(bank);
    plugin.updateDisplay();
}

} // namespace tarquil

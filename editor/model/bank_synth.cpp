// A bank that the editor can show and change with no plug-in behind it.

#include "editor/model/bank_synth.h"

#include <algorithm>

#include "curves/wave_shape.h"
#include "instrument/names.h"
#include "softsynth/parameters/controller_table.h"

namespace tarquil {

BankSynth::BankSynth() {
    set_default_names(bank);
    for (unsigned channel = 0; channel < unsigned(NUM_CHANNELS); channel++)
        channel_programs[channel] = uint8_t(channel);
}

BankSynth::~BankSynth() = default;

const WaveformStore& BankSynth::get_waves() {
    if (waves == nullptr)
        waves = std::make_unique<const WaveformStore>();
    return *waves;
}

void BankSynth::read_state(EditorState& state) {
    read_bank(bank, program, state);
    state.channel_programs = channel_programs;
    state.selected_channel = selected_channel;
}

bool BankSynth::read_output(std::span<float> left, std::span<float> right) {
    if (watched == ScopeSource::NOTHING || output.size() < left.size())
        return false;
    std::copy_n(output.end() - std::ptrdiff_t(left.size()), left.size(), left.begin());
    std::copy(left.begin(), left.end(), right.begin());
    return true;
}

void BankSynth::set_controller(unsigned number, int value) {
    if (find_controller(number)->scope == ControllerScope::CHANNEL)
        bank.get_instrument(program).set_controller(number, value);
    else
        bank.set_global_controller(number, value);
}

int BankSynth::host_parameter(unsigned number) const {
    return int(find_controller(number) - controller_rows().data());
}

void BankSynth::set_channel_program(unsigned channel, unsigned new_program) {
    channel_programs[channel] = uint8_t(new_program);
}

void BankSynth::set_instrument(unsigned number, const Instrument& instrument) {
    bank.get_instrument(number) = instrument;
}

void BankSynth::audition(const Instrument& sound, const Phrase& phrase) {
    auditioned = std::string(sound.get_name()) + " " + std::to_string(phrase.front().key);
}

void BankSynth::set_song(const std::string& title, const std::string& author) {
    bank.set_song_title(title);
    bank.set_song_author(author);
}

} // namespace tarquil

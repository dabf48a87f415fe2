// The groups in which hosts list the parameters.

#include "softsynth/parameters/parameter_group.h"

#include "common/assertion.h"
#include "softsynth/parameters/controller_table.h"

namespace tarquil {

namespace {

struct Group {
    std::string_view start; // of the controllers' names
    std::string_view name;
};

// The first that fits.
constexpr Group GROUPS[] = {
    {"Equaliser filter 1", "Program/Equaliser filter 1"},
    {"Equaliser filter 2", "Program/Equaliser filter 2"},
    {"Equaliser filter 3", "Program/Equaliser filter 3"},
    {"Equaliser filter 4", "Program/Equaliser filter 4"},
    {"Mono effect 1", "Program/Mono effect 1"},
    {"Mono effect 2", "Program/Mono effect 2"},
    {"Stereo effect", "Program/Stereo effect"},
    {"Oscillator 1/2", "Program/Mixer"},
    {"Oscillator 3 volume", "Program/Mixer"},
    {"Oscillator 1", "Program/Oscillator 1"},
    {"Oscillator 2", "Program/Oscillator 2"},
    {"Oscillator 3", "Program/Oscillator 3"},
    {"Filter", "Program/Filter"},
    {"Amplitude", "Program/Amplitude"},
    {"LFO 1", "Program/LFO 1"},
    {"LFO 2", "Program/LFO 2"},
    {"Envelope 1", "Program/Envelope 1"},
    {"Envelope 2", "Program/Envelope 2"},
    {"Envelope 3", "Program/Envelope 3"},
    {"LPC", "Program/Speech"},
    {"Pitch bend", "Program/Voices"},
    {"Portamento", "Program/Voices"},
    {"Maximum voices", "Program/Voices"},
    {"Main volume", "Program/Output"},
    {"Panning", "Program/Output"},
    {"Reverb send", "Program/Output"},
    {"Delay send", "Program/Output"},
    {"Global filter 1", "Bank/Global filter 1"},
    {"Global filter 2", "Bank/Global filter 2"},
    {"Global filter 3", "Bank/Global filter 3"},
    {"Global filter 4", "Bank/Global filter 4"},
    {"Global filter 5", "Bank/Global filter 5"},
    {"Global filter 6", "Bank/Global filter 6"},
    {"Retrigger", "Bank/Retrigger"},
    {"Reverb", "Bank/Reverb"},
    {"Delay", "Bank/Delay"},
    {"Aux", "Bank/Delay"},
    {"Compressor band 1", "Bank/Compressor band 1"},
    {"Compressor band 2", "Bank/Compressor band 2"},
    {"Compressor band 3", "Bank/Compressor band 3"},
    {"Compressor band 4", "Bank/Compressor band 4"},
    {"Compressor", "Bank/Compressor"},
};

} // namespace

std::string_view parameter_group(unsigned number) {
    const ControllerInfo* row = find_controller(number);
    TARQ_ASSERT(row != nullptr);
    const std::string_view name = row->name;
    for (const Group& group : GROUPS) {
        if (name.starts_with(group.start))
            return group.name;
    }
    return is_global_controller(number) ? "Bank" : "Program";
}

} // namespace tarquil

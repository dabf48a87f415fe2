// What a plug-in may ask of the program that plays it.

#include "tools/plugin/plugin_host.h"

#include <algorithm>
#include <cmath>
#include <iterator>
#include <string_view>

#include "softsynth/parameters/constants.h"
#include "vst/abi/host_text.h"

namespace tarquil {

namespace {

constexpr const char* PRODUCT = "Tarquil renderer";
constexpr const char* VENDOR = "Hollowmere/Lanternfolk";
constexpr intptr_t VENDOR_VERSION = 1;

constexpr std::string_view ABILITIES[] = {"sendVstEvents", "sendVstMidiEvent", "sendVstTimeInfo"};

uint32_t block_size = 0;
VstTimeInfo now;

intptr_t give_text(void* ptr, const char* text, size_t room) {
    if (ptr == nullptr)
        return 0;
    copy_host_text(static_cast<char*>(ptr), text, room);
    return 1;
}

} // namespace

void PluginHost::set_block_size(uint32_t frames) {
    block_size = frames;
}

void PluginHost::set_time(uint32_t time) {
    now.samplePos = double(time);
    now.sampleRate = double(SAMPLE_RATE);
    now.flags |= kVstTransportPlaying;
}

void PluginHost::set_tempo(double quarters_per_minute, const Tempo& tempo) {
    now.tempo = quarters_per_minute;
    now.ppqPos = tempo.position;
    const double bars = std::floor((tempo.position - tempo.bar_start) / tempo.bar_length);
    now.barStartPos = tempo.bar_start + bars * tempo.bar_length;
    // The largest notes that a bar is made of, from quarters on.
    now.timeSigDenominator = 4;
    while (std::fmod(tempo.bar_length * now.timeSigDenominator, 4.0) != 0.0)
        now.timeSigDenominator *= 2;
    now.timeSigNumerator = int32_t(tempo.bar_length * now.timeSigDenominator / 4.0);
    now.flags |= kVstTempoValid | kVstPpqPosValid | kVstBarsValid | kVstTimeSigValid;
}

intptr_t VST_CALL PluginHost::answer(AEffect* /*effect*/, int32_t opcode, int32_t /*index*/,
                                     intptr_t /*value*/, void* ptr, float /*opt*/) {
    switch (opcode) {
    case audioMasterVersion:
        return kVstVersion;
    case audioMasterWantMidi:
        return 1;
    case audioMasterGetTime:
        return reinterpret_cast<intptr_t>(&now);
    case audioMasterGetSampleRate:
        return SAMPLE_RATE;
    case audioMasterGetBlockSize:
        return block_size;
    case audioMasterGetCurrentProcessLevel:
        return kVstProcessLevelOffline;
    case audioMasterGetVendorString:
        return give_text(ptr, VENDOR, kVstMaxVendorStrLen);
    case audioMasterGetProductString:
        return give_text(ptr, PRODUCT, kVstMaxProductStrLen);
    case audioMasterGetVendorVersion:
        return VENDOR_VERSION;
    case audioMasterCanDo:
        return ptr != nullptr && std::find(std::begin(ABILITIES), std::end(ABILITIES),
                                           static_cast<const char*>(ptr)) != std::end(ABILITIES);
    default:
        return 0;
    }
}

} // namespace tarquil

// The C interface between a VST 2.4 host and a plug-in: records, numbers and sizes, as facts.
//
// Only fixed-width integers, pointers and float are used, so that every compiler lays the records
// out alike; the assertions below hold the layout of 64-bit systems.

#pragma once

#include <cstddef>
#include <cstdint>

namespace tarquil {

#if defined(_WIN32)
#define VST_CALL __cdecl
#else
#define VST_CALL
#endif

struct AEffect;

// Plug-in to host.
using audioMasterCallback = intptr_t(VST_CALL*)(AEffect* effect, int32_t opcode, int32_t index,
                                                intptr_t value, void* ptr, float opt);

// Host to plug-in.
using AEffectDispatcherProc = intptr_t(VST_CALL*)(AEffect* effect, int32_t opcode, int32_t index,
                                                  intptr_t value, void* ptr, float opt);
using AEffectProcessProc = void(VST_CALL*)(AEffect* effect, float** inputs, float** outputs,
                                           int32_t frames);
using AEffectProcessDoubleProc = void(VST_CALL*)(AEffect* effect, double** inputs, double** outputs,
                                                 int32_t frames);
using AEffectSetParameterProc = void(VST_CALL*)(AEffect* effect, int32_t index, float value);
using AEffectGetParameterProc = float(VST_CALL*)(AEffect* effect, int32_t index);

// Four characters as one number, the first in the highest byte.
constexpr int32_t four_characters(const char (&text)[5]) {
    uint32_t number = 0;
    for (int i = 0; i < 4; i++)
        number = number << 8U | uint8_t(text[i]);
    return int32_t(number);
}

inline constexpr int32_t kEffectMagic = four_characters("VstP");
inline constexpr int32_t kVstVersion = 2400;

// What a host sees of a plug-in.
struct AEffect {
    int32_t magic = kEffectMagic;
    AEffectDispatcherProc dispatcher = nullptr;
    AEffectProcessProc process = nullptr; // adds to the outputs
    AEffectSetParameterProc setParameter = nullptr;
    AEffectGetParameterProc getParameter = nullptr;
    int32_t numPrograms = 0;
    int32_t numParams = 0;
    int32_t numInputs = 0;
    int32_t numOutputs = 0;
    int32_t flags = 0;
    intptr_t resvd1 = 0;      // the host's
    intptr_t resvd2 = 0;      // the host's
    int32_t initialDelay = 0; // samples
    int32_t realQualities = 0;
    int32_t offQualities = 0;
    float ioRatio = 1.0F;
    void* object = nullptr; // the plug-in's own
    void* user = nullptr;   // the host's
    int32_t uniqueID = 0;
    int32_t version = 0;
    AEffectProcessProc processReplacing = nullptr;
    AEffectProcessDoubleProc processDoubleReplacing = nullptr;
    char future[56] = {};
};

// AEffect::flags
inline constexpr int32_t effFlagsHasEditor = 1 << 0;
inline constexpr int32_t effFlagsCanReplacing = 1 << 4;
inline constexpr int32_t effFlagsProgramChunks = 1 << 5;
inline constexpr int32_t effFlagsIsSynth = 1 << 8;

struct ERect {
    int16_t top = 0;
    int16_t left = 0;
    int16_t bottom = 0;
    int16_t right = 0;
};

inline constexpr int32_t kVstMidiType = 1;

// The head that all kinds of events share.
struct VstEvent {
    int32_t type = 0;
    int32_t byteSize = 0; // of what follows deltaFrames
    int32_t deltaFrames = 0;
    int32_t flags = 0;
    char data[16] = {};
};

struct VstMidiEvent {
    int32_t type = kVstMidiType;
    int32_t byteSize = int32_t(sizeof(VstMidiEvent));
    int32_t deltaFrames = 0; // samples from the start of the next block
    int32_t flags = 0;
    int32_t noteLength = 0;
    int32_t noteOffset = 0;
    char midiData[4] = {}; // status, two data bytes, 0
    char detune = 0;
    char noteOffVelocity = 0;
    char reserved1 = 0;
    char reserved2 = 0;
};

// As many pointers as numEvents follow; hosts allocate the record to that size.
struct VstEvents {
    int32_t numEvents = 0;
    intptr_t reserved = 0;
    VstEvent* events[2] = {};
};

// The part that all hosts have room for; a host's record may be larger.
struct VstPinProperties {
    char label[64] = {};
    int32_t flags = 0;
    int32_t arrangementType = 0;
    char shortLabel[8] = {};
};

// Where the host is, for audioMasterGetTime.
struct VstTimeInfo {
    double samplePos = 0.0;  // since the start, in samples
    double sampleRate = 0.0; // Hz
    double nanoSeconds = 0.0;
    double ppqPos = 0.0; // quarter notes
    double tempo = 0.0;  // quarter notes per minute
    double barStartPos = 0.0;
    double cycleStartPos = 0.0;
    double cycleEndPos = 0.0;
    int32_t timeSigNumerator = 0;
    int32_t timeSigDenominator = 0;
    int32_t smpteOffset = 0;
    int32_t smpteFrameRate = 0;
    int32_t samplesToNextClock = 0;
    int32_t flags = 0; // the position and the rate always hold, the rest when a flag says so
};

// VstTimeInfo::flags
inline constexpr int32_t kVstTransportPlaying = 1 << 1;
inline constexpr int32_t kVstPpqPosValid = 1 << 9;
inline constexpr int32_t kVstTempoValid = 1 << 10;
inline constexpr int32_t kVstBarsValid = 1 << 11;
inline constexpr int32_t kVstTimeSigValid = 1 << 13;

// VstPinProperties::flags
inline constexpr int32_t kVstPinIsActive = 1 << 0;
inline constexpr int32_t kVstPinIsStereo = 1 << 1;

static_assert(sizeof(VstEvent) == 32);
static_assert(sizeof(VstMidiEvent) == 32 && offsetof(VstMidiEvent, midiData) == 24);
static_assert(sizeof(VstPinProperties) == 80 && offsetof(VstPinProperties, flags) == 64);
static_assert(sizeof(ERect) == 8);
static_assert(sizeof(VstTimeInfo) == 88 && offsetof(VstTimeInfo, flags) == 84);
static_assert(sizeof(void*) != 8 || sizeof(AEffect) == 192);
static_assert(sizeof(void*) != 8 || offsetof(AEffect, dispatcher) == 8);
static_assert(sizeof(void*) != 8 || offsetof(AEffect, numPrograms) == 40);
static_assert(sizeof(void*) != 8 || offsetof(AEffect, flags) == 56);
static_assert(sizeof(void*) != 8 || offsetof(AEffect, initialDelay) == 80);
static_assert(sizeof(void*) != 8 || offsetof(AEffect, object) == 96);
static_assert(sizeof(void*) != 8 || offsetof(AEffect, uniqueID) == 112);
static_assert(sizeof(void*) != 8 || offsetof(AEffect, processReplacing) == 120);
static_assert(sizeof(void*) != 8 || offsetof(VstEvents, events) == 16);

// Room for texts, in bytes with the closing NUL, that every host has.  Parameter names, displays
// and labels are documented with 8, but every host in use has far more, and gets them whole.
inline constexpr size_t kVstMaxProgNameLen = 24;
inline constexpr size_t kVstMaxParamStrLen = 64;
inline constexpr size_t kVstMaxEffectNameLen = 32;
inline constexpr size_t kVstMaxVendorStrLen = 64;
inline constexpr size_t kVstMaxProductStrLen = 64;
inline constexpr size_t kVstMaxLabelLen = 64;

// What a host asks of a plug-in.  Hosts that were watched use all but those marked; a marked number
// has no second source, and nothing depends on it.
enum EffectOpcode : int32_t {
    effOpen = 0,
    effClose = 1,
    effSetProgram = 2, // value
    effGetProgram = 3,
    effSetProgramName = 4,  // ptr: text
    effGetProgramName = 5,  // ptr: room for kVstMaxProgNameLen
    effGetParamLabel = 6,   // index, ptr: room for text
    effGetParamDisplay = 7, // index, ptr: room for text
    effGetParamName = 8,    // index, ptr: room for text
    effSetSampleRate = 10,  // opt: Hz
    effSetBlockSize = 11,   // value: frames
    effMainsChanged = 12,   // value: 0 suspend, 1 resume
    effEditGetRect = 13,    // ptr: ERect**
    effEditOpen = 14,       // ptr: the parent window
    effEditClose = 15,
    effEditIdle = 19,
    effIdentify = 22,         // unverified
    effGetChunk = 23,         // index: 1 program, 0 bank; ptr: void**; returns the size in bytes
    effSetChunk = 24,         // index: 1 program, 0 bank; value: bytes; ptr: data
    effProcessEvents = 25,    // ptr: VstEvents
    effCanBeAutomated = 26,   // index
    effString2Parameter = 27, // index, ptr: text, or null to ask whether that can be done
    effGetProgramNameIndexed = 29, // index, value: category, ptr: room for kVstMaxProgNameLen
    effCopyProgram = 30,           // index: destination; unverified
    effGetInputProperties = 33,    // index, ptr: VstPinProperties
    effGetOutputProperties = 34,   // index, ptr: VstPinProperties
    effGetPlugCategory = 35,
    effSetBypass = 44,        // unverified
    effGetEffectName = 45,    // ptr: room for kVstMaxEffectNameLen
    effGetVendorString = 47,  // ptr: room for kVstMaxVendorStrLen
    effGetProductString = 48, // ptr: room for kVstMaxProductStrLen
    effGetVendorVersion = 49,
    effCanDo = 51,        // ptr: text
    effGetTailSize = 52,  // samples; 0: not known
    effKeysRequired = 57, // 1: no keys required; unverified
    effGetVstVersion = 58,
    effBeginSetProgram = 67,         // unverified
    effEndSetProgram = 68,           // unverified
    effStartProcess = 71,            // unverified
    effStopProcess = 72,             // unverified
    effGetNumMidiInputChannels = 78, // unverified
};

inline constexpr intptr_t kPlugCategSynth = 2;

// What audioMasterGetCurrentProcessLevel answers when the sound need not keep up with anything.
inline constexpr intptr_t kVstProcessLevelOffline = 4;

// What a plug-in asks of a host.
enum HostOpcode : int32_t {
    audioMasterAutomate = 0, // index, opt: value
    audioMasterVersion = 1,
    audioMasterCurrentId = 2,
    audioMasterWantMidi = 6,
    audioMasterGetTime = 7,     // value: the flags that are wanted; returns a VstTimeInfo *
    audioMasterSizeWindow = 15, // index: width, value: height
    audioMasterGetSampleRate = 16,
    audioMasterGetBlockSize = 17,
    audioMasterGetCurrentProcessLevel = 23,
    audioMasterGetVendorString = 32,
    audioMasterGetProductString = 33,
    audioMasterGetVendorVersion = 34,
    audioMasterCanDo = 37,
    audioMasterUpdateDisplay = 42, // unverified
    audioMasterBeginEdit = 43,     // index
    audioMasterEndEdit = 44,       // index
};

} // namespace tarquil

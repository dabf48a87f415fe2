// The plug-in object: set-up, events and audio.

#include "vst/tarq_vst.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <cstring>

#include "common/log/log.h"
#include "sounds/starting_sounds.h"
#include "vst/abi/host_text.h"

namespace tarquil {

namespace {

constexpr const char* PRODUCT = "Tarquil";
constexpr const char* VENDOR = "Hollowmere/Lanternfolk";

constexpr float LARGEST_RATE_ERROR = 0.1F; // Hz
constexpr std::clock_t NO_WARNING_YET = std::clock_t(-1);
constexpr std::clock_t WARNING_INTERVAL = 10000000; // clock ticks

// Marks an audio call for its length.
class AudioCall {
  public:
    explicit AudioCall(std::atomic_flag& flag)
        : mark(flag), alone(!flag.test_and_set(std::memory_order_acquire)) {}
    AudioCall(const AudioCall&) = delete;
    AudioCall& operator=(const AudioCall&) = delete;
    ~AudioCall() {
        if (alone)
            mark.clear(std::memory_order_release);
    }

    // False while another one is on its way.
    [[nodiscard]] bool is_alone() const { return alone; }

  private:
    std::atomic_flag& mark;
    bool alone;
};

} // namespace

TarqVST::TarqVST(audioMasterCallback host)
    : AudioEffectX(host, NUM_PROGRAMS, NUM_VST_PARAMS), stream(synth.audio()),
      last_rate_warning(NO_WARNING_YET) {
    give_drums(synth);
    programsAreChunks(true);
    TarqVST::setProgram(0);
    if (has_host()) {
        setNumInputs(0);
        setNumOutputs(2);
        canProcessReplacing(true);
        isSynth(true);
        setUniqueID(TARQUIL_UNIQUE_ID);
        setVersion(TarqVST::getVendorVersion());
    }
    tarq_editor = make_editor(*this);
    setEditor(tarq_editor.get());
    TarqVST::suspend();
}

TarqVST::~TarqVST() = default;

bool TarqVST::getEffectName(char* name) {
    copy_host_text(name, PRODUCT, kVstMaxEffectNameLen);
    return true;
}

bool TarqVST::getProductString(char* text) {
    copy_host_text(text, PRODUCT, kVstMaxProductStrLen);
    return true;
}

bool TarqVST::getVendorString(char* text) {
    copy_host_text(text, VENDOR, kVstMaxVendorStrLen);
    return true;
}

int32_t TarqVST::canDo(const char* text) {
    const std::string_view ability = text;
    return ability == "receiveVstEvents" || ability == "receiveVstMidiEvent" ||
                   ability == "receiveVstTimeInfo"
               ? 1
               : -1;
}

bool TarqVST::getOutputProperties(int32_t index, VstPinProperties* properties) {
    if (index != 0 && index != 1)
        return false;
    *properties = VstPinProperties();
    copy_host_text(properties->label, "Tarquil " + std::to_string(index + 1), kVstMaxLabelLen);
    properties->flags = kVstPinIsActive | kVstPinIsStereo;
    return true;
}

void TarqVST::setSampleRate(float rate) {
    AudioEffectX::setSampleRate(rate);
    told_rate = rate;
    if (!(std::fabs(rate - float(SAMPLE_RATE)) > LARGEST_RATE_ERROR))
        return;
    const std::clock_t now = std::clock();
    if (last_rate_warning != NO_WARNING_YET && now - last_rate_warning < WARNING_INTERVAL)
        return;
    last_rate_warning = now;
    constexpr float LARGEST_SHOWN = 1e9F;
    char text[256];
    std::snprintf(text, sizeof(text),
                  "Sample rate was set to %d, but sample rates other than %d is not "
                  "supported.\nYou are on your own.",
                  int(std::clamp(rate, -LARGEST_SHOWN, LARGEST_SHOWN)), SAMPLE_RATE);
    logMessageBox(text);
}

void TarqVST::setBlockSize(int32_t frames) {
    AudioEffectX::setBlockSize(frames);
    block_size_is_known = true;
}

void TarqVST::resume() {
    AudioEffectX::resume();
    synth.start();
}

int32_t TarqVST::processEvents(const VstEvents* host_events) {
    const AudioCall call(is_in_audio);
    if (!call.is_alone())
        return 0;
    synth.audio().follow_edits();
    const VstEvent* const* const records = host_events->events; // as many as there are
    for (int32_t i = 0; i < host_events->numEvents; i++) {
        const VstEvent* event = records[i];
        if (event == nullptr || event->type != kVstMidiType)
            continue;
        uint8_t message[3];
        std::memcpy(message,
                    reinterpret_cast<const char*>(event) + offsetof(VstMidiEvent, midiData),
                    sizeof(message));
        if (!synth.audio().add_message(message, stream.event_time(event->deltaFrames)))
            return 0;
    }
    return 1;
}

// Only banks that follow the tempo make the host look for it.
void TarqVST::ask_tempo() {
    if (!synth.tempo_sync())
        return;
    constexpr int32_t WANTED = kVstTempoValid | kVstPpqPosValid | kVstBarsValid | kVstTimeSigValid;
    const auto* now =
        // NOLINTNEXTLINE(performance-no-int-to-ptr): hosts answer with a number that is an address
        reinterpret_cast<const VstTimeInfo*>(call_host(audioMasterGetTime, 0, WANTED));
    if (now == nullptr)
        return;
    const auto has = [now](int32_t flag) { return (now->flags & flag) != 0; };
    HostTempo said;
    if (has(kVstTempoValid))
        said.quarters_per_minute = now->tempo;
    if (has(kVstTransportPlaying) && has(kVstPpqPosValid)) {
        said.place = HostTempo::Place{};
        said.place->position = now->ppqPos;
        if (has(kVstBarsValid))
            said.place->bar_start = now->barStartPos;
        if (has(kVstTimeSigValid))
            said.place->bar_length = quarters(now->timeSigNumerator, now->timeSigDenominator);
    }
    synth.audio().add_tempo(said, stream.event_time(0));
}

template <typename Write> void TarqVST::render_pieces(int32_t frames, const Write& write) {
    ask_tempo();
    for (int32_t done = 0; done < frames;) {
        const int32_t piece = std::min(frames - done, int32_t(MAX_NUM_SAMPLES));
        write(stream.next(uint32_t(piece)), done, piece);
        done += piece;
    }
    tell_moves(frames);
}

// What learned controllers have moved, unless a window says so.
void TarqVST::tell_moves(int32_t frames) {
    struct Told {
        TarqVST& plugin;

        [[nodiscard]] bool begin_edit(unsigned number) const {
            plugin.beginEdit(controller_to_vst_param(int(number)));
            return true;
        }
        [[nodiscard]] bool edited(unsigned number) const {
            const int value = plugin.synth.audio().get_controller(number);
            plugin.automate(controller_to_vst_param(int(number)), byte_to_vst_value(value));
            return true;
        }
        [[nodiscard]] bool end_edit(unsigned number) const {
            plugin.endEdit(controller_to_vst_param(int(number)));
            return true;
        }
    };
    if (!synth.meters().watched.load(std::memory_order_relaxed))
        moves.take(synth.moved_controls());
    moves.tell(double(frames) / SAMPLE_RATE, Told{*this});
}

void TarqVST::process(float** /*inputs*/, float** outputs, int32_t frames) {
    const AudioCall call(is_in_audio);
    if (!block_size_is_known || !call.is_alone())
        return;
    render_pieces(frames, [outputs](const float* sound, int32_t first, int32_t count) {
        for (int32_t i = 0; i < count; i++) {
            outputs[0][first + i] += sound[2 * i];
            outputs[1][first + i] += sound[2 * i + 1];
        }
    });
}

void TarqVST::processReplacing(float** /*inputs*/, float** outputs, int32_t frames) {
    const AudioCall call(is_in_audio);
    if (!block_size_is_known || !call.is_alone()) {
        std::fill_n(outputs[0], frames, 0.0F);
        std::fill_n(outputs[1], frames, 0.0F);
        return;
    }
    render_pieces(frames, [outputs](const float* sound, int32_t first, int32_t count) {
        for (int32_t i = 0; i < count; i++) {
            outputs[0][first + i] = sound[2 * i];
            outputs[1][first + i] = sound[2 * i + 1];
        }
    });
}

uint32_t TarqVST::num_queued_events() {
    synth.audio().follow_edits();
    return synth.audio().num_queued_events();
}

} // namespace tarquil

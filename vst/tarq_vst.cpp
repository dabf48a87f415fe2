// The plug-in object: set-up, events and audio.

#include "vst/tarq_vst.h"

#include <fcntl.h>
#include <unistd.h>

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <cstring>

#include "common/assertion.h"
#include "common/log/log.h"
#include "instrument/names.h"
#include "midi/midifilter.h"
#include "player/shared_waveforms.h"
#include "vst/abi/host_text.h"

namespace tarquil {

namespace {

constexpr const char* PRODUCT = "Tarquil";
constexpr const char* VENDOR = "Hollowmere/Lanternfolk";

constexpr float LARGEST_RATE_ERROR = 0.1F; // Hz
constexpr std::clock_t NO_WARNING_YET = std::clock_t(-1);
constexpr std::clock_t WARNING_INTERVAL = 10000000; // clock ticks

// The engine is made with "/" as the working directory; a host's own comes back afterwards.
class InRootDirectory {
  public:
    InRootDirectory() : host_directory(::open(".", O_RDONLY | O_DIRECTORY | O_CLOEXEC)) {
        if (host_directory >= 0 && chdir("/") != 0)
            logPrintf("cannot change to /\n");
    }
    InRootDirectory(const InRootDirectory&) = delete;
    InRootDirectory& operator=(const InRootDirectory&) = delete;
    ~InRootDirectory() {
        if (host_directory < 0)
            return;
        if (fchdir(host_directory) != 0)
            logPrintf("cannot change back to the host's directory\n");
        ::close(host_directory);
    }

  private:
    int host_directory;
};

// How many frames a run of the engine takes to bring `missing` frames.
uint32_t whole_granules(uint32_t missing) {
    return (missing + GRANULARITY - 1) / GRANULARITY * GRANULARITY;
}

} // namespace

TarqVST::TarqVST(audioMasterCallback host)
    : AudioEffectX(host, NUM_PROGRAMS, NUM_VST_PARAMS), last_rate_warning(NO_WARNING_YET) {
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
    settings.load_default();
    set_default_names(settings);
    for (unsigned i = 0; i < MAX_INSTRUMENTS; i++)
        settings.get_instrument(i).set_filename("instr_" + std::to_string(i) + ".tqi");
    for (unsigned channel = 0; channel < unsigned(NUM_CHANNELS); channel++)
        current_instruments[channel] = channel;
    tarq_editor = make_editor(*this);
    setEditor(tarq_editor.get());
    TarqVST::suspend();
}

TarqVST::~TarqVST() {
    // The editor may hold the lock on a thread of its own that it is waited for.
    tarq_editor.reset();
    const LockHolder holder(synth_lock);
    synth.reset();
}

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
    return ability == "receiveVstEvents" || ability == "receiveVstMidiEvent" ? 1 : -1;
}

bool TarqVST::getOutputProperties(int32_t index, VstPinProperties* properties) {
    const LockHolder holder(synth_lock);
    if (index != 0 && index != 1)
        return false;
    *properties = VstPinProperties();
    copy_host_text(properties->label, "Tarquil " + std::to_string(index + 1), kVstMaxLabelLen);
    properties->flags = kVstPinIsActive | kVstPinIsStereo;
    return true;
}

void TarqVST::setSampleRate(float rate) {
    AudioEffectX::setSampleRate(rate);
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
    const LockHolder holder(synth_lock);
    AudioEffectX::setBlockSize(frames);
    block_size_is_known = true;
}

void TarqVST::resume() {
    const LockHolder holder(synth_lock);
    AudioEffectX::resume();
    if (synth == nullptr) {
        const InRootDirectory in_root_directory;
        synth.reset(new Tarquil(settings, shared_waveforms()));
        for (unsigned band = 0; band < MC_N_BANDS; band++)
            synth->set_band_muted(band, is_band_muted(band));
        curr_time = 0;
    }
    refresh_synth();
}

int32_t TarqVST::processEvents(const VstEvents* host_events) {
    const LockHolder holder(synth_lock);
    for (int32_t i = 0; i < host_events->numEvents; i++) {
        const VstEvent* event = host_events->events[i];
        if (event == nullptr || event->type != kVstMidiType)
            continue;
        uint8_t message[3];
        std::memcpy(message,
                    reinterpret_cast<const char*>(event) + offsetof(VstMidiEvent, midiData),
                    sizeof(message));
        if (!is_playable_message(message))
            continue;
        // The spare frames are played first; an event behind the clock waits for its next run.
        const int64_t time = int64_t(curr_time) + event->deltaFrames - n_samples_in_spare;
        if (!queue_message(message, uint32_t(std::max<int64_t>(time, 0))))
            return 0;
    }
    return 1;
}

bool TarqVST::queue_message(const uint8_t* message, uint32_t time) {
    midi_event filtered[MAX_OUT_EVENTS];
    const unsigned count = filter_event(time, message, filtered);
    // The two halves of a bend belong together.
    if (midi_kind(message[0]) == MIDI_PITCH_BEND)
        return events.push({filtered, count});
    for (unsigned i = 0; i < count; i++) {
        const midi_event& event = filtered[i];
        if (events.room() == 0)
            return false;
        if (midi_kind(event.status) == MIDI_PROGRAM_CHANGE)
            changeInstrument(int(midi_channel(event.status)), event.data1, event.time);
        else
            events.push({&event, 1});
        if (midi_kind(event.status) == MIDI_NOTE_ON)
            meters.played_channels.fetch_or(1U << midi_channel(event.status),
                                            std::memory_order_relaxed);
    }
    return true;
}

template <typename Write> void TarqVST::render_pieces(int32_t frames, const Write& write) {
    for (int32_t done = 0; done < frames;) {
        const int32_t piece = std::min(frames - done, int32_t(MAX_NUM_SAMPLES));
        write(run_synth(uint32_t(piece)), done, piece);
        done += piece;
    }
}

void TarqVST::process(float** /*inputs*/, float** outputs, int32_t frames) {
    const LockHolder holder(synth_lock);
    if (!block_size_is_known)
        return;
    render_pieces(frames, [outputs](const float* sound, int32_t first, int32_t count) {
        for (int32_t i = 0; i < count; i++) {
            outputs[0][first + i] += sound[2 * i];
            outputs[1][first + i] += sound[2 * i + 1];
        }
    });
}

void TarqVST::processReplacing(float** /*inputs*/, float** outputs, int32_t frames) {
    const LockHolder holder(synth_lock);
    if (!block_size_is_known) {
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

const float* TarqVST::run_synth(uint32_t frames) {
    const LockHolder holder(synth_lock);
    if (events.size() >= EventQueue::CAPACITY)
        logPrintf("run_synth with %d events, %d is max - very likely a midi event overflow\n",
                  int(events.size()), int(EventQueue::CAPACITY));
    TARQ_ASSERT(n_samples_in_spare < GRANULARITY);
    std::copy_n(spare_buf, 2 * n_samples_in_spare, out_buf);
    const uint32_t to_render =
        frames > n_samples_in_spare ? whole_granules(frames - n_samples_in_spare) : 0;
    if (to_render > 0) {
        float* rendered = out_buf + size_t(2) * n_samples_in_spare;
        const std::span<const midi_event> due = events.take(curr_time, curr_time + to_render);
        if (synth != nullptr)
            synth->run(rendered, to_render, due.data(), uint32_t(due.size()), curr_time);
        else
            std::fill_n(rendered, 2 * to_render, 0.0F);
        curr_time += to_render;
        measure(rendered, to_render);
        keep_clock_low();
        queue_what_found_no_room();
    }
    const uint32_t new_samples_in_spare = to_render + n_samples_in_spare - frames;
    TARQ_ASSERT(new_samples_in_spare < GRANULARITY);
    std::copy_n(out_buf + size_t(2) * frames, 2 * new_samples_in_spare, spare_buf);
    n_samples_in_spare = new_samples_in_spare;
    return out_buf;
}

void TarqVST::keep_clock_low() {
    if (curr_time < CLOCK_LIMIT)
        return;
    const uint32_t frames = curr_time - Tarquil::MIN_MOVED_CLOCK;
    if (synth != nullptr)
        synth->move_clock_back(frames, curr_time);
    events.move_clock_back(frames);
    curr_time -= frames;
}

void TarqVST::measure(const float* frames, uint32_t num_frames) {
    if (!meters.watched.load(std::memory_order_relaxed) || synth == nullptr)
        return;
    float left = 0;
    float right = 0;
    for (uint32_t i = 0; i < num_frames; i++) {
        left = std::max(left, std::fabs(frames[2 * i]));
        right = std::max(right, std::fabs(frames[2 * i + 1]));
    }
    // A peak that is taken meanwhile may be shown twice, which nobody sees.
    if (left > meters.peak_left.load(std::memory_order_relaxed))
        meters.peak_left.store(left, std::memory_order_relaxed);
    if (right > meters.peak_right.load(std::memory_order_relaxed))
        meters.peak_right.store(right, std::memory_order_relaxed);
    const MultiCompressor& compressor = synth->get_compressor();
    for (unsigned band = 0; band < MC_N_BANDS; band++) {
        meters.band_levels[band].store(compressor.get_level(band), std::memory_order_relaxed);
        meters.band_gains[band].store(compressor.get_attenuation(band), std::memory_order_relaxed);
    }
    meters.voices.store(synth->get_voice_pool().voices_used(), std::memory_order_relaxed);
}

void TarqVST::refresh_synth() {
    const LockHolder holder(synth_lock);
    logPrintf("refresh_synth\n");
    for (int channel = 0; channel < NUM_CHANNELS; channel++)
        changeInstrument(channel, int(current_instruments[channel]), curr_time);
    queue_globals(curr_time);
}

void TarqVST::changeInstrument(int channel, int instrument, uint32_t time) {
    const LockHolder holder(synth_lock);
    TARQ_ASSERT(channel >= 0 && channel < NUM_CHANNELS);
    TARQ_ASSERT(instrument >= 0 && instrument < NUM_PROGRAMS);
    current_instruments[channel] = unsigned(instrument);
    queue_instrument(unsigned(channel), time);
    update_editor();
}

void TarqVST::queue_instrument(unsigned channel, uint32_t time) {
    midi_event emitted[NUM_CONTROLLERS];
    const unsigned count =
        settings.get_instrument(current_instruments[channel])
            .emit_program_change(emitted, channel, time,
                                 std::min(events.room(), uint32_t(NUM_CONTROLLERS)));
    events.push({emitted, count});
    const uint32_t bit = 1U << channel;
    waiting_channels = count > 0 ? waiting_channels & ~bit : waiting_channels | bit;
}

void TarqVST::queue_globals(uint32_t time) {
    midi_event emitted[NUM_GLOBAL_CONTROLLERS];
    const unsigned count = settings.emit_global_controllers(
        emitted, time, std::min(events.room(), NUM_GLOBAL_CONTROLLERS));
    events.push({emitted, count});
    globals_wait = count < NUM_GLOBAL_CONTROLLERS;
}

// The engine must not be left with another sound than the bank's.
void TarqVST::queue_what_found_no_room() {
    for (unsigned channel = 0; waiting_channels >> channel != 0; channel++) {
        if ((waiting_channels >> channel & 1U) != 0)
            queue_instrument(channel, curr_time);
    }
    if (globals_wait)
        queue_globals(curr_time);
}

void TarqVST::set_band_muted(unsigned band, bool muted) {
    const LockHolder holder(synth_lock);
    band_muted[band].store(muted, std::memory_order_relaxed);
    if (synth != nullptr)
        synth->set_band_muted(band, muted);
}

void TarqVST::release_all_notes() {
    const LockHolder holder(synth_lock);
    for (unsigned channel = 0; channel < unsigned(NUM_CHANNELS); channel++) {
        const uint8_t message[] = {midi_status(MIDI_CONTROL_CHANGE, channel), MIDI_ALL_NOTES_OFF,
                                   0};
        queue_message(message, curr_time);
    }
}

uint32_t TarqVST::get_time() {
    const LockHolder holder(synth_lock);
    return curr_time;
}

uint32_t TarqVST::num_queued_events() {
    const LockHolder holder(synth_lock);
    return events.size();
}

} // namespace tarquil

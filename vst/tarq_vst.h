// The plug-in object: a bank, an engine that plays it, and the host's operations on both.
//
// The host's events become a queue ordered by time, its arbitrary block sizes become runs of the
// engine in whole granules.  The engine plays whatever controller events arrive; the bank stays
// here, and every change of it is queued as events for the channels that play it.

#pragma once

#include <atomic>
#include <cstdint>
#include <ctime>
#include <memory>
#include <string>
#include <string_view>

#include "common/platform/lock.h"
#include "instrument/settings.h"
#include "softsynth/core/core.h"
#include "softsynth/parameters/constants.h"
#include "vst/abi/audio_effect_x.h"
#include "vst/event_queue.h"
#include "vst/meters.h"
#include "vst/plugin_editor.h"
#include "vst/plugin_parameters.h"

namespace tarquil {

class TarqVST : public AudioEffectX {
  public:
    static constexpr int32_t NUM_PROGRAMS = int32_t(MAX_INSTRUMENTS);

    // `host` may be null, for tests and tools.
    explicit TarqVST(audioMasterCallback host);
    ~TarqVST() override;

    bool getEffectName(char* name) override;
    bool getProductString(char* text) override;
    bool getVendorString(char* text) override;
    int32_t getVendorVersion() override { return 1; }
    int32_t canDo(const char* text) override;
    bool getOutputProperties(int32_t index, VstPinProperties* properties) override;
    int32_t getNumMidiInputChannels() override { return NUM_CHANNELS; }

    void setSampleRate(float rate) override;
    void setBlockSize(int32_t frames) override;
    // The first one makes the engine.
    void resume() override;

    int32_t processEvents(const VstEvents* events) override;
    void process(float** inputs, float** outputs, int32_t frames) override;
    void processReplacing(float** inputs, float** outputs, int32_t frames) override;

    void setParameter(int32_t index, float value) override;
    float getParameter(int32_t index) override;
    void getParameterName(int32_t index, char* text) override;
    void getParameterDisplay(int32_t index, char* text) override;
    void getParameterLabel(int32_t index, char* text) override;
    bool canParameterBeAutomated(int32_t index) override;
    // Takes what getParameterDisplay shows, and any number, for the nearest value.
    bool string2parameter(int32_t index, const char* text) override;

    void setProgram(int32_t program) override;
    void setProgramName(const char* name) override;
    void getProgramName(char* name) override;
    bool getProgramNameIndexed(int32_t category, int32_t index, char* text) override;
    bool copyProgram(int32_t destination) override;

    int32_t getChunk(void** data, bool isPreset) override;
    int32_t setChunk(const void* data, int32_t byteSize, bool isPreset) override;

    // The byte (0..127) of a controller (0..205): a global one in the bank, any other in the
    // current program, and from there at once in every channel that plays it.
    void set_controller(int index, int value);
    int get_controller(int index);

    // As set_controller, for the pitch bend of the current program as well: what its channels start
    // with when they get the program.
    void set_program_controller(int index, int value);

    // `channel` 0..15 plays `instrument` 0..127 from the absolute sample time `time` on.
    void changeInstrument(int channel, int instrument, uint32_t time);
    int get_current_instrument(int channel);

    // 0, or an error code of Instrument and TarqSettings; a load that fails changes nothing.
    int load_curr_instrument(const std::string& path);
    int load_curr_instrument_from_string(std::string_view text);
    int save_curr_instrument(std::string& text);
    int load_bank(const std::string& path);
    int load_bank_from_string(std::string_view text);
    int save_bank(std::string& text);

    // The bank; only with synth_lock held.
    [[nodiscard]] const TarqSettings& bank() const { return settings; }

    // Replace and read whole pieces of the bank, for the editor.
    void set_bank(const TarqSettings& bank);
    TarqSettings get_bank();
    void set_instrument(int number, const Instrument& instrument);
    Instrument get_instrument(int number);
    void set_song(const std::string& title, const std::string& author);

    // Sends every channel its instrument, and the engine the global controllers.
    void refresh_synth();

    // Silences a band of the master compressor, or lets it sound again.
    void set_band_muted(unsigned band, bool muted);
    [[nodiscard]] bool is_band_muted(unsigned band) const {
        return band_muted[band].load(std::memory_order_relaxed);
    }

    // Releases every key of every channel.
    void release_all_notes();

    // The clock: frames rendered so far, less what it was moved back by.
    [[nodiscard]] uint32_t get_time();

    [[nodiscard]] uint32_t num_queued_events();

    Meters meters;

  protected:
    // Once the clock is there it is moved back: six hours and 46 minutes, half of TIME_NEVER.
    static constexpr uint32_t CLOCK_LIMIT = 0x40000000;

    uint32_t curr_time = 0;

  private:
    // Renders a piece of at most MAX_NUM_SAMPLES frames; the pointer is valid until the next call.
    const float* run_synth(uint32_t frames);

    // Calls write(frames rendered, first frame, frame count) for each piece of a host's block.
    template <typename Write> void render_pieces(int32_t frames, const Write& write);

    bool queue_message(const uint8_t* message, uint32_t time);
    void queue_instrument(unsigned channel, uint32_t time);
    void queue_globals(uint32_t time);
    void queue_what_found_no_room();
    void keep_clock_low();
    void measure(const float* frames, uint32_t num_frames);

    void save_channel_programs(std::string& text) const;
    void load_channel_programs(std::string_view text);
    // After a load: the engine and the editor follow.
    void follow_load();
    void update_editor();
    Instrument& current_instrument() { return settings.get_instrument(unsigned(getProgram())); }

    TarqSettings settings;
    // Room for a run and the spare frames in front of it, interleaved.
    float out_buf[2 * (MAX_NUM_SAMPLES + GRANULARITY)] = {};
    float spare_buf[2 * (GRANULARITY - 1)] = {};
    uint32_t n_samples_in_spare = 0;
    std::unique_ptr<Tarquil> synth;
    std::atomic<bool> band_muted[MC_N_BANDS] = {}; // as the engine has it, or will
    EventQueue events;
    bool block_size_is_known = false;
    unsigned current_instruments[NUM_CHANNELS] = {};
    std::unique_ptr<PluginEditor> tarq_editor;
    std::string chunk;
    std::clock_t last_rate_warning;

    // What did not fit into the queue and follows when there is room: channels by bit, and the
    // global controllers.
    uint32_t waiting_channels = 0;
    bool globals_wait = false;
};

} // namespace tarquil

// The plug-in object: a player, and a host's operations on it.
//
// The host's arbitrary block sizes become runs of the engine in whole granules.  What hosts and the
// editor change goes to the player, which the audio calls never wait for.

#pragma once

#include <atomic>
#include <cstdint>
#include <ctime>
#include <memory>
#include <string>
#include <string_view>

#include "common/platform/lock.h"
#include "player/granule_stream.h"
#include "player/move_gestures.h"
#include "player/player.h"
#include "vst/abi/audio_effect_x.h"
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
    // The edited one, whoever has chosen it.
    int32_t getProgram() override { return int32_t(current_program()); }
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

    // Sends every channel its instrument, and the engine the global controllers.
    void refresh_synth() { synth.refresh(); }

    // The clock: frames rendered so far, less what it was moved back by.
    // For the audio thread, as the number of events that wait for the engine.
    [[nodiscard]] uint32_t get_time() { return synth.audio().time(); }
    [[nodiscard]] uint32_t num_queued_events();

    Player& player() { return synth; }

    // As the host has said, in Hz; for any thread.
    [[nodiscard]] double host_rate() const { return double(told_rate.load()); }

  protected:
    // Sets the clock, as if that many frames had been rendered; before anything else.
    void set_clock(uint32_t time) { synth.audio().set_clock(time); }

  private:
    // Calls write(frames rendered, first frame, frame count) for each piece of a host's block.
    void ask_tempo();
    template <typename Write> void render_pieces(int32_t frames, const Write& write);
    void tell_moves(int32_t frames);

    unsigned current_program() { return synth.edited_program(); }

    Player synth;
    // An audio call is on its way: one that comes meanwhile, from another thread, does nothing.
    std::atomic_flag is_in_audio;
    GranuleStream stream;
    MoveGestures moves; // of learned controls, while no window is open
    std::atomic<bool> block_size_is_known{false};
    std::atomic<float> told_rate{float(SAMPLE_RATE)};
    std::unique_ptr<AEffEditor> tarq_editor;
    Lock chunk_lock;
    std::string chunk;
    std::clock_t last_rate_warning;
};

} // namespace tarquil

// A bank that the editor can show and change with no plug-in behind it: for pictures and tests.

#pragma once

#include <memory>
#include <optional>
#include <utility>
#include <vector>

#include "editor/model/editor_synth.h"

namespace tarquil {

class BankSynth : public EditorSynth {
  public:
    // The built-in sounds; channel c plays program c.
    BankSynth();
    ~BankSynth() override;

    void read_state(EditorState& state) override;
    EditorMeters read_meters() override { return meters; }
    void watch_output(ScopeSource source) override { watched = source; }
    bool read_output(std::span<float> left, std::span<float> right) override;

    void begin_edit(unsigned /*number*/) override {}
    void set_controller(unsigned number, int value) override;
    void end_edit(unsigned /*number*/) override {}
    [[nodiscard]] int host_parameter(unsigned number) const override;

    void set_program(unsigned new_program) override { program = new_program; }
    void set_channel_program(unsigned channel, unsigned new_program) override;
    void set_selected_channel(unsigned channel) override { selected_channel = channel; }

    Instrument get_instrument(unsigned number) override { return bank.get_instrument(number); }
    void set_instrument(unsigned number, const Instrument& instrument) override;
    void copy_bank(TarqSettings& copy) override { copy = bank; }
    void set_bank(const TarqSettings& new_bank) override { bank = new_bank; }
    void set_dialect(MidiDialect dialect) override { bank.set_midi_dialect(dialect); }
    void set_tempo_sync(bool is_on) override { bank.set_tempo_sync(is_on); }
    void set_learned(const LearnedControls& learned) override { bank.set_learned(learned); }
    void listen(bool is_on) override { is_listening = is_on; }
    std::optional<unsigned> take_heard_controller() override {
        return std::exchange(heard_controller, std::nullopt);
    }
    void set_song(const std::string& title, const std::string& author) override;

    const WaveformStore& get_waves() override;

    [[nodiscard]] bool is_band_muted(unsigned band) const override { return muted[band]; }
    void set_band_muted(unsigned band, bool is_muted) override { muted[band] = is_muted; }
    void audition(const Instrument& sound, const Phrase& phrase) override;
    void end_audition() override { auditioned.clear(); }
    void panic() override { panics++; }
    [[nodiscard]] EditorNotice read_notice() override { return notice; }

    void play_key(unsigned channel, unsigned key, unsigned velocity) override {
        keys.channels[channel].keys[key] = velocity > 0;
    }
    void bend(unsigned channel, unsigned value) override { keys.channels[channel].bend = value; }
    void set_modulation(unsigned channel, unsigned value) override {
        keys.channels[channel].modulation = value;
    }
    void set_sustain(unsigned channel, bool is_down) override {
        keys.channels[channel].is_sustained = is_down;
    }
    EditorKeys read_keys() override { return keys; }
    void strike_again() override { strikes++; }

    TarqSettings bank;
    EditorMeters meters;
    EditorKeys keys;
    EditorNotice notice;
    ScopeSource watched = ScopeSource::NOTHING;
    std::vector<float> output; // what left and right are, from their ends on
    unsigned program = 0;
    std::array<uint8_t, NUM_CHANNELS> channel_programs{};
    unsigned selected_channel = 0;
    int panics = 0;
    int strikes = 0;
    bool is_listening = false;
    std::optional<unsigned> heard_controller;
    std::string auditioned; // the sound's name and the first key: "Harp 60"; empty for none

  private:
    std::array<bool, NUM_COMPRESSOR_BANDS> muted{};
    std::unique_ptr<const WaveformStore> waves; // built when they are first asked for
};

} // namespace tarquil

// A player as the editor sees it, whatever host it plays in.

#pragma once

#include "editor/model/editor_synth.h"
#include "player/player.h"

namespace tarquil {

// What differs between hosts: who is told of an edit.
class PlayerSynth : public EditorSynth {
  public:
    // The player stays as long as the object.
    explicit PlayerSynth(Player& edited_player) : player(edited_player) {}

    void read_state(EditorState& state) override;
    EditorMeters read_meters() override;
    void watch_output(ScopeSource source) override;
    bool read_output(std::span<float> left, std::span<float> right) override;

    void begin_edit(unsigned /*number*/) override {}
    void set_controller(unsigned number, int value) override;
    void end_edit(unsigned /*number*/) override {}
    [[nodiscard]] int host_parameter(unsigned /*number*/) const override { return 0; }

    void set_program(unsigned program) override;
    void set_channel_program(unsigned channel, unsigned program) override;
    void set_selected_channel(unsigned channel) override { player.set_selected_channel(channel); }
    [[nodiscard]] bool follows_messages() const override { return true; }
    std::vector<unsigned> drum_kits() override { return player.drum_kits(); }

    Instrument get_instrument(unsigned program) override;
    void set_instrument(unsigned program, const Instrument& instrument) override;
    void copy_bank(TarqSettings& bank) override;
    void set_bank(const TarqSettings& bank) override;
    void set_dialect(MidiDialect dialect) override;
    void set_tempo_sync(bool is_on) override;
    void set_learned(const LearnedControls& learned) override { player.set_learned(learned); }
    void listen(bool is_on) override { player.listen(is_on); }
    std::optional<unsigned> take_heard_controller() override {
        return player.take_heard_controller();
    }
    void set_song(const std::string& title, const std::string& author) override;

    const WaveformStore& get_waves() override;
    std::vector<ShippedBank> shipped_banks() override;

    [[nodiscard]] bool is_band_muted(unsigned band) const override;
    void set_band_muted(unsigned band, bool muted) override;
    void audition(const Instrument& sound, const Phrase& phrase) override;
    void end_audition() override;
    void panic() override;

    void play_key(unsigned channel, unsigned key, unsigned velocity) override;
    void bend(unsigned channel, unsigned value) override;
    void set_modulation(unsigned channel, unsigned value) override;
    void set_sustain(unsigned channel, bool is_down) override;
    EditorKeys read_keys() override;
    void strike_again() override { player.strike_again(); }

  protected:
    Player& get_player() { return player; }

  private:
    Player& player;
    NoteView note; // the last that was whole
    uint32_t read_frames = 0;
};

} // namespace tarquil

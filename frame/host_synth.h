// A player as the editor sees it in a host that is told of each edit.

#pragma once

#include "frame/edit_listener.h"
#include "frame/player_synth.h"
#include "player/move_gestures.h"

namespace tarquil {

class HostSynth : public PlayerSynth {
  public:
    // Both stay as long as the object.
    HostSynth(Player& edited_player, EditListener& told) : PlayerSynth(edited_player), host(told) {}

    [[nodiscard]] int host_parameter(unsigned number) const override;
    void begin_edit(unsigned number) override { host.begin_edit(number); }
    void set_controller(unsigned number, int value) override;
    void end_edit(unsigned number) override { host.end_edit(number); }
    void set_program(unsigned program) override;
    void set_instrument(unsigned program, const Instrument& instrument) override;
    void set_bank(const TarqSettings& bank) override;
    void set_channel_program(unsigned channel, unsigned program) override;
    [[nodiscard]] bool follows_messages() const override { return false; }
    void set_dialect(MidiDialect dialect) override;
    void set_tempo_sync(bool is_on) override;
    void set_learned(const LearnedControls& learned) override;
    [[nodiscard]] EditorNotice read_notice() override;
    // The host is told of what learned MIDI controllers move, as of what is moved in the window.
    void pass_time(double seconds) override;
    void window_closed() override;

  private:
    struct Told;

    EditListener& host;
    MoveGestures moves;
};

} // namespace tarquil

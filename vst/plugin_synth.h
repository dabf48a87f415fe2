// The plug-in as the editor sees it: its player, and a host that is told of each edit.

#pragma once

#include "frame/player_synth.h"

namespace tarquil {

class TarqVST;

class PluginSynth : public PlayerSynth {
  public:
    // The plug-in stays as long as the object.
    explicit PluginSynth(TarqVST& edited_plugin);

    [[nodiscard]] int host_parameter(unsigned number) const override;
    void begin_edit(unsigned number) override;
    void set_controller(unsigned number, int value) override;
    void end_edit(unsigned number) override;
    void set_program(unsigned program) override;
    void set_instrument(unsigned program, const Instrument& instrument) override;
    void set_bank(const TarqSettings& bank) override;
    void set_dialect(MidiDialect dialect) override;

  private:
    TarqVST& plugin;
};

} // namespace tarquil

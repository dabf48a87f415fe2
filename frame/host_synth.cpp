// A player as the editor sees it in a host that is told of each edit.

#include "frame/host_synth.h"

#include "softsynth/parameters/host_parameters.h"

namespace tarquil {

int HostSynth::host_parameter(unsigned number) const {
    return find_host_parameter(number).value_or(0);
}

void HostSynth::set_controller(unsigned number, int value) {
    PlayerSynth::set_controller(number, value);
    host.edited(number, value);
}

void HostSynth::set_program(unsigned program) {
    PlayerSynth::set_program(program);
    host.programs_changed();
}

void HostSynth::set_instrument(unsigned program, const Instrument& instrument) {
    PlayerSynth::set_instrument(program, instrument);
    host.programs_changed();
}

void HostSynth::set_bank(const TarqSettings& bank) {
    PlayerSynth::set_bank(bank);
    host.programs_changed();
}

void HostSynth::set_channel_program(unsigned channel, unsigned program) {
    PlayerSynth::set_channel_program(channel, program);
    host.programs_changed();
}

void HostSynth::set_dialect(MidiDialect dialect) {
    PlayerSynth::set_dialect(dialect);
    host.programs_changed();
}

void HostSynth::set_tempo_sync(bool is_on) {
    PlayerSynth::set_tempo_sync(is_on);
    host.programs_changed();
}

void HostSynth::set_learned(const LearnedControls& learned) {
    PlayerSynth::set_learned(learned);
    host.programs_changed();
}

struct HostSynth::Told {
    EditListener& host;
    Player& player;

    bool begin_edit(unsigned number) {
        host.begin_edit(number);
        return true;
    }
    bool edited(unsigned number) {
        host.edited(number, player.get_controller(number));
        return true;
    }
    bool end_edit(unsigned number) {
        host.end_edit(number);
        return true;
    }
};

void HostSynth::pass_time(double seconds) {
    moves.take(get_player().moved_controls());
    moves.tell(seconds, Told{host, get_player()});
}

void HostSynth::window_closed() {
    moves.end(Told{host, get_player()});
}

EditorNotice HostSynth::read_notice() {
    std::string warning = host.warning();
    return {warning.empty() ? EditorNotice::Kind::NONE : EditorNotice::Kind::WARNING,
            std::move(warning)};
}

} // namespace tarquil

// The General MIDI dialect: system exclusive messages and resets.

#include "midi/gm/gm_dialect.h"

namespace tarquil {

void GmDialect::play_sysex(uint32_t time, const SysexMessage& sysex, EngineEvents& out) {
    GmReport& report = state.report;
    switch (sysex.kind) {
    case SysexKind::GM_ON:
    case SysexKind::GM_OFF:
    case SysexKind::GM2_ON:
    case SysexKind::GS_RESET:
    case SysexKind::XG_ON:
        report.count(GmMessage::RESETS);
        reset(time, out);
        state.xg_banks = sysex.kind == SysexKind::XG_ON;
        return;
    case SysexKind::GS_RHYTHM_PART: {
        report.count(GmMessage::RHYTHM_PARTS);
        GmChannel& channel = state.channels[sysex.channel];
        channel.is_rhythm = channel.is_rhythm_by_default = sysex.value != 0;
        return;
    }
    case SysexKind::MASTER_VOLUME:
        state.master.volume = uint16_t(sysex.value);
        break;
    case SysexKind::GS_VOLUME:
        state.master.volume = uint16_t(sysex.value * MAX_MASTER_VOLUME / 127);
        break;
    case SysexKind::MASTER_BALANCE:
        state.master.balance = uint16_t(sysex.value);
        break;
    case SysexKind::MASTER_FINE:
        state.master.fine_tuning = uint16_t(sysex.value);
        break;
    case SysexKind::MASTER_COARSE:
        state.master.coarse_tuning = uint8_t(sysex.value);
        break;
    default:
        report.count(GmMessage::OTHER_SYSEX);
        return;
    }
    report.count(GmMessage::MASTER_LEVELS);
    update_master(time, out);
}

void GmDialect::update_master(uint32_t time, EngineEvents& out) {
    constexpr unsigned LEVELS[] = {CTRL_MAIN_VOLUME, CTRL_PANNING};
    for (unsigned channel = 0; channel < NUM_MIDI_CHANNELS; channel++) {
        melodic.update(time, channel, LEVELS, out);
        rhythm.update(time, channel, LEVELS, out);
        melodic.update_bend(time, channel, out);
    }
}

void GmDialect::silence_all(uint32_t time, EngineEvents& out) {
    melodic.silence_all(time, out);
    rhythm.silence_all(time, out);
    for (const unsigned engine : {MELODIC_ENGINE, RHYTHM_ENGINE})
        out.put(engine,
                {.time = time, .status = midi_status(MIDI_SILENCE, 0), .data1 = SILENCE_MASTER});
}

void GmDialect::reset(uint32_t time, EngineEvents& out) {
    silence_all(time, out);
    for (unsigned i = 0; i < NUM_MIDI_CHANNELS; i++)
        state.channels[i].set_defaults(i);
    state.master = GmMaster();
    for (unsigned number = 0; number < NUM_CONTROLLERS; number++) {
        if (!changed_globals[number] || state.sounds.globals == nullptr)
            continue;
        put_global(time, number, (*state.sounds.globals)[number], out);
    }
    changed_globals.reset();
}

ChannelKeys GmDialect::held_keys() const {
    ChannelKeys held;
    melodic.add_held_keys(held);
    rhythm.add_held_keys(held);
    return held;
}

} // namespace tarquil

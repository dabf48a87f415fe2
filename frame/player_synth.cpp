// A player as the editor sees it, whatever host it plays in.

#include "frame/player_synth.h"

#include "player/shared_waveforms.h"
#include "sounds/shipped_sounds.h"

namespace tarquil {

void PlayerSynth::read_state(EditorState& state) {
    read_bank(player.get_bank(), player.edited_program(), state);
    for (unsigned channel = 0; channel < unsigned(NUM_CHANNELS); channel++)
        state.channel_programs[channel] = uint8_t(player.channel_program(channel));
    state.selected_channel = player.selected_channel();
}

EditorMeters PlayerSynth::read_meters() {
    Meters& meters = player.meters();
    EditorMeters shown;
    shown.peaks = {meters.peak_left.exchange(0.0F), meters.peak_right.exchange(0.0F)};
    for (unsigned band = 0; band < MC_N_BANDS; band++) {
        shown.band_levels[band] = meters.band_levels[band].load(std::memory_order_relaxed);
        shown.band_gains[band] = meters.band_gains[band].load(std::memory_order_relaxed);
    }
    shown.voices = unsigned(meters.voices.load(std::memory_order_relaxed));
    meters.note.read(note);
    shown.note = note;
    shown.active_channels = meters.played_channels.exchange(0);
    shown.tempo = meters.tempo.load(std::memory_order_relaxed);
    return shown;
}

void PlayerSynth::watch_output(ScopeSource source) {
    player.watch_output(source == ScopeSource::WHOLE     ? OutputWatch::WHOLE
                        : source == ScopeSource::PROGRAM ? OutputWatch::PROGRAM
                                                         : OutputWatch::NOTHING);
}

bool PlayerSynth::read_output(std::span<float> left, std::span<float> right) {
    const uint32_t now = player.meters().output.count();
    if (now == read_frames)
        return false;
    read_frames = now;
    return player.meters().output.read(left, right);
}

void PlayerSynth::set_controller(unsigned number, int value) {
    player.set_controller(number, value);
}

void PlayerSynth::set_program(unsigned program) {
    player.set_edited_program(program);
}

void PlayerSynth::set_channel_program(unsigned channel, unsigned program) {
    player.set_channel_program(channel, program);
}

Instrument PlayerSynth::get_instrument(unsigned program) {
    return player.get_instrument(program);
}

void PlayerSynth::set_instrument(unsigned program, const Instrument& instrument) {
    player.set_instrument(program, instrument);
}

void PlayerSynth::copy_bank(TarqSettings& bank) {
    bank = player.get_bank();
}

void PlayerSynth::set_bank(const TarqSettings& bank) {
    player.set_bank(bank);
}

void PlayerSynth::set_dialect(MidiDialect dialect) {
    player.set_dialect(dialect);
}

void PlayerSynth::set_tempo_sync(bool is_on) {
    player.set_tempo_sync(is_on);
}

void PlayerSynth::set_song(const std::string& title, const std::string& author) {
    player.set_song(title, author);
}

const WaveformStore& PlayerSynth::get_waves() {
    return shared_waveforms();
}

std::vector<ShippedBank> PlayerSynth::shipped_banks() {
    return {{"General MIDI", &shipped_gm_bank()},
            {"Originals", &shipped_originals()},
            {"Drums", &shipped_gm_drums()}};
}

bool PlayerSynth::is_band_muted(unsigned band) const {
    return player.is_band_muted(band);
}

void PlayerSynth::set_band_muted(unsigned band, bool muted) {
    player.set_band_muted(band, muted);
}

void PlayerSynth::audition(const Instrument& sound, const Phrase& phrase) {
    player.audition(sound.get_bytes(), phrase);
}

void PlayerSynth::end_audition() {
    player.end_audition();
}

void PlayerSynth::panic() {
    player.silence();
}

void PlayerSynth::play_key(unsigned channel, unsigned key, unsigned velocity) {
    player.play_key(channel, key, velocity);
}

void PlayerSynth::bend(unsigned channel, unsigned value) {
    player.bend(channel, value);
}

void PlayerSynth::set_modulation(unsigned channel, unsigned value) {
    player.set_modulation(channel, value);
}

void PlayerSynth::set_sustain(unsigned channel, bool is_down) {
    player.set_sustain(channel, is_down);
}

EditorKeys PlayerSynth::read_keys() {
    EditorKeys shown;
    for (unsigned i = 0; i < shown.channels.size(); i++) {
        EditorKeys::Channel& channel = shown.channels[i];
        SoundingKeys::Channel& sounding = player.sounding_keys().channels[i];
        channel.keys = sounding.take_keys();
        channel.bend = sounding.bend.load(std::memory_order_relaxed);
        channel.modulation = sounding.modulation.load(std::memory_order_relaxed);
        channel.is_sustained = sounding.is_sustained.load(std::memory_order_relaxed);
    }
    return shown;
}

} // namespace tarquil

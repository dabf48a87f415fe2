// The control side of a player: the bank, and what the audio side is told of its changes.

#include "player/player.h"

#include <cmath>

#include "common/assertion.h"
#include "common/log/log.h"
#include "instrument/checked_load.h"
#include "instrument/names.h"
#include "instrument/state_text.h"
#include "instrument/text_error.h"
#include "midi/gm/gm_channel.h"
#include "midi/gm/gm_laws.h"
#include "player/channel_programs.h"
#include "player/shared_waveforms.h"

namespace tarquil {

namespace {

// The drums' phases are others than the melodic parts'.
constexpr uint32_t DRUM_SEED = 0x9E3779B9;
constexpr uint32_t AUDITION_SEED = 0x7F4A7C15;

constexpr unsigned MAX_LEVEL = 127;

bool is_bend(unsigned number) {
    return number == CTRL_PITCH_BEND_MSB || number == CTRL_PITCH_BEND_LSB;
}

// The built-in sounds, under their default names.
TarqSettings default_bank() {
    TarqSettings bank;
    for (unsigned i = 0; i < MAX_INSTRUMENTS; i++)
        bank.get_instrument(i) = built_in_instrument(i);
    return bank;
}

} // namespace

Player::Player() : texts(default_bank()), link(texts), audio_side(link) {}

Player::~Player() = default;

void Player::start(uint32_t seed) {
    const LockHolder holder(lock);
    if (engine == nullptr) {
        phase_seed = seed;
        engine = make_engine(seed);
        prepare_gm(dialect(), link.gm_set.latest());
        link.engine.store(engine.get(), std::memory_order_release);
    }
    post({.kind = PlayerEdit::Kind::REFRESH});
}

std::unique_ptr<Tarquil> Player::make_engine(uint32_t seed) {
    // Program changes never reach the engine as such: they are sent as controllers.
    std::unique_ptr<Tarquil> made(new Tarquil(texts, shared_waveforms()));
    made->seed_phases(seed);
    if (runner != nullptr)
        made->set_runner(*runner);
    for (unsigned band = 0; band < MC_N_BANDS; band++)
        made->set_band_muted(band, is_band_muted(band));
    return made;
}

void Player::watch_output(OutputWatch watch) {
    const LockHolder holder(lock);
    if (watch == OutputWatch::PROGRAM && output_taps == nullptr) {
        output_taps = std::make_unique<StereoBuffer[]>(NUM_CHANNELS);
        link.meters.taps.store(output_taps.get(), std::memory_order_release);
    }
    link.meters.output_watch.store(watch, std::memory_order_release);
}

void Player::set_band_muted(unsigned band, bool muted) {
    const LockHolder holder(lock);
    muted_bands[band].store(muted, std::memory_order_relaxed);
    for (Tarquil* const one : {engine.get(), drum_engine.get(), audition_engine.get()})
        if (one != nullptr)
            one->set_band_muted(band, muted);
}

void Player::set_dialect(MidiDialect dialect) {
    const LockHolder holder(lock);
    texts.set_midi_dialect(dialect);
    follow_dialect(nullptr);
    link.note_change();
}

void Player::set_tempo_sync(bool is_on) {
    const LockHolder holder(lock);
    texts.set_tempo_sync(is_on);
    link.tempo_sync = is_on;
    link.note_change();
}

void Player::set_learned(const LearnedControls& learned) {
    const LockHolder holder(lock);
    texts.set_learned(learned);
    link.learned.set(learned);
    link.note_change();
}

// Makes the dialect that of the bank, and the channels' programs `channels`, if given.
void Player::follow_dialect(const ChannelPrograms* channels) {
    const MidiDialect before = dialect();
    const MidiDialect after = texts.get_midi_dialect();
    const ChannelPrograms usual = usual_channel_programs(after);
    if (channels == nullptr && before != after &&
        all_channel_programs() == usual_channel_programs(before))
        channels = &usual;
    if (before != after) {
        prepare_gm(after, link.gm_set.latest());
        link.dialect.store(after, std::memory_order_release);
    }
    for (unsigned channel = 0; channels != nullptr && channel < channels->size(); channel++) {
        if ((*channels)[channel] != channel_program(channel))
            set_channel_program(channel, (*channels)[channel]);
    }
}

void Player::set_gm_set(std::shared_ptr<const GmSet> set) {
    if (set == nullptr)
        set = std::make_shared<const GmSet>();
    std::vector<std::shared_ptr<const GmSet>> unused; // freed after the lock is held
    const LockHolder holder(lock);
    prepare_gm(dialect(), *set);
    unused = link.gm_set.offer(std::move(set));
    follow_names();
}

// Says which programs bear the names that the set's laws and its guests' are for.
void Player::follow_names() {
    const GmSet& set = link.gm_set.latest();
    constexpr unsigned BITS = 64;
    for (unsigned word = 0; word < std::size(link.lawful); word++) {
        uint64_t bits = 0;
        uint64_t guests = 0;
        for (unsigned bit = 0; bit < BITS; bit++) {
            const unsigned program = word * BITS + bit;
            const std::string_view name = texts.get_instrument(program).get_name();
            const std::string& guest = set.guest_names[program];
            if (set.names[program].empty() || set.names[program] == name)
                bits |= uint64_t(1) << bit;
            if (!guest.empty() && guest == name)
                guests |= uint64_t(1) << bit;
        }
        link.lawful[word].store(bits, std::memory_order_relaxed);
        link.lawful_guests[word].store(guests, std::memory_order_relaxed);
    }
}

std::vector<Player::KeyName> Player::drum_names() {
    std::vector<KeyName> names;
    const LockHolder holder(lock);
    const GmSet& set = link.gm_set.latest();
    if (dialect() != MidiDialect::GENERAL_MIDI || set.drums == nullptr)
        return names;
    for (unsigned key = 0; key < NUM_KEYS; key++) {
        if (const DrumKey* drum = set.map.find_drum(channel_program(RHYTHM_CHANNEL), key))
            names.push_back({uint8_t(key), set.drums->get_instrument(drum->instrument).get_name()});
    }
    return names;
}

std::vector<unsigned> Player::drum_kits() {
    std::vector<unsigned> kits;
    const LockHolder holder(lock);
    const GmSet& set = link.gm_set.latest();
    for (unsigned program = 0; program < GM_PROGRAMS && set.drums != nullptr; program++) {
        if (set.map.kit(program) != nullptr)
            kits.push_back(program);
    }
    return kits;
}

// Makes what the dialect and the set need, before the audio side hears of them.
void Player::prepare_gm(MidiDialect wanted, const GmSet& set) {
    if (wanted != MidiDialect::GENERAL_MIDI)
        return;
    if (ensemble == nullptr) {
        ensemble = std::make_unique<GmEnsemble>();
        link.ensemble.store(ensemble.get(), std::memory_order_release);
    }
    if (engine != nullptr && drum_engine == nullptr && set.drums != nullptr) {
        drum_engine = make_engine(phase_seed ^ DRUM_SEED);
        drum_engine->set_output_bound(GmEnsemble::ENGINE_BOUND);
        link.drum_engine.store(drum_engine.get(), std::memory_order_release);
    }
}

void Player::refresh() {
    const LockHolder holder(lock);
    post({.kind = PlayerEdit::Kind::REFRESH});
}

void Player::post(const PlayerEdit& edit) {
    if (!link.edits.push(edit))
        link.edits_lost = true;
    link.note_change();
}

void Player::set_edited_program(unsigned program) {
    TARQ_ASSERT(program < MAX_INSTRUMENTS);
    link.edited_program = program;
    link.note_change();
}

void Player::set_controller(unsigned number, int value) {
    const LockHolder holder(lock);
    const unsigned program = edited_program();
    value = filter_controller(number, value);
    if (is_global_controller(number))
        bank().set_global(number, value);
    else
        bank().set(program, number, value);
    if (is_bend(number))
        post({.kind = PlayerEdit::Kind::BEND,
              .program = uint8_t(program),
              .value = bank().get(program, CTRL_PITCH_BEND_MSB),
              .fine = bank().get(program, CTRL_PITCH_BEND_LSB)});
    else
        post({.kind = PlayerEdit::Kind::BYTE,
              .program = uint8_t(program),
              .number = uint8_t(number),
              .value = uint8_t(value)});
}

int Player::get_controller(unsigned number) {
    const LockHolder holder(lock);
    return is_global_controller(number) ? bank().get_global(number)
                                        : bank().get(edited_program(), number);
}

ControllerBytes Player::edited_bytes() {
    const LockHolder holder(lock);
    ControllerBytes bytes = bank().program(edited_program());
    for (const ControllerInfo& row : global_controller_rows())
        bytes[row.number] = bank().get_global(row.number);
    return bytes;
}

void Player::set_channel_program(unsigned channel, unsigned program, uint32_t time) {
    TARQ_ASSERT(channel < unsigned(NUM_CHANNELS));
    TARQ_ASSERT(program < MAX_INSTRUMENTS);
    const LockHolder holder(lock);
    link.channel_programs[channel].store(uint8_t(program), std::memory_order_relaxed);
    post({.kind = PlayerEdit::Kind::CHANNEL_PROGRAM,
          .program = uint8_t(program),
          .number = uint8_t(channel),
          .time = time});
}

Instrument Player::get_instrument(unsigned program) {
    const LockHolder holder(lock);
    Instrument instrument = texts.get_instrument(program);
    instrument.set_bytes(bank().program(program));
    return instrument;
}

void Player::store_instrument(unsigned program, const Instrument& instrument) {
    texts.get_instrument(program) = instrument;
    bank().set_program(program, instrument.get_bytes());
    follow_names();
}

void Player::set_instrument(unsigned program, const Instrument& instrument) {
    const LockHolder holder(lock);
    const ControllerBytes before = bank().program(program);
    store_instrument(program, instrument);
    post_difference(program, before, instrument.get_bytes());
}

void Player::post_difference(unsigned program, const ControllerBytes& before,
                             const ControllerBytes& after) {
    for (unsigned number = 0; number < NUM_CONTROLLERS; number++) {
        if (before[number] != after[number] && !is_global_controller(number) && !is_bend(number))
            post({.kind = PlayerEdit::Kind::BYTE,
                  .program = uint8_t(program),
                  .number = uint8_t(number),
                  .value = after[number]});
    }
    const uint8_t coarse = after[CTRL_PITCH_BEND_MSB];
    const uint8_t fine = after[CTRL_PITCH_BEND_LSB];
    if (before[CTRL_PITCH_BEND_MSB] != coarse || before[CTRL_PITCH_BEND_LSB] != fine)
        post({.kind = PlayerEdit::Kind::BEND,
              .program = uint8_t(program),
              .value = coarse,
              .fine = fine});
    link.note_change();
}

void Player::load_instrument(unsigned program, const Instrument& instrument) {
    const LockHolder holder(lock);
    store_instrument(program, instrument);
    post({.kind = PlayerEdit::Kind::REFRESH});
}

std::string Player::program_name(unsigned program) {
    const LockHolder holder(lock);
    return texts.get_instrument(program).get_name();
}

void Player::set_program_name(unsigned program, const std::string& name) {
    const std::string text = storable_text(name);
    const LockHolder holder(lock);
    if (!text.empty())
        texts.get_instrument(program).set_name(text);
    follow_names();
    link.note_change();
}

void Player::set_song(const std::string& title, const std::string& author) {
    const std::string storable_title = storable_text(title);
    const std::string storable_author = storable_text(author);
    const LockHolder holder(lock);
    texts.set_song_title(storable_title);
    texts.set_song_author(storable_author);
    link.note_change();
}

TarqSettings Player::get_bank() {
    const LockHolder holder(lock);
    TarqSettings copied = texts;
    for (unsigned i = 0; i < MAX_INSTRUMENTS; i++)
        copied.get_instrument(i).set_bytes(bank().program(i));
    copied.set_global_bytes(bank().global());
    return copied;
}

void Player::set_bank(const TarqSettings& fresh) {
    replace_bank(fresh, nullptr);
}

void Player::replace_bank(const TarqSettings& fresh, const ChannelPrograms* channels) {
    // Made before and freed after the lock is held.
    auto bytes = std::make_unique<BankBytes>(fresh);
    auto old_texts = std::make_unique<TarqSettings>(fresh);
    std::vector<std::unique_ptr<BankBytes>> old_banks;
    const LockHolder holder(lock);
    std::swap(texts, *old_texts);
    old_banks = link.bank.offer(std::move(bytes));
    follow_names();
    post({.kind = PlayerEdit::Kind::REFRESH});
    link.tempo_sync = texts.get_tempo_sync();
    link.learned.set(texts.get_learned());
    follow_dialect(channels);
}

void Player::silence() {
    const LockHolder holder(lock);
    post({.kind = PlayerEdit::Kind::SILENCE});
}

void Player::audition(const ControllerBytes& sound, const Phrase& phrase) {
    ControllerBytes bytes = sound;
    // As loud as on a channel that nobody has turned up or down.
    if (dialect() == MidiDialect::GENERAL_MIDI)
        bytes[CTRL_MAIN_VOLUME] = uint8_t(std::lround(
            exact_volume(sound[CTRL_MAIN_VOLUME], DEFAULT_VOLUME, MAX_LEVEL, MAX_MASTER_VOLUME)));
    try_sound(std::make_unique<const AuditionRequest>(bytes, phrase));
}

void Player::end_audition() {
    try_sound(std::make_unique<const AuditionRequest>());
}

void Player::try_sound(std::unique_ptr<const AuditionRequest> request) {
    std::vector<std::unique_ptr<const AuditionRequest>> unused; // freed after the lock is held
    const LockHolder holder(lock);
    if (engine == nullptr)
        return;
    if (audition_engine == nullptr && request->notes.empty())
        return;
    if (audition_engine == nullptr) {
        audition_engine = make_engine(phase_seed ^ AUDITION_SEED);
        link.audition_engine.store(audition_engine.get(), std::memory_order_release);
    }
    unused = link.audition.offer(std::move(request));
}

ChannelPrograms Player::all_channel_programs() const {
    ChannelPrograms programs;
    for (unsigned channel = 0; channel < programs.size(); channel++)
        programs[channel] = uint8_t(channel_program(channel));
    return programs;
}

std::string Player::save_state() {
    std::string text;
    get_bank().text_save_to_string(text);
    return text + channel_programs_line(all_channel_programs());
}

std::string Player::save_state_compact() {
    return tarquil::save_state_compact(get_bank()) + channel_programs_line(all_channel_programs()) +
           edited_program_line(edited_program()) +
           selected_channel_line(selected_channel(), all_channel_programs(), edited_program());
}

int Player::load_state(std::string_view text) {
    // Names that the text does not mention stay.
    auto fresh = std::make_unique<TarqSettings>(get_bank());
    const auto bank_text = find_state_text(text, StateKind::BANK);
    const int error = bank_text ? load_bank_checked_from_string(*fresh, *bank_text) : CANNOT_OPEN;
    if (error == 0) {
        const ChannelPrograms programs =
            find_channel_programs(*bank_text, fresh->get_midi_dialect());
        replace_bank(*fresh, &programs);
        if (const auto program = find_edited_program(*bank_text))
            set_edited_program(*program);
        set_selected_channel(
            find_selected_channel(*bank_text)
                .value_or(usual_selected_channel(all_channel_programs(), edited_program())));
    }
    return error;
}

} // namespace tarquil

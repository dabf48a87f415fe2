// The control side of a player: the bank, and what the audio side is told of its changes.

#include "player/player.h"

#include <algorithm>

#include "common/assertion.h"
#include "common/log/log.h"
#include "instrument/checked_load.h"
#include "instrument/names.h"
#include "instrument/state_text.h"
#include "instrument/text_error.h"
#include "player/channel_programs.h"
#include "player/shared_waveforms.h"

namespace tarquil {

namespace {

// The current bank, the one that the audio side plays, and one on its way between them.
constexpr size_t USUAL_BANKS = 4;

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

// The first bank, before there is an audio side.
BankBytes* start_with(PlayerLink& link, std::vector<std::unique_ptr<BankBytes>>& banks,
                      const TarqSettings& bank) {
    const ChannelPrograms usual = usual_channel_programs();
    std::copy(usual.begin(), usual.end(), link.channel_programs);
    banks.reserve(USUAL_BANKS);
    banks.push_back(std::make_unique<BankBytes>(bank));
    return banks.back().get();
}

} // namespace

Player::Player() : texts(default_bank()), audio_side(link, start_with(link, banks, texts)) {}

Player::~Player() = default;

void Player::start(uint32_t seed) {
    const LockHolder holder(lock);
    if (engine == nullptr) {
        // Program changes never reach the engine as such: they are sent as controllers.
        engine.reset(new Tarquil(texts, shared_waveforms()));
        engine->seed_phases(seed);
        for (unsigned band = 0; band < MC_N_BANDS; band++)
            engine->set_band_muted(band, is_band_muted(band));
        link.engine.store(engine.get(), std::memory_order_release);
    }
    post({.kind = PlayerEdit::Kind::REFRESH});
}

void Player::set_band_muted(unsigned band, bool muted) {
    const LockHolder holder(lock);
    muted_bands[band].store(muted, std::memory_order_relaxed);
    if (engine != nullptr)
        engine->set_band_muted(band, muted);
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
    old_banks.reserve(USUAL_BANKS);
    const LockHolder holder(lock);
    std::swap(texts, *old_texts);
    banks.push_back(std::move(bytes));
    const auto give_up = [&](const BankBytes* given_back) {
        const auto found = std::find_if(banks.begin(), banks.end(), [&](const auto& owned) {
            return owned.get() == given_back;
        });
        if (found == banks.end())
            return;
        old_banks.push_back(std::move(*found));
        banks.erase(found);
    };
    BankBytes* retired = nullptr;
    while (link.retired_banks.pop(retired))
        give_up(retired);
    give_up(link.next_bank.exchange(banks.back().get(), std::memory_order_acq_rel));
    post({.kind = PlayerEdit::Kind::REFRESH});
    if (channels == nullptr)
        return;
    for (unsigned channel = 0; channel < channels->size(); channel++) {
        if ((*channels)[channel] != channel_program(channel))
            set_channel_program(channel, (*channels)[channel]);
    }
}

void Player::release_all_notes() {
    const LockHolder holder(lock);
    post({.kind = PlayerEdit::Kind::RELEASE_NOTES});
}

void Player::play_message(const std::array<uint8_t, 3>& message) {
    const LockHolder holder(lock);
    post({.kind = PlayerEdit::Kind::MESSAGE,
          .program = message[0],
          .number = message[1],
          .value = message[2]});
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
           edited_program_line(edited_program());
}

int Player::load_state(std::string_view text) {
    // Names that the text does not mention stay.
    auto fresh = std::make_unique<TarqSettings>(get_bank());
    const auto bank_text = find_state_text(text, StateKind::BANK);
    const int error = bank_text ? load_bank_checked_from_string(*fresh, *bank_text) : CANNOT_OPEN;
    if (error == 0) {
        const ChannelPrograms programs = find_channel_programs(*bank_text);
        replace_bank(*fresh, &programs);
        if (const auto program = find_edited_program(*bank_text))
            set_edited_program(*program);
    }
    return error;
}

} // namespace tarquil

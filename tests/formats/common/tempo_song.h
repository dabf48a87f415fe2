// A host's tempo and place, and a state whose delay, LFO and retrigger follow them: what every
// plug-in format has to pass on.

#pragma once

#include "instrument/settings.h"
#include "softsynth/parameters/effect_type.h"
#include "softsynth/parameters/influence.h"
#include "softsynth/parameters/osc_type.h"
#include "tests/formats/common/format_song.h"

namespace tarquil {

inline std::string following_state(bool follows = true) {
    TarqSettings bank;
    for (unsigned program = 0; program < MAX_INSTRUMENTS; program++) {
        Instrument& sound = bank.get_instrument(program);
        sound.set_controller(CTRL_CHANFX2_TYPE, STEREO_EFFECT_DELAY);
        sound.set_controller(CTRL_CHANFX2_PARAM1, 4);
        sound.set_controller(CTRL_CHANFX2_PARAM2, 12);
        sound.set_controller(CTRL_CHANFX2_WET, 100);
        sound.set_controller(CTRL_LFO1_TYPE, OSC_TRIANGLE);
        sound.set_controller(CTRL_LFO1_SPEED, 90);
        sound.set_controller(CTRL_OSC1_INFLUENCE_SOURCE, INFL_LFO1);
        sound.set_controller(CTRL_OSC1_INFLUENCE_AMOUNT, 70);
    }
    bank.set_global_controller(CTRL_RETRIGGER_BPM, 127);
    bank.set_global_controller(CTRL_RETRIGGER_SPEEDUP, 65);
    bank.set_global_controller(CTRL_RETRIGGER_WET_LEVEL, 50);
    bank.set_tempo_sync(follows);
    return save_state_compact(bank);
}

// The song begins in its third bar; its tempo changes once.  Floats hold all these exactly.
inline constexpr uint32_t TEMPO_BLOCK = 256;
inline constexpr uint32_t TEMPO_CHANGE = 40 * TEMPO_BLOCK;
inline constexpr double BEATS_PER_BAR = 3.0;
inline constexpr double FIRST_POSITION = 2 * BEATS_PER_BAR + 0.3125;

inline double tempo_at(uint32_t frame) {
    return frame < TEMPO_CHANGE ? 197.25 : 140.5;
}

// Quarter notes since the song's start, at a host of this rate.
inline double position_at(uint32_t frame, double rate) {
    const auto beats = [rate](uint32_t frames, double tempo) {
        return double(frames) / rate * tempo / 60.0;
    };
    const double first = beats(std::min(frame, TEMPO_CHANGE), tempo_at(0));
    const double second =
        frame > TEMPO_CHANGE ? beats(frame - TEMPO_CHANGE, tempo_at(TEMPO_CHANGE)) : 0.0;
    return FIRST_POSITION + first + second;
}

inline double bar_start_at(uint32_t frame, double rate) {
    return std::floor(position_at(frame, rate) / BEATS_PER_BAR) * BEATS_PER_BAR;
}

// The notes of the song, which every format has.
inline std::vector<SongMessage> only_notes(std::vector<SongMessage> messages) {
    std::erase_if(messages, [](const SongMessage& message) { return message.bytes[0] >= 0xA0; });
    return messages;
}

// Calls tell(frame of the song) before each block, which render(...) then renders.
template <typename Tell, typename Render>
StereoSound render_tempo_song(const Tell& tell, const Render& render) {
    uint32_t frame = 0;
    return render_song(song_blocks(TEMPO_BLOCK, false),
                       [&](const auto& messages, float* left, float* right, uint32_t frames) {
                           tell(frame);
                           render(only_notes(messages), left, right, frames);
                           frame += frames;
                       });
}

inline HostTempo host_tempo_at(uint32_t frame, double rate) {
    return {.quarters_per_minute = tempo_at(frame),
            .place = HostTempo::Place{.position = position_at(frame, rate),
                                      .bar_start = bar_start_at(frame, rate),
                                      .bar_length = BEATS_PER_BAR}};
}

// What all formats are compared with.  Without a tempo: a host that says nothing.
inline StereoSound hosted_tempo_song(double rate, const std::string& state = following_state(),
                                     bool with_tempo = true) {
    HostedPlayer player;
    player.load_state(state);
    if (!player.activate(rate))
        return {};
    HostTempo said;
    return render_tempo_song([&](uint32_t frame) { said = host_tempo_at(frame, rate); },
                             [&](const auto& messages, float* left, float* right, uint32_t frames) {
                                 player.begin_block(left, right, frames);
                                 if (with_tempo)
                                     player.set_tempo(said, 0);
                                 for (const SongMessage& message : messages)
                                     player.add_message(message.bytes, message.frame);
                                 player.end_block();
                             });
}

} // namespace tarquil

// Speech made audible.

#include "softsynth/lpc/speech_player.h"

#include <algorithm>
#include <cmath>

#include "common/assertion.h"
#include "softsynth/lpc/exact_math.h"

namespace tarquil {

namespace {

constexpr int64_t SPEED_SCALE = 65536;
constexpr int64_t STEPS_A_FRAME = 42;
constexpr int64_t POSITION_SCALE = SPEED_SCALE * STEPS_A_FRAME; // one frame

constexpr int64_t WEIGHT_SCALE = 65536;

int64_t step_of_speed(double speed) {
    TARQ_ASSERT(std::fabs(speed) <= MAX_SPEECH_SPEED);
    return int64_t(std::floor(speed * double(SPEED_SCALE) + 0.5));
}

// The frames around a position, and how far it is on the way from the first to the second.
struct Neighbours {
    const SpeechFrame& before;
    const SpeechFrame& after;
    int64_t weight;

    // A byte of both, in 1/256.
    [[nodiscard]] uint32_t between(uint8_t first, uint8_t second) const {
        return uint32_t((first * (WEIGHT_SCALE - weight) + second * weight) * 256 / WEIGHT_SCALE);
    }
    // In 1/256; 0 only between silent frames.
    [[nodiscard]] uint32_t level() const {
        if (before.level == 0 && after.level == 0)
            return 0;
        const int64_t to_middle = 2 * std::min(weight, WEIGHT_SCALE - weight);
        const int64_t bend = before.bend * LEVELS_A_BEND * 256 * to_middle / WEIGHT_SCALE;
        return uint32_t(
            std::clamp(between(before.level, after.level) + bend, int64_t(0), int64_t(65535)));
    }
    [[nodiscard]] const SpeechFrame& nearest() const {
        return weight < WEIGHT_SCALE / 2 ? before : after;
    }
};

// Frame i stands at its middle, (i + 1/2) POSITION_SCALE; the first and last go on to the ends.
Neighbours neighbours_at(const std::vector<SpeechFrame>& frames, int64_t position) {
    const auto last = int64_t(frames.size()) - 1;
    const int64_t from_middle =
        std::clamp(position - POSITION_SCALE / 2, int64_t(0), last * POSITION_SCALE);
    const int64_t index = std::min(from_middle / POSITION_SCALE, last);
    const int64_t weight = (from_middle % POSITION_SCALE) * WEIGHT_SCALE / POSITION_SCALE;
    return {frames[size_t(index)], frames[size_t(std::min(index + 1, last))], weight};
}

// Evenly distributed with the power of 1.  Source of the generator: D. E. Knuth, "The Art of
// Computer Programming" 2, 3.3.4, table 1, line 16.
float next_noise(uint32_t& state) {
    constexpr float SQRT_3 = 1.7320508F;
    state = state * 1664525U + 1013904223U;
    return float(int32_t(state)) * (SQRT_3 / 2147483648.0F);
}

LineCosines cosines_between(const Neighbours& frames) {
    LineCosines cosines{};
    for (size_t i = 0; i < LPC_ORDER; i++) {
        const uint32_t line = frames.between(frames.before.lines[i], frames.after.lines[i]);
        cosines[i] = cos_half_turns((double(line) + 128.0) / 65536.0);
    }
    return cosines;
}

} // namespace

SpeechPlayer::SpeechPlayer(const Speech& played_speech, const SpeechSettings& player_settings)
    : speech(played_speech), voice(player_settings.voice), fixed_pitch_hz(player_settings.pitch_hz),
      step(step_of_speed(player_settings.speed)),
      position(step < 0 ? int64_t(speech.frames.size()) * POSITION_SCALE : 0),
      whitener(speech.warping()), filter(speech.warping()), band_limit(speech.band_limit_hz()) {
    static_assert(STEPS_PER_FRAME * STEP_SAMPLES == SPEECH_FRAME_SAMPLES);
    static_assert(STEPS_PER_FRAME == STEPS_A_FRAME);
}

bool SpeechPlayer::is_finished() const {
    const bool is_past_end =
        step < 0 ? position <= 0 : position >= int64_t(speech.frames.size()) * POSITION_SCALE;
    return left_in_step == 0 && is_past_end;
}

void SpeechPlayer::render(const float* carrier, float* out, uint32_t num_samples) {
    TARQ_ASSERT(carrier != nullptr || voice != SpeechVoice::CARRIER);
    while (num_samples > 0) {
        if (is_finished()) {
            std::fill_n(out, num_samples, 0.0F);
            return;
        }
        if (left_in_step == 0)
            begin_step();
        const uint32_t count = std::min(num_samples, left_in_step);
        excite(carrier, out, count);
        filter.process(out, count);
        for (uint32_t i = 0; i < count; i++) {
            level += level_slope;
            deemphasis = out[i] * level + EMPHASIS * deemphasis;
            out[i] = deemphasis;
        }
        band_limit.process(out, count);
        out += count;
        carrier += carrier == nullptr ? 0 : count;
        num_samples -= count;
        left_in_step -= count;
        if (left_in_step == 0)
            level = level_at_end;
    }
}

// The step's parameters are those of its end, where its level gets to.
void SpeechPlayer::begin_step() {
    position += step;
    left_in_step = STEP_SAMPLES;
    const Neighbours frames = neighbours_at(speech.frames, position);
    level_at_end = float(level_amplitude(frames.level()));
    level_slope = (level_at_end - level) / float(STEP_SAMPLES);
    const unsigned voicing = frames.nearest().voicing;
    is_voiced = voicing > 0 && voice != SpeechVoice::WHISPER;
    if (is_voiced)
        splitter.set_frequency(voicing_limit_hz(voicing));
    pulses.set_pitch(voice == SpeechVoice::FIXED
                         ? fixed_pitch_hz
                         : pitch_hz(frames.between(frames.before.pitch, frames.after.pitch)));
    filter.set_reflections(reflections_of_predictor(predictor_of_lines(cosines_between(frames))));
}

void SpeechPlayer::excite(const float* carrier, float* out, uint32_t num_samples) {
    for (uint32_t i = 0; i < num_samples; i++) {
        float noise = next_noise(noise_state);
        float tone = 0.0F;
        if (voice == SpeechVoice::CARRIER) {
            tone = whitener.process(carrier[i]);
            noise *= whitener.get_presence();
        } else {
            tone = pulses.next();
        }
        out[i] = is_voiced ? splitter.low(tone) + splitter.high(noise) : noise;
    }
}

uint64_t speech_length(const Speech& speech, double speed) {
    const auto step = uint64_t(std::abs(step_of_speed(speed)));
    TARQ_ASSERT(step > 0);
    const uint64_t length = speech.frames.size() * uint64_t(POSITION_SCALE);
    return (length + step - 1) / step * (SPEECH_FRAME_SAMPLES / STEPS_A_FRAME);
}

} // namespace tarquil

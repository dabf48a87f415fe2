// Tests of what follows a tempo: delays, LFOs and the retrigger land where their note lengths are.

#include <gtest/gtest.h>

#include <cmath>
#include <vector>

#include "softsynth/effects/retrigger.h"
#include "softsynth/effects/stereo_effect.h"
#include "tests/softsynth/signal/noise.h"
#include "tests/support/engine_host.h"

namespace tarquil {

namespace {

constexpr double SAMPLES_PER_MINUTE = 60.0 * SAMPLE_RATE;

constexpr int EIGHTH = 31;  // of delay times
constexpr int QUARTER = 59; // of LFO 1's speeds

// A delay on its own, that follows a tempo.
class FollowingDelay {
  public:
    explicit FollowingDelay(double quarters_per_minute) : scratch(shared_waveforms()) {
        scratch.tempo = &tempo;
        follow(quarters_per_minute);
    }
    void follow(double quarters_per_minute) {
        tempo.follow(SAMPLES_PER_MINUTE / quarters_per_minute);
    }

    // The left side of what comes back of `in`.
    std::vector<float> run(const std::vector<float>& in, int left, int right, int feedback) {
        constexpr uint32_t BLOCK = 64;
        std::vector<float> heard;
        for (size_t start = 0; start + BLOCK <= in.size(); start += BLOCK) {
            sound.init(BLOCK);
            echoes.init(BLOCK);
            echoes.nullify();
            for (uint32_t i = 0; i < BLOCK; i++)
                *sound.get_left_sample_ptr(i) = *sound.get_right_sample_ptr(i) = in[start + i];
            effect.render(StereoEffect::STEREO_EFFECT_DELAY, sound, echoes, left, right, feedback,
                          0, 0, 1.0F, scratch);
            for (uint32_t i = 0; i < BLOCK; i++)
                heard.push_back(*echoes.get_left_sample_ptr(i));
        }
        return heard;
    }

  private:
    TempoValues tempo;
    StereoEffectScratch scratch;
    StereoEffect effect;
    StereoBuffer sound;
    StereoBuffer echoes;
};

TEST(FollowedTempo, TheDelaysEchoesLandOnTheNoteToTheSample) {
    std::vector<float> click(60032);
    click[0] = 1.0F;
    const auto echo_place = [&](double tempo, int byte) {
        const auto delay = std::make_unique<FollowingDelay>(tempo);
        const std::vector<float> heard = delay->run(click, byte, 0, 0);
        return std::max_element(heard.begin(), heard.end()) - heard.begin();
    };
    EXPECT_EQ(echo_place(120.0, EIGHTH), 11025);
    EXPECT_EQ(echo_place(97.3, EIGHTH), 13597); // 13597.1
    EXPECT_EQ(echo_place(200.0, EIGHTH), 6615);
    EXPECT_EQ(echo_place(97.3, 127), 54388); // 1/2: 54388.5 to the next
    EXPECT_EQ(echo_place(60.0, 127), 44100); // 1/2 would be two seconds: halved
}

TEST(FollowedTempo, AChangeOfTempoMovesEchoesWithoutAStep) {
    const auto wave = [](double first, size_t count) {
        std::vector<float> samples(count);
        for (size_t i = 0; i < count; i++)
            samples[i] = float(std::sin((first + double(i)) * 0.05));
        return samples;
    };
    FollowingDelay delay(120.0);
    constexpr size_t LENGTH = 30016;
    std::vector<float> heard = delay.run(wave(0, LENGTH), EIGHTH, EIGHTH, 0);
    double before = double(LENGTH);
    for (const double tempo : {123.0, 97.3, 180.0}) {
        delay.follow(tempo);
        const std::vector<float> more = delay.run(wave(before, 640), EIGHTH, EIGHTH, 0);
        heard.insert(heard.end(), more.begin(), more.end());
        before += 640;
    }
    // The wave's own steps are 0.05 at most; two of them that fade within a block add 2 / 64.
    float largest = 0.0F;
    for (size_t i = LENGTH; i < heard.size(); i++)
        largest = std::max(largest, std::fabs(heard[i] - heard[i - 1]));
    EXPECT_LT(largest, 0.1F);
    EXPECT_GT(largest, 0.04F);
}

// Ten seconds of a note at 440 Hz that an LFO of the length `QUARTER` multiplies with its sine,
// which leaves two sines that lie the LFO's frequency above and below.
std::vector<float> multiplied_note(double tempo) {
    EngineHost host;
    host.set_plain(0, OSC_SINE);
    host.set(0, CTRL_LFO1_TYPE, OSC_SINE);
    host.set(0, CTRL_LFO1_SPEED, QUARTER);
    host.set(0, CTRL_AMPLITUDE_INFLUENCE_SOURCE, INFL_LFO1);
    host.set(0, CTRL_AMPLITUDE_INFLUENCE_AMOUNT, MULTIPLYING_AMOUNT);
    host.note_on(0, 69);
    host->set_tempo({.samples_per_quarter = SAMPLES_PER_MINUTE / tempo});
    return side(host.render(10 * SAMPLE_RATE, 64), 0);
}

TEST(FollowedTempo, AnLfosPeriodIsTheNote) {
    for (const double tempo : {120.0, 97.3, 61.0}) {
        const std::vector<float> sound = multiplied_note(tempo);
        const double above = 440.0 + tempo / 60.0;
        const double at_note = amplitude_at(sound, above);
        EXPECT_GT(at_note, 0.01) << tempo;
        // Of ten seconds the window has nothing left 0.3 Hz from a sine.
        EXPECT_LT(amplitude_at(sound, above + 0.3), 0.01 * at_note) << tempo;
        EXPECT_LT(amplitude_at(sound, above - 0.3), 0.01 * at_note) << tempo;
    }
}

// The beat repeat over noise, on the grid of a song that is at `position` quarters at first.
class GridRepeat {
  public:
    GridRepeat(double quarters_per_minute, double position, double bar_length)
        : grid{{.samples_per_quarter = SAMPLES_PER_MINUTE / quarters_per_minute,
                .position = position,
                .bar_length = bar_length},
               1.0} {}

    void jump(double position) { grid.tempo.position = position; }

    // Adds `frames` (whole blocks of `block`) to what was heard.
    void run(uint32_t frames, uint32_t block) {
        for (uint32_t done = 0; done < frames; done += block) {
            sound.init(block);
            for (MonoBuffer* control : {&bpms, &speedups, &wets}) {
                control->init(block);
                std::fill_n(control->get_first_sample_ptr(), block, 1.0F);
            }
            for (uint32_t i = 0; i < block; i++)
                *sound.get_left_sample_ptr(i) = input[heard.size() + i];
            box.render(sound, bpms, speedups, wets, nullptr, &grid);
            for (uint32_t i = 0; i < block; i++)
                heard.push_back(*sound.get_left_sample_ptr(i));
            grid.tempo.position += double(block) / grid.tempo.samples_per_quarter;
        }
    }

    // Whether what was heard from `first` on to `end` is the input from `from` on.
    [[nodiscard]] bool repeats(size_t first, size_t end, size_t from) const {
        for (size_t i = first; i < end; i++) {
            if (std::fabs(heard[i] - input[from + i - first]) > 1e-6F) // the mix rounds
                return false;
        }
        return true;
    }

    const std::vector<float> input = noise(200000);
    std::vector<float> heard;
    BeatGrid grid;

  private:
    RetriggerBox box;
    StereoBuffer sound;
    MonoBuffer bpms;
    MonoBuffer speedups;
    MonoBuffer wets;
};

TEST(FollowedTempo, TheRetriggersBeatsAreTheSongsInAnyBlocks) {
    // The song is a quarter of a beat in: its beats begin at 20395.7, 47589.9 and 74784.2.
    const auto whole = std::make_unique<GridRepeat>(97.3, 12.25, 4.0);
    whole->run(76800, 64);
    EXPECT_TRUE(whole->repeats(47590, 74784, 20396)); // the next one is a sample longer
    EXPECT_TRUE(whole->repeats(74785, 76800, 47590));
    const auto pieces = std::make_unique<GridRepeat>(97.3, 12.25, 4.0);
    for (const uint32_t block : {4U, 512U, 64U})
        pieces->run(25600, block);
    EXPECT_EQ(pieces->heard, whole->heard);
}

TEST(FollowedTempo, BarsCutBeatsAndJumpsStartAnew) {
    // Bars of two and a half beats, at 120: beats at 0, 22050 and 44100, the next bar at 55125.
    const auto odd = std::make_unique<GridRepeat>(120.0, 0.0, 2.5);
    odd->run(80000, 64);
    EXPECT_TRUE(odd->repeats(44100, 55125, 22050));
    EXPECT_TRUE(odd->repeats(55125, 55125 + 11025, 44100)); // the half beat, and again
    EXPECT_TRUE(odd->repeats(55125 + 11025, 77175, 44100));
    // Back to the start of the song: the loop stays until the next beat has been heard as a whole.
    const auto jumping = std::make_unique<GridRepeat>(120.0, 8.0, 4.0);
    jumping->run(32000, 64);
    jumping->jump(0.0);
    jumping->run(32000, 64);
    EXPECT_TRUE(jumping->repeats(22050, 22050 + 20000, 0));
    EXPECT_TRUE(jumping->repeats(54050, 64000, 32000));
}

TEST(FollowedTempo, TheMasterFollowsToo) {
    // Master delay and retrigger in one engine: no two of these sounds are the same.
    const auto sound = [](const Tempo& tempo) {
        EngineHost host;
        host.set_plain(0, OSC_SAW);
        host.set(0, CTRL_AUX2_LEVEL, 127);
        host.set(0, CTRL_DELAY_LEFT_TIME, EIGHTH);
        host.set(0, CTRL_RETRIGGER_SPEEDUP, 65);
        host.set(0, CTRL_RETRIGGER_WET_LEVEL, 64);
        host.note_on(0, 60);
        host.note_off(0, 60, 4000);
        host->set_tempo(tempo);
        return host.render(66000, 60);
    };
    const std::vector<float> untimed = sound({});
    EXPECT_EQ(sound(Tempo{.position = 3.5, .bar_length = 4.0}), untimed);
    const Tempo steady{.samples_per_quarter = 22050, .position = 0.0, .bar_length = 4.0};
    EXPECT_NE(sound(steady), untimed);
    Tempo slower = steady;
    slower.samples_per_quarter = 30000;
    EXPECT_NE(sound(slower), sound(steady));
}

} // namespace

} // namespace tarquil

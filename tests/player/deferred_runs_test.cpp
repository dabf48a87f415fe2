// Tests of runs that are put down first and done later: the bytes are those of runs one by one.

#include <gtest/gtest.h>

#include <algorithm>
#include <iterator>
#include <random>

#include "midi/gm/gm_map_file.h"
#include "player/player.h"
#include "player/worker_threads.h"
#include "tests/support/engine_host.h"

namespace tarquil {

namespace {

constexpr uint32_t RUN = 64;
constexpr uint32_t RUNS_AT_ONCE = 8;
constexpr uint32_t NUM_RUNS = 1920;

class DeferredRunsTest : public testing::TestWithParam<MidiDialect> {
  protected:
    DeferredRunsTest() {
        set->drums = std::make_unique<TarqSettings>();
        EXPECT_EQ(
            load_gm_map_from_string(set->map, "family = all\nk00_036 = all 1 60 100 64 200\n"), "");
        bank.set_global_controller(CTRL_FCMPR_PRE_GAIN, 127); // up to the bounds of both dialects
        for (unsigned i = 0; i < MAX_INSTRUMENTS; i++) {
            bank.get_instrument(i).set_controller(CTRL_ENV1_SUSTAIN, 100);
            bank.get_instrument(i).set_controller(CTRL_FILTER1_TYPE, int(i % 25));
            bank.get_instrument(i).set_controller(CTRL_CHANFX2_TYPE, int(i % 4));
            bank.get_instrument(i).set_controller(CTRL_AUX2_LEVEL, int(i % 3) * 40);
        }
    }

    // Starts the same song anew: tempos, controllers of all kinds, drums that stop and begin again,
    // a clock that is moved back, all sound off and panic.
    void start() {
        random.seed(11);
        next_run = 0;
        player = std::make_unique<Player>();
        player->set_bank(bank);
        player->set_gm_set(set);
        player->set_dialect(GetParam());
        player->set_tempo_sync(true);
        player->audio().set_clock(PlayerAudio::CLOCK_LIMIT - NUM_RUNS / 2 * RUN);
        player->start();
    }

    void queue_run() {
        PlayerAudio& audio = player->audio();
        const auto upto = [&](unsigned last) { return uint8_t(random() % (last + 1)); };
        audio.follow_edits();
        const auto send = [&](unsigned kind, unsigned channel, uint8_t data1, uint8_t data2) {
            const uint8_t bytes[] = {midi_status(kind, channel), data1, data2};
            EXPECT_TRUE(audio.add_message(bytes, audio.time() + upto(RUN - 1)));
        };
        const bool drums_rest = next_run > 60 && next_run < 1500;
        if (next_run % 3 == 0) {
            const unsigned channel = upto(15);
            send(MIDI_NOTE_ON, channel == 9 ? 0 : channel, uint8_t(30 + upto(60)), 90);
            send(MIDI_NOTE_OFF, upto(15), uint8_t(30 + upto(60)), 0);
            send(MIDI_CONTROL_CHANGE, upto(15), uint8_t(7 + 3 * upto(1)), upto(127));
            send(MIDI_PITCH_BEND, upto(15), upto(127), upto(127));
        }
        if (!drums_rest)
            send(MIDI_NOTE_ON, 9, 36, 100);
        if (next_run % 100 == 99)
            send(MIDI_CONTROL_CHANGE, upto(15), 120, 0);
        if (next_run % 40 == 0)
            audio.add_tempo({.quarters_per_minute = 60.0 + upto(120)}, audio.time() + 32);
        if (next_run % 30 == 0)
            player->set_controller(
                unsigned(next_run % 60 == 0 ? CTRL_RETRIGGER_SPEEDUP : CTRL_GLOBAL_FILTER1_TYPE),
                next_run % 60 == 0 ? 63 + upto(4) : upto(5));
        if (next_run == 700)
            player->silence();
        next_run++;
    }

    std::vector<float> play_at_once() {
        start();
        std::vector<float> sound(size_t(2) * RUN * NUM_RUNS);
        for (uint32_t run = 0; run < NUM_RUNS; run++) {
            queue_run();
            player->audio().run(&sound[size_t(2) * RUN * run], RUN);
        }
        return sound;
    }

    // As a renderer does it: the last runs are finished beside the next ones' parts.
    std::vector<float> play_later(JobRunner& runner) {
        start();
        std::vector<float> sound;
        PlayerAudio& audio = player->audio();
        DeferredRuns later[3];
        for (uint32_t run = 0; run < NUM_RUNS + 2 * RUNS_AT_ONCE; run += RUNS_AT_ONCE) {
            std::rotate(later, later + 1, std::end(later));
            later[2].clear();
            for (uint32_t i = 0; i < RUNS_AT_ONCE; i++) {
                queue_run();
                audio.defer(later[2], RUN);
            }
            const auto work = [&](uint32_t job) {
                if (job < audio.num_parts())
                    audio.perform(later[2], job);
                else if (job == audio.num_parts())
                    audio.go_on(later[1]);
                else
                    audio.finish(later[0]);
            };
            runner.run(
                audio.num_parts() + 2,
                [](const void* context, uint32_t job) {
                    (*static_cast<const decltype(work)*>(context))(job);
                },
                &work);
            const size_t done = sound.size();
            sound.resize(done + later[0].get_runs().size() * 2 * RUN);
            if (sound.size() > done)
                audio.mix(later[0], &sound[done]);
        }
        return sound;
    }

    TarqSettings bank;
    std::shared_ptr<GmSet> set = std::make_shared<GmSet>();
    std::unique_ptr<Player> player;
    std::mt19937 random;
    uint32_t next_run = 0;
};

TEST_P(DeferredRunsTest, AnyNumberOfThreadsGivesTheBytesOfRunsAtOnce) {
    const std::vector<float> wanted = play_at_once();
    EXPECT_GT(peak(wanted), 0.01F);
    EXPECT_LT(player->audio().time(), PlayerAudio::CLOCK_LIMIT);
    for (const unsigned threads : {1U, 2U, 4U}) {
        WorkerThreads workers(threads);
        EXPECT_TRUE(play_later(workers) == wanted) << threads;
    }
}

INSTANTIATE_TEST_SUITE_P(Dialects, DeferredRunsTest,
                         testing::Values(MidiDialect::NATIVE, MidiDialect::GENERAL_MIDI));

} // namespace

} // namespace tarquil

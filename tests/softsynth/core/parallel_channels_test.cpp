// Tests of rendering on several threads: the bytes are those of one.

#include <gtest/gtest.h>

#include <atomic>
#include <chrono>
#include <random>
#include <thread>
#include <vector>

#include "player/worker_threads.h"
#include "tests/support/engine_host.h"

namespace tarquil {

namespace {

// Shares every block out, however little there is to do.
class EagerThreads : public WorkerThreads {
  public:
    using WorkerThreads::WorkerThreads;
    [[nodiscard]] uint32_t least_work() const override { return 0; }
};

// One job after the other, the last one first.
class Backwards : public JobRunner {
  public:
    void run(uint32_t count, Job job, const void* context) override {
        num_jobs += count;
        while (count > 0)
            job(context, --count);
    }
    [[nodiscard]] unsigned width() const override { return 3; }
    [[nodiscard]] uint32_t least_work() const override { return work; }

    uint32_t work = 0;
    uint32_t num_jobs = 0;
};

// Many voices of all kinds on all channels, with effects, sends and silenced channels; the
// channels' own sounds behind the sum.
std::vector<float> play(JobRunner* runner) {
    std::mt19937 random(7);
    const auto upto = [&](unsigned last) { return int(random() % (last + 1)); };
    EngineHost host;
    if (runner != nullptr)
        host->set_runner(*runner);
    std::vector<StereoBuffer> taps(NUM_CHANNELS);
    host->set_channel_taps(taps.data());
    for (int channel = 0; channel < NUM_CHANNELS; channel++) {
        host.set_plain(channel, 1 + upto(3));
        host.set(channel, CTRL_OSC1_MULTI_COUNT, upto(9));
        host.set(channel, CTRL_OSC2_INFLUENCE_SOURCE, upto(5));
        host.set(channel, CTRL_OSC2_INFLUENCE_AMOUNT, 90);
        host.set(channel, CTRL_CUTOFF1_INFLUENCE1_SOURCE, upto(9));
        host.set(channel, CTRL_CUTOFF1_INFLUENCE1_AMOUNT, 80);
        host.set(channel, CTRL_FILTER1_TYPE, upto(24));
        host.set(channel, CTRL_FILTER1_DEPTH, 1 + upto(3));
        host.set(channel, CTRL_CHANFX1_TYPE, upto(5));
        host.set(channel, CTRL_CHANFX2_TYPE, upto(3));
        host.set(channel, CTRL_CHAN_FILTER1_TYPE, upto(8));
        host.set(channel, CTRL_AUX1_LEVEL, 100);
        host.set(channel, CTRL_AUX2_LEVEL, 60 * upto(1));
    }
    std::vector<float> sound;
    for (int block = 0; block < 120; block++) {
        for (int i = 0; i < 3; i++) {
            const int channel = upto(15);
            const int note = 30 + upto(60);
            host.note_on(channel, note, 1 + upto(126), uint32_t(upto(63)));
            host.note_off(channel, note, uint32_t(64 + upto(4000)));
            host.set(channel, CTRL_PANNING, upto(127), uint32_t(upto(63)));
        }
        if (block % 20 == 19)
            host.silence(upto(15), block % 40 == 39);
        const std::vector<float> rendered = host.render(64, 64);
        sound.insert(sound.end(), rendered.begin(), rendered.end());
        for (const StereoBuffer& tap : taps)
            sound.insert(sound.end(), tap.get_first_left_sample_ptr(),
                         tap.get_first_left_sample_ptr() + 128);
    }
    return sound;
}

TEST(ParallelChannels, AnyNumberOfThreadsGivesTheBytesOfOne) {
    const std::vector<float> alone = play(nullptr);
    EXPECT_GT(peak(alone), 0.01F);
    for (const unsigned threads : {1U, 2U, 3U}) {
        EagerThreads workers(threads);
        EXPECT_TRUE(play(&workers) == alone) << threads;
    }
    Backwards backwards;
    EXPECT_TRUE(play(&backwards) == alone);
    EXPECT_GT(backwards.num_jobs, 0U);
}

TEST(ParallelChannels, LittleWorkIsNotSharedOut) {
    Backwards runner;
    runner.work = 100000;
    EngineHost host;
    host->set_runner(runner);
    host.set_plain(0, 2);
    host.note_on(0, 60);
    host.render(64, 64);
    EXPECT_EQ(runner.num_jobs, 0U);
    host.set(1, CTRL_OSC1_MULTI_COUNT, 127);
    for (int note = 40; note < 50; note++)
        host.note_on(1, note);
    host.render(64, 64);
    EXPECT_GT(runner.num_jobs, 0U);
}

TEST(WorkerThreads, JobsRunBesideEachOther) {
    struct Meeting {
        std::atomic<int> here{0};
        std::atomic<int> met{0};
    } meeting;
    WorkerThreads workers(2);
    std::this_thread::sleep_for(std::chrono::milliseconds(100)); // they look for jobs, then sleep
    workers.run(
        2,
        [](const void* context, uint32_t /*index*/) {
            auto& both = *static_cast<Meeting*>(
                const_cast<void*>(context)); // NOLINT(cppcoreguidelines-pro-type-const-cast)
            both.here++;
            for (int i = 0; i < 10000 && both.here < 2; i++)
                std::this_thread::sleep_for(std::chrono::milliseconds(1));
            both.met += both.here == 2 ? 1 : 0;
        },
        &meeting);
    EXPECT_EQ(meeting.met, 2);
}

TEST(WorkerThreads, EveryJobIsDoneOnceBeforeTheCallReturns) {
    for (const unsigned threads : {1U, 2U, 5U}) {
        WorkerThreads workers(threads);
        EXPECT_EQ(workers.width(), threads);
        std::vector<std::atomic<int>> done(40);
        for (uint32_t round = 1; round <= 300; round++) {
            const uint32_t count = round % (uint32_t(done.size()) + 1);
            for (std::atomic<int>& times : done)
                times = 0;
            workers.run(
                count,
                [](const void* context, uint32_t index) {
                    auto& times = *static_cast<std::vector<std::atomic<int>>*>(const_cast<void*>(
                        context)); // NOLINT(cppcoreguidelines-pro-type-const-cast)
                    times[index]++;
                },
                &done);
            for (uint32_t i = 0; i < done.size(); i++)
                ASSERT_EQ(done[i], int(i < count)) << threads << " threads, round " << round;
        }
    }
}

} // namespace

} // namespace tarquil

// Threads that help one thread with its jobs, where it may wait for them: not in a callback.
//
// A helper looks for work for some microseconds and then sleeps until there is some.

#pragma once

#include <atomic>
#include <cstdint>
#include <thread>
#include <vector>

#include "common/job_runner.h"

namespace tarquil {

class WorkerThreads : public JobRunner {
  public:
    static constexpr unsigned MAX_THREADS = 64;

    // `threads`, 1..MAX_THREADS, with the one that calls `run`.
    explicit WorkerThreads(unsigned threads);
    WorkerThreads(const WorkerThreads&) = delete;
    WorkerThreads& operator=(const WorkerThreads&) = delete;
    ~WorkerThreads() override;

    void run(uint32_t count, Job new_job, const void* new_context) override;
    [[nodiscard]] unsigned width() const override { return unsigned(helpers.size()) + 1; }
    // About what it takes to hand work over and to wait for its end.
    [[nodiscard]] uint32_t least_work() const override { return 40000; }

  private:
    void help();
    // Does a job that nobody has taken; false when there is none.
    bool take_job();

    std::vector<std::thread> helpers;

    // Of the jobs at hand: a number of theirs (upper 32 bits), their count, and how many have been
    // taken (16 bits each).  One word, so that a late helper never takes a job of other ones.
    std::atomic<uint64_t> jobs{0};
    Job job = nullptr;
    const void* context = nullptr;
    std::atomic<uint32_t> num_done{0};

    std::atomic<uint32_t> calls{0}; // for helpers; wakes them
    std::atomic<bool> is_over{false};
};

} // namespace tarquil

// Threads that help one thread with its jobs, where it may wait for them.

#include "player/worker_threads.h"

#include "common/assertion.h"

namespace tarquil {

namespace {

// Tens of microseconds.
constexpr int LOOKS = 2000;

void rest() {
#if defined(__SSE__)
    __builtin_ia32_pause();
#endif
}

constexpr uint64_t COUNT_BITS = 16;
constexpr uint64_t TAKEN_MASK = (1U << COUNT_BITS) - 1;
constexpr uint64_t NUMBER_SHIFT = 2 * COUNT_BITS;

uint32_t taken_of(uint64_t word) {
    return uint32_t(word & TAKEN_MASK);
}
uint32_t count_of(uint64_t word) {
    return uint32_t(word >> COUNT_BITS & TAKEN_MASK);
}
bool has_work(uint64_t word) {
    return taken_of(word) < count_of(word);
}

} // namespace

WorkerThreads::WorkerThreads(unsigned threads) {
    TARQ_ASSERT(threads >= 1 && threads <= MAX_THREADS);
    for (unsigned i = 1; i < threads; i++)
        helpers.emplace_back([this] { help(); });
}

WorkerThreads::~WorkerThreads() {
    is_over.store(true);
    calls.fetch_add(1);
    calls.notify_all();
    for (std::thread& helper : helpers)
        helper.join();
}

bool WorkerThreads::take_job() {
    uint64_t word = jobs.load(std::memory_order_acquire);
    do {
        if (!has_work(word))
            return false;
    } while (!jobs.compare_exchange_weak(word, word + 1, std::memory_order_acq_rel,
                                         std::memory_order_acquire));
    job(context, taken_of(word));
    if (num_done.fetch_add(1, std::memory_order_acq_rel) + 1 == count_of(word))
        num_done.notify_one();
    return true;
}

void WorkerThreads::run(uint32_t count, Job new_job, const void* new_context) {
    TARQ_ASSERT(count <= TAKEN_MASK);
    if (count == 0)
        return;
    job = new_job;
    context = new_context;
    num_done.store(0, std::memory_order_relaxed);
    const uint64_t number = (jobs.load(std::memory_order_relaxed) >> NUMBER_SHIFT) + 1;
    // The first one is for this thread, whose caches may know it from the last call.
    jobs.store(number << NUMBER_SHIFT | uint64_t(count) << COUNT_BITS | 1,
               std::memory_order_release);
    if (count > 1) {
        calls.fetch_add(1, std::memory_order_release);
        calls.notify_all();
    }
    job(context, 0);
    num_done.fetch_add(1, std::memory_order_acq_rel);
    while (take_job()) {
    }
    for (int looks = 0;; looks++) {
        const uint32_t done = num_done.load(std::memory_order_acquire);
        if (done == count)
            return;
        if (looks < LOOKS)
            rest();
        else
            num_done.wait(done, std::memory_order_acquire);
    }
}

void WorkerThreads::help() {
    uint32_t seen = calls.load(std::memory_order_acquire);
    while (!is_over.load(std::memory_order_acquire)) {
        while (take_job()) {
        }
        int looks = 0;
        while (looks < LOOKS && calls.load(std::memory_order_acquire) == seen) {
            rest();
            looks++;
        }
        calls.wait(seen, std::memory_order_acquire);
        seen = calls.load(std::memory_order_acquire);
    }
}

} // namespace tarquil

// Computes frequency responses on a thread of its own.

#include "editor/plots/response_worker.h"

#include <pthread.h>

#include <csignal>

#include "common/assertion.h"

namespace tarquil {

namespace {

constexpr double LOWEST_FREQUENCY = 20.0;
constexpr double HIGHEST_FREQUENCY = 20000.0;
constexpr unsigned NUM_FREQUENCIES = 241; // 24 an octave

// The host's signals are for the host's threads.
class SignalsBlocked {
  public:
    SignalsBlocked() {
        sigset_t all;
        sigfillset(&all);
        pthread_sigmask(SIG_SETMASK, &all, &before);
    }
    SignalsBlocked(const SignalsBlocked&) = delete;
    SignalsBlocked& operator=(const SignalsBlocked&) = delete;
    ~SignalsBlocked() { pthread_sigmask(SIG_SETMASK, &before, nullptr); }

  private:
    sigset_t before{};
};

} // namespace

const std::vector<double>& response_frequencies() {
    static const std::vector<double> frequencies =
        spread_frequencies(LOWEST_FREQUENCY, HIGHEST_FREQUENCY, NUM_FREQUENCIES);
    return frequencies;
}

std::vector<Point> response_points(const PlotFrame& frame, const Response& response) {
    std::vector<Point> points;
    for (size_t i = 0; i < response.size(); i++)
        points.push_back(frame.point(response_frequencies()[i], response[i]));
    return points;
}

ResponseWorker::ResponseWorker() {
    for (Slot& slot : slots)
        slot.response.resize(NUM_FREQUENCIES);
    response_frequencies();
    const SignalsBlocked blocked;
    thread = std::thread([this] { run(); });
}

ResponseWorker::~ResponseWorker() {
    {
        const std::lock_guard lock(mutex);
        stops = true;
    }
    wake.notify_one();
    thread.join();
}

const Response& ResponseWorker::get(unsigned index, const FilterSettings& filter) {
    TARQ_ASSERT(index < MAX_FILTERS);
    Slot& slot = slots[index];
    if (!slot.is_asked || slot.asked != filter) {
        slot.asked = filter;
        slot.is_asked = true;
        {
            const std::lock_guard lock(mutex);
            wanted[index] = filter;
        }
        wake.notify_one();
    }
    return slot.response;
}

bool ResponseWorker::refresh() {
    std::map<unsigned, Response> taken;
    {
        const std::lock_guard lock(mutex);
        taken.swap(computed);
    }
    for (auto& [index, response] : taken)
        slots[index].response = std::move(response);
    return !taken.empty();
}

void ResponseWorker::wait() {
    std::unique_lock lock(mutex);
    ready.wait(lock, [this] { return wanted.empty() && !is_busy; });
}

void ResponseWorker::run() {
    std::unique_lock lock(mutex);
    while (true) {
        wake.wait(lock, [this] { return stops || !wanted.empty(); });
        if (stops)
            return;
        const auto next = wanted.extract(wanted.begin());
        is_busy = true;
        lock.unlock();
        Response response = is_filter_on(next.mapped())
                                ? filter_gains(next.mapped(), response_frequencies())
                                : Response(NUM_FREQUENCIES, 0.0);
        lock.lock();
        is_busy = false;
        computed[next.key()] = std::move(response);
        if (wanted.empty())
            ready.notify_all();
    }
}

} // namespace tarquil

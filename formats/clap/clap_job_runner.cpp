// Parts of a block on the host's threads, where the host lends some.

#include "formats/clap/clap_job_runner.h"

#include <algorithm>
#include <thread>

namespace tarquil {

namespace {

// What a host's pool has is not told; more than the channels' number is of no use.
constexpr unsigned MOST_THREADS = 8;

} // namespace

ClapJobRunner::ClapJobRunner(const ClapHost& lending_host)
    : host(lending_host),
      num_threads(std::clamp(std::thread::hardware_concurrency(), 1U, MOST_THREADS)) {}

void ClapJobRunner::run(uint32_t new_count, Job new_job, const void* new_context) {
    count = new_count;
    job = new_job;
    context = new_context;
    if (count < 2 || !host.request_exec(count)) {
        for (uint32_t i = 0; i < count; i++)
            job(context, i);
    }
    count = 0;
}

void ClapJobRunner::exec(uint32_t index) const {
    if (index < count)
        job(context, index);
}

} // namespace tarquil

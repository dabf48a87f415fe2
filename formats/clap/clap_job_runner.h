// Parts of a block on the host's threads, where the host lends some.

#pragma once

#include <cstdint>

#include "common/job_runner.h"
#include "formats/clap/clap_host.h"

namespace tarquil {

class ClapJobRunner : public JobRunner {
  public:
    // The host stays as long as the object.
    explicit ClapJobRunner(const ClapHost& lending_host);

    void run(uint32_t new_count, Job new_job, const void* new_context) override;
    [[nodiscard]] unsigned width() const override { return num_threads; }
    // Other programs' threads have to be woken.
    [[nodiscard]] uint32_t least_work() const override { return 100000; }

    // One of the jobs that the host has been asked for.
    void exec(uint32_t index) const;

  private:
    const ClapHost& host;
    unsigned num_threads;

    // the jobs at hand
    uint32_t count = 0;
    Job job = nullptr;
    const void* context = nullptr;
};

} // namespace tarquil

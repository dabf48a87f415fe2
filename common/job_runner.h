// Who runs jobs that do not act on each other, several at once.

#pragma once

#include <cstdint>

namespace tarquil {

class JobRunner {
  public:
    using Job = void (*)(const void* context, uint32_t index);

    virtual ~JobRunner() = default;

    // Calls job(context, index) once for each index below `count`, on any threads and in any order,
    // and returns when all have returned.  For one thread at a time.
    virtual void run(uint32_t count, Job job, const void* context) = 0;

    // The most jobs that run at once; it stays the same.
    [[nodiscard]] virtual unsigned width() const = 0;

    // What is less work than this, in core cycles, had better not be shared out.
    [[nodiscard]] virtual uint32_t least_work() const = 0;
};

} // namespace tarquil

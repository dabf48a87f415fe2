// Counts what an audio callback must not do: allocate, lock, call the system, fault on a page.

#pragma once

#include <functional>
#include <string>

namespace tarquil {

struct CallbackCounts {
    int allocations = 0; // and releases
    int locks = 0;       // of other mutexes than the first that was seen
    int system_calls = 0;
    int page_faults = 0;
    std::string last_system_call; // its number

    [[nodiscard]] int sum() const { return allocations + locks + system_calls + page_faults; }
};

// Counts on the calling thread while the object lives.
class CallbackWatch {
  public:
    explicit CallbackWatch(CallbackCounts& counts);
    CallbackWatch(const CallbackWatch&) = delete;
    CallbackWatch& operator=(const CallbackWatch&) = delete;
    ~CallbackWatch();

  private:
    CallbackCounts& target;
    long faults_before;
};

// Runs `work` on a thread of its own on which system calls fail, and are counted by a watch.  False
// when the system does not allow such a thread; then nothing is run.
bool run_without_system_calls(const std::function<void()>& work);

} // namespace tarquil

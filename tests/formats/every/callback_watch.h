// Counts what an audio callback must not do: allocate, lock, call the system.

#pragma once

#include <functional>
#include <string>

#if defined(__has_feature)
#if __has_feature(realtime_sanitizer)
#define REALTIME_SANITIZER
#endif
#endif

// How a call is marked that the sanitizer is to watch.
#ifdef REALTIME_SANITIZER
#define CALLED_IN_REAL_TIME [[clang::nonblocking]]
#else
#define CALLED_IN_REAL_TIME
#endif

namespace tarquil {

struct CallbackCounts {
    int allocations = 0; // and releases
    int locks = 0;       // of other mutexes than the first that was seen
    int all_locks = 0;
    int system_calls = 0;
    std::string last_system_call; // its number
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
};

// Runs `work` on a thread of its own on which system calls fail, and are counted by a watch.  False
// when the system does not allow such a thread; then nothing is run.
bool run_without_system_calls(const std::function<void()>& work);

#ifdef REALTIME_SANITIZER
// The sanitizer ends the program at the first wrong call, and needs no other watch.
inline CallbackWatch::CallbackWatch(CallbackCounts& counts) : target(counts) {
    target.locks = 0;
}
inline CallbackWatch::~CallbackWatch() {
    target.all_locks = 0;
}
inline bool run_without_system_calls(const std::function<void()>& /*work*/) {
    return false;
}
#endif

} // namespace tarquil

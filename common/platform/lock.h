// The one mutex of the process.
//
// Rendering uses scratch memory that all engines share, so it serialises every entry of every
// instance: the audio callbacks, parameters, programs and states.

#pragma once

#include <pthread.h>

namespace tarquil {

// A recursive mutex, since entries that hold it call others that take it again.  A thread that
// waits for it lends its priority to the holder, so that an audio thread waits no longer than the
// holder's work takes.
class Lock {
  public:
    Lock();
    Lock(const Lock&) = delete;
    Lock& operator=(const Lock&) = delete;
    ~Lock();

    void lock();
    void unlock();

  private:
    pthread_mutex_t mutex{};
};

// Holds a lock for the length of a scope.
class LockHolder {
  public:
    explicit LockHolder(Lock& held);
    LockHolder(const LockHolder&) = delete;
    LockHolder& operator=(const LockHolder&) = delete;
    ~LockHolder();

  private:
    Lock& lock;
};

extern Lock synth_lock;

} // namespace tarquil

// A mutex that lends priority.

#pragma once

#include <pthread.h>

namespace tarquil {

// A recursive mutex, since entries that hold it call others that take it again.  A thread that
// waits for it lends its priority to the holder, so that a thread that matters waits no longer than
// the holder's work takes.
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

} // namespace tarquil

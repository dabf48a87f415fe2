// A mutex that lends priority.

#include "common/platform/lock.h"

namespace tarquil {

Lock::Lock() {
    pthread_mutexattr_t attributes;
    pthread_mutexattr_init(&attributes);
    pthread_mutexattr_settype(&attributes, PTHREAD_MUTEX_RECURSIVE);
    pthread_mutexattr_setprotocol(&attributes, PTHREAD_PRIO_INHERIT);
    pthread_mutex_init(&mutex, &attributes);
    pthread_mutexattr_destroy(&attributes);
}

Lock::~Lock() {
    pthread_mutex_destroy(&mutex);
}

void Lock::lock() {
    pthread_mutex_lock(&mutex);
}

void Lock::unlock() {
    pthread_mutex_unlock(&mutex);
}

LockHolder::LockHolder(Lock& held) : lock(held) {
    lock.lock();
}

LockHolder::~LockHolder() {
    lock.unlock();
}

} // namespace tarquil

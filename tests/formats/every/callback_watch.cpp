// Counts what an audio callback must not do.
//
// The C library's allocator and mutexes are replaced for the whole program, the module included;
// system calls are caught by a filter of the kernel that belongs to one thread.

#include "tests/formats/every/callback_watch.h"

#include <dlfcn.h>
#include <linux/audit.h>
#include <linux/filter.h>
#include <linux/seccomp.h>
#include <pthread.h>
#include <sys/prctl.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <csignal>
#include <cstddef>
#include <cstdlib>
#include <thread>

namespace tarquil {

namespace {

thread_local CallbackCounts* watched = nullptr;
thread_local pthread_mutex_t* known_mutex = nullptr;

void count_allocation() {
    if (watched != nullptr)
        watched->allocations++;
}

volatile std::sig_atomic_t caught_calls = 0;
volatile std::sig_atomic_t last_call = 0;

void catch_call(int /*signal*/, siginfo_t* info, void* /*context*/) {
    caught_calls = caught_calls + 1;
    last_call = info->si_syscall;
}

bool forbid_system_calls() {
    sock_filter filter[] = {
        BPF_STMT(BPF_LD | BPF_W | BPF_ABS, offsetof(seccomp_data, nr)),
        BPF_JUMP(BPF_JMP | BPF_JEQ | BPF_K, SYS_rt_sigreturn, 3, 0),
        BPF_JUMP(BPF_JMP | BPF_JEQ | BPF_K, SYS_exit, 2, 0),
        BPF_JUMP(BPF_JMP | BPF_JEQ | BPF_K, SYS_munmap, 1, 0),
        BPF_STMT(BPF_RET | BPF_K, SECCOMP_RET_TRAP),
        BPF_STMT(BPF_RET | BPF_K, SECCOMP_RET_ALLOW),
    };
    const sock_fprog program = {sizeof(filter) / sizeof(filter[0]), filter};
    return prctl(PR_SET_NO_NEW_PRIVS, 1, 0, 0, 0) == 0 &&
           prctl(PR_SET_SECCOMP, SECCOMP_MODE_FILTER, &program) == 0;
}

} // namespace

extern "C" {

// NOLINTBEGIN(bugprone-reserved-identifier): the C library's own names
void* __libc_malloc(size_t size);
void* __libc_calloc(size_t count, size_t size);
void* __libc_realloc(void* memory, size_t size);
void* __libc_memalign(size_t alignment, size_t size);
void __libc_free(void* memory);
// NOLINTEND(bugprone-reserved-identifier)

[[gnu::visibility("default")]] void* malloc(size_t size) {
    count_allocation();
    return __libc_malloc(size);
}

[[gnu::visibility("default")]] void* calloc(size_t count, size_t size) {
    count_allocation();
    return __libc_calloc(count, size);
}

[[gnu::visibility("default")]] void* realloc(void* memory, size_t size) {
    count_allocation();
    return __libc_realloc(memory, size);
}

[[gnu::visibility("default")]] void* aligned_alloc(size_t alignment, size_t size) {
    count_allocation();
    return __libc_memalign(alignment, size);
}

[[gnu::visibility("default")]] void free(void* memory) {
    count_allocation();
    __libc_free(memory);
}

[[gnu::visibility("default")]] int pthread_mutex_lock(pthread_mutex_t* mutex) {
    using Function = int (*)(pthread_mutex_t*);
    static const auto original = reinterpret_cast<Function>(dlsym(RTLD_NEXT, "pthread_mutex_lock"));
    if (watched != nullptr) {
        watched->all_locks++;
        if (known_mutex == nullptr)
            known_mutex = mutex;
        if (mutex != known_mutex)
            watched->locks++;
    }
    return original(mutex);
}
}

CallbackWatch::CallbackWatch(CallbackCounts& counted) : target(counted) {
    known_mutex = nullptr;
    caught_calls = 0;
    watched = &counted;
}

CallbackWatch::~CallbackWatch() {
    watched = nullptr;
    target.system_calls += caught_calls;
    if (caught_calls != 0)
        target.last_system_call = std::to_string(last_call);
}

bool run_without_system_calls(const std::function<void()>& work) {
    struct sigaction action {};
    action.sa_sigaction = catch_call;
    action.sa_flags = SA_SIGINFO | SA_NODEFER;
    sigaction(SIGSYS, &action, nullptr);
    bool is_allowed = false;
    std::thread([&] {
        // The thread's allocator asks the system for memory at its first use.
        void* volatile first_use = std::malloc(1);
        std::free(first_use);
        is_allowed = forbid_system_calls();
        if (is_allowed)
            work();
    }).join();
    return is_allowed;
}

} // namespace tarquil

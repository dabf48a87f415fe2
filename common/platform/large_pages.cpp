// Memory on large pages where the system has them.

#include "common/platform/large_pages.h"

#include <sys/mman.h>
#include <unistd.h>

#include <cstdint>
#include <cstring>
#include <new>

namespace tarquil {

void advise_large_pages(void* start, size_t num_bytes) {
#if defined(MADV_HUGEPAGE)
    const auto page = uintptr_t(sysconf(_SC_PAGESIZE));
    const uintptr_t first = (reinterpret_cast<uintptr_t>(start) + page - 1) & ~(page - 1);
    const uintptr_t end = (reinterpret_cast<uintptr_t>(start) + num_bytes) & ~(page - 1);
    if (first < end) {
        char* first_page = static_cast<char*>(start) + (first - reinterpret_cast<uintptr_t>(start));
        madvise(first_page, end - first, MADV_HUGEPAGE);
    }
#else
    static_cast<void>(start);
    static_cast<void>(num_bytes);
#endif
}

LargeFloatArray make_large_float_array(size_t count) {
    const size_t num_bytes = (count * sizeof(float) + LARGE_PAGE - 1) / LARGE_PAGE * LARGE_PAGE;
    LargeFloatArray array(static_cast<float*>(std::aligned_alloc(LARGE_PAGE, num_bytes)));
    if (!array)
        throw std::bad_alloc();
    advise_large_pages(array.get(), count * sizeof(float) / LARGE_PAGE * LARGE_PAGE);
    std::memset(array.get(), 0, count * sizeof(float));
    return array;
}

} // namespace tarquil

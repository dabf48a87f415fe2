// Memory on large pages where the system has them.
//
// Touching fresh memory costs a fault per page, which for tables and delay lines of megabytes is
// more than filling them; large pages need a five hundredth of the faults.

#pragma once

#include <cstddef>
#include <cstdlib>
#include <memory>

namespace tarquil {

// The size and alignment of a large page, in bytes.
inline constexpr size_t LARGE_PAGE = size_t(2) << 20U;

// Asks for large pages within [start, start + num_bytes); without them everything works the same.
void advise_large_pages(void* start, size_t num_bytes);

struct FreeDeleter {
    void operator()(void* memory) const { std::free(memory); }
};

using LargeFloatArray = std::unique_ptr<float[], FreeDeleter>;

// `count` floats of 0, aligned to a large page.  Throws std::bad_alloc.
LargeFloatArray make_large_float_array(size_t count);

} // namespace tarquil

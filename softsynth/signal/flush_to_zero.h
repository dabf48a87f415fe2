// Flush-to-zero for the duration of a scope, so that denormals cost nothing.

#pragma once

#if defined(__SSE__)
#include <xmmintrin.h>
#endif

#include <cstdint>

namespace tarquil {

class FlushToZero {
  public:
    FlushToZero() : saved(control()) { set_control(saved | FLUSH_BIT); }
    // Restores the bit as it was; exception flags raised meanwhile stay.
    ~FlushToZero() { set_control((control() & ~FLUSH_BIT) | (saved & FLUSH_BIT)); }
    FlushToZero(const FlushToZero&) = delete;
    FlushToZero& operator=(const FlushToZero&) = delete;

  private:
#if defined(__SSE__)
    using Word = uint32_t;
    static constexpr Word FLUSH_BIT = 1U << 15U; // of MXCSR
    static Word control() {
        return _mm_getcsr();
    }
    static void set_control(Word word) {
        _mm_setcsr(word);
    }
#elif defined(__aarch64__)
    using Word = uint64_t;
    static constexpr Word FLUSH_BIT = Word(1) << 24U; // of FPCR
    static Word control() {
        Word word = 0;
        asm volatile("mrs %0, fpcr" : "=r"(word));
        return word;
    }
    static void set_control(Word word) {
        asm volatile("msr fpcr, %0" : : "r"(word));
    }
#else
    using Word = uint32_t;
    static constexpr Word FLUSH_BIT = 0;
    static Word control() {
        return 0;
    }
    static void set_control(Word /*word*/) {}
#endif

    Word saved;
};

} // namespace tarquil

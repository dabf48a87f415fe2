// The order of ten different bytes as a number.

#include "softsynth/lpc/byte_order_code.h"

#include <algorithm>

#include "common/assertion.h"

namespace tarquil {

uint32_t byte_order_number(const OrderedBytes& bytes) {
    uint32_t number = 0;
    for (size_t i = 0; i < NUM_ORDERED_BYTES; i++) {
        const auto smaller = std::count_if(bytes.begin() + long(i), bytes.end(),
                                           [&](uint8_t later) { return later < bytes[i]; });
        number = number * uint32_t(NUM_ORDERED_BYTES - i) + uint32_t(smaller);
    }
    return number;
}

OrderedBytes bytes_in_order(const OrderedBytes& ascending, uint32_t number) {
    TARQ_ASSERT(number < NUM_BYTE_ORDERS);
    std::array<size_t, NUM_ORDERED_BYTES> digits{};
    for (size_t i = NUM_ORDERED_BYTES; i-- > 0;) {
        const auto radix = uint32_t(NUM_ORDERED_BYTES - i);
        digits[i] = number % radix;
        number /= radix;
    }
    OrderedBytes left = ascending;
    OrderedBytes ordered{};
    for (size_t i = 0; i < NUM_ORDERED_BYTES; i++) {
        auto* const chosen = left.begin() + digits[i];
        ordered[i] = *chosen;
        std::copy(chosen + 1, left.end(), chosen);
    }
    return ordered;
}

} // namespace tarquil

// The order of ten different bytes as a number.
//
// Source: D. H. Lehmer, "Teaching combinatorial tricks to a computer", Proc. Symposia in Applied
// Mathematics 10 (1960): digit i, of radix 10 - i, counts the later bytes that are smaller.

#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

namespace tarquil {

inline constexpr size_t NUM_ORDERED_BYTES = 10;
inline constexpr uint32_t NUM_BYTE_ORDERS = 3628800;

using OrderedBytes = std::array<uint8_t, NUM_ORDERED_BYTES>;

// 0 (ascending) to NUM_BYTE_ORDERS - 1; equal bytes count as ascending.
uint32_t byte_order_number(const OrderedBytes& bytes);

// The bytes of `ascending`, in the order of this number.
OrderedBytes bytes_in_order(const OrderedBytes& ascending, uint32_t number);

} // namespace tarquil

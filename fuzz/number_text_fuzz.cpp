// Numbers as text: any text reads, and any number prints, as the C library has it.

#include <bit>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>

#include "common/assertion.h"
#include "common/number_text.h"

namespace tarquil {

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size);

int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    const std::string text(reinterpret_cast<const char*>(data), size);
    const double expected = std::strtod(text.c_str(), nullptr);
    const double value = text_to_number(text);
    TARQ_ASSERT(std::isnan(value) == std::isnan(expected));
    TARQ_ASSERT(std::isnan(value) ||
                std::bit_cast<uint64_t>(value) == std::bit_cast<uint64_t>(expected));
    if (size >= sizeof(double)) {
        double number = 0.0;
        std::memcpy(&number, data, sizeof(number));
        char printed[400];
        std::snprintf(printed, sizeof(printed), "%f", number);
        TARQ_ASSERT(number_to_text(number) == printed);
    }
    return 0;
}

} // namespace tarquil

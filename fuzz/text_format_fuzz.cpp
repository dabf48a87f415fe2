// Key/value text: any text loads or is a broken line, and its hexadecimal form is the same text.

#include <cstdint>

#include "common/assertion.h"
#include "common/load_string.h"
#include "instrument/text_file_reader.h"

namespace tarquil {

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size);

int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    const std::string text(reinterpret_cast<const char*>(data), size);
    std::string decoded;
    const int hex_error = hex2str(text, decoded);
    TARQ_ASSERT(hex_error == (size % 2 != 0 ? 2 : 0) || hex_error == 3);
    TARQ_ASSERT(hex2str(str2hex(text), decoded) == 0 && decoded == text);

    TextFileReader reader;
    TextFileReader embedded;
    const int error = reader.load_from_string(text);
    TARQ_ASSERT(error == 0 || error == 6);
    TARQ_ASSERT(embedded.load_from_file("hex:" + str2hex(text)) == error);
    for (const char* key : {"a", "name", ""}) {
        std::string value;
        std::string embedded_value;
        const bool found = reader.get_str(key, value);
        TARQ_ASSERT(found == embedded.get_str(key, embedded_value) && value == embedded_value);
        TARQ_ASSERT(!found || (!value.empty() && value.find('\n') == std::string::npos));
        float number = 0.0F;
        TARQ_ASSERT(reader.get_float(key, number) == found);
    }
    return 0;
}

} // namespace tarquil

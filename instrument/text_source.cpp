// Where the text of an instrument comes from.

#include "instrument/text_source.h"

#include "common/load_string.h"
#include "instrument/packed_text.h"

namespace tarquil {

int load_text_source(const std::string& path, std::string& text) {
    if (path.starts_with(EMBEDDED_PREFIX))
        return hex2str(std::string_view(path).substr(EMBEDDED_PREFIX.size()), text);
    if (path.starts_with(PACKED_PREFIX))
        return unpack_text(std::string_view(path).substr(PACKED_PREFIX.size()), text);
    return load_regular_file_to_string(path, text);
}

} // namespace tarquil

// Songs that the user named.

#include "midi/smf/song_file.h"

#include "common/failure.h"
#include "common/load_string.h"

namespace tarquil {

Song load_song(const std::string& path) {
    const bool is_standard_input = path == "-";
    const std::string name = is_standard_input ? "standard input" : path;
    std::string bytes;
    const int error = load_file_to_string(is_standard_input ? "/dev/stdin" : path, bytes);
    if (error != 0)
        throw BadInput(name + ": " + explain_file_error(error));
    try {
        return read_song({reinterpret_cast<const uint8_t*>(bytes.data()), bytes.size()});
    } catch (const BadInput& failure) {
        throw BadInput(name + ": " + failure.what());
    }
}

} // namespace tarquil

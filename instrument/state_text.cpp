// The text in a saved state.

#include "instrument/state_text.h"

#include "common/directory_image.h"
#include "instrument/instrument.h"

namespace tarquil {

namespace {

constexpr std::string_view BANK_OF_IMAGE = "default.tqb";

} // namespace

bool is_image_state(std::string_view bytes) {
    return bytes.starts_with("MVFS") || bytes.starts_with("MFIL");
}

std::optional<std::string_view> find_state_text(std::string_view bytes, StateKind kind) {
    if (!is_image_state(bytes))
        return bytes;
    return find_in_directory_image(bytes, kind == StateKind::PROGRAM
                                              ? std::string_view(DEFAULT_INSTRUMENT_FILE)
                                              : BANK_OF_IMAGE);
}

} // namespace tarquil

// The keys of instruments and banks beside those of the controllers, and which key belongs to what.

#pragma once

#include <string>
#include <string_view>

namespace tarquil {

enum class TextKind { INSTRUMENT, BANK };

inline constexpr std::string_view NAME_KEY = "name";

inline constexpr std::string_view SONG_TITLE_KEY = "song_title";
inline constexpr std::string_view SONG_AUTHOR_KEY = "song_author";
inline constexpr std::string_view MIDI_KEY = "midi";
inline constexpr std::string_view TEMPO_SYNC_KEY = "tempo_sync";

// Lines of a saved state.  A bank that has the first is compact: what it lacks is as in a new one.
inline constexpr std::string_view STATE_VERSION_KEY = "state_version";
inline constexpr std::string_view CHANNEL_PROGRAMS_KEY = "channel_programs";
inline constexpr std::string_view EDITED_PROGRAM_KEY = "edited_program";
inline constexpr std::string_view SELECTED_CHANNEL_KEY = "selected_channel";

// "instrument5", and its inverse: -1 for any other key.
std::string instrument_key(unsigned number);
int instrument_of_key(std::string_view key);

// Whether a text of this kind has the key, and no other kind does.
bool is_key_of(TextKind kind, std::string_view key);

// Whether it would be one without the white space in front of it.
bool is_indented_key_of(TextKind kind, std::string_view key);

} // namespace tarquil

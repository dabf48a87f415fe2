// What a render is asked to do, and the reading of its options.
//
// Numbers are read as the C locale writes them.  Every reader throws BadInput for text that it
// cannot take.

#pragma once

#include <array>
#include <bitset>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "player/quantum_stream.h"
#include "softsynth/parameters/constants.h"
#include "tools/audio/audio_format.h"

namespace tarquil {

// Indexed by channel, 0..15.
using ChannelSet = std::bitset<NUM_CHANNELS>;

// That of the engine linked in, so that the plug-in gives the same bytes.
inline constexpr uint32_t DEFAULT_BLOCK = QuantumStream::QUANTUM;

// How the song's messages are understood.
enum class DialectChoice : uint8_t {
    AUTO,   // as the bank says; General MIDI without one
    GM,     // General MIDI
    NATIVE, // the engine's own controller numbers
};

struct RenderOptions {
    std::string song_path; // "-": standard input
    AudioRequest audio;
    int standard_output = -1; // its descriptor, for the path "-"
    std::string plugin_path;  // empty: the engine linked in
    std::string bank_path;    // a file, or a name of a shipped bank; empty: the dialect's own
    DialectChoice midi = DialectChoice::AUTO;
    std::string map_path; // of a General MIDI set; empty: none
    bool report = false;  // says what became of the messages
    std::array<std::string, NUM_CHANNELS> instrument_paths;
    ChannelSet channels = ChannelSet().set(); // that sound
    std::string stem_folder;                  // empty: no stems
    std::optional<uint32_t> tail;             // samples after the song's end; none: until silence
    std::optional<double> normalize_dbfs;     // the peak
    uint32_t block = DEFAULT_BLOCK;           // samples that a plug-in renders at once
    unsigned threads = 1;                     // that the engine linked in renders on
    uint32_t seed = 1;                        // of the oscillators' start phases
    bool quiet = false;
    bool json = false;
};

// "1,3-5": channels counted from 1.
ChannelSet parse_channels(const std::string& text);

// "CHANNEL=FILE": sets the path of one channel, counted from 1.
void parse_instrument(const std::string& text, RenderOptions& options);

// "auto", "gm" or "native".
DialectChoice parse_midi_dialect(const std::string& text);

// "auto" or seconds, at most half an hour.
std::optional<uint32_t> parse_tail(const std::string& text);

// A level of -120..0 dBFS.
double parse_level(const std::string& text);

// A number of samples that the engine takes in one run.
uint32_t parse_block(const std::string& text);

// A sample rate in Hz: any whole number.
int parse_rate(const std::string& text);

uint32_t parse_seed(const std::string& text);

// A number of threads from 1 on.
unsigned parse_threads(const std::string& text);

} // namespace tarquil

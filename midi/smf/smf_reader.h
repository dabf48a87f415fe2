// Reading of Standard MIDI Files, formats 0 and 1.
//
// A song comes out as channel messages, each on its sample, in the order in which they play.
// Source of the format: "Standard MIDI Files 1.0", MIDI Manufacturers Association, 1996.
//
// Any damage is an error: a chunk, event or length that reaches beyond its file or chunk, a data
// byte above 127, a missing or early end of track, a wrong number of tracks.  What the format lets
// a reader skip is skipped: unknown chunks, meta events other than tempo, time signature and end of
// track, bytes that are sent as they are, a header longer than six bytes.  A running status
// outlives system exclusive and meta events, which the format forbids but real files rely on.

#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

namespace tarquil {

// The largest file that is read, in bytes.  Every event takes at least two.
inline constexpr size_t MAX_SMF_BYTES = size_t(16) << 20;

// The longest song, in seconds: the engine's sample clock ends after thirteen and a half hours,
// and the sound goes on after the last event.
inline constexpr uint32_t MAX_SONG_SECONDS = 12 * 3600;

// One channel message.  A message of two bytes has 0 as its third.
struct SongMessage {
    uint32_t time = 0; // samples since the song's start, at SAMPLE_RATE
    uint8_t bytes[3] = {};
};

// A system exclusive message, from 0xF0 to 0xF7.
struct SongExclusive {
    uint32_t time = 0;   // as a message's
    size_t position = 0; // comes before this one of the song's messages
    std::vector<uint8_t> bytes;
};

// From its time on.
struct SongTempo {
    uint32_t time = 0; // as a message's
    double quarters_per_minute = 120.0;

    // Quarter notes since the song's start, now and at the bar's start, and of a bar.
    double position = 0.0;
    double bar_start = 0.0;
    double bar_length = 4.0;
};

struct Song {
    std::vector<SongMessage> messages; // in time order; at one tick by track, then as in the file
    std::vector<SongExclusive> exclusives; // in order
    std::vector<SongTempo> tempos;         // in order; the first at 0
    uint32_t end_time = 0;                 // of the last end of track, in samples
};

// Places each event on the sample that sounds at its exact time: the sum over all ticks of their
// lengths, in integers, rounded down once.  Throws BadInput with the place and the reason.
Song read_song(std::span<const uint8_t> file);

} // namespace tarquil

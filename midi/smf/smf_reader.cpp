// Reading of Standard MIDI Files, formats 0 and 1.

#include "midi/smf/smf_reader.h"

#include <algorithm>
#include <cstring>
#include <string>
#include <utility>

#include "midi/midi_message.h"
#include "midi/smf/byte_cursor.h"
#include "midi/smf/song_clock.h"

namespace tarquil {

namespace {

constexpr uint8_t SYSEX_CONTINUED = 0xF7;
constexpr uint8_t META = 0xFF;
constexpr uint8_t META_END_OF_TRACK = 0x2F;
constexpr uint8_t META_TEMPO = 0x51;
constexpr uint8_t META_TIME_SIGNATURE = 0x58;

// A message; or a tempo of 24 bits in the three bytes; or a bar: so many notes in the first byte,
// of which a whole one has two to the power of the second; or a system exclusive message.
struct TrackEvent {
    enum class Kind : uint8_t { MESSAGE, TEMPO, BAR, EXCLUSIVE };

    uint64_t tick = 0;
    uint8_t bytes[3] = {};
    Kind kind = Kind::MESSAGE;
    uint32_t exclusive = 0; // index
};

struct Header {
    unsigned num_tracks = 0;
    TickLength tick;
};

// Collects the events of all tracks.
class TrackReader {
  public:
    void read(ByteCursor cursor);

    std::vector<TrackEvent> events;
    std::vector<std::vector<uint8_t>> exclusives;
    uint64_t end_tick = 0;

  private:
    void read_meta(ByteCursor& cursor);
    void read_exclusive(ByteCursor& cursor, uint8_t first_byte);
    void read_message(ByteCursor& cursor, uint8_t first_byte);

    // Of the track that is being read.
    uint64_t tick = 0;
    uint8_t running_status = 0;  // 0: none yet
    std::vector<uint8_t> packet; // a system exclusive message that is still to be continued
    bool ended = false;
};

void TrackReader::read(ByteCursor cursor) {
    tick = 0;
    running_status = 0;
    packet.clear();
    ended = false;
    while (!ended) {
        if (cursor.at_end())
            cursor.fail("the track has no end of track");
        tick += cursor.take_variable_number("a delta time");
        const uint8_t first_byte = cursor.take_byte("an event");
        if (first_byte == META)
            read_meta(cursor);
        else if (first_byte == MIDI_SYSTEM || first_byte == SYSEX_CONTINUED)
            read_exclusive(cursor, first_byte);
        else
            read_message(cursor, first_byte);
    }
    if (!cursor.at_end())
        cursor.fail("the track goes on after its end of track");
    end_tick = std::max(end_tick, tick);
}

void TrackReader::read_meta(ByteCursor& cursor) {
    const size_t start = cursor.offset();
    const uint8_t type = cursor.take_byte("a meta event");
    if (type >= 0x80)
        ByteCursor::fail_at(start, "a meta event has a type above 127");
    const uint32_t length = cursor.take_variable_number("a length");
    const std::span<const uint8_t> data = cursor.take(length, "a meta event");
    if (type == META_END_OF_TRACK) {
        if (length != 0)
            ByteCursor::fail_at(start, "an end of track has a length other than 0");
        ended = true;
    } else if (type == META_TEMPO) {
        if (length != 3)
            ByteCursor::fail_at(start, "a tempo has a length other than 3");
        if (data[0] == 0 && data[1] == 0 && data[2] == 0)
            ByteCursor::fail_at(start, "a tempo is 0");
        events.push_back(
            {.tick = tick, .bytes = {data[0], data[1], data[2]}, .kind = TrackEvent::Kind::TEMPO});
    } else if (type == META_TIME_SIGNATURE) {
        // Nothing but the beats' grid depends on it: what makes no sense is passed over.
        constexpr uint8_t SMALLEST_NOTE = 6;
        if (length == 4 && data[0] > 0 && data[1] <= SMALLEST_NOTE)
            events.push_back(
                {.tick = tick, .bytes = {data[0], data[1]}, .kind = TrackEvent::Kind::BAR});
    }
}

// A message may come in several packets, of which the last one ends in 0xF7.
void TrackReader::read_exclusive(ByteCursor& cursor, uint8_t first_byte) {
    constexpr uint8_t END = 0xF7;
    const uint32_t length = cursor.take_variable_number("a length");
    const std::span<const uint8_t> data = cursor.take(length, "a system exclusive message");
    if (first_byte == MIDI_SYSTEM)
        packet = {uint8_t(MIDI_SYSTEM)};
    else if (packet.empty())
        return; // bytes to be sent as they are
    packet.insert(packet.end(), data.begin(), data.end());
    if (packet.back() != END)
        return;
    events.push_back({.tick = tick,
                      .kind = TrackEvent::Kind::EXCLUSIVE,
                      .exclusive = uint32_t(exclusives.size())});
    exclusives.push_back(std::move(packet));
    packet.clear();
}

void TrackReader::read_message(ByteCursor& cursor, uint8_t first_byte) {
    const size_t start = cursor.offset() - 1;
    TrackEvent event{.tick = tick};
    size_t num_bytes = 0; // that are in `event` already
    if (first_byte >= MIDI_SYSTEM)
        ByteCursor::fail_at(start, "a system message that cannot be in a file");
    if (is_midi_status(first_byte)) {
        running_status = first_byte;
    } else {
        if (running_status == 0)
            ByteCursor::fail_at(start, "a data byte without a status before it");
        event.bytes[1] = first_byte;
        num_bytes = 1;
    }
    event.bytes[0] = running_status;

    const size_t num_data_bytes = num_midi_data_bytes(running_status);
    for (; num_bytes < num_data_bytes; num_bytes++) {
        const uint8_t byte = cursor.take_byte("a message");
        if (is_midi_status(byte))
            ByteCursor::fail_at(cursor.offset() - 1, "a data byte above 127");
        event.bytes[1 + num_bytes] = byte;
    }
    events.push_back(event);
}

// The song's tempos, from its tempo and time signature events in order.
class TempoList {
  public:
    explicit TempoList(const TickLength& tick)
        : ticks_per_quarter(tick.follows_tempo ? double(tick.denominator) / 1e6 : 0.0) {}

    // At `tick`, that is at the sample `time`.
    void add(const TrackEvent& event, uint32_t time) {
        if (ticks_per_quarter == 0.0)
            return; // counted in film frames, the song knows no beats
        SongTempo next = tempos.back();
        next.time = time;
        next.position = double(event.tick) / ticks_per_quarter;
        const uint8_t* bytes = event.bytes;
        if (event.kind == TrackEvent::Kind::TEMPO) {
            next.quarters_per_minute =
                60e6 / double(uint32_t(bytes[0]) << 16 | uint32_t(bytes[1]) << 8 | bytes[2]);
        } else {
            next.bar_start = next.position;
            next.bar_length = double(bytes[0]) * 4.0 / double(1U << bytes[1]);
        }
        if (next.position == tempos.back().position)
            tempos.back() = next;
        else
            tempos.push_back(next);
    }

    std::vector<SongTempo> tempos{SongTempo()};

  private:
    const double ticks_per_quarter;
};

bool has_type(std::span<const uint8_t> type, const char* wanted) {
    return std::memcmp(type.data(), wanted, 4) == 0;
}

Header read_header(ByteCursor& file) {
    if (file.remaining() < 4 || !has_type(file.take(4, "the header"), "MThd"))
        ByteCursor::fail_at(0, "not a MIDI file: it does not begin with MThd");
    const uint32_t length = file.take_number(4, "the header");
    if (length < 6)
        ByteCursor::fail_at(4, "the header is shorter than six bytes");
    const size_t start = file.offset();
    ByteCursor header(file.take(length, "the header"), start);
    const uint32_t format = header.take_number(2, "the format");
    if (format == 2)
        ByteCursor::fail_at(start, "format 2 (independent patterns) is not a song");
    if (format > 2)
        ByteCursor::fail_at(start, "unknown format " + std::to_string(format));
    const uint32_t num_tracks = header.take_number(2, "the number of tracks");
    if (num_tracks == 0 || (format == 0 && num_tracks != 1))
        ByteCursor::fail_at(start + 2, "format " + std::to_string(format) + " with " +
                                           std::to_string(num_tracks) + " tracks");
    const TickLength tick = tick_length(uint16_t(header.take_number(2, "the division")));
    if (tick.denominator == 0)
        ByteCursor::fail_at(start + 4, "a division without a meaning");
    return {.num_tracks = num_tracks, .tick = tick};
}

// Walks through the chunks behind the header.
TrackReader read_tracks(ByteCursor& file, unsigned num_tracks) {
    TrackReader reader;
    unsigned num_read = 0;
    while (!file.at_end()) {
        const size_t start = file.offset();
        const std::span<const uint8_t> type = file.take(4, "a chunk's head");
        const uint32_t length = file.take_number(4, "a chunk's head");
        const size_t body_start = file.offset();
        const ByteCursor body(file.take(length, "a chunk"), body_start);
        if (!has_type(type, "MTrk"))
            continue;
        num_read++;
        if (num_read > num_tracks)
            ByteCursor::fail_at(start, "more tracks than the " + std::to_string(num_tracks) +
                                           " of the header");
        try {
            reader.read(body);
        } catch (const BadInput& error) {
            throw BadInput("track " + std::to_string(num_read) + ", " + error.what());
        }
    }
    if (num_read < num_tracks)
        file.fail("the file ends after " + std::to_string(num_read) + " of " +
                  std::to_string(num_tracks) + " tracks");
    return reader;
}

} // namespace

Song read_song(std::span<const uint8_t> file) {
    if (file.size() > MAX_SMF_BYTES)
        throw BadInput("the file is larger than 16 MiB");
    ByteCursor cursor(file, 0);
    const Header header = read_header(cursor);
    TrackReader tracks = read_tracks(cursor, header.num_tracks);
    std::stable_sort(tracks.events.begin(), tracks.events.end(),
                     [](const TrackEvent& a, const TrackEvent& b) { return a.tick < b.tick; });

    Song song;
    song.messages.reserve(tracks.events.size());
    SongClock clock(header.tick);
    TempoList tempos(header.tick);
    const auto advance_to = [&clock](uint64_t tick) {
        if (!clock.advance_to(tick))
            throw BadInput("tick " + std::to_string(tick) + ": the song is longer than 12 hours");
    };
    for (const TrackEvent& event : tracks.events) {
        advance_to(event.tick);
        const uint8_t* bytes = event.bytes;
        switch (event.kind) {
        case TrackEvent::Kind::MESSAGE:
            song.messages.push_back(
                {.time = clock.sample(), .bytes = {bytes[0], bytes[1], bytes[2]}});
            break;
        case TrackEvent::Kind::TEMPO:
            clock.set_tempo(uint32_t(bytes[0]) << 16 | uint32_t(bytes[1]) << 8 | bytes[2]);
            tempos.add(event, clock.sample());
            break;
        case TrackEvent::Kind::BAR:
            tempos.add(event, clock.sample());
            break;
        case TrackEvent::Kind::EXCLUSIVE:
            song.exclusives.push_back({.time = clock.sample(),
                                       .position = song.messages.size(),
                                       .bytes = std::move(tracks.exclusives[event.exclusive])});
            break;
        }
    }
    advance_to(tracks.end_tick);
    song.end_time = clock.sample();
    song.tempos = std::move(tempos.tempos);
    return song;
}

} // namespace tarquil

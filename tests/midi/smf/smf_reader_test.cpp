// Tests of the reading of MIDI files: what is accepted, where events land, what is refused.

#include "midi/smf/smf_reader.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstdio>
#include <string>

#include "common/failure.h"
#include "tests/midi/smf/smf_builder.h"

namespace tarquil {

namespace {

using testing::HasSubstr;

const SmfBytes END = {0x00, 0xFF, 0x2F, 0x00};

SmfBytes with_end(SmfBytes track) {
    track.insert(track.end(), END.begin(), END.end());
    return track;
}

std::string error_of(const SmfBytes& file) {
    try {
        read_song(file);
    } catch (const BadInput& error) {
        return error.what();
    }
    return "";
}

std::vector<uint32_t> times_of(const Song& song) {
    std::vector<uint32_t> times;
    for (const SongMessage& message : song.messages)
        times.push_back(message.time);
    return times;
}

std::vector<int> notes_of(const Song& song) {
    std::vector<int> notes;
    for (const SongMessage& message : song.messages)
        notes.push_back(message.bytes[1]);
    return notes;
}

TEST(SmfReader, PlacesEventsByTheTempoMapOfAllTracks) {
    const Song song = read_song(small_song());
    // Tick 96 is at 0.5 s; from there a tick is 0.25 s / 96: tick 144 at 0.625 s, 240 at 0.875 s.
    EXPECT_EQ(times_of(song), (std::vector<uint32_t>{0, 0, 22050, 27562, 38587, 38587}));
    EXPECT_EQ(song.end_time, 38587U);
    EXPECT_EQ(song.messages[2].bytes[0], 0x90); // running status
    EXPECT_EQ(song.messages[5].bytes[0], 0xE0);
    EXPECT_EQ(song.messages[0].bytes[2], 0);
}

TEST(SmfReader, TellsTempoPlaceAndBarsInQuarterNotes) {
    const auto tell = [](const Song& song) {
        std::string text;
        for (const SongTempo& tempo : song.tempos) {
            char line[100];
            std::snprintf(line, sizeof(line), "%u: %g at %g, bar %g of %g\n", tempo.time,
                          tempo.quarters_per_minute, tempo.position, tempo.bar_start,
                          tempo.bar_length);
            text += line;
        }
        return text;
    };
    EXPECT_EQ(tell(read_song(small_song())),
              "0: 120 at 0, bar 0 of 4\n22050: 240 at 1, bar 0 of 4\n");
    // 7/8 from the first beat on, one without a meaning, and 100 a minute two beats later.
    const SmfBytes track =
        with_end({0x60, 0xFF, 0x58, 0x04, 7,    3,    24,   8,    0x00, 0xFF, 0x58, 0x04,
                  0,    2,    24,   8,    0x81, 0x40, 0xFF, 0x51, 0x03, 0x09, 0x27, 0xC0});
    EXPECT_EQ(tell(read_song(make_smf(0, 96, {track}))),
              "0: 120 at 0, bar 0 of 4\n22050: 120 at 1, bar 1 of 3.5\n"
              "66150: 100 at 3, bar 1 of 3.5\n");
    // Counted in frames a song knows no beats.
    EXPECT_EQ(tell(read_song(make_smf(0, 0xE728, {track}))), "0: 120 at 0, bar 0 of 4\n");
}

TEST(SmfReader, KeepsExclusiveMessagesInTheirPlace) {
    SmfBytes track = {0x00, 0xB0, 7,  100,                    // a message
                      0x00, 0xF0, 5,  0x7E, 0x7F, 9, 1, 0xF7, // whole
                      0x00, 64,   10,                         // the status runs on
                      0x60, 0xF0, 2,  0x41, 0x10,             // in two packets
                      0x60, 0xF7, 2,  0x42, 0xF7,             //
                      0x00, 0xF7, 1,  0xF8,                   // sent as it is: left out
                      0x00, 0x90, 60, 100};
    const Song song = read_song(make_smf(0, 96, {with_end(track)}));
    ASSERT_EQ(song.messages.size(), 3U);
    ASSERT_EQ(song.exclusives.size(), 2U);
    EXPECT_EQ(song.exclusives[0].position, 1U);
    EXPECT_EQ(song.exclusives[0].bytes, (SmfBytes{0xF0, 0x7E, 0x7F, 9, 1, 0xF7}));
    EXPECT_EQ(song.exclusives[1].position, 2U);
    EXPECT_EQ(song.exclusives[1].time, song.messages[2].time);
    EXPECT_EQ(song.exclusives[1].bytes, (SmfBytes{0xF0, 0x41, 0x10, 0x42, 0xF7}));
}

TEST(SmfReader, RoundsDownOnceForTheWholeSong) {
    // 1000 changes of tempo, each after one tick: the lengths 1..1000 us / 7 add up to
    // 500500 / 7 us = 0.0715 s = 3153.15 samples.
    SmfBytes track;
    for (unsigned tempo = 1; tempo <= 1000; tempo++) {
        track.insert(track.end(), {uint8_t(tempo == 1 ? 0 : 1), 0xFF, 0x51, 0x03, 0,
                                   uint8_t(tempo >> 8), uint8_t(tempo)});
    }
    track.insert(track.end(), {0x01, 0x90, 0x3C, 0x40});
    const Song song = read_song(make_smf(0, 7, {with_end(track)}));
    EXPECT_EQ(song.messages[0].time, 3153U);
}

TEST(SmfReader, ReadsFrameDivisions) {
    struct Case {
        unsigned division;
        uint32_t sample; // of tick 100
    };
    // 100 ticks of 1 / (frames * ticks) s; 29 stands for 30000 / 1001 frames a second.
    for (const Case& c : {Case{0xE728, 4410}, Case{0xE828, 4593}, Case{0xE364, 1471},
                          Case{0xE264, 1470}, Case{0xE201, 147000}}) {
        const SmfBytes track = {0x00, 0xFF, 0x51, 0x03, 0x00, 0x00, 0x01, // means nothing here
                                0x64, 0x90, 0x3C, 0x40};
        const Song song = read_song(make_smf(0, c.division, {with_end(track)}));
        EXPECT_EQ(song.messages[0].time, c.sample) << std::hex << c.division;
    }
}

TEST(SmfReader, OrdersOneTickByTrackThenByFile) {
    const Song song =
        read_song(make_smf(1, 96,
                           {with_end({0x05, 0x90, 10, 1, 0x00, 0x80, 11, 1, 0x05, 0x90, 12, 1}),
                            with_end({0x00, 0x91, 20, 1, 0x05, 0x81, 21, 1, 0x00, 0x91, 22, 1})}));
    EXPECT_EQ(notes_of(song), (std::vector<int>{20, 10, 11, 21, 22, 12}));
}

TEST(SmfReader, SkipsWhatItMaySkip) {
    SmfBytes file = {'M', 'T', 'h', 'd', 0, 0, 0, 8, 0, 1, 0, 1, 0, 96, 7, 7}; // longer header
    append_chunk(file, "XYZW", {1, 2, 3});
    append_chunk(
        file, "MTrk",
        with_end({0x00, 0x90, 1,    1,    0x00, 0xFF, 0x01, 0x02, 'h', 'i', 0x00, 2, 1, // meta
                  0x00, 0xF7, 0x01, 0xF8, 0x00, 3,    1})); // and escape keep the status
    append_chunk(file, "IGNO", {});
    EXPECT_EQ(notes_of(read_song(file)), (std::vector<int>{1, 2, 3}));
}

TEST(SmfReader, NamesDamageAndItsPlace) {
    struct Case {
        SmfBytes file;
        const char* message;
    };
    SmfBytes long_chunk = smf_header(0, 1, 96);
    long_chunk.insert(long_chunk.end(), {'M', 'T', 'r', 'k', 0xFF, 0xFF, 0xFF, 0xFF});
    const auto one_track = [](const SmfBytes& track) { return make_smf(0, 96, {with_end(track)}); };
    const Case cases[] = {
        {{}, "byte 0: not a MIDI file"},
        {{'R', 'I', 'F', 'F', 0, 0, 0, 0}, "byte 0: not a MIDI file"},
        {{'M', 'T', 'h', 'd', 0, 0, 0, 5, 0, 1, 0, 1, 0}, "byte 4: the header is shorter"},
        {SmfBytes(MAX_SMF_BYTES + 1), "larger than 16 MiB"},
        {make_smf(2, 96, {END}), "byte 8: format 2"},
        {make_smf(3, 96, {END}), "byte 8: unknown format 3"},
        {make_smf(0, 96, {END, END}), "byte 10: format 0 with 2 tracks"},
        {make_smf(1, 96, {}), "byte 10: format 1 with 0 tracks"},
        {make_smf(1, 0, {END}), "byte 12: a division"},
        {make_smf(1, 0xE700, {END}), "byte 12: a division"},
        {make_smf(1, 0x8001, {END}), "byte 12: a division"},
        {long_chunk, "byte 22: a chunk is cut off"},
        {smf_header(1, 2, 96), "byte 14: the file ends after 0 of 2 tracks"},
        {make_smf(0, 96, {{0x00, 0x90, 1, 1}}), "track 1, byte 26: the track has no end of track"},
        {make_smf(0, 96, {{0x00, 0xFF, 0x2F, 0x00, 0x00}}), "byte 26: the track goes on"},
        {one_track({0x00, 0x3C, 0x40}), "byte 23: a data byte without a status"},
        {make_smf(1, 96, {with_end({0x00, 0x90, 1, 1}), with_end({0x00, 0x3C, 0x40})}),
         "track 2, byte 39: a data byte without a status"},
        {one_track({0x00, 0x90, 0x3C, 0x80}), "byte 25: a data byte above 127"},
        {one_track({0x00, 0xF8}), "byte 23: a system message"},
        {one_track({0xFF, 0xFF, 0xFF, 0xFF, 0x00}), "byte 22: a delta time has more than four"},
        {one_track({0x00, 0xF0, 0x7F}), "a system exclusive message is cut off"},
        {one_track({0x00, 0xFF, 0x01, 0xFF, 0xFF, 0xFF, 0x7F}), "a meta event is cut off"},
        {one_track({0x00, 0xFF, 0x80, 0x00}), "a meta event has a type above 127"},
        {one_track({0x00, 0xFF, 0x51, 0x03, 0, 0, 0}), "a tempo is 0"},
        {one_track({0x00, 0xFF, 0x51, 0x02, 0, 1}), "a tempo has a length"},
        {one_track({0x00, 0xFF, 0x2F, 0x01, 0}), "an end of track has a length"},
        {one_track({0xFF, 0xFF, 0xFF, 0x7F, 0x90, 1, 1}), "longer than 12 hours"},
    };
    for (const Case& c : cases)
        EXPECT_THAT(error_of(c.file), HasSubstr(c.message));
    SmfBytes extra = make_smf(0, 96, {END});
    append_chunk(extra, "MTrk", END);
    EXPECT_THAT(error_of(extra), HasSubstr("byte 26: more tracks than the 1"));
}

TEST(SmfReader, EndsAtTwelveHours) {
    // One tick a second: 16,384 ticks for each of the first two deltas.
    const auto song_of = [](unsigned last_delta) {
        return make_smf(
            0, 0xE201,
            {{0x81, 0x80, 0x00, 0x90, 1, 1, 0x81, 0x80, 0x00, 0x80, 1, 1,
              uint8_t(0x80U | (last_delta >> 14)), uint8_t(0x80U | (last_delta >> 7 & 0x7FU)),
              uint8_t(last_delta & 0x7FU), 0xFF, 0x2F, 0x00}});
    };
    const unsigned rest = 12 * 3600 * 30 - 2 * 16384;
    EXPECT_EQ(read_song(song_of(rest)).end_time, 12U * 3600 * 44100);
    EXPECT_THAT(error_of(song_of(rest + 1)), HasSubstr("12 hours"));
}

} // namespace

} // namespace tarquil

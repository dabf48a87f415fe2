// Plays one song in every format at several rates and block sizes, and renders it to a file: prints
// a table of hashes, and fails when those of a rate differ.
//
//   format_table TARQUIL    the program that renders

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <map>
#include <stdexcept>

#include "common/load_string.h"
#include "softsynth/rate/rate_ratio.h"
#include "tests/formats/drivers/format_driver.h"
#include "tests/midi/smf/smf_builder.h"
#include "tests/temp_directory.h"

namespace tarquil {

namespace {

constexpr uint32_t RATES[] = {44100, 48000, 88200, 96000};
constexpr uint32_t BLOCKS[] = {32, 64, 333, 1024, 0}; // 0: of random lengths
// VST 2 runs the engine in the host's blocks, which lie on this grid or give other bytes.
constexpr uint32_t GRID = 64;
constexpr int SHOWN_BITS = 32;

struct Format {
    const char* name;
    std::unique_ptr<FormatDriver> (*start)();
    bool is_at_any_rate;
};
constexpr Format FORMATS[] = {{"VST 2", drive_vst2, false},
                              {"CLAP", drive_clap, true},
                              {"VST 3", drive_vst3, true},
                              {"LV2", drive_lv2, true}};

// Two seconds and the sound behind them, in engine frames.
constexpr uint32_t TABLE_FRAMES = 110250;

constexpr uint32_t LAST_NOTE = 75000;
constexpr unsigned CONTROLLERS[] = {1, 7, 10, 11, 64, 71, 74, 91, 93};

// Seven bits a byte, the highest first.
void append_delta(SmfBytes& bytes, uint32_t ticks) {
    for (unsigned shift = 28; shift > 0; shift -= 7) {
        if (ticks >> shift != 0)
            bytes.push_back(uint8_t((ticks >> shift & 0x7FU) | 0x80U));
    }
    bytes.push_back(uint8_t(ticks & 0x7FU));
}

bool has_two_bytes(const SongMessage& message) {
    return (message.bytes[0] & 0xF0U) == 0xC0;
}

// General MIDI on all channels: notes, drums, programs, bends and controllers, each at an engine
// frame of its own, since formats differ in what comes first within a frame.
std::vector<SongMessage> table_song() {
    std::mt19937 random(11);
    const auto below = [&](unsigned count) { return unsigned(random() % count); };
    std::map<uint32_t, SongMessage> song;
    const auto add = [&](uint32_t frame, unsigned status, unsigned data1, unsigned data2) {
        while (song.contains(frame))
            frame++;
        song[frame] = {frame, {uint8_t(status), uint8_t(data1), uint8_t(data2)}};
    };
    for (unsigned channel = 0; channel < 16; channel++)
        add(channel, 0xC0U | channel, channel == 9 ? 0 : below(128), 0);
    for (uint32_t frame = 100; frame < LAST_NOTE; frame += 50 + below(700)) {
        const unsigned channel = below(16);
        const unsigned key = 36 + below(48);
        if (below(16) == 0)
            add(frame, 0xC0U | channel, channel == 9 ? 0 : below(128), 0);
        if (below(4) == 0)
            add(frame, 0xE0U | channel, below(128), below(128));
        if (below(3) == 0)
            add(frame, 0xB0U | channel, CONTROLLERS[below(std::size(CONTROLLERS))], below(128));
        add(frame, 0x90U | channel, key, 1 + below(127));
        add(frame + 500 + below(12000), 0x80U | channel, key, 64);
    }
    std::vector<SongMessage> messages;
    for (const auto& [frame, message] : song)
        messages.push_back(message);
    return messages;
}

// As a MIDI file whose ticks are engine frames.
SmfBytes midi_file(const std::vector<SongMessage>& song) {
    SmfBytes track;
    uint32_t time = 0;
    for (const SongMessage& message : song) {
        append_delta(track, message.frame - time);
        time = message.frame;
        track.insert(track.end(), message.bytes.begin(),
                     message.bytes.end() - (has_two_bytes(message) ? 1 : 0));
    }
    append_delta(track, 2 * TABLE_FRAMES - time);
    track.insert(track.end(), {0xFF, 0x2F, 0});
    return make_smf(0, uint32_t(SAMPLE_RATE) / 2, {track}); // two quarter notes a second
}

RateRatio ratio_of(uint32_t rate) {
    return RateRatio::of(rate).value();
}

// The song's messages on the frames of a host at this rate.
std::vector<SongMessage> song_at(uint32_t rate) {
    std::vector<SongMessage> song = table_song();
    const RateRatio ratio = ratio_of(rate);
    uint32_t frame = 0;
    for (SongMessage& message : song) {
        while (ratio.engine_time(frame) < message.frame)
            frame++;
        message.frame = frame;
    }
    return song;
}

uint32_t frames_at(uint32_t rate) {
    return uint32_t(ratio_of(rate).host_frame_from(TABLE_FRAMES));
}

// Without the delay that the plug-in tells the host.
uint64_t play(FormatDriver& plugin, uint32_t rate, uint32_t block) {
    constexpr uint32_t MAX_LATENCY = 1024;
    const std::vector<SongMessage> song = song_at(rate);
    const uint32_t end = frames_at(rate) + MAX_LATENCY;
    std::vector<float> left(end);
    std::vector<float> right(end);
    std::mt19937 random(rate);
    size_t next = 0;
    plugin.activate(rate);
    for (uint32_t begin = 0; begin < end;) {
        const uint32_t wanted = block != 0 ? block : uint32_t(random() % 1025);
        const uint32_t frames = std::min(wanted, end - begin);
        for (; next < song.size() && song[next].frame < begin + frames; next++)
            plugin.add({song[next].frame - begin, song[next].bytes});
        plugin.run(left.data() + begin, right.data() + begin, frames);
        begin += frames;
    }
    const auto first = ptrdiff_t(plugin.latency_frames());
    const auto last = first + ptrdiff_t(frames_at(rate));
    return StereoSound{{left.begin() + first, left.begin() + last},
                       {right.begin() + first, right.begin() + last}}
        .hash();
}

uint64_t render(const std::string& program, uint32_t rate) {
    const TempDirectory folder;
    const std::string song = folder.path("song.mid");
    const std::string sound = folder.path("song.wav");
    const SmfBytes notes = midi_file(table_song());
    save_file_to_string(song, std::string(notes.begin(), notes.end()));
    const std::string command = "'" + program + "' render --quiet --bits float --tail 0 --rate " +
                                std::to_string(rate) + " '" + song + "' '" + sound + "'";
    if (std::system(command.c_str()) != 0) // NOLINT(cert-env33-c,concurrency-mt-unsafe)
        throw std::runtime_error("failed: " + command);
    std::string bytes;
    load_file_to_string(sound, bytes);
    const size_t data = bytes.find("data") + 8;
    const size_t frames = frames_at(rate);
    if (data < 8 || bytes.size() - data < 2 * frames * sizeof(float))
        throw std::runtime_error("the rendered file is too short");
    StereoSound rendered;
    for (size_t i = 0; i < 2 * frames; i++) {
        float sample = 0;
        std::memcpy(&sample, bytes.data() + data + i * sizeof(float), sizeof(float));
        (i % 2 == 0 ? rendered.left : rendered.right).push_back(sample);
    }
    return rendered.hash();
}

void print_row(uint32_t rate, const char* name, const std::vector<uint64_t>& hashes) {
    std::printf("| %u | %s |", rate, name);
    for (const uint64_t hash : hashes)
        std::printf(" %08x |", unsigned(hash >> SHOWN_BITS));
    std::printf("\n");
    std::fflush(stdout);
}

// True when all of the rate's hashes are equal.
bool compare(const std::string& program, uint32_t rate) {
    const uint64_t wanted = render(program, rate);
    bool is_equal = true;
    print_row(rate, "`tarquil render`", std::vector<uint64_t>(std::size(BLOCKS), wanted));
    for (const Format& format : FORMATS) {
        if (!format.is_at_any_rate && rate != uint32_t(SAMPLE_RATE))
            continue;
        std::vector<uint64_t> hashes;
        for (const uint32_t block : BLOCKS) {
            hashes.push_back(play(*format.start(), rate, block));
            const bool is_on_grid = block != 0 && block % GRID == 0;
            if ((format.is_at_any_rate || is_on_grid) && hashes.back() != wanted)
                is_equal = false;
        }
        print_row(rate, format.name, hashes);
    }
    return is_equal;
}

int run(const std::string& program) {
    std::puts(
        "| Hz | | 32 | 64 | 333 | 1024 | random, 0 to 1024 |\n|---:|---|---|---|---|---|---|");
    bool is_equal = true;
    for (const uint32_t rate : RATES)
        is_equal = compare(program, rate) && is_equal;
    if (!is_equal)
        std::fputs("FAILED the hashes of a rate differ\n", stderr);
    return is_equal ? 0 : 1;
}

} // namespace

} // namespace tarquil

int main(int argc, char** argv) {
    if (argc != 2) {
        std::fputs("usage: format_table TARQUIL\n", stderr);
        return 2;
    }
    try {
        return tarquil::run(argv[1]);
    } catch (const std::exception& problem) {
        std::fprintf(stderr, "FAILED %s\n", problem.what());
        return 1;
    }
}

// Compares the golden renders with their stored references, or writes new ones.
//
//   tarquil_golden [--update] [--data DIR] [--song SONG.mid --bank BANK.tqb] [NAME ...]
//   tarquil_golden --levels [NAME ...]
//
// Without names all scenes are rendered, and the song if it is given.  A row per sound: signal-to-
// noise ratio over the stored frames, peak difference, and RMS and peak of the whole against the
// stored numbers.  --levels renders the scenes with every level of the kernels instead, which must
// agree with the scalar one in every bit.  Exit status 0: all agree; 1: one differs or is missing;
// 2: usage.

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <cstring>
#include <limits>
#include <string>
#include <vector>

#include "common/failure.h"
#include "instrument/checked_load.h"
#include "midi/smf/song_file.h"
#include "softsynth/kernels/kernel_levels.h"
#include "tests/golden/golden_store.h"
#include "tests/golden/scenes.h"
#include "tools/render/engine_driver.h"

namespace tarquil {

namespace {

constexpr double LOWEST_SNR_DB = 100;
constexpr double LARGEST_DIFFERENCE = 1e-4;
// Of RMS and peak; they are stored with nine digits.
constexpr double LARGEST_RATIO_ERROR = 1e-5;

// Of a scene every 13th frame is stored, of the song every 61st: enough for the ratio, small enough
// to keep.  Both are prime, so that no beat or block length hides between them.
constexpr unsigned SCENE_STRIDE = 13;
constexpr unsigned SONG_STRIDE = 61;

struct Options {
    bool update = false;
    bool levels = false;
    std::string data = GOLDEN_DATA_DIRECTORY;
    std::string song;
    std::string bank;
    std::vector<std::string> names;
};

struct SoundComparison {
    double snr_db = 0; // energy of the reference over that of the difference; inf when equal
    double peak_difference = 0;
    bool same_length = false;
};

// Over the shorter length.
SoundComparison compare_sounds(const std::vector<float>& reference,
                               const std::vector<float>& sound) {
    SoundComparison result;
    result.same_length = reference.size() == sound.size();
    const size_t length = std::min(reference.size(), sound.size());
    double energy = 0;
    double error = 0;
    for (size_t i = 0; i < length; i++) {
        const double difference = double(sound[i]) - double(reference[i]);
        energy += double(reference[i]) * double(reference[i]);
        error += difference * difference;
        result.peak_difference = std::max(result.peak_difference, std::fabs(difference));
    }
    result.snr_db =
        error == 0 ? std::numeric_limits<double>::infinity() : 10 * std::log10(energy / error);
    return result;
}

double rms(const std::vector<float>& sound) {
    double energy = 0;
    for (const float sample : sound)
        energy += double(sample) * double(sample);
    return sound.empty() ? 0 : std::sqrt(energy / double(sound.size()));
}

bool near_ratio(double value, double reference) {
    return std::fabs(value - reference) <= LARGEST_RATIO_ERROR * std::max(reference, 1e-9);
}

bool update(const GoldenStore& store, const std::string& name, const std::vector<float>& sound,
            unsigned stride) {
    const GoldenNumbers numbers = {sound.size() / 2, rms(sound), double(peak(sound))};
    std::printf("%-24s rms %.9f peak %.9f (new)\n", name.c_str(), numbers.rms, numbers.peak);
    return store.write_frames(name, GoldenStore::pick_frames(sound, stride)) &&
           store.write_numbers(name, numbers);
}

bool compare(const GoldenStore& store, const std::string& name, const std::vector<float>& sound,
             unsigned stride) {
    GoldenNumbers numbers;
    const std::vector<float> reference = store.read_frames(name);
    if (reference.empty() || !store.read_numbers(name, numbers)) {
        std::printf("%-24s has no reference\n", name.c_str());
        return false;
    }
    const SoundComparison comparison =
        compare_sounds(reference, GoldenStore::pick_frames(sound, stride));
    const bool agrees =
        comparison.same_length && numbers.frames == sound.size() / 2 &&
        comparison.snr_db >= LOWEST_SNR_DB && comparison.peak_difference <= LARGEST_DIFFERENCE &&
        near_ratio(rms(sound), numbers.rms) && near_ratio(double(peak(sound)), numbers.peak);
    std::printf("%-24s SNR %6.1f dB, peak difference %.2e, rms %.9f (%.9f), peak %.9f (%.9f)%s\n",
                name.c_str(), comparison.snr_db, comparison.peak_difference, rms(sound),
                numbers.rms, double(peak(sound)), numbers.peak, agrees ? "" : "  DIFFERS");
    return agrees;
}

// Plays a MIDI file with a bank as the render command does, and two seconds more; empty, with a
// message, when one of them does not load.
std::vector<float> play_song(const std::string& song_path, const std::string& bank_path) {
    try {
        const Song song = load_song(song_path);
        Orchestra orchestra;
        orchestra.channels.set();
        if (load_bank_checked(orchestra.bank, bank_path) != 0) {
            std::fprintf(stderr, "%s does not load\n", bank_path.c_str());
            return {};
        }
        EngineDriver driver(song, orchestra, nullptr, 1);
        const uint32_t num_blocks = (song.end_time + 2 * SAMPLE_RATE) / driver.block();
        std::vector<float> sound(size_t(2) * driver.block() * num_blocks);
        for (uint32_t i = 0; i < num_blocks; i++)
            driver.render(sound.data() + size_t(2) * driver.block() * i, [] {});
        return sound;
    } catch (const Failure& failure) {
        std::fprintf(stderr, "%s\n", failure.what());
        return {};
    }
}

// Renders with each level; the first one is the scalar one.
bool levels_agree(const Scene& scene) {
    std::vector<float> scalar;
    bool agree = true;
    std::printf("%-24s", scene.name.c_str());
    for (const KernelLevel& level : kernel_levels()) {
        use_kernel_level(level);
        const std::vector<float> sound = render_scene(scene);
        if (scalar.empty())
            scalar = sound;
        const bool same =
            sound.size() == scalar.size() &&
            std::memcmp(sound.data(), scalar.data(), sound.size() * sizeof(float)) == 0;
        std::printf(" %s%s", level.name, same ? "" : " DIFFERS");
        agree = agree && same;
    }
    std::printf("\n");
    return agree;
}

bool parse(int argc, char** argv, Options& options) {
    for (int i = 1; i < argc; i++) {
        const std::string argument = argv[i];
        const bool has_value = i + 1 < argc;
        if (argument == "--update")
            options.update = true;
        else if (argument == "--levels")
            options.levels = true;
        else if (argument == "--data" && has_value)
            options.data = argv[++i];
        else if (argument == "--song" && has_value)
            options.song = argv[++i];
        else if (argument == "--bank" && has_value)
            options.bank = argv[++i];
        else if (argument.rfind("--", 0) == 0)
            return false;
        else
            options.names.push_back(argument);
    }
    return options.song.empty() == options.bank.empty();
}

} // namespace

} // namespace tarquil

int main(int argc, char** argv) {
    using namespace tarquil;
    Options options;
    if (!parse(argc, argv, options)) {
        std::fprintf(stderr,
                     "usage: tarquil_golden [--update] [--data DIR] [--song SONG.mid --bank "
                     "BANK.tqb] [NAME ...]\n"
                     "       tarquil_golden --levels [NAME ...]\n");
        return 2;
    }
    const GoldenStore store(options.data);
    const auto wanted = [&](const std::string& name) {
        return options.names.empty() ||
               std::find(options.names.begin(), options.names.end(), name) != options.names.end();
    };
    int failures = 0;
    const auto check = [&](const std::string& name, const std::vector<float>& sound,
                           unsigned stride) {
        const bool good = options.update ? update(store, name, sound, stride)
                                         : compare(store, name, sound, stride);
        failures += int(!good);
    };
    for (const Scene& scene : golden_scenes()) {
        if (!wanted(scene.name))
            continue;
        if (options.levels)
            failures += int(!levels_agree(scene));
        else
            check(scene.name, render_scene(scene), SCENE_STRIDE);
    }
    if (!options.song.empty() && wanted("demo-song"))
        check("demo-song", play_song(options.song, options.bank), SONG_STRIDE);
    return failures == 0 ? 0 : 1;
}

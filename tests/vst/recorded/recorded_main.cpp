// Plays random sequences through a VST 2 module and compares what comes back with a recording.
//
//   tarquil_recorded [--plugin FILE.so] [--update COUNT] [--every N] RECORDING
//
// The recording has a line for each sequence: its seed and a hash of all bytes of sound, presets
// and values that the module gave.  --update writes that of seeds 1 to COUNT; --every plays one in
// N. Exit status 0: all agree; 1: some differ; 2: usage.

#include <cinttypes>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <fstream>
#include <string>

#include "tests/vst/recorded/sequence.h"

namespace tarquil {

namespace {

struct Options {
    std::string recording;
    uint32_t update = 0;
    uint32_t every = 1;
};

bool parse(int argc, char** argv, Options& options) {
    for (int i = 1; i < argc; i++) {
        const std::string argument = argv[i];
        const char* value = i + 1 < argc ? argv[i + 1] : nullptr;
        if (argument == "--plugin" && value != nullptr)
            PluginHost::path = argv[++i];
        else if (argument == "--update" && value != nullptr)
            options.update = uint32_t(std::strtoul(argv[++i], nullptr, 10));
        else if (argument == "--every" && value != nullptr)
            options.every = uint32_t(std::strtoul(argv[++i], nullptr, 10));
        else if (argument.starts_with("--") || !options.recording.empty())
            return false;
        else
            options.recording = argument;
    }
    return !options.recording.empty() && options.every > 0;
}

int update(const Options& options) {
    std::ofstream out(options.recording);
    for (uint32_t seed = 1; seed <= options.update; seed++) {
        char line[64];
        std::snprintf(line, sizeof line, "%u %016" PRIx64 "\n", seed,
                      RecordedSequence(seed).play());
        out << line;
    }
    return out.flush() ? 0 : 1;
}

int compare(const Options& options) {
    std::ifstream in(options.recording);
    uint32_t seed = 0;
    std::string expected;
    uint32_t passed = 0;
    uint32_t failed = 0;
    for (uint32_t line = 0; in >> seed >> expected; line++) {
        if (line % options.every != 0)
            continue;
        const uint64_t hash = RecordedSequence(seed).play();
        const bool same = hash == std::strtoull(expected.c_str(), nullptr, 16);
        (same ? passed : failed)++;
        if (!same)
            std::printf("seed %u differs: %016" PRIx64 ", recorded %s\n", seed, hash,
                        expected.c_str());
    }
    std::printf("%u passed, %u failed\n", passed, failed);
    return passed > 0 && failed == 0 ? 0 : 1;
}

} // namespace

} // namespace tarquil

int main(int argc, char** argv) {
    tarquil::Options options;
    if (!tarquil::parse(argc, argv, options)) {
        std::fprintf(stderr, "usage: tarquil_recorded [--plugin FILE.so] [--update COUNT] "
                             "[--every N] RECORDING\n");
        return 2;
    }
    return options.update > 0 ? tarquil::update(options) : tarquil::compare(options);
}

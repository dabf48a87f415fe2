// A whole song through the engine, for the golden comparison.

#include "tests/golden/golden_song.h"

#include <cstdio>

#include "common/failure.h"
#include "instrument/checked_load.h"
#include "midi/smf/song_file.h"
#include "tools/render/engine_driver.h"

namespace tarquil {

namespace {

constexpr uint32_t TAIL = 2 * SAMPLE_RATE;

} // namespace

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
        const uint32_t num_blocks = (song.end_time + TAIL) / driver.block();
        std::vector<float> sound(size_t(2) * driver.block() * num_blocks);
        for (uint32_t i = 0; i < num_blocks; i++)
            driver.render(sound.data() + size_t(2) * driver.block() * i, [] {});
        return sound;
    } catch (const Failure& failure) {
        std::fprintf(stderr, "%s\n", failure.what());
        return {};
    }
}

} // namespace tarquil

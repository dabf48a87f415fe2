// Rendering of a song into its sound files.

#include "tools/render/renderer.h"

#include <chrono>
#include <memory>
#include <utility>

#include "tools/render/interruption.h"
#include "tools/render/main_output.h"
#include "tools/render/plugin_driver.h"
#include "tools/render/progress_bar.h"
#include "tools/render/stem_outputs.h"
#include "tools/render/tail.h"

namespace tarquil {

namespace {

// Drives the instrument until the tail ends.  Each block is written while the next one is rendered,
// where that goes on several threads.
void play(const RenderOptions& options, const Song& song, SongDriver& driver, MainOutput& output,
          StemOutputs* stems) {
    Tail tail(song.end_time, options.tail);
    ProgressBar progress(!options.quiet, song.end_time);
    alignas(16) float blocks[2][2 * MAX_NUM_SAMPLES];
    float* next = blocks[0];
    const float* last = blocks[1];
    uint32_t num_frames = 0; // of the last block
    const auto write_last = [&] {
        output.write(last, num_frames);
        if (stems != nullptr && num_frames > 0)
            stems->write(num_frames);
    };
    for (uint32_t time = 0; time < tail.get_end(); time += num_frames) {
        Interruption::check();
        driver.render(next, write_last);
        num_frames = tail.add(next, driver.block(), time);
        last = std::exchange(next, blocks[next == blocks[0] ? 1 : 0]);
        progress.advance_to(time + num_frames);
    }
    write_last();
}

} // namespace

RenderResult render_song(const RenderOptions& options, const Song& song, const Orchestra& orchestra,
                         const std::shared_ptr<const GmSet>& set) {
    const auto start = std::chrono::steady_clock::now();
    const Interruption interruption;
    const AudioFormat format = choose_audio_format(options.audio);
    const uint32_t max_frames = Tail(song.end_time, options.tail).get_end();
    MainOutput output({.path = options.audio.path, .standard_output = options.standard_output},
                      format, max_frames, options.normalize_dbfs, !options.quiet || options.json);
    std::unique_ptr<SongDriver> driver;
    EngineDriver* general_midi = nullptr;
    std::unique_ptr<StemOutputs> stems;
    if (!options.plugin_path.empty()) {
        driver = std::make_unique<PluginDriver>(
            song, options, options.bank_path.empty() ? nullptr : &orchestra.bank);
    } else {
        auto engine =
            std::make_unique<EngineDriver>(song, orchestra, set, options.seed, options.threads);
        if (!options.stem_folder.empty()) {
            engine->keep_channels();
            stems = std::make_unique<StemOutputs>(*engine, options.stem_folder, format,
                                                  find_used_channels(song, orchestra.channels),
                                                  max_frames);
        }
        general_midi = set != nullptr ? engine.get() : nullptr;
        driver = std::move(engine);
    }

    play(options, song, *driver, output, stems.get());
    output.finish();
    if (stems)
        stems->finish();
    output.commit();
    if (stems)
        stems->commit();

    RenderResult result{.format = format, .num_frames = output.get_num_frames()};
    if (const LoudnessMeter* meter = output.get_meter()) {
        result.peak_dbfs = meter->peak_dbfs();
        result.loudness_lufs = meter->loudness_lufs();
    }
    if (general_midi != nullptr) {
        result.report = general_midi->general_midi().report();
        result.most_voices = general_midi->general_midi().get_most_voices();
    }
    const std::chrono::duration<double> elapsed = std::chrono::steady_clock::now() - start;
    result.times_real_time = double(result.num_frames) / format.rate / elapsed.count();
    return result;
}

} // namespace tarquil

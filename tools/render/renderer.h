// Rendering of a song into its sound files.

#pragma once

#include <cstdint>
#include <memory>
#include <optional>

#include "midi/gm/gm_report.h"
#include "midi/smf/smf_reader.h"
#include "tools/audio/audio_format.h"
#include "tools/render/engine_driver.h"
#include "tools/render/render_options.h"

namespace tarquil {

struct RenderResult {
    AudioFormat format;
    uint64_t num_frames = 0;                        // at the file's rate
    std::optional<double> peak_dbfs = std::nullopt; // when measured
    std::optional<double> loudness_lufs = std::nullopt;
    double times_real_time = 0.0;
    std::optional<GmReport> report = std::nullopt; // of the General MIDI dialect
    unsigned most_voices = 0;                      // of one of its engines
};

// Writes the files that `options` names; all of them, or none and a Failure.
// With `set` the song's messages are General MIDI.
RenderResult render_song(const RenderOptions& options, const Song& song, const Orchestra& orchestra,
                         const std::shared_ptr<const GmSet>& set);

} // namespace tarquil

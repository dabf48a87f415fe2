// The audio side of a player: what it tells windows.

#include <algorithm>
#include <cmath>

#include "player/player_audio.h"

namespace tarquil {

uint32_t PlayerAudio::channels_of_edited_program() const {
    const unsigned program = link.edited_program.load(std::memory_order_relaxed);
    if (plays_gm())
        return gm->channels_of(program);
    uint32_t channels = 0;
    for (unsigned channel = 0; channel < playing.size(); channel++) {
        if (playing[channel] == program)
            channels |= 1U << channel;
    }
    return channels;
}

void PlayerAudio::follow_watch(Tarquil& engine) {
    const OutputWatch watch = link.meters.output_watch.load(std::memory_order_acquire);
    if (watch == followed_watch)
        return;
    if (watch == OutputWatch::PROGRAM)
        engine.set_channel_taps(link.meters.taps.load(std::memory_order_acquire));
    else if (followed_watch == OutputWatch::PROGRAM)
        engine.set_channel_taps(nullptr);
    followed_watch = watch;
}

void PlayerAudio::show_run(Tarquil& engine, uint32_t frames) {
    Meters& meters = link.meters;
    if (!meters.watched.load(std::memory_order_relaxed))
        return;
    const uint32_t channels = channels_of_edited_program();
    since_view += frames;
    if (since_view >= Meters::VIEW_PERIOD) {
        since_view = 0;
        meters.note.write(engine.newest_note(channels, curr_time, frames));
    }
    if (followed_watch != OutputWatch::PROGRAM)
        return;
    StereoBuffer* const taps = meters.taps.load(std::memory_order_relaxed);
    StereoBuffer* sum = nullptr;
    for (unsigned channel = 0; channels >> channel != 0; channel++) {
        if ((channels >> channel & 1U) == 0)
            continue;
        if (sum == nullptr)
            sum = taps + channel;
        else
            *sum += taps[channel];
    }
    if (sum == nullptr) { // no channel plays it
        sum = taps;
        sum->nullify();
    }
    meters.output.write({sum->get_first_left_sample_ptr(), size_t(2) * frames});
}

void PlayerAudio::measure(Tarquil& engine, const float* frames, uint32_t num_frames) {
    float left = 0;
    float right = 0;
    for (uint32_t i = 0; i < num_frames; i++) {
        left = std::max(left, std::fabs(frames[2 * i]));
        right = std::max(right, std::fabs(frames[2 * i + 1]));
    }
    Meters& meters = link.meters;
    // A peak that is taken meanwhile may be shown twice, which nobody sees.
    if (left > meters.peak_left.load(std::memory_order_relaxed))
        meters.peak_left.store(left, std::memory_order_relaxed);
    if (right > meters.peak_right.load(std::memory_order_relaxed))
        meters.peak_right.store(right, std::memory_order_relaxed);
    if (followed_watch == OutputWatch::WHOLE)
        meters.output.write({frames, size_t(2) * num_frames});
    const MultiCompressor& compressor = engine.get_compressor();
    for (unsigned band = 0; band < MC_N_BANDS; band++) {
        meters.band_levels[band].store(compressor.get_level(band), std::memory_order_relaxed);
        meters.band_gains[band].store(compressor.get_attenuation(band), std::memory_order_relaxed);
    }
    meters.voices.store(plays_gm() ? int(gm->voices()) : engine.get_voice_pool().voices_used(),
                        std::memory_order_relaxed);
}

} // namespace tarquil

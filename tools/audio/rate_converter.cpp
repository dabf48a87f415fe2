// Conversion of a stereo stream from the engine's sample rate to a file's.

#include "tools/audio/rate_converter.h"

#include <string>
#include <utility>

#include "softsynth/parameters/constants.h"
#include "tools/failure.h"

namespace tarquil {

namespace {

constexpr long CHUNK_FRAMES = 4096;

} // namespace

RateConverter::RateConverter(int target_rate, FrameSink frame_sink)
    : ratio(double(target_rate) / SAMPLE_RATE), sink(std::move(frame_sink)) {
    if (target_rate == SAMPLE_RATE)
        return;
    int error = 0;
    state.reset(src_new(SRC_SINC_BEST_QUALITY, 2, &error));
    if (!state)
        throw Failure(STATUS_CANNOT, std::string("sample rate: ") + src_strerror(error));
    converted.resize(2 * CHUNK_FRAMES);
}

void RateConverter::write(const float* frames, uint64_t num_frames) {
    if (state)
        convert(frames, num_frames, false);
    else
        sink(frames, num_frames);
}

void RateConverter::finish() {
    const float nothing[2] = {};
    if (state)
        convert(nothing, 0, true);
}

void RateConverter::convert(const float* frames, uint64_t num_frames, bool is_end) {
    SRC_DATA data{};
    data.data_in = frames;
    data.input_frames = long(num_frames);
    data.data_out = converted.data();
    data.output_frames = CHUNK_FRAMES;
    data.src_ratio = ratio;
    data.end_of_input = is_end ? 1 : 0;
    do {
        const int error = src_process(state.get(), &data);
        if (error != 0)
            throw Failure(STATUS_CANNOT, std::string("sample rate: ") + src_strerror(error));
        if (data.output_frames_gen > 0)
            sink(converted.data(), uint64_t(data.output_frames_gen));
        data.data_in += 2 * data.input_frames_used;
        data.input_frames -= data.input_frames_used;
    } while (data.input_frames > 0 || data.output_frames_gen == CHUNK_FRAMES);
}

} // namespace tarquil

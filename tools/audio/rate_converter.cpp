// Conversion of a stereo stream from the engine's sample rate to a file's.

#include "tools/audio/rate_converter.h"

#include <algorithm>
#include <string>
#include <utility>

#include "common/failure.h"
#include "softsynth/parameters/constants.h"

namespace tarquil {

namespace {

constexpr long CHUNK_FRAMES = 4096;

} // namespace

RateConverter::RateConverter(int target_rate, FrameSink frame_sink)
    : ratio(RateRatio::of(target_rate).value()), sink(std::move(frame_sink)) {
    if (target_rate == SAMPLE_RATE)
        return;
    converted.resize(2 * CHUNK_FRAMES);
    if (target_rate > SAMPLE_RATE) {
        stream.activate(ratio, 0, CHUNK_FRAMES, 0);
        left.resize(CHUNK_FRAMES);
        right.resize(CHUNK_FRAMES);
        return;
    }
    int error = 0;
    state.reset(src_new(SRC_SINC_BEST_QUALITY, 2, &error));
    if (!state)
        throw Failure(STATUS_CANNOT, std::string("sample rate: ") + src_strerror(error));
}

void RateConverter::write(const float* frames, uint64_t num_frames) {
    if (state)
        lower(frames, num_frames, false);
    else if (!ratio.is_one())
        raise(frames, num_frames);
    else
        sink(frames, num_frames);
}

void RateConverter::finish() {
    if (state) {
        const float nothing[2] = {};
        lower(nothing, 0, true);
    } else if (!ratio.is_one()) {
        // What lies before the end, which sounds into the silence behind it.
        const auto end = uint64_t(ratio.host_frame_from(int64_t(stream.frames_written())));
        const std::vector<float> silence(2 * CHUNK_FRAMES);
        stream.write(silence.data(), CHUNK_FRAMES);
        send_raised(end - stream.frames_read());
    }
}

void RateConverter::raise(const float* frames, uint64_t num_frames) {
    while (num_frames > 0) {
        const auto count = uint32_t(std::min(num_frames, uint64_t(CHUNK_FRAMES)));
        stream.write(frames, count);
        send_raised(stream.readable());
        frames += 2 * uint64_t(count);
        num_frames -= count;
    }
}

void RateConverter::send_raised(uint64_t num_frames) {
    while (num_frames > 0) {
        const auto count = uint32_t(std::min(num_frames, uint64_t(CHUNK_FRAMES)));
        stream.read(left.data(), right.data(), count);
        for (size_t i = 0; i < count; i++) {
            converted[2 * i] = left[i];
            converted[2 * i + 1] = right[i];
        }
        sink(converted.data(), count);
        num_frames -= count;
    }
}

void RateConverter::lower(const float* frames, uint64_t num_frames, bool is_end) {
    SRC_DATA data{};
    data.data_in = frames;
    data.input_frames = long(num_frames);
    data.data_out = converted.data();
    data.output_frames = CHUNK_FRAMES;
    data.src_ratio = double(ratio.host_frames) / double(ratio.engine_frames);
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

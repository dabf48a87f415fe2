// Sound as the bytes that a device takes.

#include "standalone/sample_format.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <cstring>

namespace tarquil {

namespace {

int32_t to_integer(float sample, int num_bits) {
    const double full_scale = double((int64_t(1) << (num_bits - 1)) - 1);
    return int32_t(std::lrint(std::clamp(double(sample), -1.0, 1.0) * full_scale));
}

void write_sample(SampleFormat format, float sample, uint8_t* bytes) {
    switch (format) {
    case SampleFormat::FLOAT:
        std::memcpy(bytes, &sample, sizeof(sample));
        return;
    case SampleFormat::INT32:
    case SampleFormat::INT24: {
        const int32_t value = to_integer(sample, format == SampleFormat::INT32 ? 32 : 24);
        std::memcpy(bytes, &value, sizeof(value));
        return;
    }
    case SampleFormat::INT24_PACKED: {
        const int32_t value = to_integer(sample, 24);
        constexpr size_t FIRST = std::endian::native == std::endian::big ? 1 : 0;
        uint8_t whole[sizeof(value)];
        std::memcpy(whole, &value, sizeof(value));
        std::memcpy(bytes, whole + FIRST, 3);
        return;
    }
    case SampleFormat::INT16: {
        const auto value = int16_t(to_integer(sample, 16));
        std::memcpy(bytes, &value, sizeof(value));
        return;
    }
    }
}

} // namespace

size_t sample_bytes(SampleFormat format) {
    if (format == SampleFormat::INT16)
        return 2;
    return format == SampleFormat::INT24_PACKED ? 3 : 4;
}

void write_frames(SampleFormat format, unsigned num_channels, const float* left, const float* right,
                  uint32_t frames, void* bytes) {
    auto* place = static_cast<uint8_t*>(bytes);
    const size_t size = sample_bytes(format);
    for (uint32_t i = 0; i < frames; i++) {
        for (unsigned channel = 0; channel < num_channels; channel++, place += size) {
            float sample = 0;
            if (num_channels == 1)
                sample = 0.5F * (left[i] + right[i]);
            else if (channel < 2)
                sample = channel == 0 ? left[i] : right[i];
            write_sample(format, sample, place);
        }
    }
}

} // namespace tarquil

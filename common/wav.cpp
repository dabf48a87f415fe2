// Reading of mono 16-bit PCM WAV data.

#include "common/wav.h"

#include <algorithm>
#include <cstdio>
#include <string_view>

#include "common/file_handle.h"

namespace tarquil {

namespace {

enum WavError {
    SUCCESS,
    CANNOT_OPEN,
    BAD_HEADER,
    NOT_PCM,
    NOT_MONO,
    NOT_16_BIT,
    GENERIC_ERROR,
    NUM_WAV_ERRORS,
};

constexpr size_t ERROR_TEXT_LENGTH = 100;
constexpr char ERROR_TEXTS[NUM_WAV_ERRORS][ERROR_TEXT_LENGTH] = {
    "Success",
    "File could not be opened",
    "Error while parsing header",
    "Not pcm format",
    "Waveform is not mono",
    "Waveform must be 16 bit. If you really need 8 bit support, tell Maro",
    "Generic error",
};

// "RIFF", size, "WAVE", then "fmt ", size and 16 bytes of format.
constexpr size_t HEADER_LENGTH = 36;

constexpr size_t CHUNK_HEADER_LENGTH = 8; // tag and size
constexpr size_t TAG_LENGTH = 4;

constexpr unsigned PCM = 1;
constexpr size_t SAMPLE_LENGTH = 2;
constexpr float FULL_SCALE = 32768.0F;

// Room taken at once for a data chunk, in samples: its size may be damaged.
constexpr size_t MAX_RESERVED = size_t(1) << 20;

unsigned read_16(const uint8_t* bytes) {
    return unsigned(bytes[0]) | unsigned(bytes[1]) << 8;
}

uint32_t read_32(const uint8_t* bytes) {
    return read_16(bytes) | read_16(bytes + 2) << 16;
}

bool has_tag(const uint8_t* bytes, std::string_view tag) {
    return std::equal(tag.begin(), tag.end(), bytes);
}

// Checks the HEADER_LENGTH bytes and stores the rate that they tell.
int parse_header(const uint8_t* header, float& sample_rate) {
    if (!has_tag(header, "RIFF") || !has_tag(header + 8, "WAVE") || !has_tag(header + 12, "fmt "))
        return BAD_HEADER;
    if (read_16(header + 20) != PCM)
        return NOT_PCM;
    if (read_16(header + 22) != 1)
        return NOT_MONO;
    if (read_16(header + 32) != SAMPLE_LENGTH) // bytes for one sample of all channels
        return NOT_16_BIT;
    sample_rate = float(read_32(header + 24));
    return SUCCESS;
}

void append_samples(const uint8_t* bytes, size_t count, std::vector<float>& samples) {
    for (size_t i = 0; i < count; i++)
        samples.push_back(float(int16_t(read_16(bytes + i * SAMPLE_LENGTH))) / FULL_SCALE);
}

} // namespace

int wav_read(const std::string& path, std::vector<float>& samples, float& sample_rate) {
    const FileHandle file(std::fopen(path.c_str(), "rb"));
    if (!file)
        return CANNOT_OPEN;
    uint8_t header[HEADER_LENGTH];
    if (std::fread(header, 1, sizeof(header), file.get()) != sizeof(header))
        return BAD_HEADER;
    const int error = parse_header(header, sample_rate);
    if (error != SUCCESS)
        return error;
    uint8_t chunk[CHUNK_HEADER_LENGTH];
    if (std::fread(chunk, 1, sizeof(chunk), file.get()) != sizeof(chunk) || !has_tag(chunk, "data"))
        return GENERIC_ERROR;
    size_t missing = read_32(chunk + TAG_LENGTH) / SAMPLE_LENGTH;
    samples.reserve(samples.size() + std::min(missing, MAX_RESERVED));
    constexpr size_t SAMPLES_AT_ONCE = 4096;
    uint8_t block[SAMPLES_AT_ONCE * SAMPLE_LENGTH];
    while (missing > 0) {
        const size_t count =
            std::fread(block, SAMPLE_LENGTH, std::min(missing, SAMPLES_AT_ONCE), file.get());
        if (count == 0)
            return GENERIC_ERROR;
        append_samples(block, count, samples);
        missing -= count;
    }
    return SUCCESS;
}

int wav_decode(const uint8_t* bytes, size_t length, std::vector<float>& samples,
               float& sample_rate) {
    if (length < HEADER_LENGTH)
        return BAD_HEADER;
    const int error = parse_header(bytes, sample_rate);
    if (error != SUCCESS)
        return error;
    size_t position = HEADER_LENGTH;
    size_t size = 0;
    for (;;) {
        if (length - position < CHUNK_HEADER_LENGTH)
            return GENERIC_ERROR;
        const uint8_t* chunk = bytes + position;
        size = read_32(chunk + TAG_LENGTH);
        position += CHUNK_HEADER_LENGTH;
        if (has_tag(chunk, "data"))
            break;
        if (size > length - position)
            return GENERIC_ERROR;
        position += size;
    }
    const size_t wanted = size / SAMPLE_LENGTH;
    const size_t count = std::min(wanted, (length - position) / SAMPLE_LENGTH);
    samples.reserve(samples.size() + count);
    append_samples(bytes + position, count, samples);
    return count == wanted ? SUCCESS : GENERIC_ERROR;
}

const char* wav_get_error_string(int code) {
    return ERROR_TEXTS[code >= 0 && code < NUM_WAV_ERRORS ? code : int(GENERIC_ERROR)];
}

} // namespace tarquil

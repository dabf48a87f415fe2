// Tests of reading WAV data from files and memory.

#include "common/wav.h"

#include <gtest/gtest.h>

#include <vector>

#include "common/load_string.h"
#include "tests/temp_directory.h"

namespace tarquil {

namespace {

std::string little_endian(uint32_t value, int length) {
    std::string bytes;
    for (int i = 0; i < length; i++)
        bytes += char(value >> (8 * i));
    return bytes;
}

std::string chunk(const std::string& tag, const std::string& data) {
    return tag + little_endian(uint32_t(data.size()), 4) + data;
}

std::string wav_head(uint32_t format, uint32_t channels, uint32_t bits) {
    const uint32_t align = channels * bits / 8;
    return "RIFF" + little_endian(0, 4) + "WAVE" +
           chunk("fmt ", little_endian(format, 2) + little_endian(channels, 2) +
                             little_endian(48000, 4) + little_endian(48000 * align, 4) +
                             little_endian(align, 2) + little_endian(bits, 2));
}

const std::string MONO_16 = wav_head(1, 1, 16);

// -32768, 32767, 1 and an odd byte at the end.
const std::string SAMPLES("\x00\x80\xff\x7f\x01\x00\x55", 7);

struct Result {
    int code = 0;
    std::vector<float> samples = {5.0F}; // shows that samples are appended
    float rate = 0.0F;
};

Result decode(const std::string& bytes) {
    const std::vector<uint8_t> exact(bytes.begin(), bytes.end());
    Result result;
    result.code = wav_decode(exact.data(), exact.size(), result.samples, result.rate);
    return result;
}

Result read(const std::string& bytes) {
    const TempDirectory directory;
    Result result;
    EXPECT_EQ(save_file_to_string(directory.path("x.wav"), bytes), 0);
    result.code = wav_read(directory.path("x.wav"), result.samples, result.rate);
    return result;
}

TEST(Wav, SamplesAreAppendedAndScaled) {
    const std::vector<float> expected = {5.0F, -1.0F, 32767.0F / 32768, 1.0F / 32768};
    for (const auto& load : {decode, read}) {
        const Result result = load(MONO_16 + chunk("data", SAMPLES));
        EXPECT_EQ(result.code, 0);
        EXPECT_EQ(result.rate, 48000.0F);
        EXPECT_EQ(result.samples, expected);
    }
    const Result long_one = read(MONO_16 + chunk("data", std::string(20001, '\0')));
    EXPECT_EQ(long_one.code, 0);
    EXPECT_EQ(long_one.samples.size(), 1U + 10000);
}

TEST(Wav, OtherFormatsAreRefused) {
    for (const auto& load : {decode, read}) {
        EXPECT_EQ(load(wav_head(3, 1, 16)).code, 3);
        EXPECT_EQ(load(wav_head(1, 2, 16)).code, 4);
        EXPECT_EQ(load(wav_head(1, 1, 8)).code, 5);
        EXPECT_EQ(load(wav_head(1, 1, 24)).code, 5);
        EXPECT_EQ(load("").code, 2);
        EXPECT_EQ(load(MONO_16.substr(0, 35)).code, 2);
        for (const size_t tag : {size_t(0), size_t(8), size_t(12)}) {
            std::string wrong = MONO_16 + chunk("data", SAMPLES);
            wrong[tag] = 'x';
            EXPECT_EQ(load(wrong).code, 2);
        }
    }
    std::vector<float> samples;
    float rate = 0.0F;
    EXPECT_EQ(wav_read("/missing", samples, rate), 1);
    EXPECT_EQ(wav_read("/tmp", samples, rate), 2);
}

TEST(Wav, OnlyMemoryMayHaveOtherChunks) {
    const std::string bytes = MONO_16 + chunk("LIST", "abc") + chunk("data", SAMPLES);
    EXPECT_EQ(decode(bytes).code, 0);
    EXPECT_EQ(decode(bytes).samples.size(), 4U);
    EXPECT_EQ(read(bytes).code, 6);
    EXPECT_EQ(decode(MONO_16 + "LIST" + little_endian(0xFFFFFFFF, 4) + "abc").code, 6);
    EXPECT_EQ(decode(MONO_16 + chunk("LIST", "abc")).code, 6);
}

TEST(Wav, DataThatEndsEarlyIsAnError) {
    const std::string bytes = MONO_16 + "data" + little_endian(0xFFFFFFFF, 4) + SAMPLES;
    for (const auto& load : {decode, read}) {
        EXPECT_EQ(load(bytes).code, 6);
        EXPECT_EQ(load(bytes).samples.size(), 4U);
        EXPECT_EQ(load(MONO_16 + "data" + little_endian(0, 3)).code, 6);
        EXPECT_EQ(load(MONO_16).code, 6);
        EXPECT_EQ(load(MONO_16).rate, 48000.0F);
    }
}

} // namespace

} // namespace tarquil

// Speech files, and the slots that they are loaded into.

#include "softsynth/lpc/speech_file.h"

#include <gtest/gtest.h>

#include "common/load_string.h"
#include "softsynth/lpc/speech_slots.h"
#include "tests/softsynth/lpc/speech_samples.h"
#include "tests/temp_directory.h"

namespace tarquil {

namespace {

constexpr size_t HEADER = 11;

// A mono WAV file of 16 bits.
std::string wav_of(const std::vector<float>& samples, uint32_t rate) {
    std::string bytes = "RIFF____WAVEfmt ";
    const auto append = [&](uint32_t value, unsigned count) {
        for (unsigned i = 0; i < count; i++)
            bytes += char(value >> (8 * i) & 0xFFU);
    };
    append(16, 4);
    append(1, 2);
    append(1, 2);
    append(rate, 4);
    append(2 * rate, 4);
    append(2, 2);
    append(16, 2);
    bytes += "data";
    append(uint32_t(2 * samples.size()), 4);
    for (const float sample : samples)
        append(uint32_t(int(sample * 32767.0F)), 2);
    return bytes;
}

} // namespace

TEST(SpeechFile, ComesBackAsItWas) {
    for (const size_t count : {0U, 1U, 300U}) {
        const Speech speech = random_speech(count, unsigned(count));
        const std::string bytes = write_speech(speech);
        EXPECT_EQ(bytes.size(), HEADER + count * SPEECH_FRAME_BYTES);
        Speech again;
        EXPECT_EQ(read_speech(bytes, again), SpeechFileError::NONE);
        EXPECT_EQ(again, speech);
    }
}

TEST(SpeechFile, DamageIsRefusedAndChangesNothing) {
    const Speech before = vowels(2, 100.0);
    const std::string good = write_speech(random_speech(3, 1));
    const auto error_of = [&](const std::string& bytes) {
        Speech speech = before;
        const SpeechFileError error = read_speech(bytes, speech);
        EXPECT_EQ(speech, before);
        return error;
    };
    for (size_t length = 4; length < good.size(); length++)
        EXPECT_EQ(error_of(good.substr(0, length)), SpeechFileError::CUT) << length;
    EXPECT_EQ(error_of(good.substr(0, 3)), SpeechFileError::NOT_SPEECH);
    EXPECT_EQ(error_of("RIFF" + good), SpeechFileError::NOT_SPEECH);
    EXPECT_EQ(error_of(good + "x"), SpeechFileError::TRAILING);
    std::string later = good;
    later[4] = 2;
    EXPECT_EQ(error_of(later), SpeechFileError::VERSION);
    std::string endless = good;
    endless[10] = '\x7f';
    EXPECT_EQ(error_of(endless), SpeechFileError::TOO_LONG);
}

TEST(SpeechSlots, AreFilledOnceFromSpeechAndRecordings) {
    const TempDirectory directory;
    const Speech speech = vowels(20, 100.0);
    const std::string path = directory.path("words.tlp");
    ASSERT_EQ(save_file_to_string(path, write_speech(speech)), 0);
    SpeechSlots slots;
    EXPECT_EQ(slots.get(127), nullptr);
    EXPECT_EQ(slots.load(127, path), "");
    const Speech* const loaded = slots.get(127);
    ASSERT_NE(loaded, nullptr);
    EXPECT_EQ(*loaded, speech);
    EXPECT_EQ(slots.load(127, path), "the slot holds speech already");
    EXPECT_FALSE(slots.put(127, {}));
    EXPECT_EQ(slots.get(127), loaded);

    // At twice the rate everything is twice as fast and high, and half as long.
    const std::string wav = directory.path("words.wav");
    ASSERT_EQ(save_file_to_string(wav, wav_of(speak(speech), 88200)), 0);
    EXPECT_EQ(slots.load(0, wav), "");
    ASSERT_NE(slots.get(0), nullptr);
    EXPECT_EQ(slots.get(0)->frames.size(), 10U);
    EXPECT_NEAR(slots.get(0)->frames[5].pitch, nearest_pitch(200.0), 2);
}

TEST(SpeechSlots, SayWhyAFileDoesNotLoad) {
    const TempDirectory directory;
    SpeechSlots slots;
    const auto reason = [&](const std::string& bytes) {
        const std::string path = directory.path("x");
        EXPECT_EQ(save_file_to_string(path, bytes), 0);
        const std::string text = slots.load(3, path);
        EXPECT_EQ(slots.get(3), nullptr);
        return text;
    };
    EXPECT_EQ(slots.load(3, directory.path("none")), "cannot be read");
    EXPECT_EQ(reason("TQLP"), explain(SpeechFileError::CUT));
    EXPECT_EQ(reason("RIFF"), "Error while parsing header");
    EXPECT_EQ(reason(wav_of(std::vector<float>(100), 48000)),
              "the sample rate is neither 44100 Hz nor 2, 4, 8, ... times as much");
}

} // namespace tarquil

// Tests of the sound files: every format reads back, equal sounds are equal files, failures leave
// what was there.

#include "tools/audio/audio_writer.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <unistd.h>

#include <cmath>

#include "common/failure.h"
#include "common/load_string.h"
#include "tests/support/file_size_limit.h"
#include "tests/support/files.h"
#include "tests/temp_directory.h"
#include "tests/tools/audio/read_sound.h"

namespace tarquil {

namespace {

constexpr size_t NUM_FRAMES = 10000;

// A sine of 441 Hz on the left, half of it on the right.
std::vector<float> test_sound() {
    std::vector<float> samples;
    for (size_t i = 0; i < NUM_FRAMES; i++) {
        const double value = 0.8 * std::sin(double(i) * 2.0 * M_PI / 100.0);
        samples.push_back(float(value));
        samples.push_back(float(value / 2.0));
    }
    return samples;
}

AudioFormat write_sound(const AudioRequest& request, const std::vector<float>& samples) {
    const AudioFormat format = choose_audio_format(request);
    const size_t num_frames = samples.size() / 2;
    AudioWriter writer({.path = request.path}, format, num_frames);
    for (size_t i = 0; i < num_frames; i += 1000)
        writer.write(&samples[2 * i], std::min<size_t>(1000, num_frames - i));
    writer.finish();
    writer.commit();
    return format;
}

AudioFormat write_test_sound(const AudioRequest& request) {
    return write_sound(request, test_sound());
}

std::string error_of(const AudioRequest& request) {
    try {
        choose_audio_format(request);
    } catch (const BadInput& error) {
        return error.what();
    }
    return "";
}

TEST(AudioWriter, EveryFormatReadsBack) {
    struct Case {
        const char* name;
        const char* bits;
        int format;
        double tolerance;
    };
    // Half a step of rounding, and one because 1.0 is stored as the largest integer.
    const double step_16 = 1.5 / 32768;
    const double step_24 = 1.5 / 8388608;
    const Case cases[] = {
        {"a.wav", "", SF_FORMAT_WAV | SF_FORMAT_PCM_24, step_24},
        {"b.WAV", "16", SF_FORMAT_WAV | SF_FORMAT_PCM_16, step_16},
        {"c.wav", "32", SF_FORMAT_WAV | SF_FORMAT_PCM_32, step_24},
        {"d.wav", "float", SF_FORMAT_WAV | SF_FORMAT_FLOAT, 0.0},
        {"e.flac", "", SF_FORMAT_FLAC | SF_FORMAT_PCM_24, step_24},
        {"f.flac", "16", SF_FORMAT_FLAC | SF_FORMAT_PCM_16, step_16},
        {"g.aiff", "24", SF_FORMAT_AIFF | SF_FORMAT_PCM_24, step_24},
        {"h.aif", "float", SF_FORMAT_AIFF | SF_FORMAT_FLOAT, 0.0},
        {"i.ogg", "", SF_FORMAT_OGG | SF_FORMAT_VORBIS, 0.05},
        {"j.opus", "", SF_FORMAT_OGG | SF_FORMAT_OPUS, 0.05},
    };
    const std::vector<float> samples = test_sound();
    const TempDirectory directory;
    for (const Case& c : cases) {
        SCOPED_TRACE(c.name);
        const std::string path = directory.path(c.name);
        const AudioFormat format = write_test_sound({.path = path, .bits = c.bits});
        const Sound sound = read_sound(path);
        EXPECT_EQ(sound.info.format & (SF_FORMAT_TYPEMASK | SF_FORMAT_SUBMASK), c.format);
        EXPECT_EQ(sound.info.samplerate, format.rate);
        EXPECT_EQ(sound.info.channels, 2);
        ASSERT_EQ(sound.samples.size(), samples.size());
        double largest = 0.0;
        for (size_t i = 0; i < samples.size(); i++)
            largest = std::max(largest, std::fabs(double(sound.samples[i] - samples[i])));
        EXPECT_LE(largest, c.tolerance);
    }
}

TEST(AudioWriter, EqualSoundsAreEqualFiles) {
    const TempDirectory directory;
    for (const char* ending : {".wav", ".flac", ".aiff", ".ogg", ".opus"}) {
        std::string contents[2];
        for (std::string& content : contents) {
            const std::string path = directory.path(std::string("sound") + ending);
            write_test_sound({.path = path});
            content = file_text(path);
        }
        EXPECT_TRUE(contents[0] == contents[1]) << ending;
    }
}

TEST(AudioWriter, IntegersClipAndFloatsDoNot) {
    const TempDirectory directory;
    const std::vector<float> loud = {1.5F, -1.5F, 1.0F, -1.0F};
    for (const char* bits : {"16", "24", "32", "float"}) {
        const std::string path = directory.path("loud.wav");
        const AudioFormat format = write_sound({.path = path, .bits = bits}, loud);
        const Sound sound = read_sound(path);
        ASSERT_EQ(sound.samples.size(), 4U);
        const float limit = format.samples == SampleType::FLOAT_32 ? 1.5F : 1.0F;
        EXPECT_NEAR(sound.samples[0], limit, 1e-4) << bits;
        EXPECT_NEAR(sound.samples[1], -limit, 1e-4) << bits;
    }
}

TEST(AudioWriter, RefusesWhatAFormatCannotHold) {
    EXPECT_NE(error_of({.path = "a.mp3"}).find("--format"), std::string::npos);
    EXPECT_NE(error_of({.path = "a"}), "");
    EXPECT_NE(error_of({.path = "a.wav", .format = "mp3"}), "");
    EXPECT_NE(error_of({.path = "a.wav", .bits = "8"}), "");
    EXPECT_NE(error_of({.path = "a.flac", .bits = "32"}), "");
    EXPECT_NE(error_of({.path = "a.flac", .bits = "float"}), "");
    EXPECT_NE(error_of({.path = "a.ogg", .bits = "16"}), "");
    EXPECT_NE(error_of({.path = "a.opus", .rate = 44100}), "");
    EXPECT_EQ(error_of({.path = "a.opus", .rate = 24000}), "");
    EXPECT_NE(error_of({.path = "a.wav", .rate = 0}), "");
    EXPECT_NE(error_of({.path = "a.wav", .rate = -44100}), "");
    EXPECT_EQ(choose_audio_format({.path = "-"}).container, Container::WAV);
    EXPECT_EQ(choose_audio_format({.path = "a.wav", .format = "flac"}).container, Container::FLAC);

    const uint64_t twelve_hours = uint64_t(12 * 3600) * 44100;
    EXPECT_EQ(sndfile_format({}, twelve_hours) & SF_FORMAT_TYPEMASK, SF_FORMAT_RF64);
    EXPECT_THROW(sndfile_format({.container = Container::AIFF}, twelve_hours), BadInput);
}

TEST(AudioWriter, AnUnfinishedFileLeavesWhatWasThere) {
    const TempDirectory directory;
    const std::string path = directory.path("sound.wav");
    ASSERT_EQ(save_file_to_string(path, "precious"), 0);
    {
        AudioWriter writer({.path = path}, choose_audio_format({.path = path}), NUM_FRAMES);
        writer.write(test_sound().data(), NUM_FRAMES);
        writer.finish();
    }
    EXPECT_EQ(file_text(path), "precious");
    EXPECT_EQ(names_in(directory.path()).size(), 1U);
}

TEST(AudioWriter, AFullDiskIsAFailureInEveryFormat) {
    const TempDirectory directory;
    {
        const FileSizeLimit limit(1000);
        for (const char* name : {"a.wav", "a.flac", "a.aiff", "a.ogg", "a.opus"})
            EXPECT_THROW(write_test_sound({.path = directory.path(name)}), BadInput) << name;
    }
    EXPECT_TRUE(names_in(directory.path()).empty());
}

TEST(AudioWriter, DevicesAndStandardOutputGetOneStream) {
    EXPECT_THROW(write_test_sound({.path = "/dev/full"}), BadInput);
    EXPECT_NO_THROW(write_test_sound({.path = "/dev/null"}));
    const AudioFormat wav;
    EXPECT_THROW(AudioWriter({.path = "-"}, wav, 1), BadInput);

    const TempDirectory directory;
    const std::string path = directory.path("streamed");
    const int descriptor = open(path.c_str(), O_WRONLY | O_CREAT | O_APPEND | O_CLOEXEC, 0600);
    AudioWriter writer({.path = "-", .standard_output = descriptor}, wav, NUM_FRAMES);
    writer.write(test_sound().data(), NUM_FRAMES);
    writer.finish();
    writer.commit();
    close(descriptor);
    EXPECT_EQ(read_sound(path).samples.size(), 2 * NUM_FRAMES);
}

} // namespace

} // namespace tarquil

// `tarquil speech`.

#include <gtest/gtest.h>
#include <sndfile.h>

#include <cmath>

#include "softsynth/lpc/speech_file.h"
#include "tests/softsynth/lpc/speech_samples.h"
#include "tests/temp_directory.h"
#include "tests/tools/audio/read_sound.h"
#include "tests/tools/command_run.h"

namespace tarquil {

namespace {

void write_sound(const std::string& path, int format, int rate, int channels,
                 const std::vector<float>& samples) {
    SF_INFO info{};
    info.samplerate = rate;
    info.channels = channels;
    info.format = format;
    SNDFILE* file = sf_open(path.c_str(), SFM_WRITE, &info);
    ASSERT_NE(file, nullptr);
    sf_writef_float(file, samples.data(), sf_count_t(samples.size()) / channels);
    sf_close(file);
}

class SpeechCommand : public testing::Test {
  protected:
    std::string path(const std::string& file) { return directory.path(file); }

    std::string save_speech(const Speech& speech) {
        EXPECT_EQ(save_file_to_string(path("words.tlp"), write_speech(speech)), 0);
        return path("words.tlp");
    }

    TempDirectory directory;
};

} // namespace

TEST_F(SpeechCommand, EncodesAnyRateAndChannelsAndSpeaksAgain) {
    const std::vector<float> mono = speak(vowels(50, 120.0));
    std::vector<float> stereo;
    for (const float sample : mono) {
        stereo.push_back(1.5F * sample);
        stereo.push_back(0.5F * sample);
    }
    write_sound(path("mono.wav"), SF_FORMAT_WAV | SF_FORMAT_PCM_24, 44100, 1, mono);
    write_sound(path("stereo.flac"), SF_FORMAT_FLAC | SF_FORMAT_PCM_24, 44100, 2, stereo);
    // Played at 22050 Hz it lasts twice as long and is an octave lower.
    write_sound(path("slow.aiff"), SF_FORMAT_AIFF | SF_FORMAT_PCM_16, 22050, 1, mono);
    struct Case {
        const char* file;
        size_t frames;
        double hz;
    };
    for (const Case& recording :
         {Case{"mono.wav", 50, 120}, Case{"stereo.flac", 50, 120}, Case{"slow.aiff", 100, 60}}) {
        const CommandRun run =
            run_command({"speech", "encode", path(recording.file), path("words.tlp")});
        ASSERT_EQ(run.status, 0) << run.errors;
        Speech speech;
        ASSERT_EQ(read_speech(file_text(path("words.tlp")), speech), SpeechFileError::NONE);
        ASSERT_EQ(speech.frames.size(), recording.frames);
        const size_t middle = recording.frames / 2;
        EXPECT_NEAR(speech.frames[middle].pitch, nearest_pitch(recording.hz), 2);
        ASSERT_EQ(run_command({"speech", "decode", path("words.tlp"), path("out.wav")}).status, 0);
        const Sound sound = read_sound(path("out.wav"));
        EXPECT_EQ(sound.info.channels, 1);
        EXPECT_EQ(sound.info.samplerate, 44100);
        EXPECT_EQ(sound.samples.size(), recording.frames * SPEECH_FRAME_SAMPLES);
        EXPECT_NEAR(power_of(sound.samples) / power_of(mono), 1.0, 0.4) << recording.file;
    }
}

TEST_F(SpeechCommand, OptionsReachThePlayer) {
    const Speech speech = vowels(30, 120.0);
    const std::string words = save_speech(speech);
    std::vector<float> carrier;
    for (int i = 0; i < 4410; i++)
        carrier.push_back(float(std::fmod(i / 441.0, 1.0) - 0.5));
    write_sound(path("carrier.wav"), SF_FORMAT_WAV | SF_FORMAT_FLOAT, 44100, 1, carrier);
    std::vector<float> repeated;
    while (repeated.size() < 30 * SPEECH_FRAME_SAMPLES)
        repeated.insert(repeated.end(), carrier.begin(), carrier.end());
    struct Case {
        std::vector<std::string> options;
        SpeechSettings settings;
    };
    for (const Case& decoding :
         {Case{{}, {}}, Case{{"--speed", "2"}, {SpeechVoice::OWN, 0.0, 2.0}},
          Case{{"--pitch", "80"}, {SpeechVoice::FIXED, 80.0, 1.0}},
          Case{{"--whisper"}, {SpeechVoice::WHISPER, 0.0, 1.0}},
          Case{{"--carrier", path("carrier.wav")}, {SpeechVoice::CARRIER, 0.0, 1.0}}}) {
        std::vector<std::string> arguments{"speech",        "decode", words,
                                           path("out.wav"), "--bits", "float"};
        arguments.insert(arguments.end(), decoding.options.begin(), decoding.options.end());
        const CommandRun run = run_command(arguments);
        ASSERT_EQ(run.status, 0) << run.errors;
        std::vector<float> expected(speech_length(speech, decoding.settings.speed));
        SpeechPlayer(speech, decoding.settings)
            .render(repeated.data(), expected.data(), uint32_t(expected.size()));
        EXPECT_EQ(read_sound(path("out.wav")).samples, expected);
    }
}

TEST_F(SpeechCommand, ShowsNumbersAndDrawsAPicture) {
    Speech speech = vowels(100, 200.0);
    for (size_t i = 0; i < 50; i++)
        speech.frames[i].voicing = 0;
    speech.frames[99].level = 0;
    const std::string words = save_speech(speech);
    const CommandRun run = run_command({"speech", "show", words});
    EXPECT_EQ(run.results, words + ": 100 frames, 2.00 s, 1100 bytes of frames\n"
                                   "spectrum whole, warping 0.586\n"
                                   "50 % voiced, pitch 200 to 200 Hz, median 200 Hz\n");
    const std::string table = run_command({"speech", "show", words, "--frames"}).results;
    EXPECT_NE(table.find("\n0.01 s\t"), std::string::npos) << table;
    EXPECT_NE(table.find("\n1.99 s\tsilent\t200 Hz\t20000 Hz\t"), std::string::npos) << table;
    const CommandRun picture = run_command({"speech", "show", words, "--plot", "-"});
    EXPECT_TRUE(picture.results.starts_with("<?xml")) << picture.errors;
    EXPECT_NE(picture.results.find("Pitch (Hz)"), std::string::npos);
    ASSERT_EQ(run_command({"speech", "show", words, "--plot", path("x.png")}).status, 0);
    EXPECT_TRUE(file_text(path("x.png")).starts_with("\x89PNG"));
    // Nothing to draw is drawn too.
    EXPECT_EQ(run_command({"speech", "show", save_speech({}), "--plot", path("x.svg")}).status, 0);
}

TEST_F(SpeechCommand, SaysWhatIsWrongInOneLine) {
    const std::string words = save_speech(vowels(3, 100.0));
    const std::string wav = path("x.wav");
    EXPECT_NE(refusal({"speech", "encode", path("none.wav"), wav}).find("none.wav"),
              std::string::npos);
    EXPECT_NE(refusal({"speech", "encode", words, wav}).find("words.tlp"), std::string::npos);
    EXPECT_NE(refusal({"speech", "decode", path("none.tlp"), wav}).find("none.tlp"),
              std::string::npos);
    write_sound(path("empty.wav"), SF_FORMAT_WAV | SF_FORMAT_PCM_16, 44100, 1, {});
    EXPECT_NE(refusal({"speech", "encode", path("empty.wav"), wav}).find("no sound"),
              std::string::npos);
    EXPECT_NE(refusal({"speech", "show", path("empty.wav")}).find("not a speech file"),
              std::string::npos);
    EXPECT_NE(refusal({"speech", "decode", words, wav, "--speed", "9"}).find("--speed"),
              std::string::npos);
    EXPECT_NE(refusal({"speech", "decode", words, wav, "--pitch", "90", "--whisper"}).find("--"),
              std::string::npos);
    EXPECT_NE(refusal({"speech", "decode", words, path("x.opus")}).find("44100"),
              std::string::npos);
    EXPECT_FALSE(std::filesystem::exists(wav));
}

} // namespace tarquil

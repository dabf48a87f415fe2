// How near decoded speech comes to its recording: tarquil_speech_quality RECORDING ...
//
// All distances are root mean squares in dB over frequency, averaged over the voiced frames whose
// level is at most 40 dB below the loudest frame's.

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <string>
#include <vector>

#include "common/failure.h"
#include "softsynth/lpc/exact_math.h"
#include "softsynth/lpc/line_spectrum.h"
#include "softsynth/lpc/linear_prediction.h"
#include "softsynth/lpc/spectral_envelope.h"
#include "softsynth/lpc/speech_encoder.h"
#include "softsynth/lpc/speech_player.h"
#include "tools/speech/recording.h"

namespace {

using namespace tarquil;

constexpr double LOWEST_HZ = 100.0;
constexpr double HIGHEST_HZ = 8000.0;
constexpr double STEP_HZ = 50.0;

// Below the end of a recording's spectrum, where its converter's filter begins to fall.
constexpr double LIMIT_MARGIN_HZ = 200.0;

constexpr int AUDIBLE_STEPS = 80; // of half a decibel

struct Recording {
    std::vector<float> samples;
    Speech speech;
    std::vector<size_t> frames; // those that count
    double highest_hz = 0.0;
};

// An average that is added to.
struct Mean {
    double sum = 0.0;
    double count = 0.0;
    void add(double value) {
        sum += value;
        count += 1.0;
    }
    [[nodiscard]] double get() const { return sum / count; }
};

double decibels(double power) {
    return 10.0 * std::log10(power + 1e-11);
}

// `difference` at a frequency in dB; the level of both is left as it is, or made the same.
template <typename Difference>
double distance(double highest_hz, bool is_level_free, const Difference& difference) {
    double sum = 0.0;
    double squares = 0.0;
    int count = 0;
    for (double hz = LOWEST_HZ; hz <= highest_hz; hz += STEP_HZ) {
        const double d = difference(hz);
        sum += d;
        squares += d * d;
        count++;
    }
    const double offset = is_level_free ? sum / count : 0.0;
    return std::sqrt(std::max(squares / count - offset * offset, 0.0));
}

Recording load(const std::string& path) {
    Recording recording{read_recording(path), {}, {}, 0.0};
    recording.speech = encode_speech(recording.samples);
    recording.highest_hz = std::min(HIGHEST_HZ, recording.speech.band_limit_hz() - LIMIT_MARGIN_HZ);
    int loudest = 0;
    for (const SpeechFrame& frame : recording.speech.frames)
        loudest = std::max(loudest, int(frame.level));
    for (size_t i = 0; i < recording.speech.frames.size(); i++) {
        const SpeechFrame& frame = recording.speech.frames[i];
        if (frame.voicing > 0 && frame.level >= loudest - AUDIBLE_STEPS)
            recording.frames.push_back(i);
    }
    return recording;
}

void print_decoded(const std::vector<Recording>& recordings) {
    std::printf("decoded against original, both averaged over this many Hz\n"
                "%8s%22s%12s\n",
                "Hz", "to the recording's end", "to 8 kHz");
    for (const double width_hz : {250.0, 400.0, 600.0}) {
        Mean below_end;
        Mean whole;
        for (const Recording& recording : recordings) {
            std::vector<float> spoken(speech_length(recording.speech, 1.0));
            SpeechPlayer(recording.speech, {})
                .render(nullptr, spoken.data(), uint32_t(spoken.size()));
            for (const size_t frame : recording.frames) {
                const PowerSpectrum original = power_spectrum(recording.samples, frame);
                const PowerSpectrum decoded = power_spectrum(spoken, frame);
                const auto difference = [&](double hz) {
                    return decibels(average_density(decoded, hz, width_hz)) -
                           decibels(average_density(original, hz, width_hz));
                };
                below_end.add(distance(recording.highest_hz, false, difference));
                whole.add(distance(HIGHEST_HZ, false, difference));
            }
        }
        std::printf("%8.0f%22.2f%12.2f\n", width_hz, below_end.get(), whole.get());
    }
}

// A frequency axis that a predictor works on: up to `top_hz`, bent or not.
struct Axis {
    std::string name;
    double rate = 44100.0;
    double warping = 0.0;

    [[nodiscard]] double hz_at(double place) const {
        const double angle =
            place - 2.0 * std::atan(warping * std::sin(place) / (1.0 + warping * std::cos(place)));
        return angle * rate / (2.0 * PI);
    }
    [[nodiscard]] double place_of(double hz) const {
        const double angle = 2.0 * PI * hz / rate;
        return angle +
               2.0 * std::atan(warping * std::sin(angle) / (1.0 - warping * std::cos(angle)));
    }
};

std::vector<double> predictor_on(const Axis& axis, const PowerSpectrum& spectrum, double pitch,
                                 double end_hz, size_t order) {
    constexpr size_t NUM_POINTS = 256;
    std::vector<double> powers;
    for (size_t i = 0; i < NUM_POINTS; i++) {
        const double hz = std::min(axis.hz_at(PI * (double(i) + 0.5) / NUM_POINTS), end_hz);
        powers.push_back(emphasis_at(hz) * (average_density(spectrum, hz, pitch) + 1e-11));
    }
    std::vector<double> correlation = autocorrelation_of_spectrum(powers, order);
    smooth_spectrum(correlation, 0.0, 1e-7);
    return predict(correlation).predictor;
}

double power_of_predictor(const std::vector<double>& predictor, double place) {
    double real = 0.0;
    double imag = 0.0;
    for (size_t m = 0; m < predictor.size(); m++) {
        real += predictor[m] * std::cos(place * double(m));
        imag += predictor[m] * std::sin(place * double(m));
    }
    return real * real + imag * imag;
}

// A predictor's spectrum against the outline of the recording's, at the best level.
double outline_distance(const std::vector<Recording>& recordings, const Axis& axis, size_t order) {
    Mean mean;
    for (const Recording& recording : recordings) {
        const double highest_hz = std::min(recording.highest_hz, axis.rate / 2.0);
        for (const size_t frame : recording.frames) {
            const PowerSpectrum spectrum = power_spectrum(recording.samples, frame);
            const double pitch =
                std::max(pitch_hz(recording.speech.frames[frame].pitch * 256U), 100.0);
            const std::vector<double> predictor =
                predictor_on(axis, spectrum, pitch, recording.speech.band_limit_hz(), order);
            mean.add(distance(highest_hz, true, [&](double hz) {
                return decibels(emphasis_at(hz) * average_density(spectrum, hz, pitch)) +
                       10.0 * std::log10(power_of_predictor(predictor, axis.place_of(hz)));
            }));
        }
    }
    return mean.get();
}

void print_axes(const std::vector<Recording>& recordings) {
    std::printf("\npredictors of order 10 against the outline\n");
    for (const Axis& axis :
         {Axis{"plain, 44100 Hz", 44100.0, 0.0}, Axis{"plain, 22050 Hz", 22050.0, 0.0},
          Axis{"plain, 16000 Hz", 16000.0, 0.0}, Axis{"plain, 11025 Hz (to 5.5 kHz)", 11025.0, 0.0},
          Axis{"warped by 0.40", 44100.0, 0.40}, Axis{"warped by 0.50", 44100.0, 0.50},
          Axis{"warped by 0.59", 44100.0, 0.586}, Axis{"warped by 0.65", 44100.0, 0.65},
          Axis{"warped by 0.76", 44100.0, 0.756}})
        std::printf("%30s%8.2f\n", axis.name.c_str(), outline_distance(recordings, axis, 10));
    std::printf("\nwarped by 0.76, other orders\n");
    for (const size_t order : {10U, 16U, 24U, 32U, 48U})
        std::printf("%30zu%8.2f\n", order,
                    outline_distance(recordings, {"", 44100.0, 0.756}, order));
}

// What rounding the lines to bytes does to the filter's spectrum.
void print_rounding(const std::vector<Recording>& recordings) {
    const Axis axis{"", 44100.0, double(DEFAULT_SPEECH_WARPING) / 256.0};
    Mean mean;
    for (const Recording& recording : recordings) {
        for (const size_t frame : recording.frames) {
            const PowerSpectrum spectrum = power_spectrum(recording.samples, frame);
            const double pitch = pitch_hz(recording.speech.frames[frame].pitch * 256U);
            const std::vector<double> found =
                predictor_on(axis, spectrum, pitch, recording.speech.band_limit_hz(), LPC_ORDER);
            Predictor predictor{};
            std::copy(found.begin(), found.end(), predictor.begin());
            const auto exact = lines_of_predictor(predictor);
            if (!exact)
                continue;
            LineCosines rounded{};
            std::array<uint8_t, LPC_ORDER> lines{};
            for (size_t i = 0; i < LPC_ORDER; i++)
                lines[i] = uint8_t(std::acos((*exact)[i]) / PI * 256.0);
            separate_lines(lines);
            for (size_t i = 0; i < LPC_ORDER; i++)
                rounded[i] = cos_half_turns((double(lines[i]) + 0.5) / 256.0);
            mean.add(distance(recording.highest_hz, true, [&](double hz) {
                const double x = std::cos(axis.place_of(hz));
                return 10.0 * std::log10(predictor_power(*exact, x) / predictor_power(rounded, x));
            }));
        }
    }
    std::printf("\nlines rounded to bytes against lines as found: %.2f\n", mean.get());
}

} // namespace

int main(int argc, char** argv) {
    try {
        std::vector<Recording> recordings;
        for (int i = 1; i < argc; i++)
            recordings.push_back(load(argv[i]));
        if (recordings.empty())
            throw BadInput("no recordings");
        print_decoded(recordings);
        print_axes(recordings);
        print_rounding(recordings);
    } catch (const std::exception& error) {
        std::fprintf(stderr, "tarquil_speech_quality: %s\n", error.what());
        return 1;
    }
    return 0;
}

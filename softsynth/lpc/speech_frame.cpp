// One frame of speech and the eleven bytes that it is stored in.

#include "softsynth/lpc/speech_frame.h"

#include <algorithm>
#include <iterator>

#include "common/assertion.h"
#include "softsynth/lpc/byte_order_code.h"
#include "softsynth/lpc/exact_math.h"

namespace tarquil {

namespace {

static_assert(LPC_ORDER == NUM_ORDERED_BYTES);

constexpr unsigned NUM_BYTES = 256;
constexpr unsigned NUM_VOICINGS = MAX_VOICING + 1;
constexpr unsigned NUM_BENDS = MAX_BEND - MIN_BEND + 1;
static_assert(NUM_BYTES * NUM_VOICINGS * NUM_BENDS <= NUM_BYTE_ORDERS);

constexpr double HALF_DECIBEL = 1.0592537251772889;      // 10^(1/40)
constexpr double LOWEST_AMPLITUDE = 8.4139514164519e-07; // level 0: 127.5 dB below 6 dB
constexpr double PITCH_STEP = 1.0108892860517005;        // 2^(1/64)
constexpr double LOWEST_PITCH = 50.0;                    // Hz

constexpr auto AMPLITUDES = geometric_series<NUM_BYTES>(LOWEST_AMPLITUDE, HALF_DECIBEL);
constexpr auto PITCHES = geometric_series<NUM_BYTES>(LOWEST_PITCH, PITCH_STEP);

constexpr double VOICING_LIMITS[MAX_VOICING] = {700, 1200, 2000, 3200, 5000, 8000, 20000}; // Hz

// A geometric series, taken as straight between its terms (by less than 0.01 dB or a cent wrong).
double between_terms(const std::array<double, NUM_BYTES>& terms, double ratio, uint32_t position) {
    const double fraction = double(position % NUM_BYTES) / NUM_BYTES;
    return terms[position / NUM_BYTES] * (1.0 + fraction * (ratio - 1.0));
}

uint8_t nearest_term(const std::array<double, NUM_BYTES>& terms, double value) {
    const auto above =
        std::find_if(terms.begin(), terms.end(), [&](double term) { return term >= value; });
    if (above == terms.begin())
        return 0;
    if (above == terms.end())
        return NUM_BYTES - 1;
    // Nearest by ratio.
    const bool is_lower = value * value < above[0] * above[-1];
    return uint8_t(above - terms.begin() - (is_lower ? 1 : 0));
}

} // namespace

std::array<uint8_t, LPC_ORDER> flat_lines() {
    std::array<uint8_t, LPC_ORDER> lines{};
    for (size_t i = 0; i < LPC_ORDER; i++)
        lines[i] = uint8_t(NUM_BYTES * (i + 1) / (LPC_ORDER + 1));
    return lines;
}

void separate_lines(std::array<uint8_t, LPC_ORDER>& lines) {
    std::sort(lines.begin(), lines.end());
    int lowest = 0;
    for (uint8_t& line : lines) {
        line = uint8_t(std::min(std::max(int(line), lowest), TOP_LINE));
        lowest = line + MIN_LINE_DISTANCE;
    }
    int highest = TOP_LINE;
    for (auto line = lines.rbegin(); line != lines.rend(); ++line) {
        *line = uint8_t(std::min(int(*line), highest));
        highest = *line - MIN_LINE_DISTANCE;
    }
}

SpeechFrameBytes pack_frame(const SpeechFrame& frame) {
    TARQ_ASSERT(frame.voicing < NUM_VOICINGS && frame.bend >= MIN_BEND && frame.bend <= MAX_BEND);
    // No bend is 0, as in files that are older than bends.
    const unsigned bend = unsigned(frame.bend) % NUM_BENDS;
    const uint32_t number = (bend * NUM_VOICINGS + frame.voicing) * NUM_BYTES + frame.pitch;
    const OrderedBytes ordered = bytes_in_order(frame.lines, number);
    SpeechFrameBytes bytes{};
    std::copy(ordered.begin(), ordered.end(), bytes.begin());
    bytes.back() = frame.level;
    return bytes;
}

SpeechFrame unpack_frame(const SpeechFrameBytes& bytes) {
    SpeechFrame frame;
    std::copy_n(bytes.begin(), LPC_ORDER, frame.lines.begin());
    const uint32_t number = byte_order_number(frame.lines);
    frame.pitch = uint8_t(number % NUM_BYTES);
    frame.voicing = uint8_t(number / NUM_BYTES % NUM_VOICINGS);
    const int bend = int(number / NUM_BYTES / NUM_VOICINGS % NUM_BENDS);
    frame.bend = int8_t(bend > MAX_BEND ? bend - int(NUM_BENDS) : bend);
    frame.level = bytes.back();
    separate_lines(frame.lines);
    return frame;
}

double level_amplitude(uint32_t level_256ths) {
    return level_256ths < NUM_BYTES ? 0.0 : between_terms(AMPLITUDES, HALF_DECIBEL, level_256ths);
}

uint8_t nearest_level(double amplitude) {
    return nearest_term(AMPLITUDES, amplitude);
}

double pitch_hz(uint32_t pitch_256ths) {
    return between_terms(PITCHES, PITCH_STEP, pitch_256ths);
}

uint8_t nearest_pitch(double hz) {
    return nearest_term(PITCHES, hz);
}

double voicing_limit_hz(unsigned voicing) {
    TARQ_ASSERT(voicing >= 1 && voicing <= MAX_VOICING);
    return VOICING_LIMITS[voicing - 1];
}

} // namespace tarquil

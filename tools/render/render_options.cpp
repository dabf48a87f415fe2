// The reading of the options of a render.

#include "tools/render/render_options.h"

#include <algorithm>
#include <charconv>
#include <cmath>

#include "common/failure.h"
#include "player/worker_threads.h"

namespace tarquil {

namespace {

// With the longest song this stays an hour below the end of the engine's sample clock.
constexpr double MAX_TAIL_SECONDS = 1800.0;
constexpr double MIN_LEVEL_DBFS = -120.0;

// All of `text` as a number; none when it is something else.
template <typename Number> std::optional<Number> read_number(std::string_view text) {
    Number number{};
    const char* end = text.data() + text.size();
    const auto [stop, error] = std::from_chars(text.data(), end, number);
    if (error != std::errc() || stop != end)
        return std::nullopt;
    return number;
}

template <typename Number>
Number read_number_within(const std::string& option, const std::string& text, Number first,
                          Number last, const char* rule) {
    const std::optional<Number> number = read_number<Number>(text);
    // Not a number fails both comparisons.
    if (number && *number >= first && *number <= last)
        return *number;
    throw BadInput(option + " " + text + ": " + rule);
}

unsigned read_channel(const std::string& option, const std::string& whole, std::string_view text) {
    const std::optional<unsigned> channel = read_number<unsigned>(text);
    if (channel && *channel >= 1 && *channel <= unsigned(NUM_CHANNELS))
        return *channel - 1;
    throw BadInput(option + " " + whole + ": channels are numbers from 1 to 16");
}

} // namespace

ChannelSet parse_channels(const std::string& text) {
    ChannelSet channels;
    size_t start = 0;
    while (start <= text.size()) {
        const size_t end = std::min(text.find(',', start), text.size());
        const std::string_view item = std::string_view(text).substr(start, end - start);
        const size_t dash = item.find('-');
        const unsigned first = read_channel("--channels", text, item.substr(0, dash));
        const unsigned last = dash == std::string_view::npos
                                  ? first
                                  : read_channel("--channels", text, item.substr(dash + 1));
        if (last < first)
            throw BadInput("--channels " + text + ": a range ends before it begins");
        for (unsigned channel = first; channel <= last; channel++)
            channels.set(channel);
        start = end + 1;
    }
    return channels;
}

void parse_instrument(const std::string& text, RenderOptions& options) {
    const size_t equals = text.find('=');
    if (equals == std::string::npos || equals + 1 == text.size())
        throw BadInput("--instrument " + text + ": not CHANNEL=FILE");
    const unsigned channel =
        read_channel("--instrument", text, std::string_view(text).substr(0, equals));
    options.instrument_paths[channel] = text.substr(equals + 1);
}

DialectChoice parse_midi_dialect(const std::string& text) {
    if (text == "auto")
        return DialectChoice::AUTO;
    if (text == "gm")
        return DialectChoice::GM;
    if (text == "native")
        return DialectChoice::NATIVE;
    throw BadInput("--midi " + text + ": not auto, gm or native");
}

std::optional<uint32_t> parse_tail(const std::string& text) {
    if (text == "auto")
        return std::nullopt;
    const double seconds = read_number_within("--tail", text, 0.0, MAX_TAIL_SECONDS,
                                              "not auto or a number of seconds up to 1800");
    return uint32_t(std::lround(seconds * SAMPLE_RATE));
}

double parse_level(const std::string& text) {
    return read_number_within("--normalize", text, MIN_LEVEL_DBFS, 0.0,
                              "not a level from -120 to 0 dBFS");
}

uint32_t parse_block(const std::string& text) {
    constexpr const char* RULE = "not a multiple of 4 from 4 to 2048 samples";
    const uint32_t block =
        read_number_within<uint32_t>("--block", text, GRANULARITY, MAX_NUM_SAMPLES, RULE);
    if (block % GRANULARITY != 0)
        throw BadInput("--block " + text + ": " + RULE);
    return block;
}

int parse_rate(const std::string& text) {
    const std::optional<int> rate = read_number<int>(text);
    if (!rate)
        throw BadInput("--rate " + text + ": not a number of Hz");
    return *rate;
}

uint32_t parse_seed(const std::string& text) {
    return read_number_within<uint32_t>("--seed", text, 0, UINT32_MAX,
                                        "not a whole number from 0 to 4294967295");
}

unsigned parse_threads(const std::string& text) {
    static_assert(WorkerThreads::MAX_THREADS == 64);
    return read_number_within<unsigned>("--threads", text, 1, WorkerThreads::MAX_THREADS,
                                        "not a whole number from 1 to 64");
}

} // namespace tarquil

// A plug-in of any format, driven by a small host of its own: what the formats have in common.

#pragma once

#include <array>
#include <cstdint>
#include <functional>
#include <memory>
#include <span>
#include <string>
#include <utility>
#include <vector>

#include "tests/formats/common/format_song.h"

namespace tarquil {

class FormatDriver {
  public:
    FormatDriver() = default;
    FormatDriver(const FormatDriver&) = delete;
    FormatDriver& operator=(const FormatDriver&) = delete;
    virtual ~FormatDriver() = default;

    // A rate in Hz; false when it is refused.
    virtual bool activate(double rate) = 0;
    virtual void deactivate() = 0;

    // Of the next block.
    virtual void add(const SongMessage& message) = 0;
    virtual void set(unsigned controller, int byte, uint32_t frame) = 0;
    // As the host's song has it at that frame of it (tempo_song.h).
    virtual void tell_tempo(uint32_t /*song_frame*/, double /*rate*/) {}
    // Whatever else may stand in a block of this format, and what must not.
    virtual void add_specials() {}

    // A block in three steps: only the call is the plug-in's own.
    virtual void prepare(float* left, float* right, uint32_t frames) = 0;
    virtual void call() noexcept = 0;
    virtual void finish() = 0;
    void run(float* left, float* right, uint32_t frames) {
        prepare(left, right, frames);
        call();
        finish();
    }
    StereoSound run(uint32_t frames) {
        StereoSound sound{std::vector<float>(frames), std::vector<float>(frames)};
        run(sound.left.data(), sound.right.data(), frames);
        return sound;
    }

    // Once something has been played.
    virtual uint32_t latency_frames() = 0;

    // The host's stream takes or gives so many bytes at a time, where the format has streams.
    virtual std::string save(size_t piece) = 0;
    virtual bool load(const std::string& state, size_t piece) = 0;
    std::string save() { return save(ANY_PIECE); }
    bool load(const std::string& state) { return load(state, ANY_PIECE); }

    // What else the host's main thread does at any time.
    virtual void look(unsigned /*round*/) {}
    // What the plug-in has done that it must not, if anything.
    [[nodiscard]] virtual std::string complaint() const { return ""; }
    // What the plug-in has told its host of its parameters since the last call, a window being
    // closed: "begin 7", "7 = 64" and "end 7" with controllers and bytes, gestures where the format
    // has them then.
    virtual std::vector<std::string> take_told() = 0;
    [[nodiscard]] virtual bool tells_gestures() const { return false; }
    // What of a block's messages reaches the plug-in, in its order.
    [[nodiscard]] virtual std::vector<SongMessage>
    passed(const std::vector<SongMessage>& messages) const {
        return messages;
    }
    // Whether the call takes a lock, for parameters, that the control side may hold.
    [[nodiscard]] virtual bool locks_for_parameters() const { return false; }
    // Whether parameters act on their frame or at the block's start.
    [[nodiscard]] virtual bool has_exact_parameters() const { return true; }

  protected:
    static constexpr size_t ANY_PIECE = 1U << 20U;

    // Fixed memory, as it is written within audio calls.
    struct Told {
        const char* what = ""; // "begin", "end" or nothing, for a value
        unsigned controller = 0;
        double value = 0;
    };
    void note_told(const Told& one) {
        if (num_told < told.size())
            told[num_told++] = one;
    }
    std::vector<std::string> take_noted(const std::function<int(const Told&)>& byte_of) {
        std::vector<std::string> texts;
        for (const Told& one : std::span(told).first(std::exchange(num_told, 0))) {
            const std::string number = std::to_string(one.controller);
            texts.push_back(*one.what != '\0' ? std::string(one.what) + " " + number
                                              : number + " = " + std::to_string(byte_of(one)));
        }
        return texts;
    }

  private:
    std::array<Told, 512> told;
    size_t num_told = 0;
};

// A new instance of the built module, in General MIDI; VST 2, which starts in the native dialect,
// with the state of another format's instance.
std::unique_ptr<FormatDriver> drive_vst2();
std::unique_ptr<FormatDriver> drive_clap();
std::unique_ptr<FormatDriver> drive_vst3();
std::unique_ptr<FormatDriver> drive_lv2();

} // namespace tarquil

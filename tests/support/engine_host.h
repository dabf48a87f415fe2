// Drives an engine from tests: queue events, render, look at the sound.

#pragma once

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <memory>
#include <numbers>
#include <vector>

#include "player/shared_waveforms.h"
#include "softsynth/core/core.h"

namespace tarquil {

class EngineHost {
  public:
    EngineHost() : engine(new Tarquil(bank, shared_waveforms())) {}
    EngineHost(EngineHost&&) = delete; // the engine refers to the bank

    // Events at the current time plus `delay` samples, to be played by the next render.
    void note_on(int channel, int note, int velocity = 127, uint32_t delay = 0) {
        push(0x90U, channel, unsigned(note), unsigned(velocity), delay);
    }
    void note_off(int channel, int note, uint32_t delay = 0) {
        push(0x80U, channel, unsigned(note), 0, delay);
    }
    void set(int channel, unsigned controller, int value, uint32_t delay = 0) {
        push(0xB0U, channel, controller, unsigned(value), delay);
    }
    void silence(int channel, bool master = false, uint32_t delay = 0) {
        push(MIDI_SILENCE, channel, master ? SILENCE_MASTER : 0, 0, delay);
    }
    void program(int channel, unsigned number, uint32_t delay = 0) {
        push(0xC0U, channel, number, 0, delay);
    }

    // A plain channel: one oscillator, no detune, instant envelope at full level.
    void set_plain(int channel, int osc_type) {
        set(channel, CTRL_OSC1_TYPE, osc_type);
        set(channel, CTRL_OSC1_FINE_TUNE, 64);
        set(channel, CTRL_ENV1_SUSTAIN, 127);
        set(channel, CTRL_ENV1_RELEASE, 0);
    }

    // Renders frames (a multiple of 4) in blocks; returns interleaved stereo.
    std::vector<float> render(uint32_t frames, uint32_t block = 256) {
        std::vector<float> sound(size_t(2) * frames);
        for (uint32_t done = 0; done < frames;) {
            const uint32_t size = std::min(block, frames - done);
            events.reserve(1); // data() is not null then
            std::stable_sort(
                events.begin(), events.end(),
                [](const midi_event& a, const midi_event& b) { return a.time < b.time; });
            const auto later =
                std::find_if(events.begin(), events.end(),
                             [&](const midi_event& event) { return event.time >= now + size; });
            engine->run(sound.data() + size_t(2) * done, size, events.data(),
                        uint32_t(later - events.begin()), now);
            events.erase(events.begin(), later);
            now += size;
            done += size;
        }
        return sound;
    }

    Tarquil& operator*() { return *engine; }
    Tarquil* operator->() { return engine.get(); }

    TarqSettings bank; // which program changes take
    uint32_t now = 0;

  private:
    void push(unsigned kind, int channel, unsigned data1, unsigned data2, uint32_t delay) {
        events.push_back(
            {now + delay, uint8_t(kind | unsigned(channel)), uint8_t(data1), uint8_t(data2)});
    }

    std::unique_ptr<Tarquil> engine;
    std::vector<midi_event> events;
};

// One side of interleaved stereo.
inline std::vector<float> side(const std::vector<float>& sound, int which) {
    std::vector<float> mono;
    for (size_t i = size_t(which); i < sound.size(); i += 2)
        mono.push_back(sound[i]);
    return mono;
}

inline float peak(const std::vector<float>& sound) {
    float highest = 0;
    for (const float sample : sound)
        highest = std::max(highest, std::fabs(sample));
    return highest;
}

// Amplitude of the sine of `frequency` Hz in a mono signal (Hann window).
inline double amplitude_at(const std::vector<float>& signal, double frequency) {
    const double step = 2 * std::numbers::pi;
    double cosine = 0;
    double sine = 0;
    double weight = 0;
    for (size_t i = 0; i < signal.size(); i++) {
        const double w = 1 - std::cos(step * (double(i) + 0.5) / double(signal.size()));
        cosine += w * signal[i] * std::cos(step * frequency * double(i) / 44100);
        sine += w * signal[i] * std::sin(step * frequency * double(i) / 44100);
        weight += w;
    }
    return 2 * std::hypot(cosine, sine) / weight;
}

inline bool is_sound(const std::vector<float>& sound) {
    return std::all_of(sound.begin(), sound.end(), [](float sample) {
        return std::isfinite(sample) && std::fabs(sample) <= 1.0F;
    });
}

} // namespace tarquil

// A player as plug-in formats and the stand-alone program use it: at the host's rate, in blocks of
// any length, with messages and parameters at their frame.
//
// Its sound depends neither on the lengths of the blocks nor on how a host splits them.

#pragma once

#include <array>
#include <atomic>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>

#include "player/player.h"
#include "player/quantum_stream.h"

namespace tarquil {

class HostedPlayer {
  public:
    static constexpr uint32_t NUM_VOICES = VoicePool::NUM_VOICES;

    // There is no engine yet.
    HostedPlayer() : stream(sound.audio()) {}

    // What windows and the host's other threads work on.
    Player& player() { return sound; }

    // The bank, the dialect and the channels' programs as text, programs that are as built in left
    // out.  Both are for any thread but the audio thread and never make the sound wait.
    [[nodiscard]] std::string save_state() { return sound.save_state_compact(); }
    // Takes such a text, a bank's, an image that holds one, or an instrument's for the edited
    // program.  Returns 0, or an error code of TarqSettings and changes nothing.
    int load_state(std::string_view state);

    // The same with the file at `path`.
    int load_file(const std::string& path);

    // Makes the engine if there is none and takes the host's rate in Hz; false, and nothing has
    // changed, for one beyond reason.  While nothing renders, and not on the audio thread.
    [[nodiscard]] bool activate(double rate);

    // How much later than its event a sound comes, in host frames; from the activation on.
    [[nodiscard]] uint32_t latency_frames() const { return stream.latency_frames(); }

    // The user has changed a controller in a window, and a host that is told says so itself, a
    // little later: for half a second nothing that it says of this controller is taken.
    void hold_controller(unsigned number);
    [[nodiscard]] bool is_held(unsigned number) const {
        return played.load(std::memory_order_relaxed) <
               held_until[number].load(std::memory_order_relaxed);
    }

    // All below is for the audio thread alone; nothing allocates, waits or calls the system.

    // Releases all notes and drops what is on its way and what messages had set; between two
    // blocks.
    void reset();

    // A block: begin, its events with frames that do not fall, end.  Nothing but these operations
    // happens in between.  `left` and `right` take `frames` samples each, any number of them, and
    // may be written from begin_block on.  What the control side has changed comes first.
    void begin_block(float* left, float* right, uint32_t frames);
    // A MIDI message (status and data bytes; one that is cut short counts as zeros behind) at
    // `frame` of the block; a frame behind an earlier event's, or beyond the block, counts as the
    // nearest.  System exclusive ones, whole, mean something to General MIDI only.  False when
    // there was no room for it, which takes thousands of messages within a millisecond.
    bool add_message(std::span<const uint8_t> message, uint32_t frame);
    // A MIDI controller on any channel moves what it has been taught, and does nothing else.
    void move_learned(unsigned midi_controller, unsigned data, uint32_t frame);
    // What the host says of its tempo, and of its place if it plays, at `frame`: as often as it
    // likes.
    void set_tempo(const HostTempo& said, uint32_t frame);
    // Lets all keys and pedals go.
    void release_all(uint32_t frame);
    // A controller but the pitch bend becomes `value`, 0..127: of the edited program, or global.
    void set_controller(unsigned number, int value, uint32_t frame);
    // As set last.
    [[nodiscard]] int get_controller(unsigned number) {
        return sound.audio().get_controller(number);
    }
    // Channel 0..15 plays `program` 0..127, which is the edited one from now on.
    void set_program(unsigned channel, unsigned program, uint32_t frame);
    void end_block();

  private:
    void make_room(uint32_t events);
    void render_until(uint32_t frame);
    [[nodiscard]] uint32_t event_time(uint32_t frame);

    Player sound;
    QuantumStream stream;

    double host_rate = SAMPLE_RATE;
    std::atomic<uint64_t> played{0}; // host frames
    std::array<std::atomic<uint64_t>, NUM_CONTROLLERS> held_until{};

    // the block
    float* block_left = nullptr;
    float* block_right = nullptr;
    uint32_t block_frames = 0;
    uint32_t rendered = 0;   // frames of the block
    uint32_t last_frame = 0; // of the last event
};

} // namespace tarquil

// The audio side of a player: the engine, the events on their way to it, and the clock.

#pragma once

#include <cstdint>
#include <span>

#include "player/audition.h"
#include "player/channel_programs.h"
#include "player/event_queue.h"
#include "player/keys_down.h"
#include "player/player_link.h"
#include "player/tempo_clock.h"
#include "softsynth/parameters/constants.h"

namespace tarquil {

// For the audio thread alone (or whoever keeps it out meanwhile); nothing here allocates, waits or
// calls the system.  Times are absolute sample times of the engine.
class PlayerAudio {
  public:
    // The link stays as long as the object.
    explicit PlayerAudio(PlayerLink& control_link);

    // Takes over what the control side has changed; what it asks for is played at the clock's time
    // or, if it says so, later.  Before anything is queued or rendered.
    void follow_edits();

    // Queues a raw message of three bytes (status and two data bytes); messages that no engine
    // takes are dropped.  A controller that the bank has been taught moves its control instead.
    // False when there is no room.  A program change acts on later calls at
    // once and on the sound at its time; in General MIDI both are its time.
    bool add_message(const uint8_t* message, uint32_t time);
    // The same with a system exclusive message, from 0xF0 to 0xF7, which only General MIDI takes.
    bool add_exclusive(std::span<const uint8_t> message, uint32_t time);
    // A MIDI controller, 0..127, becomes `data`, 0..127, as far as the bank has been taught it.
    // False when it has not.
    bool move_learned(unsigned midi_controller, unsigned data, uint32_t time);
    // Lets all keys and pedals go at `time`.  False when there is no room.
    bool release_all(uint32_t time);

    // The host's tempo and place at `time`, in order; it acts with the run that holds the time, if
    // the bank wants it.
    void add_tempo(const HostTempo& said, uint32_t time) { tempo_clock.add(said, time); }
    [[nodiscard]] bool has_room_for_tempo() const { return tempo_clock.has_room(); }

    // Changes a controller but the pitch bend, of the edited program or a global one, in the bank
    // and, from `time` on, in the sound.
    void set_controller(unsigned number, int value, uint32_t time);
    // In the bank.
    [[nodiscard]] int get_controller(unsigned number) const;

    // In the native dialect: channel `channel` plays a sound that belongs to no program from `time`
    // on, until it is given a program.
    void play_sound(unsigned channel, const ControllerBytes& bytes, uint32_t time);

    // Drops what is queued, ends all that sounds as Player::silence, and sends the bank anew: what
    // messages had set is gone.
    void reset();

    // Renders `frames` (at most MAX_NUM_SAMPLES, whole granules) of interleaved stereo.  Without an
    // engine: silence, and the clock stands still.
    void run(float* pcm, uint32_t frames);

    // The same for a caller that may allocate and wait, while no window looks: many runs at once,
    // in steps that several threads share.  `defer` puts the next `frames` (at most a run of
    // General MIDI) down behind the others: events are taken and the clock moves there.  Then come
    // the parts, each of them on any thread; when all are done, `go_on`; then `finish`; then `mix`,
    // which stores the sound.  Steps of different runs may be done at the same time.
    void defer(DeferredRuns& later, uint32_t frames);
    [[nodiscard]] unsigned num_parts() const { return plays_gm() ? NUM_GM_ENGINES : 1; }
    void perform(DeferredRuns& later, unsigned part);
    void go_on(DeferredRuns& later);
    void finish(DeferredRuns& later);
    void mix(DeferredRuns& later, float* pcm);

    // Frames rendered so far, less what the clock was moved back by.
    [[nodiscard]] uint32_t time() const { return curr_time; }
    [[nodiscard]] uint32_t num_queued_events() const { return events.size(); }
    [[nodiscard]] uint32_t room_for_events() const { return events.room(); }

    // What plays General MIDI, for its report; null before.
    [[nodiscard]] const GmEnsemble* ensemble() const { return gm; }

    // Once the clock is there it is moved back: six hours and 46 minutes, half of TIME_NEVER.
    static constexpr uint32_t CLOCK_LIMIT = 0x40000000;
    // Between two runs, before anything has been queued.
    void set_clock(uint32_t time) { curr_time = time; }

  private:
    void follow(const PlayerEdit& edit);
    void refresh_if_asked();
    void follow_dialect();
    void begin_gm();
    void end_gm();
    bool follow_in_gm(const PlayerEdit& edit, uint32_t time);
    bool add_gm_message(const midi_event& record);
    bool take_learned(const uint8_t* message, uint32_t time);
    void set_gm_controller(unsigned program, unsigned number, int value, uint32_t time);
    void play_due_in_gm(uint32_t frames);
    Tempo next_tempo(uint32_t frames);
    void pass_tempo(Tarquil& engine, uint32_t frames);
    void run_native(Tarquil& engine, float* pcm, uint32_t frames);
    void run_gm(Tarquil& engine, float* pcm, uint32_t frames);
    void publish_gm_programs();
    void publish_gm_keys();
    void note_played(const midi_event& event);
    void strike_again(unsigned program);
    void send_byte(unsigned program, unsigned number, int value, uint32_t time);
    void send_bend(unsigned program, int coarse, int fine);
    void play_program(unsigned channel, unsigned program, uint32_t time);
    void send_program(unsigned channel, uint32_t time);
    void send_globals(uint32_t time);
    void refresh();
    void silence();
    void send_what_found_no_room();
    void finish_run();
    void keep_clock_low(Tarquil& engine);
    [[nodiscard]] uint32_t clock_excess() const {
        return curr_time < CLOCK_LIMIT ? 0 : curr_time - Tarquil::MIN_MOVED_CLOCK;
    }
    void move_clock_back(uint32_t frames);

    // For windows, each does nothing while none looks.  Before anything is run:
    void follow_watch(Tarquil& engine);
    // After each run of the engine, at whose end the clock is not yet:
    void show_run(Tarquil& engine, uint32_t frames);
    // After all of them:
    void measure(Tarquil& engine, const float* frames, uint32_t num_frames);
    // Channels of the engine, by bit.
    [[nodiscard]] uint32_t channels_of_edited_program() const;

    [[nodiscard]] bool plays_gm() const { return dialect == MidiDialect::GENERAL_MIDI; }
    // Full scale, or what the ensemble's limiter is to hold.
    [[nodiscard]] float output_bound() const {
        return plays_gm() ? GmEnsemble::ENGINE_BOUND : 1.0F;
    }
    [[nodiscard]] ChannelPrograms wanted_programs() const;

    PlayerLink& link;
    MidiDialect dialect = MidiDialect::NATIVE; // that has been followed
    GmEnsemble* gm = nullptr;                  // from the first time on that it plays
    EventQueue events;                         // the engine's own, or records of gm_message
    TempoClock tempo_clock;
    Audition audition;
    bool follows_tempo = false;
    uint32_t curr_time = 0;
    ChannelPrograms playing{};

    KeysDown keys_down;

    bool is_refresh_asked = false; // by an edit that is being followed

    // What did not fit into the queue and follows when there is room: channels by bit, the global
    // controllers, and a silence.
    uint32_t waiting_channels = 0;
    bool globals_wait = false;
    bool silence_waits = false;

    OutputWatch followed_watch = OutputWatch::NOTHING;
    uint32_t since_view = 0; // frames
};

} // namespace tarquil

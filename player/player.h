// What a host needs of an instrument, without any host: a bank, an engine that plays it, and the
// operations on both.
//
// A player has two sides.  The control side is for any thread but the audio thread: it changes and
// reads the bank, loads and saves, under a lock that is never held while text is parsed or written
// and that the audio thread never takes.  The audio side (`audio`) renders; what the control side
// has changed reaches it through a queue at its next call.

#pragma once

#include <array>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "common/platform/lock.h"
#include "instrument/settings.h"
#include "player/channel_programs.h"
#include "player/player_audio.h"
#include "player/player_link.h"

namespace tarquil {

class Player {
  public:
    // The built-in default sounds; channel c plays program c.  There is no engine yet.
    Player();
    Player(const Player&) = delete;
    Player& operator=(const Player&) = delete;
    ~Player();

    // For the audio thread.
    PlayerAudio& audio() { return audio_side; }

    // Makes the engines if there are none, and sends them the bank as a whole.  `seed` is that of
    // the oscillators' random start phases.
    void start(uint32_t seed = 1);
    void refresh();

    // The program that hosts and editors work on, 0..127.
    [[nodiscard]] unsigned edited_program() const { return link.edited_program.load(); }
    void set_edited_program(unsigned program);

    // The channel 0..15 that windows show as selected: theirs alone, kept with a compact state.
    [[nodiscard]] unsigned selected_channel() const { return link.selected_channel.load(); }
    void set_selected_channel(unsigned channel) { link.selected_channel = channel; }

    // The byte (0..127) of a controller (0..205): a global one, or the edited program's, which
    // sounds at once on every channel that plays it.  Bytes beyond a list's end are clamped.
    void set_controller(unsigned number, int value);
    [[nodiscard]] int get_controller(unsigned number);
    // All of them at once.
    [[nodiscard]] ControllerBytes edited_bytes();

    // `channel` 0..15 plays `program` 0..127 from the absolute sample time `time` on.
    void set_channel_program(unsigned channel, unsigned program, uint32_t time = PLAY_NOW);
    [[nodiscard]] unsigned channel_program(unsigned channel) const {
        return link.channel_programs[channel].load(std::memory_order_relaxed);
    }

    [[nodiscard]] ChannelPrograms all_channel_programs() const;

    // Whole programs.  `set_instrument` sounds on the channels that play it, and only what differs;
    // `load_instrument` sends every channel its whole program.
    [[nodiscard]] Instrument get_instrument(unsigned program);
    void set_instrument(unsigned program, const Instrument& instrument);
    void load_instrument(unsigned program, const Instrument& instrument);

    [[nodiscard]] std::string program_name(unsigned program);
    void set_program_name(unsigned program, const std::string& name);
    void set_song(const std::string& title, const std::string& author);

    // The whole bank.  A new one is sent as a whole; the channels keep their program numbers.
    [[nodiscard]] TarqSettings get_bank();
    void set_bank(const TarqSettings& bank);

    // See Tarquil::set_channel_taps; after the start, before anything is rendered.
    void set_channel_taps(StereoBuffer* taps) { engine->set_channel_taps(taps); }

    // Before the start: see Tarquil::set_runner.
    void set_runner(JobRunner& job_runner) { runner = &job_runner; }

    // Ends all that sounds, echoes included, within a few milliseconds.
    void silence();
    // What MIDI messages mean.  It belongs to the bank, so a new bank brings its own.  A switch
    // ends what sounds; channels that all play the usual programs then play the other's usual ones.
    void set_dialect(MidiDialect dialect);
    [[nodiscard]] MidiDialect dialect() const { return link.dialect; }
    // Whether delays, LFOs and the retrigger follow the host's tempo; it belongs to the bank.
    void set_tempo_sync(bool is_on);
    [[nodiscard]] bool tempo_sync() const {
        return link.tempo_sync.load(std::memory_order_relaxed);
    }
    // Which MIDI controllers move which controls, in either dialect; it belongs to the bank.
    void set_learned(const LearnedControls& learned);
    // While on, MIDI controllers that can be learned do nothing but to be heard.
    void listen(bool is_on) { link.learned.listen(is_on); }
    // The one that was moved since the last call, while it listens.
    [[nodiscard]] std::optional<unsigned> take_heard_controller() {
        return link.learned.take_heard();
    }
    // What General MIDI plays beside the bank, from now on; null, as at first: no drums, no laws.
    void set_gm_set(std::shared_ptr<const GmSet> set);

    // What the keys of General MIDI's drum channel play with its program; none in the native
    // dialect or without drums.
    struct KeyName {
        uint8_t key = 0;
        std::string name;
    };
    [[nodiscard]] std::vector<KeyName> drum_names();
    // The programs of that channel that are kits of their own; any other plays kit 0.
    [[nodiscard]] std::vector<unsigned> drum_kits();

    // Played by hand, as soon as possible, on channel 0..15: a key (0..127; velocity 0 lets it go),
    // a bend (0..16383), and what General MIDI alone knows: the modulation wheel (0..127) and the
    // sustain pedal.
    void play_key(unsigned channel, unsigned key, unsigned velocity);
    void bend(unsigned channel, unsigned value);
    void set_modulation(unsigned channel, unsigned value);
    void set_sustain(unsigned channel, bool is_down);
    // Keys that are down on channels that play the edited program are struck once more.
    void strike_again();

    // Plays a phrase with a sound of no program, beside all else and through an engine of its own:
    // no channel, no bank and no state knows of it.  One that is played is ended first.  It ends by
    // itself, with `end_audition`, or when all is silenced.
    void audition(const ControllerBytes& sound, const Phrase& phrase);
    void end_audition();

    // Silences a band (0..MC_N_BANDS - 1) of the master compressor, or lets it sound again.
    void set_band_muted(unsigned band, bool muted);
    [[nodiscard]] bool is_band_muted(unsigned band) const {
        return muted_bands[band].load(std::memory_order_relaxed);
    }

    // The bank as text and, which belongs to no bank, the channels' programs.
    [[nodiscard]] std::string save_state();
    // The same for hosts of our own formats: without what is as built in, and with the edited
    // program.
    [[nodiscard]] std::string save_state_compact();
    // Takes such a text, a bank's, or a directory image that holds one: without a line of channels,
    // channel c plays program c. Returns 0, or an error code of TarqSettings and changes nothing.
    int load_state(std::string_view text);

    // Read and taken by whoever shows them.
    Meters& meters() { return link.meters; }
    SoundingKeys& sounding_keys() { return link.keys; }
    // What learned MIDI controllers have moved, to be told a host: by the window while one is open,
    // as the meters' `watched` says, else by the audio thread.
    MovedControls& moved_controls() { return link.moved; }
    // What the meters keep of the output from the next block on.
    void watch_output(OutputWatch watch);
    // Changes whenever a value, a name or a channel's program has.
    [[nodiscard]] uint32_t num_changes() const {
        return link.changes.load(std::memory_order_relaxed);
    }

  private:
    void post(const PlayerEdit& edit);
    void play_message(unsigned kind, unsigned channel, unsigned data1, unsigned data2);
    void post_difference(unsigned program, const ControllerBytes& before,
                         const ControllerBytes& after);
    void replace_bank(const TarqSettings& fresh, const ChannelPrograms* channels);
    void store_instrument(unsigned program, const Instrument& instrument);
    BankBytes& bank() { return link.bank.latest(); }
    void follow_dialect(const ChannelPrograms* channels);
    void follow_names();
    void prepare_gm(MidiDialect wanted, const GmSet& set);
    void try_sound(std::unique_ptr<const AuditionRequest> request);
    std::unique_ptr<Tarquil> make_engine(uint32_t seed);

    Lock lock;          // of what follows, and of the link's writing ends
    TarqSettings texts; // the names; the sounds are the latest bank's
    PlayerLink link;
    std::unique_ptr<Tarquil> engine;
    uint32_t phase_seed = 0; // of the engine
    JobRunner* runner = nullptr;
    // From the first time on that they are wanted.
    std::unique_ptr<Tarquil> drum_engine;
    std::unique_ptr<Tarquil> audition_engine;
    std::unique_ptr<GmEnsemble> ensemble;
    std::unique_ptr<StereoBuffer[]> output_taps;    // from the first time on that they are watched
    std::atomic<bool> muted_bands[MC_N_BANDS] = {}; // as the engine has it, or will

    PlayerAudio audio_side;
};

} // namespace tarquil

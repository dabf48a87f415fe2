// One MIDI channel: its controllers, its notes, and its chain of effects and filters.
//
// Chain: voices, insert effects 1 and 1b, four filters, volume and pan, stereo effect, sends.

#pragma once

#include <cstdint>

#include "softsynth/effects/stereo_effect.h"
#include "softsynth/signal/buffer.h"
#include "softsynth/voices/chain_settings.h"
#include "softsynth/voices/chain_step.h"
#include "softsynth/voices/channel_chain.h"
#include "softsynth/voices/channel_output.h"
#include "softsynth/voices/channel_scratch.h"
#include "softsynth/voices/controller.h"
#include "softsynth/voices/sound_controls.h"
#include "softsynth/voices/voice_pool.h"
#include "softsynth/voices/voice_set.h"
#include "softsynth/wavetables/phase_random.h"

namespace tarquil {

class Channel {
  public:
    Channel();

    // What the channel shares with the engine's others, before anything else: the pool, the random
    // numbers and the waves that its notes draw from, and where its timelines find room.
    void attach(VoicePool& shared_pool, PhaseRandom& shared_random,
                const WaveformStore& shared_waves, TimelineMemory& timelines);

    // Starts a note (0..127) with velocity 1..127; the pitch must not be sounding.  A channel at
    // its maximum of voices cuts its oldest one; a full pool drops the note.
    void note_on(uint32_t time, int midi_pitch, int velocity);

    // Releases the note of that pitch, if there is one.
    void note_off(uint32_t time, int midi_pitch);

    // Fades out what sounds at `time`, echoes included, as FadeOut does; what starts later is not
    // touched, and changes of controllers after it do not reach what fades.  A channel that is
    // silenced again meanwhile cuts the notes that have started since.
    void silence(uint32_t time);

    // Renders the block of `size` frames that starts at `start`, for which the voices have been
    // rendered.  Channels do not act on each other: any number of them may render at the same time,
    // each with a scratch of its own.
    void render(uint32_t size, uint32_t start, ChannelScratch& scratch, ChannelOutput& output);

    // The same in two halves: what voices and controllers give, then the chain.  The second may be
    // that of an earlier block while another thread does the first of a later one.
    void render_voices(uint32_t size, uint32_t start, ChannelScratch& scratch, ChainRecord& record);
    void render_chain(const ChainRecord& record, ChannelScratch& scratch, ChannelOutput& output);

    // Those that sound, by their places in the pool.
    [[nodiscard]] const VoiceSet& get_voices() const { return voices; }

    // A voice of this channel has finished.
    void free_voice(const Voice& v);

    // Lets the clock, now at `now`, start `frames` later.
    void move_clock_back(uint32_t frames, uint32_t now);

    // In Hz; negative: no note yet.
    [[nodiscard]] float get_last_note_frequency() const { return last_note_frequency; }
    void set_last_note_frequency(float frequency) { last_note_frequency = frequency; }

    ControllerArray& get_controllers() { return controllers; }
    // What is read by a sound that fades or does not.
    [[nodiscard]] SoundControls get_sound_controls(bool fading) const {
        return SoundControls(controllers, fading ? &frozen : nullptr);
    }
    PhaseRandom& get_phase_random() { return *phase_random; }
    [[nodiscard]] const WaveformStore& get_waves() const { return *waves; }
    CopyTuningCache& get_copy_tunings() { return pool->get_copy_tunings(); }

  private:
    // True when the last voice before `start` lies so far back that its tails count as silence.
    [[nodiscard]] bool is_silent(uint32_t start) const;
    // The first half: calls take(step, settings) when the scratch holds what the step needs.
    template <typename Take>
    void for_each_step(uint32_t size, uint32_t start, ChannelScratch& scratch, const Take& take);
    // The second one.
    void follow_step(const ChainStep& step, const ChainSettings& step_settings,
                     ChannelScratch& scratch, ChannelOutput& output);

    // The sum of the voices that fade, or of the others; false when there is none.
    bool sum_voices(MonoBuffer& signal, uint32_t start, bool fading);
    template <typename Take>
    void take_fading(uint32_t size, uint32_t start, ChannelScratch& scratch, const Take& take);
    template <typename Take>
    void take_present(uint32_t start, ChannelScratch& scratch, const Take& take);
    const ChainSettings& present_settings();
    void end_fade(uint32_t end);

    [[nodiscard]] int last_int(unsigned controller) const;

    ControllerArray controllers;
    ChainSettings settings;               // of the controllers after so many changes
    uint32_t settings_count = UINT32_MAX; // none yet

    // the second half's
    ChannelChain chains[2]; // the one in use, and what fades behind another
    unsigned chain = 0;
    StereoEffect stereo_effect;
    bool chain_is_empty = true; // no memory behind silence

    // memory while the channel is being silenced
    enum class Fade { NONE, DUE, RUNNING };
    Fade fade = Fade::NONE;
    FrozenControls frozen;     // and the fade's start
    bool later_sound = false;  // has been rendered since the fade began
    int32_t fading_voices = 0; // of the voices

    // The voice that the last note-on of each pitch started and that has not had its note-off.
    Voice* active_voices[128] = {};
    VoiceSet voices; // all, also those that are in their release or cut
    float last_note_frequency = -1.0F;
    uint32_t last_render_time; // end of the last block with a voice of this channel

    VoicePool* pool = nullptr;
    PhaseRandom* phase_random = nullptr;
    const WaveformStore* waves = nullptr;
};

} // namespace tarquil

// Speech made audible: frames, interpolated every 21 samples, move the synthesis filter over
// pulses, noise or a carrier.
//
// Below a frame's voicing limit the excitation is pulses or the carrier, above it noise: A. V.
// McCree and T. P. Barnwell, "A mixed excitation LPC vocoder model for low bit rate speech coding",
// IEEE Trans. Speech and Audio Processing 3 (1995) 242-250.
//
// Real-time safe: nothing allocates, and the cost of a sample is the same for all frames.  The same
// speech and settings give the same bytes on every machine, however the samples are asked for.

#pragma once

#include "softsynth/lpc/band_limit.h"
#include "softsynth/lpc/band_splitter.h"
#include "softsynth/lpc/carrier_whitener.h"
#include "softsynth/lpc/pulse_train.h"
#include "softsynth/lpc/speech.h"
#include "softsynth/lpc/warped_lattice.h"

namespace tarquil {

enum class SpeechVoice {
    OWN,     // the melody of the recording
    FIXED,   // pulses at one pitch
    CARRIER, // the sound that render is given
    WHISPER, // noise
};

struct SpeechSettings {
    SpeechVoice voice = SpeechVoice::OWN;
    double pitch_hz = 110.0; // of FIXED
    // 2 speaks twice as fast, 0.5 half as fast, a negative one backwards.
    double speed = 1.0;
};

inline constexpr double MAX_SPEECH_SPEED = 4.0; // and its negative

class SpeechPlayer {
  public:
    // `speech` outlives the player and does not change.
    SpeechPlayer(const Speech& played_speech, const SpeechSettings& player_settings);

    // Fills `out`; `carrier` holds as many samples, null without one.  Silence behind the end.
    void render(const float* carrier, float* out, uint32_t num_samples);

    // From here on there is silence.
    [[nodiscard]] bool is_finished() const;

  private:
    static constexpr uint32_t STEP_SAMPLES = 21;
    static constexpr uint32_t STEPS_PER_FRAME = SPEECH_FRAME_SAMPLES / STEP_SAMPLES;

    void begin_step();
    void excite(const float* carrier, float* out, uint32_t num_samples);

    // settings
    const Speech& speech;
    SpeechVoice voice;
    double fixed_pitch_hz;
    int64_t step; // along the frames, in units of POSITION_SCALE a frame

    // of this step
    float level_at_end = 0.0F;
    float level_slope = 0.0F;
    bool is_voiced = false;

    // memory
    int64_t position;
    uint32_t left_in_step = 0;
    float level = 0.0F;
    float deemphasis = 0.0F;
    uint32_t noise_state = 1;
    PulseTrain pulses;
    CarrierWhitener whitener;
    BandSplitter splitter;
    WarpedLattice filter;
    BandLimit band_limit;
};

// How many samples a player gives before it is finished; `speed` is not 0.
uint64_t speech_length(const Speech& speech, double speed);

} // namespace tarquil

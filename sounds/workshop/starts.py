"""Plain designs to start a fit from, where there is no text yet or another one may do better.

Each is a kind of envelope (struck or held, as the target's own), a pair of waves and a low-pass that follows
velocity; noise waits at a low level in the third oscillator.
"""

import candidates
import features
import general_midi as gm
import instrument_text

SINE, SAW, SQUARE, TRIANGLE, NOISE = 1, 2, 3, 4, 5
LOW_PASS, TWO_POLES = 1, 1
TUNE = 64
# (first wave, second wave, its semitones, mix byte, ring modulation, copies of each, random phases)
WAVES = (
    (SAW, 0, 0, 0, 0, 0, 0),
    (SQUARE, 0, 0, 0, 0, 0, 0),
    (TRIANGLE, SINE, 12, 40, 0, 0, 0),
    (SINE, SINE, 12, 50, 0, 0, 0),
    (SAW, SINE, 0, 64, 0, 0, 0),
    (SAW, SQUARE, 12, 40, 0, 0, 0),
    (SAW, SQUARE, 0, 64, 0, 0, 0),
    (SINE, SINE, 19, 40, 0, 0, 0),
    (TRIANGLE, SAW, 12, 30, 0, 0, 0),
    (SAW, SAW, 0, 64, 0, 3, 127),
    (SINE, SINE, 28, 0, 1, 0, 0),
    (SINE, SINE, 36, 0, 1, 0, 0),
    (TRIANGLE, SINE, 19, 0, 1, 0, 0),
)


def is_struck(banks):
    """Whether the held sound has died away by 20 dB after 0.95 s, as both banks on average say."""
    index = features.NAMES.index("e950")
    return sum(bank[:, index].mean() for bank in banks) / len(banks) < -14


def _bytes(wave, struck):
    first, second, semitones, mix, ring, copies, random = wave
    return {
        "osc1_type": first, "osc2_type": second, "osc3_type": NOISE, "osc3_volume": 14,
        "osc1_fine_tune": TUNE, "osc2_fine_tune": TUNE, "osc2_coarse_tune": TUNE + semitones,
        "osc1_osc2_mix": mix, "osc1_osc2_ring_modulator": ring,
        "osc1_multi_count": copies, "osc2_multi_count": copies,
        "osc1_spread": 60 if copies else 0, "osc2_spread": 64 if copies else 0, "osc1_randomize_phase": random,
        "amplitude_influence_source": 1, "amplitude_influence_amount": 127,
        "filter1_type": LOW_PASS, "filter1_depth": TWO_POLES, "filter1_key_follow": 1,
        "filter1_cutoff": 56, "filter1_resonance": 14,
        "cutoff1_influence1_source": 1, "cutoff1_influence1_amount": 90,
        "cutoff1_influence2_source": 2, "cutoff1_influence2_amount": 76,
        "env1_attack": 6 if struck else 40, "env1_decay": 112 if struck else 60,
        "env1_sustain": 0 if struck else 116, "env1_release": 56,
        "env2_attack": 0, "env2_decay": 70, "env2_sustain": 0, "env2_release": 60,
        "main_volume": 76,
    }


def designs(program, banks):
    struck = is_struck(banks)
    return [candidates.Version(instrument_text.Instrument(_bytes(wave, struck)), {}, {}) for wave in WAVES]


def comment_of(program):
    return f"{gm.name_of(program).replace('_', ' ').capitalize()}: fitted to what two sample banks agree on"

"""How far a voice's filter may open: a biquad at the top of the spectrum has poles that do not decay, and rings at full level.

Whether it does in a given note is chance (where the note falls within the engine's grid), so it is computed, not heard.
"""

import numpy as np

import features
import instrument_text

LADDERS = range(18, 25)
MULTIPLIES = 127
HIGHEST_HZ = 17000.0
LOWEST_HZ = 20.0
HIGHEST_KEY = 108


def opening_hz(instrument, laws=None, key=HIGHEST_KEY, velocity=127):
    """The cutoff with every source at its height, of a note; laws are {controller: (bytes an octave, bytes per 12 of velocity)}."""
    rows = instrument_text.controllers()
    octaves = rows["filter1_cutoff"].value(instrument["filter1_cutoff"])
    for number in (1, 2, 3):
        name = f"cutoff1_influence{number}_amount"
        if instrument[f"cutoff1_influence{number}_source"] and instrument[name] != MULTIPLIES:
            by_key, by_velocity = (laws or {}).get(name, (0.0, 0.0))
            byte = instrument[name] + by_key * (key - 60) / 12 + by_velocity * (velocity - 100) / 12
            octaves += max(0.0, rows[name].value(float(np.clip(byte, 0, 126))))
    follows = features.key_hz(key) if instrument["filter1_key_follow"] else 0.0
    return LOWEST_HZ * 2 ** octaves + follows


def octaves_beyond(instrument, laws=None, **note):
    """How far it opens beyond what is safe; 0 for ladders, and where there is no filter."""
    if not instrument["filter1_type"] or instrument["filter1_type"] in LADDERS:
        return 0.0
    return max(0.0, float(np.log2(opening_hz(instrument, laws, **note) / HIGHEST_HZ)))

"""Wide moves of a few bytes at once, tried before any slope is taken.

Slopes are blind where a small step changes nothing: an attack shorter than the measure's own window, a burst of noise that is over
before the spectrum's window opens.
"""

import genes

# In bytes, from where the text stands.
ATTACK_STEPS = (-8, 5, 10, 15, 20)
CUTOFF_STEPS = (-10, -5, 5, 10)
# Of the noise: how much louder (the level is the byte's cube), and the burst's decay in bytes.
NOISE_FACTORS = (1.0, 1.25, 1.6)
BURST_DECAYS = (60, 95, 127)
BURST_SOURCE = 3


def _within(byte, low=1, high=126):
    return int(min(high, max(low, round(byte))))


def families(instrument):
    """Lists of changes, one list after the other to be tried on what the last one left: functions of the instrument."""
    found = [lambda now: [{"env1_attack": _within(now["env1_attack"] + step)} for step in ATTACK_STEPS]]
    if instrument["osc3_type"] == genes.NOISE and instrument["osc3_volume"]:
        found.append(_noise)
    if instrument["filter1_type"]:
        found.append(lambda now: [{"filter1_cutoff": _within(now["filter1_cutoff"] + step)} for step in CUTOFF_STEPS])
    return found


def _noise(now):
    is_burst = now["osc3_influence_source"] == BURST_SOURCE
    decays = (now["env3_decay"],) + (BURST_DECAYS if is_burst else ())
    return [{"osc3_volume": _within(now["osc3_volume"] * factor), "env3_decay": decay}
            for factor in NOISE_FACTORS for decay in decays if (factor, decay) != (1.0, now["env3_decay"])]

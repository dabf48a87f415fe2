"""Loudness of a sound by ITU-R BS.1770-4: K-weighting, blocks of 400 ms, both gates."""

from functools import lru_cache

import numpy as np
import scipy.signal

RATE = 44100
SILENCE = -99.0


@lru_cache(maxsize=1)
def _weighting():
    """The standard's two filters (a shelf of 4 dB, a high-pass) at this rate."""
    def shelf(f0, q, gain_db):
        k, v = np.tan(np.pi * f0 / RATE), 10 ** (gain_db / 20)
        root = v ** 0.4996667741545416
        a0 = 1 + k / q + k * k
        return ([(v + root * k / q + k * k) / a0, 2 * (k * k - v) / a0, (v - root * k / q + k * k) / a0],
                [1, 2 * (k * k - 1) / a0, (1 - k / q + k * k) / a0])

    def high_pass(f0, q):
        k = np.tan(np.pi * f0 / RATE)
        a0 = 1 + k / q + k * k
        return [1, -2, 1], [1, 2 * (k * k - 1) / a0, (1 - k / q + k * k) / a0]

    stages = (shelf(1681.974450955533, 0.7071752369554196, 3.999843853973347),
              high_pass(38.13547087602444, 0.5003270373238773))
    return np.array([np.concatenate([b, a]) for b, a in stages])


def lufs(sound):
    """Of frames x 2."""
    weighted = scipy.signal.sosfilt(_weighting(), np.asarray(sound, float), axis=0)
    power = np.concatenate([[0], np.cumsum((weighted ** 2).sum(1))])
    size, hop = RATE * 4 // 10, RATE // 10
    starts = np.arange(0, len(sound) - size + 1, hop)
    if len(starts) == 0:
        return SILENCE
    blocks = (power[starts + size] - power[starts]) / size
    loud = blocks[blocks > 10 ** ((-70 + 0.691) / 10)]
    if len(loud) == 0:
        return SILENCE
    gated = loud[loud > loud.mean() / 10]
    return float(-0.691 + 10 * np.log10(gated.mean()))

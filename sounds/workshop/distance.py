"""How far one note's features lie from another's, and from what two banks agree on.

Differences are decibels (or semitones, for centroids) within a group of features, averaged after each is cut
at CUT; WEIGHTS adds the groups up.  A level matters the more the louder it is: a partial 55 dB
down may be 5 dB off.
"""

import numpy as np

import features

CUT = 24.0
# What may be fitted to, and the second measure that is kept for judging.
FIT_WEIGHTS = {"level": 0.4, "envelope": 1.0, "partials": 1.6, "rest": 1.0, "centroid": 0.5, "attack": 0.25}
SECOND_WEIGHTS = {"mel": 2.0, "envelope": 1.0, "centroid": 0.3, "wobble": 0.3}
# Drums have no partials of a key: what may be fitted to is mel bands.
DRUM_FIT_WEIGHTS = {"level": 0.3, "mel": 2.0, "envelope": 1.0, "centroid": 0.3, "attack": 0.25}
DRUM_SECOND_WEIGHTS = {"partials": 1.0, "rest": 1.5, "envelope": 1.0, "centroid": 0.5}
_AUDIBLE = 60.0
_WEIGHED = ("envelope", "partials", "rest", "mel")


def without_level(rows):
    """Rows of one program (notes x features) with its own mean level taken off: loudness is judged apart."""
    out = np.array(rows, float)
    level = out[..., 0]
    out[..., 0] = level - level.mean(axis=-1, keepdims=True)
    return out


def between(a, b, weights, interval=None):
    """Distance of rows a from rows b, over the last axis; with `interval` from the span of b and interval."""
    total = 0.0
    for name, weight in weights.items():
        index = features.GROUPS[name]
        x, y = a[..., index], b[..., index]
        if interval is None:
            difference = np.abs(x - y)
            loud = np.maximum(x, y)
        else:
            z = interval[..., index]
            low, high = np.minimum(y, z), np.maximum(y, z)
            middle = (low + high) / 2
            outside = np.maximum(0, np.maximum(low - x, x - high))
            # Within the span little is lost, and the middle is best.
            difference = outside + 0.25 * np.minimum(np.abs(x - middle), (high - low) / 2)
            loud = np.maximum(x, high)
        difference = np.minimum(difference, CUT)
        if name in _WEIGHED:
            share = np.clip(1 + loud / _AUDIBLE, 0, 1)
            mean = (difference * share).sum(-1) / np.maximum(share.sum(-1), 1.0)
        else:
            mean = difference.mean(-1)
        total = total + weight * mean
    return total / sum(weights.values())


def to_span_signed(a, b, c, weights, cut=CUT):
    """What between(..., interval) sums, kept apart and signed: (differences, weights) over the last axis."""
    low, high = np.minimum(b, c), np.maximum(b, c)
    middle = (low + high) / 2
    outside = np.maximum(0, a - high) - np.maximum(0, low - a)
    inside = np.clip(a - middle, -(high - low) / 2, (high - low) / 2)
    difference = np.clip(outside + 0.25 * inside, -cut, cut)
    share = np.clip(1 + np.maximum(a, high) / _AUDIBLE, 0, 1)
    weight = np.zeros_like(difference)
    for name, of_group in weights.items():
        index = features.GROUPS[name]
        part = share[..., index] if name in _WEIGHED else np.ones_like(share[..., index])
        weight[..., index] = of_group * part / np.maximum(part.sum(-1, keepdims=True), 1.0)
    return difference, weight / sum(weights.values())


def of_program(ours, bank, weights):
    """Mean distance of a program's notes to those of each program of a bank (programs x notes x features)."""
    return between(without_level(ours)[None], without_level(bank), weights).mean(1)


def to_span(ours, one, other, weights):
    """Mean distance of a program's notes from the span between two banks' same program."""
    return float(between(without_level(ours), without_level(one), weights, without_level(other)).mean())

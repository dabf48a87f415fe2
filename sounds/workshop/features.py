"""What is measured of a note: a row of numbers, most of them decibels, named by NAMES.

A note starts at the first sample of its slot.  Spectra are powers of Hann windows of 8192 samples, both
sides' sum, at three places (start, early, late).  What is near a multiple of the key's frequency is partial, what
lies between multiples is rest; the rest under a partial is taken to be as dense as beside it.
All levels are below the note's loudest window and end at FLOOR, so that a row says nothing of volume but `level`.
The first group may be fitted to; the second (SECOND_NAMES: mel bands, wobble) is for judging only.
"""

from functools import lru_cache

import numpy as np
import scipy.fft

RATE = 44100
SIZE = 8192
# Below lies what is not heard.
LOWEST_BIN = 8
FLOOR = -60.0
WINDOW_STARTS_MS = (0, 280, 800)
HARMONICS = 10
HARMONIC_GROUPS = ((11, 14), (15, 20), (21, 30), (31, 50))
REST_EDGES = (60, 180, 360, 720, 1440, 2880, 5760, 16000)
MEL_BANDS = 18
ENVELOPE_MS = (5, 15, 35, 70, 150, 300, 600, 950, 1060, 1130, 1250, 1400)
ENVELOPE_HALF_MS = 5

_PARTIALS = [f"h{k}" for k in range(1, HARMONICS + 1)] + [f"h{a}-{b}" for a, b in HARMONIC_GROUPS]
_RESTS = [f"n{e}" for e in REST_EDGES[:-1]]
FIT_NAMES = (
    ["level"] + [f"e{t}" for t in ENVELOPE_MS] + [f"{p}@{w}" for w in range(3) for p in _PARTIALS]
    + [f"{n}@{w}" for w in range(3) for n in _RESTS] + [f"centroid@{w}" for w in range(3)]
    + ["attack"]
)
SECOND_NAMES = [f"m{b}@{w}" for w in range(3) for b in range(MEL_BANDS)] + ["wobble_db", "wobble_cents"]
NAMES = FIT_NAMES + SECOND_NAMES


def group(prefix):
    """Indices of the features whose name starts so."""
    return np.array([i for i, name in enumerate(NAMES) if name.startswith(prefix)])


# The groups of the distance; partials and rest stay apart.
GROUPS = {
    "level": np.array([0]),
    "envelope": np.array([i for i, n in enumerate(NAMES) if n[0] == "e"]),
    "partials": np.array([i for i, n in enumerate(NAMES) if n[0] == "h"]),
    "rest": np.array([i for i, n in enumerate(NAMES) if n[0] == "n"]),
    "centroid": group("centroid"),
    "attack": group("attack"),
    "mel": np.array([i for i, n in enumerate(NAMES) if n[0] == "m"]),
    "wobble": group("wobble"),
}


def key_hz(key):
    return 440.0 * 2.0 ** ((key - 69) / 12)


@lru_cache(maxsize=None)
def _frequencies():
    return np.fft.rfftfreq(SIZE, 1 / RATE)


@lru_cache(maxsize=None)
def band_masks(key):
    """What sums powers into partials, and which bins lie between partials."""
    f0 = key_hz(key)
    freqs = _frequencies()
    number = np.maximum(1, np.rint(freqs / f0))
    away = np.abs(freqs - number * f0)
    width = np.minimum(np.maximum(2.5 * RATE / SIZE, 0.015 * freqs), 0.33 * f0)
    near = away <= width
    between = away >= 0.36 * f0
    groups = [(k, k) for k in range(1, HARMONICS + 1)] + list(HARMONIC_GROUPS)
    partials = np.array([near & (number >= a) & (number <= b) for a, b in groups], np.float32)
    bands = np.array([(freqs >= a) & (freqs < b) for a, b in zip(REST_EDGES, REST_EDGES[1:])], np.float32)
    beside = bands * between
    # A band narrower than the distance of partials has nothing between them: its rest is what is not near one.
    empty = beside.sum(1) < 2
    beside[empty] = bands[empty] * ~near
    scale = bands.sum(1) / np.maximum(1, beside.sum(1))
    # The rest under the partials: each partial bin counts the mean density of its band.
    in_band = partials @ bands.T / np.maximum(1, bands.sum(1))
    return partials, beside * scale[:, None], in_band.astype(np.float32)


@lru_cache(maxsize=None)
def _mel_matrix():
    top = 2595 * np.log10(1 + 16000 / 700)
    edges = 700 * (10 ** (np.linspace(40, top, MEL_BANDS + 2) / 2595) - 1)
    freqs = _frequencies()
    rise = (freqs - edges[:-2, None]) / np.diff(edges)[:-1, None]
    fall = (edges[2:, None] - freqs) / np.diff(edges)[1:, None]
    return np.maximum(0, np.minimum(rise, fall)).astype(np.float32)


def decibels(power):
    return 10 * np.log10(np.maximum(power, 1e-20))


def spectra(sounds):
    """notes x windows x bins of power."""
    window = np.hanning(SIZE).astype(np.float32)
    scale = 2.0 / (window ** 2).sum() / SIZE
    starts = [ms * RATE // 1000 for ms in WINDOW_STARTS_MS]
    pieces = np.stack([sounds[:, s:s + SIZE] for s in starts], 1) * window[:, None]
    if sounds.shape[2] == 1:
        return np.abs(scipy.fft.rfft(pieces[..., 0], axis=2)) ** 2 * scale
    return (np.abs(scipy.fft.rfft(pieces, axis=2)) ** 2).sum(3) * (scale / 2)


def _envelopes(sounds):
    """notes x steps of power, a step a millisecond, smoothed over ENVELOPE_HALF_MS both ways."""
    step = 441
    steps = sounds.shape[1] * 10 // step
    power = sum(sounds[:, :steps * step // 10, side] ** 2 for side in range(sounds.shape[2])) / sounds.shape[2]
    sums = np.cumsum(np.pad(power, ((0, 0), (1, 0))), 1, dtype=np.float64)
    at = np.arange(steps) * step // 10
    half = ENVELOPE_HALF_MS * step // 10
    low, high = np.maximum(0, at - half), np.minimum(power.shape[1], at + half)
    return (sums[:, high] - sums[:, low]) / (high - low)


def _wobble(sound, key):
    """Depth of level (dB) and pitch (cents) that wobbles between 3 and 10 Hz, of the first partials, held."""
    f0 = key_hz(key)
    mono = sound[RATE // 4:RATE * 95 // 100].mean(1)
    time = np.arange(len(mono)) / RATE
    down = mono * np.exp(-2j * np.pi * f0 * time)
    hop = 441
    size = max(4 * hop, int(RATE / f0 * 4))
    sums = np.cumsum(np.concatenate([[0], down]))
    at = np.arange(0, len(mono) - size, hop)
    track = (sums[at + size] - sums[at]) / size
    if np.abs(track).max(initial=0) < 1e-5 or len(track) < 8:
        return 0.0, 0.0
    level = 20 * np.log10(np.maximum(np.abs(track), 1e-7))
    cents = np.diff(np.unwrap(np.angle(track))) * RATE / hop / (2 * np.pi * f0) * 1731
    x = np.arange(len(level))
    level = level - np.polyval(np.polyfit(x, level, 2), x)
    cents = cents - np.median(cents)
    return min(12.0, float(level.std())), min(50.0, float(np.median(np.abs(cents)) * 1.48))


def measure(sounds, keys, wobble=True):
    """Rows of NAMES for sounds (notes x frames x sides) struck at their first sample."""
    sounds = np.asarray(sounds, np.float32)
    keys = np.asarray(keys)
    power = spectra(sounds)
    count = len(keys)
    partials = np.empty((count, 3, HARMONICS + len(HARMONIC_GROUPS)))
    rests = np.empty((count, 3, len(REST_EDGES) - 1))
    for key in np.unique(keys):
        here = keys == key
        near, beside, in_band = band_masks(int(key))
        rest = power[here] @ beside.T
        rests[here] = rest
        partials[here] = np.maximum(0, power[here] @ near.T - rest @ in_band.T)
    total = power[..., LOWEST_BIN:].sum(2)
    loudest = np.maximum(total.max(1), 1e-12)[:, None, None]

    def below(values):
        return np.maximum(FLOOR, decibels(values / loudest))

    envelope = _envelopes(sounds)
    peak = np.maximum(envelope.max(1), 1e-12)
    steps = [min(t, envelope.shape[1] - 1) for t in ENVELOPE_MS]
    reached = np.argmax(envelope >= 0.5 * peak[:, None], 1)
    freqs = np.maximum(_frequencies(), 20)
    centroid = 12 * np.log2(np.maximum((power @ freqs.astype(np.float32)) / np.maximum(power.sum(2), 1e-12), 20) / 20)
    quiet = total < 1e-6 * loudest[..., 0]
    centroid = np.where(quiet, centroid.max(1, keepdims=True), centroid)
    wobbles = np.array([_wobble(s, k) for s, k in zip(sounds, keys)]) if wobble else np.zeros((count, 2))
    return np.hstack([
        decibels(peak)[:, None],
        np.maximum(FLOOR, decibels(envelope[:, steps] / peak[:, None])),
        below(partials).reshape(count, -1),
        below(rests).reshape(count, -1),
        centroid,
        10 * np.log2(np.maximum(reached, 2))[:, None],
        below(power @ _mel_matrix().T).reshape(count, -1),
        wobbles,
    ])

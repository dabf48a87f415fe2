"""What equalisers make of notes' features, by arithmetic: they are linear and behind all voices, so a note is rendered once.

Spectra are kept in bands of an eighth of an octave, within which a response counts as constant.
"""

import numpy as np

import features

PEAKING, LOW_SHELF, HIGH_SHELF = 6, 7, 8
BANDS_AN_OCTAVE = 8
LOWEST_HZ = 20.0
COUNT = int(np.ceil(np.log2(features.RATE / 2 / LOWEST_HZ) * BANDS_AN_OCTAVE))
CENTRES_HZ = LOWEST_HZ * 2 ** ((np.arange(COUNT) + 0.5) / BANDS_AN_OCTAVE)
_HZ = np.maximum(np.fft.rfftfreq(features.SIZE, 1 / features.RATE), LOWEST_HZ)
_BAND = np.minimum(COUNT - 1, (np.log2(_HZ / LOWEST_HZ) * BANDS_AN_OCTAVE).astype(int))
_USED, _FIRST_BINS = np.unique(_BAND, return_index=True)


def in_bands(values):
    """Sums over each band's bins, along the last axis; low bands that are narrower than a bin stay empty."""
    out = np.zeros(values.shape[:-1] + (COUNT,))
    out[..., _USED] = np.add.reduceat(values, _FIRST_BINS, axis=-1)
    return out


def power_response(kind, hertz, q, gain):
    """|H|^2 in the bands of an equaliser that gains `gain` squared; R. Bristow-Johnson's cookbook, as in the engine."""
    omega = min(np.pi, 2 * np.pi * hertz / features.RATE)
    c = np.cos(omega)
    alpha = np.sin(omega) / (2 * max(q, 0.001))
    if kind == PEAKING:
        b, a = (1 + alpha * gain, -2 * c, 1 - alpha * gain), (1 + alpha / gain, -2 * c, 1 - alpha / gain)
    else:
        # The high shelf is the low one with the cosine's sign turned.
        c *= 1 if kind == LOW_SHELF else -1
        beta = 2 * np.sqrt(gain) * alpha
        b = (gain * (gain + 1 - (gain - 1) * c + beta), 2 * gain * (gain - 1 - (gain + 1) * c),
             gain * (gain + 1 - (gain - 1) * c - beta))
        a = (gain + 1 + (gain - 1) * c + beta, -2 * (gain - 1 + (gain + 1) * c), gain + 1 + (gain - 1) * c - beta)
        if kind == HIGH_SHELF:
            b, a = (b[0], -b[1], b[2]), (a[0], -a[1], a[2])
    z = np.exp(-2j * np.pi * CENTRES_HZ / features.RATE)
    return np.abs((b[0] + (b[1] + b[2] * z) * z) / (a[0] + (a[1] + a[2] * z) * z)) ** 2


class Notes:
    """Notes as rendered, to be measured behind any response."""

    PARTIALS = len(features.GROUPS["partials"]) // 3
    RESTS = len(features.GROUPS["rest"]) // 3

    def __init__(self, sounds, keys):
        self.rows = features.measure(sounds, keys, wobble=False)
        power = features.spectra(np.asarray(sounds, np.float32))
        audible = power.copy()
        audible[..., :features.LOWEST_BIN] = 0
        self.parts = np.empty(power.shape[:2] + (self.PARTIALS + self.RESTS + 3, COUNT))
        for note, key in enumerate(keys):
            near, beside, in_band = features.band_masks(int(key))
            own = near - in_band @ beside
            for window in range(power.shape[1]):
                one = power[note, window]
                self.parts[note, window] = in_bands(np.vstack([own * one, beside * one, audible[note, window], one, one * _HZ]))
        self.parts = self.parts.astype(np.float32)
        self.plain_total = self.parts[:, :, -3].sum(-1)

    def behind(self, response):
        """Rows of features behind |H|^2; envelopes and attacks stay as they were rendered."""
        sums = self.parts @ response.astype(np.float32)
        total = sums[..., -3]
        loudest = np.maximum(total.max(1), 1e-12)[:, None, None]
        rows = self.rows.copy()
        levels = np.maximum(features.FLOOR, features.decibels(np.maximum(0, sums[..., :-3]) / loudest))
        rows[:, features.GROUPS["partials"]] = levels[..., :self.PARTIALS].reshape(len(rows), -1)
        rows[:, features.GROUPS["rest"]] = levels[..., self.PARTIALS:].reshape(len(rows), -1)
        centroid = 12 * np.log2(np.maximum(sums[..., -1] / np.maximum(sums[..., -2], 1e-12), 20) / 20)
        quiet = total < 1e-6 * loudest[..., 0]
        rows[:, features.GROUPS["centroid"]] = np.where(quiet, centroid.max(1, keepdims=True), centroid)
        rows[:, 0] += features.decibels(total.max(1) / np.maximum(self.plain_total.max(1), 1e-12))
        return rows

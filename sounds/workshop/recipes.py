"""Other ways to make a program's sound: waves, their interval, ring modulation, copies, the filter's kind and the noise beside them.

A way is judged behind the best equalisers for it, by arithmetic, since those of the text were made for other waves.
"""

import numpy as np

import candidates
import distance
import equalisers
import gauss_newton
import genes
import spectra
import starts
from starts import NOISE, SAW, SINE, SQUARE, TRIANGLE

# First and second wave, the second's semitones, mix, ring modulation; copies and phases stay as they are.
PAIRS = (
    (SINE, SINE, 12, 25), (SINE, SINE, 19, 30), (SINE, SINE, 24, 20), (SINE, SAW, 0, 30), (SINE, SQUARE, 12, 30),
    (TRIANGLE, SQUARE, 0, 40), (TRIANGLE, SINE, 12, 50), (TRIANGLE, TRIANGLE, 12, 50), (TRIANGLE, SAW, 0, 40),
    (SQUARE, SQUARE, 12, 40), (SQUARE, SINE, 12, 50), (SQUARE, SQUARE, 0, 40), (SAW, SAW, 12, 40), (SAW, SAW, 0, 50),
    (SAW, SINE, 12, 50), (SAW, TRIANGLE, -12, 50), (SAW, SQUARE, 0, 60), (SAW, SQUARE, 19, 40), (SINE, SAW, 12, 30),
)
# Of two sines: bars and bells lie between the partials of a string.
RINGS = (12, 16, 19, 22, 24, 28, 31, 34, 36, 40)
# In phase: of random ones the level is chance, from note to note and from one judgement to the next.
COPIES = ((0, 0), (1, 20), (3, 35))
# Kind and sections: low-passes, plain and with the waveshaper.  No ladder, which costs sixty times as much and came no nearer.
FILTERS = ((1, 1), (1, 2), (10, 1))
NOISE_FACTORS = (0.5, 0.7, 1.4, 2.0)
LEAST_NOISE = 12
COLOURS = (-16, 16)
# A noise of its own in the third oscillator: steady, or a burst that stops with envelope 3.
NOISE_ALONE = {"osc3_type": NOISE, "osc3_multi_count": 0, "osc3_fine_tune": starts.TUNE}
HISS = {"osc3_influence_source": 0, "osc3_influence_amount": starts.TUNE}
BURST = {"osc3_influence_source": 3, "osc3_influence_amount": 127, "env3_attack": 0, "env3_decay": 50, "env3_sustain": 0}
NOISE_VOLUMES = (25, 36, 52)
NOISE_COLOURS = (44, 64, 84)
# A sine that is none of the partials, as struck metal has.
BETWEEN = (6, 9, 15, 17, 22, 26, 30, 33)
BETWEEN_VOLUMES = (45, 70)
# What else envelope 3 may move.
ENVELOPED = ("osc1_influence", "osc2_influence", "amplitude_influence", "resonance1_influence",
             "cutoff1_influence1", "cutoff1_influence2", "cutoff1_influence3")
# How many go on to the next stage.
KEPT = 3
ROUNDS = 2
# Sounds that are events, not tones.
EVENTS = range(119, 128)


def _waves(_):
    found = []
    for first, second, semitones, mix in PAIRS:
        found.append({"osc1_type": first, "osc2_type": second, "osc2_coarse_tune": starts.TUNE + semitones,
                      "osc1_osc2_mix": mix, "osc1_osc2_ring_modulator": 0})
    for semitones in RINGS:
        found.append({"osc1_type": SINE, "osc2_type": SINE, "osc2_coarse_tune": starts.TUNE + semitones,
                      "osc1_osc2_mix": 0, "osc1_osc2_ring_modulator": 1})
    return found


def _shapes(_):
    found = [{"filter1_type": kind, "filter1_depth": depth} for kind, depth in FILTERS]
    for copies, spread in COPIES:
        found.append({"osc1_multi_count": copies, "osc2_multi_count": copies, "osc1_randomize_phase": 0,
                      "osc2_randomize_phase": 0, "osc1_spread": spread, "osc2_spread": spread})
    return found


def _noises(now):
    """The noise that is there, louder or of another colour; a hiss, a burst or an odd partial instead of what the third oscillator does."""
    found = []
    if now["osc3_type"] == NOISE:
        volume = max(LEAST_NOISE, now["osc3_volume"])
        found += [{"osc3_volume": min(127, round(volume * factor))} for factor in NOISE_FACTORS]
        found += [{"osc3_volume": volume, "osc3_coarse_tune": max(0, min(127, now["osc3_coarse_tune"] + step))} for step in COLOURS]
    is_struck = now["env1_sustain"] == 0
    kinds = [] if is_struck else [HISS]
    if not any(now[f"{key}_source"] == 3 for key in ENVELOPED):
        kinds.append(BURST)
    found += [{**NOISE_ALONE, **kind, "osc3_volume": volume, "osc3_coarse_tune": colour}
              for kind in kinds for volume in NOISE_VOLUMES for colour in NOISE_COLOURS]
    if is_struck and now["osc3_type"] != NOISE:
        found += [{"osc3_type": SINE, "osc3_influence_source": 0, "osc3_volume": volume, "osc3_coarse_tune": starts.TUNE + semitones}
                  for semitones in BETWEEN for volume in BETWEEN_VOLUMES]
    return found


STAGES = (_waves, _shapes, _noises)


class Ways:
    """Versions of a program, each behind the equalisers that bring it nearest to the ends of a span."""

    def __init__(self, start, wanted, ends):
        self.start = start
        self.wanted = wanted
        self.one, self.other = (distance.without_level(end) for end in ends)
        off = start.instrument.copy({f"chan_filter{slot}_type": 0 for slot in equalisers.Bank(start.instrument).slots})
        self.bank = equalisers.Bank(off)

    def _equalised(self, sounds):
        """Loss behind the best equalisers, and those as changes of the instrument."""
        rendered = spectra.Notes(sounds, [note.key for note in self.wanted])

        def rows_at(numbers):
            return distance.without_level(rendered.behind(self.bank.response(np.asarray(numbers))))

        def residuals(points):
            signed, weights = distance.to_span_signed(np.stack([rows_at(p) for p in points]), self.one, self.other,
                                                      distance.FIT_WEIGHTS)
            return signed.reshape(len(points), -1), weights[0].ravel() / len(self.wanted)

        def loss_of(points, rows):
            return np.abs(rows) @ weights_of

        weights_of = residuals([self.bank.start])[1]
        numbers, loss = gauss_newton.improve(self.bank.start, residuals, loss_of, ROUNDS)
        return loss, self.bank.bytes(numbers)

    def judged(self, all_changes):
        """(loss, changes with the equalisers) of each, the best first."""
        plain = [candidates.Version(self.bank.without(self.start.instrument).copy(changes), self.start.laws, self.start.others)
                 for changes in all_changes]
        sounds = candidates.render(plain, self.wanted)
        found = []
        for changes, sound in zip(all_changes, sounds):
            loss, tuned = self._equalised(sound)
            found.append((loss, {**changes, **tuned}))
        return sorted(found, key=lambda pair: pair[0])


def best(start, wanted, ends, kept=KEPT):
    """The versions that come nearest, of all stages, the best first; the start's own way is among those tried."""
    ways = Ways(start, wanted, ends)
    if not ways.bank.slots:
        return []
    found = ways.judged([{}])
    for stage in STAGES:
        tried = []
        for _, changes in found[:kept]:
            tried += [{**changes, **more} for more in stage(start.instrument.copy(changes))]
            if stage is _waves:
                break
        found = sorted(found + (ways.judged(tried) if tried else []), key=lambda pair: pair[0])
    return [candidates.Version(genes.with_free_peaks(start.instrument.copy(changes)), start.laws, start.others)
            for _, changes in found[:kept]]

"""The equalisers of a program as numbers that a search may turn, and what they do to a spectrum."""

import numpy as np

import instrument_text
import spectra

SLOTS = (1, 2, 3, 4)
# Bytes, low and high: cutoff from 60 Hz to 11 kHz, resonance, gain up to 12.6 dB.
CUTOFF, RESONANCE, GAIN = (20, 116), (4, 70), (24, 104)
PARTS = (("cutoff", CUTOFF), ("resonance", RESONANCE), ("gain", GAIN))
# For slots that are not in use.
FREE_KINDS = (spectra.LOW_SHELF, spectra.PEAKING, spectra.PEAKING, spectra.HIGH_SHELF)
FREE_PLACES = (0.25, 0.4, 0.6, 0.75)


class Bank:
    """The equalisers that may be turned, as numbers 0..1: cutoff, resonance and gain of each."""

    def __init__(self, instrument):
        self.rows = instrument_text.controllers()
        kinds = {slot: instrument[f"chan_filter{slot}_type"] for slot in SLOTS}
        self.slots = [slot for slot in SLOTS if kinds[slot] == 0 or kinds[slot] in (6, 7, 8)]
        free = [slot for slot in self.slots if kinds[slot] == 0]
        taken = {kinds[slot] for slot in self.slots}
        wanted = [kind for kind in FREE_KINDS if kind == spectra.PEAKING or kind not in taken]
        places = dict(zip(FREE_KINDS, FREE_PLACES))
        self.kinds = {slot: kinds[slot] or wanted[free.index(slot)] for slot in self.slots}
        self.start = []
        for slot in self.slots:
            values = [0.5, 0.15, 0.5]
            if kinds[slot]:
                values = [(instrument[f"chan_filter{slot}_{part}"] - low) / (high - low) for part, (low, high) in PARTS]
            else:
                values[0] = places[self.kinds[slot]] + 0.06 * slot
            self.start += values
        self.start = np.clip(self.start, 0, 1)

    def bytes(self, numbers):
        changes = {}
        for place, slot in enumerate(self.slots):
            changes[f"chan_filter{slot}_type"] = self.kinds[slot]
            for value, (part, (low, high)) in zip(numbers[3 * place:], PARTS):
                changes[f"chan_filter{slot}_{part}"] = round(low + float(np.clip(value, 0, 1)) * (high - low))
        return changes

    def gains_db(self, numbers):
        return [(GAIN[0] + v * (GAIN[1] - GAIN[0]) - 63.5) * 40 / 127 for v in np.clip(numbers[2::3], 0, 1)]

    def response(self, numbers):
        changes = self.bytes(numbers)
        out = np.ones(spectra.COUNT)
        for slot in self.slots:
            def value(part, slot=slot):
                name = f"chan_filter{slot}_{part}"
                return self.rows[name].value(changes[name])
            out *= spectra.power_response(self.kinds[slot], 20 * 2 ** value("cutoff"), value("resonance"), 10 ** value("gain"))
        return out

    def without(self, instrument):
        return instrument.copy({f"chan_filter{slot}_type": 0 for slot in self.slots})

"""Shows that equalisers computed are equalisers heard, and what a search may put in place."""

import unittest

import numpy as np
import scipy.signal

import equalisers, features, fit, instrument_text, spectra
from players import RATE


def filtered(sound, kind, hertz, q, gain):
    """The same by a filter whose design knows nothing of the cookbook: from the response's samples."""
    size = 1 << 15
    hz = np.fft.rfftfreq(size, 1 / RATE)
    gains = np.sqrt(np.interp(hz, spectra.CENTRES_HZ, spectra.power_response(kind, hertz, q, gain)))
    return scipy.signal.fftconvolve(sound, np.fft.irfft(gains * np.exp(-1j * np.pi * hz / RATE * size), size))[size // 2:][:len(sound)]


class Spectra(unittest.TestCase):
    def test_an_equaliser_gains_what_it_says_where_it_says(self):
        def db(kind, hertz, at):
            response = spectra.power_response(kind, hertz, 0.7, 10 ** 0.15)  # 6 dB
            return 10 * np.log10(np.interp(at, spectra.CENTRES_HZ, response))
        for kind, at, gain in ((spectra.PEAKING, 1000, 6), (spectra.PEAKING, 60, 0), (spectra.PEAKING, 15000, 0),
                               (spectra.LOW_SHELF, 60, 6), (spectra.LOW_SHELF, 1000, 3), (spectra.LOW_SHELF, 15000, 0),
                               (spectra.HIGH_SHELF, 60, 0), (spectra.HIGH_SHELF, 1000, 3), (spectra.HIGH_SHELF, 15000, 6)):
            self.assertAlmostEqual(db(kind, 1000, at), gain, delta=0.15, msg=f"{kind} at {at} Hz")

    def test_arithmetic_agrees_with_a_filtered_sound(self):
        random = np.random.default_rng(4)
        time = np.arange(RATE * 3 // 2) / RATE
        key = 57
        mono = sum(0.1 / k * np.sin(2 * np.pi * features.key_hz(key) * k * time + k) for k in range(1, 30))
        mono = (mono + 0.003 * random.standard_normal(len(time))) * np.exp(-time)
        setting = (spectra.PEAKING, 900.0, 1.5, 10 ** 0.25)
        computed = spectra.Notes(mono[None, :, None], [key]).behind(spectra.power_response(*setting))[0]
        heard = features.measure(filtered(mono, *setting)[None, :, None], [key], wobble=False)[0]
        for group in ("partials", "rest", "centroid"):
            index = features.GROUPS[group]
            loud = heard[index] > -45
            self.assertGreater(loud.sum(), 2)
            self.assertLess(np.abs(computed[index] - heard[index])[loud].max(), 0.8, group)
        self.assertAlmostEqual(computed[0], heard[0], delta=1.0)


class Tone(unittest.TestCase):
    def test_slots_in_use_start_where_they_stand_and_others_stay(self):
        instrument = instrument_text.Instrument({"chan_filter1_type": 2, "chan_filter1_cutoff": 30, "chan_filter3_type": 6,
                                                 "chan_filter3_cutoff": 70, "chan_filter3_gain": 80, "chan_filter3_resonance": 12})
        bank = equalisers.Bank(instrument)
        self.assertEqual(bank.slots, [2, 3, 4])
        changes = bank.bytes(bank.start)
        self.assertEqual([changes[f"chan_filter3_{part}"] for part in ("type", "cutoff", "resonance", "gain")], [6, 70, 12, 80])
        self.assertNotIn("chan_filter1_cutoff", changes)
        self.assertEqual(bank.without(instrument)["chan_filter1_type"], 2)
        self.assertLess(np.ptp(bank.response(bank.start)), 10 ** 0.55)  # that peak only

    def test_what_is_taken(self):
        self.assertTrue(fit.is_better((8, 7), (7.5, 6.9), [], []))
        self.assertFalse(fit.is_better((8, 7), (7.5, 7.1), [], []))
        self.assertFalse(fit.is_better((8, 7), (7.5, 6.9), ["7.0 dB over keys"], ["DC -20 dB"]))
        self.assertTrue(fit.is_better((8, 7), (8.05, 7.1), ["7.0 dB over keys"], []))
        self.assertFalse(fit.is_better((8, 7), (8.2, 7.1), ["7.0 dB over keys"], []))


if __name__ == "__main__":
    unittest.main()

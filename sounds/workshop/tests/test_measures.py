"""Shows that features, loudness and hygiene say of known signals what is known of them."""

import unittest

import numpy as np

import features, general_midi, hygiene, levels, loudness, notes
from players import RATE

TIME = np.arange(notes.SLOT_MS * RATE // 1000) / RATE


def stereo(mono):
    return np.stack([mono, mono], 1)


def harmonic(key, levels, cents=0.0):
    """Partials 1... of these levels (dB)."""
    hz = features.key_hz(key) * 2 ** (cents / 1200)
    return sum(0.1 * 10 ** (level / 20) * np.sin(2 * np.pi * hz * k * TIME + k) for k, level in enumerate(levels, 1))


def row(mono, key):
    return dict(zip(features.NAMES, features.measure(stereo(mono)[None], [key])[0]))


class Features(unittest.TestCase):
    def test_partials_have_their_levels_and_nothing_lies_between(self):
        for key in (33, 45, 69):
            got = row(harmonic(key, [0, -6, -12, -30]), key)
            whole = 10 * np.log10(1 + 10 ** -0.6 + 10 ** -1.2 + 10 ** -3)
            for k, level in enumerate([0, -6, -12, -30], 1):
                self.assertAlmostEqual(got[f"h{k}@1"], level - whole, delta=0.7, msg=f"key {key}, partial {k}")
            self.assertLess(got["h5@1"], -50)
            # The windows' skirts reach between partials that are 10 bins apart.
            between = max(got[f"n{edge}@1"] for edge in features.REST_EDGES[:-1])
            self.assertLess(between, -40 if key == 33 else -50, f"key {key}")

    def test_noise_is_rest_and_not_partials(self):
        noise = np.random.default_rng(3).standard_normal(len(TIME)) * 0.05
        got = row(noise, 57)
        # Above 60 Hz and below 16 kHz, bands have power in proportion to their width.
        self.assertAlmostEqual(got["n5760@1"], 10 * np.log10((16000 - 5760) / 22050), delta=1.0)
        self.assertGreater(got["n2880@1"], got["h21-30@1"] + 8)

    def test_level_and_envelope(self):
        fade = np.where(TIME < 0.5, 1.0, 0.1) * np.minimum(1, TIME / 0.1)
        got = row(harmonic(69, [0]) * fade, 69)
        self.assertAlmostEqual(got["e300"], 0, delta=0.3)
        self.assertAlmostEqual(got["e600"], -20, delta=0.3)
        self.assertAlmostEqual(got["level"], 20 * np.log10(0.1) - 3.01, delta=0.2)
        slow, quick = got["attack"], row(harmonic(69, [0]), 69)["attack"]
        self.assertGreater(slow, quick + 20)

    def test_silence_is_the_floor(self):
        got = row(np.zeros(len(TIME)), 60)
        self.assertTrue(all(np.isfinite(list(got.values()))))
        self.assertEqual(got["h1@0"], features.FLOOR)

    def test_wobble_is_seen(self):
        vibrato = 0.1 * np.sin(2 * np.pi * 440 * TIME + 440 * 0.01 / 5 * np.sin(2 * np.pi * 5 * TIME))
        self.assertGreater(row(vibrato, 69)["wobble_cents"], 8)
        self.assertLess(row(harmonic(69, [0, -6]), 69)["wobble_cents"], 1)


class Loudness(unittest.TestCase):
    def test_reference_tone(self):
        # ITU-R BS.1770: a full-scale sine of 997 Hz on one side reads -3.01 LKFS.
        sine = np.sin(2 * np.pi * 997 * np.arange(3 * RATE) / RATE)
        self.assertAlmostEqual(loudness.lufs(np.stack([sine, 0 * sine], 1)), -3.01, delta=0.05)

    def test_pauses_do_not_count(self):
        sine = np.sin(2 * np.pi * 997 * np.arange(3 * RATE) / RATE)
        padded = np.concatenate([sine, np.zeros(6 * RATE)])
        self.assertAlmostEqual(loudness.lufs(stereo(padded)), loudness.lufs(stereo(sine)), delta=0.4)


def performance(program, cents=0.0, dc=0.0, fade_ms=5.0, tail=0.0, key_slope=0.0, soft=24.0, gain=1.0, low_gain=1.0):
    """What a sine would give for hygiene.plays(program), with faults to choose."""
    pieces = []
    for _, note, hold, slot in hygiene.plays(program):
        time = np.arange(slot * RATE // 1000) / RATE
        level = 0.1 * gain * (low_gain if note.key < 24 else 1) * 10 ** ((key_slope * (note.key - 60) / 12 - soft * np.log(127 / note.velocity) / np.log(127 / 32)) / 20)
        fade = np.clip((hold / 1000 - time) * 1000 / max(fade_ms, 0.02), tail, 1) * np.minimum(1, time / 0.02)
        hz = features.key_hz(note.key) * 2 ** (cents / 1200)
        bright = note.velocity / 127
        pieces.append(level * fade * (np.sin(2 * np.pi * hz * time) + 0.5 * bright * np.sin(4 * np.pi * hz * time) + dc))
    return stereo(np.concatenate(pieces))


class Hygiene(unittest.TestCase):
    FLUTE = 73

    def findings(self, **faults):
        return " ".join(hygiene.check(self.FLUTE, performance(self.FLUTE, **faults))[1])

    def test_a_clean_sound_passes(self):
        self.assertEqual(self.findings(fade_ms=30), "")

    def test_each_fault_is_named(self):
        for faults, word in (({"cents": 3}, "+3.0 cents"), ({"dc": 0.1}, "DC"), ({"fade_ms": 0.01}, "click"),
                             ({"tail": 0.01}, "tail"), ({"key_slope": 4}, "over keys"), ({"soft": 12}, "over velocities"), ({"gain": 6}, "peak"),
                             ({"low_gain": 8}, "runs away")):
            with self.subTest(**faults):
                found = self.findings(**{"fade_ms": 30, **faults})
                self.assertIn(word, found)

    def test_every_program_has_a_phrase_in_its_range(self):
        for program in range(128):
            low, high = general_midi.range_of(program)
            middle = np.mean(hygiene.phrase_keys(program))
            self.assertLess(abs(middle - (low + high) / 2), 8)


class Levels(unittest.TestCase):
    def test_a_program_goes_towards_its_span_and_no_farther_than_the_set_allows(self):
        banks = np.array([[-4.0, -6.0], [-1.0, 3.0], [0.5, 2.0], [9.0, 4.0]])
        most = levels.FARTHEST_DB
        self.assertEqual(list(levels.aims(banks)), [-most, 0.0, 0.5, most])

    def test_ours_at_their_aims_keep_both_margins(self):
        banks = levels.read()
        aims = levels.aims(banks)
        self.assertLess(np.abs(aims - np.median(aims)).max(), levels.MARGIN_DB)
        self.assertGreater(np.mean(levels.outside(aims, banks) <= levels.MARGIN_DB), 0.9)


if __name__ == "__main__":
    unittest.main()

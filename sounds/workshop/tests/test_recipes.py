"""Shows that another way to make a sound is found where the target was made so, whatever equalisers it stands behind."""

import os
import unittest

import candidates, instrument_text, recipes, starts
from notes import Note

TARQUIL = os.environ.get("TARQUIL")
WANTED = [Note(45, 112), Note(57, 60), Note(57, 112)]


def version(wave, changes):
    return candidates.Version(instrument_text.Instrument({**starts._bytes(wave, False), **changes}), {}, {})


class Recipes(unittest.TestCase):
    SAW = starts.WAVES[0]

    @unittest.skipUnless(TARQUIL, "TARQUIL names the program")
    def test_waves_are_found_behind_other_equalisers(self):
        goal = version((starts.SQUARE, starts.SINE, 12, 50, 0, 0, 0), {"chan_filter1_type": 7, "chan_filter1_cutoff": 60, "chan_filter1_gain": 44})
        row = candidates.rows_of(candidates.render([goal], WANTED), WANTED)[0]
        start = version(self.SAW, {"chan_filter2_type": 8, "chan_filter2_cutoff": 70, "chan_filter2_gain": 90})
        ways = recipes.best(start, WANTED, [row, row])
        self.assertEqual(len(ways), recipes.KEPT)
        found = ways[0].instrument
        self.assertEqual(found["osc1_type"], starts.SQUARE)
        self.assertEqual(found["osc2_coarse_tune"], starts.TUNE + 12)
        self.assertEqual(found["env1_attack"], start.instrument["env1_attack"])

    def test_noises_suit_the_sound_and_leave_its_envelopes_alone(self):
        struck = instrument_text.Instrument(starts._bytes(self.SAW, True))
        held = instrument_text.Instrument(starts._bytes(self.SAW, False))
        for now, hisses in ((struck, False), (held, True)):
            tonal = recipes._noises(now.copy({"osc3_type": starts.SAW}))
            steady = [c for c in tonal if c["osc3_type"] == starts.NOISE and c["osc3_influence_source"] == 0]
            self.assertEqual(bool(steady), hisses)
            taken = recipes._noises(now.copy({"osc3_type": starts.SAW, "cutoff1_influence2_source": 3}))
            self.assertFalse([c for c in taken if "env3_decay" in c])
        for changes in recipes._noises(held.copy({"osc3_volume": 120, "osc3_coarse_tune": 120})):
            self.assertTrue(0 < changes["osc3_volume"] <= 127 and changes.get("osc3_coarse_tune", 0) <= 127)


if __name__ == "__main__":
    unittest.main()

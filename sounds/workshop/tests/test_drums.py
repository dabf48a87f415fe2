"""Shows that the kits' table stays what it is but for velocities, that a fit of drums turns what it may, and that versions play apart."""

import os
import unittest

import numpy as np

import drum_fit, drum_kits, features, instrument_text, moves, notes, opening, starts, targets

E150 = features.NAMES.index("e150")
TARQUIL = os.environ.get("TARQUIL")
KITS = (drum_fit.SOUNDS / "drums/kits.txt").read_text()


class Table(unittest.TestCase):
    def test_other_velocities_and_nothing_else(self):
        text = "# hats\nk00_042 = hats 16 74 94 80 414 044,046\nk08_042 = hats 16 74 94 80 414 044,046\nk00_071 = whistles 46 99 100 88 held\n"
        changed = drum_kits.with_velocities(text, {(0, 42): 60})
        self.assertEqual(changed, text.replace("94 80 414", "60 80 414", 1))
        self.assertEqual(drum_kits.rows(changed)[0, 71].place, "88 held")

    def test_the_shipped_table_is_read_whole(self):
        self.assertEqual(drum_kits.with_velocities(KITS, {}), KITS)
        self.assertEqual(len(drum_kits.rows(KITS)), sum(line.startswith("k") for line in KITS.splitlines()))


    def test_every_drum_is_let_go_when_it_has_ended_and_not_before(self):
        paths = drum_fit.sound_set.numbered((drum_fit.SOUNDS / "drums").glob("*.tqi"))
        drums = {number: instrument_text.read(path) for number, path in paths.items()}
        self.assertEqual(drum_kits.with_lengths(KITS, drums), KITS)
        held = instrument_text.Instrument({"env1_sustain": 1})
        self.assertIsNone(drum_kits.end_ms(held))
        second = instrument_text.controllers()["env1_decay"].byte(44100 ** (1 / 3))
        struck = held.copy({"env1_attack": 0, "env1_decay": second, "env1_sustain": 0})
        self.assertAlmostEqual(drum_kits.end_ms(struck), 1000, delta=20)


class Families(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        cls.wood = drum_fit.Family("wood", KITS, drum_fit.SOUNDS, targets.read_all())

    def test_what_a_channel_shares_stays_shared(self):
        far = self.wood.instruments(np.random.default_rng(2).random(len(self.wood.genes)))
        self.assertEqual(len({drum_kits.shared_bytes(instrument) for instrument in far.values()}), 1)
        self.assertGreater(len({tuple(far[number].bytes.values()) for number in (5, 6, 7, 8)}), 3)

    def test_the_start_is_where_the_texts_stand(self):
        again = self.wood.instruments(self.wood.numbers())
        inside = [number for number, instrument in again.items() if instrument.bytes == self.wood.start[number].bytes]
        self.assertEqual(len(inside), len(again))

    @unittest.skipUnless(TARQUIL, "TARQUIL names the program")
    def test_versions_of_one_song_do_not_touch(self):
        place = (0, 76)
        own = self.wood.start[self.wood.rows[place].instrument]
        longer = own.copy({"env1_decay": own["env1_decay"] + 40})
        louder = own.copy({"main_volume": own["main_volume"] - 20})
        alone = drum_kits.render([(place, own)], KITS, 110)[0]
        first, second, third, again = drum_kits.render([(place, v) for v in (own, longer, louder, own)], KITS, 110)
        self.assertLess(np.abs(alone - first).max(), 0.5)
        # Noise is another one each time.
        self.assertLess(np.abs(again - first).mean(), 1.5)
        self.assertGreater(second[E150], first[E150] + 5)
        self.assertAlmostEqual(first[0] - third[0], 60 * np.log10(own["main_volume"] / louder["main_volume"]), delta=1.5)


class Opening(unittest.TestCase):
    def test_sources_laws_and_the_key_add_up_and_ladders_are_safe(self):
        plain = instrument_text.Instrument({"filter1_type": 1, "filter1_cutoff": 127, "filter1_key_follow": 0})
        self.assertAlmostEqual(opening.opening_hz(plain), 20480, delta=1)
        self.assertAlmostEqual(opening.octaves_beyond(plain), np.log2(20480 / opening.HIGHEST_HZ), delta=0.001)
        moved = plain.copy({"filter1_cutoff": 64, "cutoff1_influence1_source": 1, "cutoff1_influence1_amount": 90})
        law = {"cutoff1_influence1_amount": (6.4, 0.0)}  # half an octave an octave
        self.assertAlmostEqual(np.log2(opening.opening_hz(moved, law, key=84) / opening.opening_hz(moved, law, key=60)), 1, delta=0.001)
        self.assertEqual(opening.octaves_beyond(plain.copy({"filter1_type": 19})), 0)


class Moves(unittest.TestCase):
    def test_wide_moves_stay_in_range_and_leave_what_is_no_noise(self):
        struck = instrument_text.Instrument(starts._bytes(starts.WAVES[0], True))
        for start in (struck, struck.copy({"osc3_type": 2}), struck.copy({"env1_attack": 125, "osc3_volume": 126})):
            for family in moves.families(start):
                for changes in family(start):
                    self.assertTrue(all(1 <= byte <= 126 or key == "env3_decay" for key, byte in changes.items()), changes)
                    self.assertTrue(start["osc3_type"] == 5 or "osc3_volume" not in changes)


if __name__ == "__main__":
    unittest.main()

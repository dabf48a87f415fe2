"""Shows that the tables of targets are whole, and that ranks and distances behave."""

import unittest

import numpy as np

import distance, features, general_midi, levels, notes, ranks, targets


class Tables(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        cls.tables = list(targets.read_all().values())

    def test_tables_are_whole_and_small(self):
        for table in self.tables:
            self.assertEqual(table.melodic.shape, (128, len(notes.NOTES), len(features.NAMES)))
            self.assertEqual(table.drums.shape, (len(notes.DRUM_NOTES), len(features.NAMES)))
        self.assertEqual(levels.read().shape, (128, 2))
        self.assertLess(sum(path.stat().st_size for path in targets.FOLDER.iterdir()), 3_000_000)

    def test_a_bank_is_nearest_to_itself(self):
        bank = self.tables[0].melodic
        rows = [ranks.one(p, bank[p], bank, notes.HELD_OUT_NOTES, distance.SECOND_WEIGHTS) for p in (0, 33, 73)]
        self.assertEqual([r[1:] for r in rows], [(1, 0), (1, 33), (1, 73)])
        self.assertEqual([r[0] for r in rows], [0.0] * 3)

    def test_the_banks_know_each_other_better_than_chance(self):
        one, other = (table.melodic for table in self.tables)
        programs = range(128)
        rows = [ranks.one(p, one[p], other, notes.FIT_NOTES, distance.FIT_WEIGHTS) for p in programs]
        exact, five, family, median = ranks.summary(programs, rows)
        self.assertGreater(exact, 0.35)
        self.assertGreater(five, 0.65)
        self.assertLessEqual(median, 3)

    def test_loudness_does_not_count_as_distance(self):
        row = self.tables[0].melodic[40]
        louder = row.copy()
        louder[:, 0] += 9
        self.assertAlmostEqual(distance.to_span(louder, row, row, distance.FIT_WEIGHTS), 0)

    def test_within_the_span_is_nearer_than_outside(self):
        one, other = (table.melodic[56] for table in self.tables)
        def far(share):
            return distance.to_span(one + share * (other - one), one, other, distance.FIT_WEIGHTS)
        self.assertLess(far(0.5), far(0.0))
        self.assertLess(far(0.0), far(-1.0))

    def test_what_is_fitted_is_what_is_judged(self):
        one, other = (table.melodic[24] for table in self.tables)
        ours = self.tables[0].melodic[25]
        levelled = [distance.without_level(rows) for rows in (ours, one, other)]
        signed, weights = distance.to_span_signed(*levelled, distance.FIT_WEIGHTS)
        self.assertAlmostEqual(float((np.abs(signed) * weights).sum(-1).mean()),
                               distance.to_span(ours, one, other, distance.FIT_WEIGHTS), places=1)


class Programs(unittest.TestCase):
    def test_names_families_and_order(self):
        names = [general_midi.name_of(p) for p in range(128)]
        self.assertEqual(len(set(names)), 128)
        self.assertEqual(general_midi.text_path(73), "pipe/073_flute.tqi")
        self.assertEqual(sorted(general_midi.order_of_use()), list(range(128)))

    def test_every_program_has_notes_of_both_sets(self):
        for program in range(128):
            for wanted in (notes.FIT_NOTES, notes.HELD_OUT_NOTES):
                self.assertGreaterEqual(len(ranks.chosen(program, wanted)), 2, general_midi.name_of(program))
        self.assertFalse(set(notes.FIT_NOTES) & set(notes.HELD_OUT_NOTES))


if __name__ == "__main__":
    unittest.main()

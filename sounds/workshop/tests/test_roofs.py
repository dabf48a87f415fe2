"""Shows that a level law takes out what a measurement found, and no more than that."""

import os
import unittest

import numpy as np

import candidates, commands, fit, hygiene, law_text, roofs

FLUTE = 73


class Roofs(unittest.TestCase):
    KEYS = hygiene.keys_of(FLUTE)

    def figures(self, levels, velocity_db=24.0):
        return {"levels": np.array(levels, float), "keys_db": float(np.ptp(levels)), "velocity_db": velocity_db}

    def left(self, levels):
        roof = roofs.next_roof(FLUTE, roofs.Roof(), self.figures(levels))
        return np.ptp(levels + roof.over(self.KEYS)), roof

    def test_slopes_to_either_side_and_roofs_are_taken_out(self):
        octaves = (np.array(self.KEYS) - 75) / 12
        for levels in (-5 * octaves, 5 * octaves, 6 * np.abs(octaves)):
            spread, roof = self.left(levels)
            self.assertLess(spread, hygiene.MAX_KEY_DB - 0.5)
            self.assertTrue(-roofs.STEEPEST <= roof.below <= 0 and -roofs.STEEPEST <= roof.above <= 0)

    def test_even_keys_get_no_law(self):
        _, roof = self.left(np.linspace(0, roofs.GOAL_DB, len(self.KEYS)))
        self.assertEqual(roof.text(), "")

    def test_a_second_round_starts_from_the_first(self):
        bent = -6 * (np.array(self.KEYS) - 75) / 12
        first = roofs.next_roof(FLUTE, roofs.Roof(), self.figures(bent))
        again = roofs.next_roof(FLUTE, first, self.figures(bent + first.over(self.KEYS) + 0.3))
        self.assertEqual(again.text(), first.text())

    def test_velocities_get_their_range(self):
        roof = roofs.next_roof(FLUTE, roofs.Roof(), self.figures(np.zeros(8), 41.0))
        self.assertAlmostEqual(41 + roof.vel * 95 / 12, roofs.RANGE_GOAL_DB, delta=0.5)
        self.assertEqual(roofs.Roof.parse(roof.text()).vel, roof.vel)

    def test_the_law_is_one_that_stays_with_the_others(self):
        text = "p073_vibrato = 5 10 0.3 0.4\n" + "\n".join(law_text.lines(FLUTE, {}, {"level": roofs.Roof(70, -2, -1.5).text()}))
        self.assertEqual(law_text.of_program(text, FLUTE), ({}, {"vibrato": "5 10 0.3 0.4", "level": "at 70 below -2 above -1.5"}))


@unittest.skipUnless(os.environ.get("TARQUIL"), "TARQUIL names the program")
class Mended(unittest.TestCase):
    def setUp(self):
        self.flute = fit.start_of(commands.SOUNDS, FLUTE)

    def test_a_fit_evens_keys_out(self):
        steep = candidates.Version(self.flute.instrument, self.flute.laws, {**self.flute.others, "level": "at 60 above -8"})
        version, figures, fails = fit.level(steep, FLUTE)
        self.assertIn("dBoverkeys", fit.kinds(fails))
        self.assertEqual(fit.mend(version, figures, fails, FLUTE)[1], [])

    def test_a_peak_makes_it_softer_within_bounds(self):
        figures = fit.level(self.flute, FLUTE)[1]
        for over_db, softer in ((-1.0, False), (1.0, True), (4.0, False)):
            peak = hygiene.MAX_PEAK * 10 ** (over_db / 20)
            version, _ = fit.mend(self.flute, {**figures, "peak": peak}, [], FLUTE)
            self.assertEqual(version.instrument["main_volume"] < self.flute.instrument["main_volume"], softer)


if __name__ == "__main__":
    unittest.main()

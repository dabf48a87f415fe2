"""Shows that texts keep what they say, that genes turn what they name, and that the search finds a minimum."""

import json
import os
import subprocess
import tempfile
import unittest
from pathlib import Path

import numpy as np

import candidates, cma_es, gauss_newton, genes, instrument_text, law_text, notes, starts

TARQUIL = os.environ.get("TARQUIL")


class Texts(unittest.TestCase):
    def test_a_text_keeps_its_bytes_and_words(self):
        text = "# A lead.\nname = lead\nfilter1_cutoff = 6.2  # open\nosc1_fine_tune = 0\nauthor = Tarquil\ncomment = for tunes\n"
        first = instrument_text.parse(text)
        again = instrument_text.parse(first.text())
        self.assertEqual(again.bytes, first.bytes)
        self.assertEqual(again.words, {"name": "lead", "author": "Tarquil", "comment": "for tunes"})
        self.assertEqual(again.head, "# A lead.")
        self.assertEqual(first["filter1_cutoff"], 79)
        self.assertEqual(first["osc1_fine_tune"], 64)

    def test_every_byte_of_every_controller_can_be_written(self):
        for key, row in instrument_text.controllers().items():
            for byte in range(128):
                self.assertEqual(row.byte(float(instrument_text.shortest(row, byte))), byte, f"{key} {byte}")

    @unittest.skipUnless(TARQUIL, "TARQUIL names the program")
    def test_the_engine_reads_the_same_bytes(self):
        random = np.random.default_rng(5)
        with tempfile.TemporaryDirectory() as folder:
            wanted = {key: int(random.integers(0, 128)) for key, row in instrument_text.controllers().items() if row.continuous}
            Path(folder, "a.tqi").write_text(instrument_text.Instrument(wanted).text())
            subprocess.run([TARQUIL, "bank", "new", f"{folder}/a.tqb", f"0={folder}/a.tqi"], check=True, capture_output=True)
            shown = subprocess.run([TARQUIL, "bank", "show", "--json", f"{folder}/a.tqb", "0"], check=True, capture_output=True)
        rows = {row["key"]: row["byte"] for row in json.loads(shown.stdout)["controllers"]}
        self.assertEqual({key: rows[key] for key in wanted}, wanted)
        self.assertEqual({key: rows[key] for key in rows if key not in wanted},
                         {key: row.default for key, row in instrument_text.controllers().items() if key not in wanted})


class Laws(unittest.TestCase):
    def test_one_program_is_replaced_in_its_place(self):
        with tempfile.TemporaryDirectory() as folder:
            path = Path(folder, "laws.txt")
            path.write_text("p000_env1_decay = key -19.1 vel -3.4\n# Two\np002_vibrato = 5 8 0.3 0.5\n")
            law_text.replace(path, 1, {"env1_decay": (-4.0, 0.0), "env2_decay": (0.0, 0.0)}, {"velocity": "square"})
            self.assertEqual(path.read_text().splitlines(), [
                "p000_env1_decay = key -19.1 vel -3.4", "p001_velocity = square", "p001_env1_decay = key -4.0",
                "# Two", "p002_vibrato = 5 8 0.3 0.5"])
            law_text.replace(path, 2, {"env1_decay": (0.0, 2.0)}, {})
            self.assertEqual(path.read_text().splitlines()[-2:], ["# Two", "p002_env1_decay = vel 2.0"])
            path.write_text("p000_env1_decay = key -19.1 vel -3.4\np002_vibrato = 5 8 0.3 0.5\n")
            self.assertEqual(law_text.of_program(path.read_text(), 0), ({"env1_decay": (-19.1, -3.4)}, {}))
            self.assertEqual(law_text.of_program(path.read_text(), 2), ({}, {"vibrato": "5 8 0.3 0.5"}))


class Genes(unittest.TestCase):
    def setUp(self):
        self.start = genes.with_free_peaks(instrument_text.Instrument(starts._bytes(starts.WAVES[5], True)))

    def test_numbers_lead_back_to_the_start(self):
        table = genes.of_instrument(self.start)
        laws = {"env1_decay": (-12.0, 0.0)}
        again, slopes = genes.apply(table, genes.numbers(table, self.start, laws), self.start, laws)
        inside = {g.controller for g in table if g.kind == "byte" and g.low <= self.start[g.controller] <= g.high}
        self.assertGreater(len(inside), 20)
        self.assertEqual({k: again[k] for k in inside}, {k: self.start[k] for k in inside})
        self.assertEqual(slopes["env1_decay"], (-12.0, 0.0))

    def test_only_what_has_an_effect_is_turned_and_stays_in_bounds(self):
        table = genes.of_instrument(self.start)
        names = {g.controller for g in table}
        self.assertIn("osc1_osc2_mix", names)
        self.assertNotIn("env3_decay", names)
        self.assertNotIn("amplitude_influence_amount", names)  # 127 there means to multiply
        far, _ = genes.apply(table, [9.0] * len(table), self.start, {})
        self.assertEqual(far["cutoff1_influence1_amount"], 126)

    def test_idle_peaks_go(self):
        self.assertEqual(genes.without_idle_peaks(self.start)["chan_filter2_type"], 0)


    def test_a_blend_lies_between(self):
        other = self.start.copy({"filter1_cutoff": self.start["filter1_cutoff"] + 10})
        half, slopes = genes.blend((self.start, {}), (other, {"env1_decay": (4.0, 0.0)}), 0.5)
        self.assertEqual(half["filter1_cutoff"], self.start["filter1_cutoff"] + 5)
        self.assertEqual(half["filter1_type"], self.start["filter1_type"])
        self.assertEqual(slopes["env1_decay"], (2.0, 0.0))


class Candidates(unittest.TestCase):
    @unittest.skipUnless(TARQUIL, "TARQUIL names the program")
    def test_versions_played_in_pairs_sound_as_by_themselves(self):
        wanted = [notes.Note(45, 112), notes.Note(69, 60)]
        plain = [candidates.Version(instrument_text.Instrument(starts._bytes(wave, struck)), {}, {})
                 for wave, struck in ((starts.WAVES[0], True), (starts.WAVES[1], False), (starts.WAVES[3], True))]
        together = candidates.rows_of(candidates.render(plain, wanted), wanted)
        for version, rows in zip(plain, together):
            # A stereo effect without wet sound is played alone.
            alone = candidates.Version(version.instrument.copy({"chanfx2_type": 2, "chanfx2_wet": 0}), {}, {})
            sound = candidates.render([alone], wanted)
            self.assertEqual(sound.shape[-1], 2)
            loud = rows > -40
            self.assertLess(np.abs(candidates.rows_of(sound, wanted)[0] - rows)[loud].max(), 1.0)


class Search(unittest.TestCase):
    def test_least_squares_finds_a_bend(self):
        def residuals(points):
            x = np.array(points)
            return np.stack([20 * (x[:, 0] - 0.7), 20 * (x[:, 1] - x[:, 0] ** 2), 5 * (x[:, 2] - 0.2)], 1), np.ones(3)

        def loss_of(points, rows):
            return np.abs(rows).sum(1)

        point, loss = gauss_newton.improve([0.2, 0.9, 0.9], residuals, loss_of, 30, least_gain=0)
        self.assertLess(np.abs(point - [0.7, 0.49, 0.2]).max(), 0.03)
        self.assertLess(loss, 1)

    def test_a_long_valley_is_found(self):
        scales = 100 ** (np.arange(8) / 7)
        state = cma_es.CmaEs([2.0] * 8, 0.5, seed=1)
        for _ in range(250):
            state.tell(((state.ask() - 1) ** 2 * scales).sum(1))
        self.assertLess(np.abs(state.mean - 1).max(), 1e-4)


class Songs(unittest.TestCase):
    def test_lengths_of_the_midi_format(self):
        self.assertEqual([notes.variable_length(n) for n in (0, 127, 128, 16384)],
                         [b"\0", b"\x7f", b"\x81\0", b"\x81\x80\0"])


if __name__ == "__main__":
    unittest.main()

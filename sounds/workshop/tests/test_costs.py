"""Shows that the table of costs plays what it says and subtracts what it should; times themselves are not tested."""

import os
import unittest
from unittest import mock

import costs, general_midi, players


def struck(song, channel=0):
    """Keys of the note-ons of a channel, in a file without running status."""
    return [song[i + 1] for i in range(len(song) - 2) if song[i] == 0x90 | channel and song[i + 2] == costs.VELOCITY]


class Costs(unittest.TestCase):
    def test_songs_hold_what_they_are_named_for_within_the_range(self):
        for program in (32, 47, 74, 116):
            low, high = general_midi.range_of(program)
            songs = costs.songs(program)
            self.assertEqual([len(struck(songs[name])) for name in ("none", "idle", "one", "eight")], [0, 1, 1, 8], program)
            keys = struck(songs["eight"])
            self.assertEqual(len(set(keys)), 8, program)
            self.assertTrue(low <= min(keys) and max(keys) <= high, program)
            used = [c for c in range(16) if struck(songs["idle"], c)]
            self.assertEqual(len(used), costs.IDLE_CHANNELS)
            self.assertNotIn(costs.RHYTHM_CHANNEL, used)

    def test_a_cost_is_what_comes_on_top_of_the_empty_song(self):
        seconds = {"none": 0.1, "idle": 0.1 + 12 * 0.003, "one": 0.19, "eight": 0.4}
        cost = costs.per_mille(seconds)
        for name, expected in (("idle", 0.1), ("one", 3.0), ("eight", 10.0)):
            self.assertAlmostEqual(cost[name], expected, msg=name)

    def test_a_renderer_that_fails_is_no_fast_one(self):
        with players.scratch_folder() as folder, mock.patch.dict(os.environ, TARQUIL="/bin/false"):
            with self.assertRaises(players.PlayerError):
                costs.least_seconds(b"", "none.tqm", folder, 1)


if __name__ == "__main__":
    unittest.main()

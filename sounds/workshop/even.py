"""Evens programs out: `./dev sounds even [OPTION ...] [PROGRAM ...]`; see --help.

Where hygiene finds keys of unlike level or a wrong range of velocities, the program gets a level law in gm/laws.txt: a roof over the keys,
decibels an octave down to both sides, and decibels for velocities.  Main volumes follow.
"""

from pathlib import Path

import numpy as np

import commands
import fit
import general_midi as gm
import hygiene
import law_text
import notes
import players
import sound_set
from notes import Note

ROUNDS = 3
SLOT = 650
GOAL_DB = 4.5
RANGE_DB = (21.0, 29.0)
RANGE_GOAL_DB = 25.0
STEEPEST = 6.5
# With copies in random phases, which of them meet differs from note to note: a steep roof would follow that chance.
STEEPEST_AT_RANDOM = 2.0
# A law's step; what an unneeded decibel an octave costs against one over the keys.
STEP, COST = 0.25, 0.1


def arguments(argv):
    parser = commands.parser("even", __doc__, "all")
    parser.add_argument("--sounds", default=commands.SOUNDS, help="folder of sounds whose laws are written anew")
    return parser.parse_args(argv)


class Roof:
    """A level law: `at KEY below DB above DB vel DB`, of which zeros are left out."""

    def __init__(self, at=60, below=0.0, above=0.0, vel=0.0):
        self.at, self.below, self.above, self.vel = at, below, above, vel

    @staticmethod
    def parse(text):
        words = text.split()
        values = dict(zip(words[::2], map(float, words[1::2])))
        return Roof(int(values.pop("at", 60)), **values)

    def text(self):
        words = [f"{name} {value:g}" for name, value in (("below", self.below), ("above", self.above), ("vel", self.vel)) if value]
        return " ".join(([f"at {self.at}"] if self.below or self.above else []) + words)

    def over(self, keys):
        octaves = (np.asarray(keys) - self.at) / 12
        return np.where(octaves < 0, -octaves * self.below, octaves * self.above)


def steepest(instrument):
    copies = max(instrument[f"osc{number}_multi_count"] for number in (1, 2, 3))
    return STEEPEST_AT_RANDOM if instrument["osc1_randomize_phase"] and copies else STEEPEST


def best_roof(keys, levels, most):
    """The roof that leaves the least over the keys without bending more than it needs, nor more than `most` dB an octave."""
    slopes = -np.arange(0, most + STEP / 2, STEP)
    below, above = np.meshgrid(slopes, slopes, indexing="ij")
    found = []
    for at in keys:
        octaves = (np.asarray(keys) - at) / 12
        after = (np.asarray(levels) + np.where(octaves < 0, -octaves, 0) * below[..., None]
                 + np.where(octaves > 0, octaves, 0) * above[..., None])
        cost = np.maximum(GOAL_DB, np.ptp(after, axis=-1)) - COST * (below + above)
        place = np.unravel_index(cost.argmin(), cost.shape)
        found.append((float(cost[place]), at, float(below[place]), float(above[place])))
    _, at, down, up = min(found)
    return at, down, up


def next_roof(program, roof, figures, most=STEEPEST):
    """The law that the figures under the law that is there ask for."""
    keys = hygiene.keys_of(program)
    out = Roof(roof.at, roof.below, roof.above, roof.vel)
    if figures["keys_db"] > GOAL_DB + 0.5:
        out.at, out.below, out.above = best_roof(keys, np.array(figures["levels"]) - roof.over(keys), most)
    low, high = RANGE_DB
    if not low <= figures["velocity_db"] <= high:
        soft, hard = hygiene.VELOCITIES[0], hygiene.VELOCITIES[-1]
        step = (RANGE_GOAL_DB - figures["velocity_db"]) / ((hard - soft) / 12)
        out.vel = round(float(np.clip(out.vel + step, -4, 4)), 1)
    return out


def needs(figures):
    return figures["keys_db"] > hygiene.MAX_KEY_DB - 0.3 or not RANGE_DB[0] <= figures["velocity_db"] <= RANGE_DB[1]


def measure(play, programs):
    """{program: figures}: hygiene's keys and velocities alone, the quickest way."""
    middle = {p: [Note(hygiene.middle_key(p), v) for v in (hygiene.VELOCITIES[0], hygiene.VELOCITIES[-1])] for p in programs}
    plays = [(p, note, hygiene.HOLD, SLOT) for p in programs
             for note in [Note(key, 100) for key in hygiene.keys_of(p)] + middle[p]]
    sounds = players.cut(play(notes.sequence(plays), len(plays) * SLOT / 1000), len(plays), SLOT)
    levels = np.array([hygiene.loudest_db(sound) for sound in sounds]).reshape(len(programs), -1)
    return {p: {"levels": row[:-2], "keys_db": float(np.ptp(row[:-2])), "velocity_db": float(row[-1] - row[-2])}
            for p, row in zip(programs, levels)}


def gain_at(roof, program):
    """What the law makes of a phrase in the program's range, in dB."""
    return float(np.mean(roof.over(hygiene.phrase_keys(program)))) + roof.vel * (100 - 127) / 12


def write(program, version, roof, sounds):
    others = {key: value for key, value in version.others.items() if key != "level"}
    if roof.text():
        others["level"] = roof.text()
    sound_set.program_texts(sounds)[program].write_text(version.instrument.text())
    law_text.replace(Path(sounds) / "gm/laws.txt", program, version.laws, others)


def even(programs, sounds, say=print):
    """Rounds of measuring all and correcting those that need it."""
    for number in range(ROUNDS):
        with players.scratch_folder() as folder:
            found = measure(sound_set.player_of(sound_set.make_set(sounds, folder)), programs)
        programs = [p for p in programs if needs(found[p])]
        for program in programs:
            figures = found[program]
            version = fit.start_of(sounds, program)
            roof = Roof.parse(version.others.get("level", ""))
            after = next_roof(program, roof, figures, steepest(version.instrument))
            say(f"{number} {program:3d} {gm.name_of(program):20} {figures['keys_db']:5.1f} dB over keys, "
                f"{figures['velocity_db']:5.1f} over velocities: {after.text()}", flush=True)
            lost = gain_at(after, program) - gain_at(roof, program)
            write(program, fit.with_volume(version, fit.TARGET_LUFS + lost), after, sounds)


def main(argv):
    options = arguments(argv)
    even(options.program or list(range(128)), options.sounds)


if __name__ == "__main__":
    commands.run("even", main)

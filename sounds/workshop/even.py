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
import roofs
import sound_set
from notes import Note

ROUNDS = 3
SLOT = 650


def arguments(argv):
    parser = commands.parser("even", __doc__, "all")
    parser.add_argument("--sounds", default=commands.SOUNDS, help="folder of sounds whose laws are written anew")
    return parser.parse_args(argv)


def needs(figures):
    low, high = roofs.RANGE_DB
    return figures["keys_db"] > hygiene.MAX_KEY_DB - 0.3 or not low <= figures["velocity_db"] <= high


def measure(play, programs):
    """{program: figures}: hygiene's keys and velocities alone, the quickest way."""
    middle = {p: [Note(hygiene.middle_key(p), v) for v in (hygiene.VELOCITIES[0], hygiene.VELOCITIES[-1])] for p in programs}
    plays = [(p, note, hygiene.HOLD, SLOT) for p in programs
             for note in [Note(key, 100) for key in hygiene.keys_of(p)] + middle[p]]
    sounds = players.cut(play(notes.sequence(plays), len(plays) * SLOT / 1000), len(plays), SLOT)
    levels = np.array([hygiene.loudest_db(sound) for sound in sounds]).reshape(len(programs), -1)
    return {p: {"levels": row[:-2], "keys_db": float(np.ptp(row[:-2])), "velocity_db": float(row[-1] - row[-2])}
            for p, row in zip(programs, levels)}


def write(program, version, roof, sounds):
    others = roof.among(version.others)
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
            roof = roofs.Roof.parse(version.others.get("level", ""))
            after = roofs.next_roof(program, roof, figures, roofs.steepest(version.instrument))
            say(f"{number} {program:3d} {gm.name_of(program):20} {figures['keys_db']:5.1f} dB over keys, "
                f"{figures['velocity_db']:5.1f} over velocities: {after.text()}", flush=True)
            lost = roofs.gain_at(after, program) - roofs.gain_at(roof, program)
            write(program, fit.louder(version, -lost), after, sounds)


def main(argv):
    options = arguments(argv)
    even(options.program or list(range(128)), options.sounds)


if __name__ == "__main__":
    commands.run("even", main)

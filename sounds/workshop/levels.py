"""How loud each program is to be, from a table of its loudness in the sample banks.

    levels.py         measures the packaged banks anew and writes targets/loudness.txt
"""

from functools import lru_cache

import numpy as np

import hygiene
import loudness
import notes
import players
import targets

FILE = targets.FOLDER / "loudness.txt"
MARGIN_DB = 3.0
# The set's own level: a song of many parts lands six decibels above its programs.
MIDDLE_LUFS = -27.2
# Less than the margin: random phases and keys that the phrase leaves out move a program by some tenths.
FARTHEST_DB = 2.5


def phrase_loudness(play, programs):
    """LUFS of each program's phrase in its range."""
    plays = [(p, notes.Note(k, 100), hygiene.PHRASE_HOLD, hygiene.PHRASE_SLOT)
             for p in programs for k in hygiene.phrase_keys(p)]
    length = len(hygiene.PHRASE) * hygiene.PHRASE_SLOT
    sound = play(notes.sequence(plays), len(plays) * hygiene.PHRASE_SLOT / 1000)
    return [loudness.lufs(hygiene.milliseconds(sound, i * length, (i + 1) * length)) for i in range(len(programs))]


def write(path, columns):
    with open(path, "w", encoding="ascii") as out:
        out.write("# Loudness in LU against the bank's median program: a phrase of six keys in the program's range,\n"
                  "# velocity 100, without effects, played by fluidsynth.  Made by levels.py.\n")
        out.write("program " + " ".join(columns) + "\n")
        for program, row in enumerate(zip(*columns.values())):
            out.write(f"{program} " + " ".join(f"{v:.1f}" for v in row) + "\n")


def read(path=FILE):
    """programs x banks."""
    with open(path, encoding="ascii") as lines:
        rows = [line.split() for line in lines if line[0].isdigit()]
    return np.array(rows, float)[:, 1:]


def outside(ours, banks):
    """How far each of ours (against its own median) lies outside the banks' span."""
    own = np.asarray(ours) - np.median(ours)
    return np.maximum(0, np.maximum(banks.min(1) - own, own - banks.max(1)))


def aims(banks):
    """Decibels from the set's middle: towards the banks' span as far as programs may lie apart."""
    return np.clip(np.clip(0, banks.min(1), banks.max(1)), -FARTHEST_DB, FARTHEST_DB)


@lru_cache(maxsize=1)
def _targets():
    return MIDDLE_LUFS + aims(read())


def target_lufs(program):
    """Of the program's phrase."""
    return float(_targets()[program])


def main():
    columns = {}
    for bank in targets.BANKS:
        file = players.BANK_FILES[bank]
        lufs = phrase_loudness(lambda song, seconds, file=file: players.play_bank(song, file, seconds), list(range(128)))
        columns[bank] = np.array(lufs) - np.median(lufs)
    write(FILE, columns)


if __name__ == "__main__":
    main()

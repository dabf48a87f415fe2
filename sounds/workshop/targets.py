"""Tables of features of sample banks: measuring them, writing and reading them.

    targets.py [BANK ...]     measures the packaged banks anew and writes targets/BANK.txt

A table holds whole numbers: columns are features.NAMES (levels as decibels below the loudest window), rows
are notes.NOTES of each program, then notes.DRUM_NOTES of the standard kit as program 128.
"""

import sys
from pathlib import Path

import numpy as np

import features
import notes
import players

FOLDER = Path(__file__).resolve().parent / "targets"
BANKS = ("fluid-soundfont-gm", "timgm6mb-soundfont")
DRUMS = 128
PROGRAMS_PER_SONG = 16
# Columns that are never above 0 are written without their sign.
SIGNS = np.where([name[0] in "ehnm" for name in features.NAMES], -1, 1)


class Table:
    """programs x notes x features of the melodic programs, and notes x features of the drums."""

    def __init__(self, melodic, drums):
        self.melodic = melodic
        self.drums = drums


def measure_programs(play, programs, wanted=notes.NOTES, wobble=True):
    """programs x notes x features; play(song, seconds) gives the sound."""
    out = []
    for first in range(0, len(programs), PROGRAMS_PER_SONG):
        plays = [(p, n) for p in programs[first:first + PROGRAMS_PER_SONG] for n in wanted]
        sound = play(notes.slots(plays), len(plays) * notes.SLOT_MS / 1000)
        slots = players.cut(sound, len(plays), notes.SLOT_MS)
        out.append(features.measure(slots, [n.key for _, n in plays], wobble))
    return np.vstack(out).reshape(len(programs), len(wanted), -1)


def drum_song(kit=0, wanted=notes.DRUM_NOTES):
    return notes.slots([(kit, n) for n in wanted], channel=9, hold=notes.DRUM_HOLD_MS, slot=notes.DRUM_SLOT_MS)


def measure_drums(play, kit=0, wanted=notes.DRUM_NOTES):
    """notes x features.  Drums have no key's frequency: all are measured against that of key 48."""
    sound = play(drum_song(kit, wanted), len(wanted) * notes.DRUM_SLOT_MS / 1000)
    slots = players.cut(sound, len(wanted), notes.DRUM_SLOT_MS)
    filled = np.concatenate([slots, np.zeros((len(wanted), slots.shape[1] // 2, 2), slots.dtype)], 1)
    return features.measure(filled, [48] * len(wanted))


def measure_bank(play):
    return Table(measure_programs(play, list(range(128))), measure_drums(play))


def write(path, table, source):
    with open(path, "w", encoding="ascii") as out:
        out.write(f"# Features of {source}.\n# Made by targets.py from a render without effects; "
                  "the columns are explained in features.py.\n")
        out.write("program key velocity " + " ".join(features.NAMES) + "\n")
        rows = [(p, n, v) for p in range(128) for n, v in zip(notes.NOTES, table.melodic[p])]
        rows += [(DRUMS, n, v) for n, v in zip(notes.DRUM_NOTES, table.drums)]
        for program, note, values in rows:
            out.write(f"{program} {note.key} {note.velocity} " + " ".join(map(str, np.rint(values).astype(int) * SIGNS)) + "\n")


def read(path):
    with open(path, encoding="ascii") as lines:
        lines = [line for line in lines if not line.startswith("#")]
    if lines[0].split()[3:] != features.NAMES:
        raise ValueError(f"{path}: its columns are not the present features; run targets.py")
    data = np.array([line.split() for line in lines[1:]], float)
    values = data[:, 3:] * SIGNS
    melodic = values[:128 * len(notes.NOTES)].reshape(128, len(notes.NOTES), -1)
    drums = values[128 * len(notes.NOTES):]
    return Table(melodic, drums)


def read_all():
    return {bank: read(FOLDER / f"{bank}.txt") for bank in BANKS}


def main(banks):
    for bank in banks or BANKS:
        file = players.BANK_FILES[bank]
        table = measure_bank(lambda song, seconds, file=file: players.play_bank(song, file, seconds))
        write(FOLDER / f"{bank}.txt", table, f"the Debian package {bank} ({Path(file).name}), played by fluidsynth")


if __name__ == "__main__":
    main(sys.argv[1:])

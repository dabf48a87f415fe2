"""Judges the sounds: `./dev sounds judge [OPTION ...] [PROGRAM ...]`; see --help.

Prints a line for each program: distances to each bank's, the rank of the right program among its 128, the nearest
one, what hygiene finds; then the shares.  `fit` rows use the notes and features that the fit may use, `held` other notes and
velocities, `second` also other features.
"""

import numpy as np

import commands
import distance
import exceptions
import general_midi as gm
import hygiene
import levels
import notes
import players
import ranks
import sound_set
import targets

# What is judged: notes, and weights of features.
VIEWS = {
    "fit": (notes.FIT_NOTES, distance.FIT_WEIGHTS),
    "held": (notes.HELD_OUT_NOTES, distance.FIT_WEIGHTS),
    "second": (notes.HELD_OUT_NOTES, distance.SECOND_WEIGHTS),
}

DRUM_VIEWS = {
    "fit": (notes.DRUM_FIT_NOTES, distance.DRUM_FIT_WEIGHTS),
    "held": (notes.DRUM_HELD_OUT_NOTES, distance.DRUM_FIT_WEIGHTS),
    "second": (notes.DRUM_HELD_OUT_NOTES, distance.DRUM_SECOND_WEIGHTS),
}


def arguments(argv):
    parser = commands.parser("judge", __doc__, "all of those that there are")
    parser.add_argument("--sounds", default=commands.SOUNDS, help="folder with gm/FAMILY/NNN_NAME.tqi, gm/laws.txt, drums/")
    parser.add_argument("--set", help="a map (.tqm) beside its banks, instead of texts")
    parser.add_argument("--sf2", help="judge this sample bank as though it were ours, as a peer")
    parser.add_argument("--no-drums", action="store_true")
    return parser.parse_args(argv)


def shares_line(label, programs, rows, families=True):
    exact, five, family, median = ranks.summary(programs, rows)
    text = f"{label:34} exact {exact:4.0%}  five nearest {five:4.0%}"
    return text + (f"  family {family:4.0%}" if families else "") + f"  median rank {median:g}"


class Verdicts:
    """What each program got in each view and bank."""

    def __init__(self, programs, sounds):
        self.programs = programs
        self.tables = targets.read_all()
        self.rows = {}
        for view, (wanted, weights) in VIEWS.items():
            for bank, table in self.tables.items():
                found = [ranks.one(p, s, table.melodic, wanted, weights) for p, s in zip(programs, sounds)]
                self.rows[view, bank] = found

    def line(self, place):
        words = []
        for view in VIEWS:
            cells = []
            for bank in self.tables:
                far, rank, nearest = self.rows[view, bank][place]
                cells.append(f"{far:5.1f} {rank:3d} {nearest:3d}")
            words.append(" ".join(cells))
        return " |".join(words)


def print_programs(programs, verdicts, health):
    print("Distance, rank of the right program and nearest program, for each bank (" + ", ".join(verdicts.tables) + ");")
    print("then LUFS, cents off, dB over keys, dB from velocity 32 to 127, semitones brighter, and what fails.")
    print(f"{'program':23}|{'fit':^27}|{'held out':^28}|{'second measure':^28}| LUFS  cents keys  vel brt")
    for place, program in enumerate(programs):
        figures, fails = health[program]
        print(f"{program:3d} {gm.name_of(program):19}|{verdicts.line(place)} |{figures['lufs']:6.1f} {figures['cents']:+5.1f} "
              f"{figures['keys_db']:4.1f} {figures['velocity_db']:4.1f} {figures['brightness']:+3.0f}"
              + (f"  {', '.join(fails)}" if fails else ""))


def print_summary(programs, verdicts, health):
    print(f"\n{len(programs)} programs")
    for (view, bank), rows in verdicts.rows.items():
        print(shares_line(f"  {view}, {bank}", programs, rows))
    clean = sum(not fails for _, fails in health.values())
    print(f"  hygiene: {clean} of {len(programs)} without a finding, these excepted:")
    for program in programs:
        for _, rule, reason in exceptions.of_program(program):
            print(f"    {program} {gm.name_of(program)}, {rule}: {reason}")
    lufs = np.array([health[p][0]["lufs"] for p in programs])
    middle = np.median(lufs)
    within = np.mean(np.abs(lufs - middle) <= levels.MARGIN_DB)
    print(f"  loudness: median {middle:.1f} LUFS, {within:.0%} within {levels.MARGIN_DB:g} dB of it, "
          f"from {lufs.min():.1f} to {lufs.max():.1f}")
    if len(programs) == 128:
        outside = levels.outside(lufs, levels.read())
        print(f"  loudness: {np.mean(outside <= levels.MARGIN_DB):.0%} within {levels.MARGIN_DB:g} dB of the banks' span")


def print_drums(table):
    banks = targets.read_all()
    rows = {(view, bank): ranks.drum_ranks(table, other.drums, *of)
            for view, of in DRUM_VIEWS.items() for bank, other in banks.items()}
    print("\nDrums of kit 0: distance, rank of the right key and nearest key")
    print(f"key|{'fit':^27}|{'held out':^28}|{'second measure':^28}")
    for place, key in enumerate(notes.DRUM_KEYS):
        cells = [" ".join(f"{r[place][0]:5.1f} {r[place][1]:3d} {notes.DRUM_KEYS[r[place][2]]:3d}"
                          for (v, _), r in rows.items() if v == view) for view in DRUM_VIEWS]
        print(f"{key:3d}|" + " |".join(cells))
    for (view, bank), found in rows.items():
        print(shares_line(f"  drums, {view}, {bank}", notes.DRUM_KEYS, found, families=False))


def judge(play, programs, drums):
    """Prints the verdicts on what play(song, seconds) gives."""
    sounds = targets.measure_programs(play, programs)
    verdicts = Verdicts(programs, sounds)
    health = hygiene.check_all(play, programs)
    print_programs(programs, verdicts, health)
    print_summary(programs, verdicts, health)
    if drums:
        print_drums(targets.measure_drums(play))


def main(argv):
    options = arguments(argv)
    with players.scratch_folder() as folder:
        if options.sf2:
            programs, drums = list(range(128)), True
            def play(song, seconds):
                return players.play_bank(song, options.sf2, seconds)
        else:
            tqm = options.set or sound_set.make_set(options.sounds, folder)
            programs = list(range(128)) if options.set else sorted(sound_set.program_texts(options.sounds))
            drums = sound_set.has_drums(tqm)
            play = sound_set.player_of(tqm)
        if options.program:
            absent = sorted(set(options.program) - set(programs))
            if absent:
                raise players.PlayerError(f"there is no text of program {absent[0]} in {options.sounds}/gm")
            programs, drums = options.program, False
        judge(play, programs, drums and not options.no_drums)


if __name__ == "__main__":
    commands.run("judge", main)

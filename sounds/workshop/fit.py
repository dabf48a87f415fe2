"""Fits programs to what two sample banks agree on: `./dev sounds fit [OPTION ...] [PROGRAM ...]`; see --help.

`./dev sounds fit drums [FAMILY ...]` does so with the drums.

Least squares, then a random search (CMA-ES) turn continuous bytes and laws of a start by a few of the fitting notes.  The result is taken
only if the fitting notes that the search left out prefer it too, and hygiene finds nothing new.  The judge's held-out notes and second measure
take no part, so that they tell how good the set is.
"""

from pathlib import Path

import numpy as np

import candidates
import cma_es
import commands
import distance
import drum_fit
import gauss_newton
import general_midi as gm
import genes
import hygiene
import instrument_text
import law_text
import levels
import loudness
import moves
import notes
import players
import recipes
import roofs
import sound_set
import starts
import targets

SIGMA = 0.08
POPULATION = 16
# Beyond any difference of features.
FAR = 100.0
# Of the way from the start to what was found.
SHARES = (1.0, 0.7, 0.4)
# How much softer than the set a sound may be for its peak.
MOST_SOFTER_DB, SOFTER_STEP_DB = 1.5, 0.2
# And for whatever reason, beyond which it leaves the banks' span or the set.
MOST_SHORT_DB = 2.0


def arguments(argv):
    parser = commands.search_parser("fit", __doc__)
    parser.add_argument("--rounds", type=int, default=8, help="of least squares, at most; %(default)s if not given")
    parser.add_argument("--generations", type=int, default=20,
                        help=f"of {POPULATION} versions each in the random search; %(default)s if not given")
    parser.add_argument("--recipes", action="store_true", help="try other waves, filters and noises as well, behind the equalisers")
    parser.add_argument("--scratch", action="store_true", help="start from the plain designs of starts.py as well")
    return parser.parse_args(argv)


def fit_notes(program):
    """The program's fitting notes that a search renders: three keys loud, the middle one soft as well."""
    wanted = notes.in_range(notes.FIT_NOTES, *gm.range_of(program))
    keys = sorted({n.key for n in wanted})
    loud = max(n.velocity for n in wanted)
    middle = keys[len(keys) // 2]
    return [n for n in wanted if n.key == middle or n.key in (keys[0], keys[-1]) and n.velocity == loud]


class Goal:
    """The two banks' rows of a program, and how far versions lie from their span."""

    def __init__(self, program, tables):
        self.program = program
        self.banks = [table.melodic[program] for table in tables.values()]

    def measure(self, versions, wanted):
        """Rows of the versions, and what faults cost them."""
        sounds = candidates.render(versions, wanted)
        rows = candidates.rows_of(sounds, wanted)
        return rows, candidates.faults(versions, sounds, rows, wanted, gm.range_of(self.program))

    def ends(self, wanted):
        index = [notes.NOTES.index(n) for n in wanted]
        return [bank[index] for bank in self.banks]

    def far(self, rows, wanted, weights):
        return np.array([distance.to_span(row, *self.ends(wanted), weights) for row in rows])

    def losses(self, versions, wanted):
        rows, faults = self.measure(versions, wanted)
        return self.far(rows, wanted, distance.FIT_WEIGHTS) + faults

    def moved(self, version):
        """The version after the wide moves that bring it nearer."""
        wanted = fit_notes(self.program)
        for family in moves.families(version.instrument):
            tried = [version] + [candidates.Version(version.instrument.copy(changes), version.laws, version.others)
                                 for changes in family(version.instrument)]
            version = tried[int(self.losses(tried, wanted).argmin())]
        return version

    def search(self, start, rounds, generations, seed):
        """The best version found from a start, and its loss: wide moves, least squares, then a random search."""
        start = self.moved(start)
        table = genes.of_instrument(start.instrument)
        wanted = fit_notes(self.program)
        one, other = (distance.without_level(end) for end in self.ends(wanted))

        def version(x):
            return candidates.Version(*genes.apply(table, x, start.instrument, start.laws), start.others)

        def residuals(points):
            rows, faults = self.measure([version(x) for x in points], wanted)
            # Uncut: what is far off must show where it goes.
            signed, weights = distance.to_span_signed(distance.without_level(rows), one, other, distance.FIT_WEIGHTS, FAR)
            # The faults are one residual more.
            out = np.hstack([signed.reshape(len(points), -1), faults[:, None]])
            return out, np.append(weights[0].ravel() / len(wanted), 1.0)

        def loss_of(points, rows):
            return np.minimum(np.abs(rows[:, :-1]), distance.CUT) @ residual_weights + rows[:, -1]

        point = np.clip(genes.numbers(table, start.instrument, start.laws), 0, 1)
        residual_weights = residuals([point])[1][:-1]
        point, least = gauss_newton.improve(point, residuals, loss_of, rounds)
        best = version(point)
        state = cma_es.CmaEs(point, SIGMA, seed, POPULATION)
        for _ in range(generations):
            asked = state.ask()
            versions = [version(x) for x in asked]
            outside = np.maximum(0, np.maximum(-asked, asked - 1)).sum(1)
            losses = self.losses(versions, wanted)
            state.tell(losses + 5 * outside)
            if losses.min() < least:
                least, best = float(losses.min()), versions[int(losses.argmin())]
        return best, least

    def verdict(self, version):
        """Distance over all fitting notes, and over those that the search did not render."""
        wanted = notes.in_range(notes.FIT_NOTES, *gm.range_of(self.program))
        left_out = [i for i, note in enumerate(wanted) if note not in fit_notes(self.program)]
        rows = distance.without_level(candidates.rows_of(candidates.render([version], wanted), wanted)[0])
        one, other = (distance.without_level(end) for end in self.ends(wanted))
        far = distance.between(rows, one, distance.FIT_WEIGHTS, other)
        return float(far.mean()), float(far[left_out].mean() if left_out else far.mean())


def louder(version, decibels):
    """The version with its main volume turned, as far as it goes."""
    # The volume's curve is a cube: 60 dB per factor of 10.
    wanted = version.instrument["main_volume"] * 10 ** (decibels / 60)
    byte = int(min(127, max(1, round(wanted))))
    return candidates.Version(version.instrument.copy({"main_volume": byte}), version.laws, version.others)


def level(version, program):
    """The version with its main volume set for the program's level, and what hygiene says of it."""
    for _ in range(2):
        plays = hygiene.phrase(program)
        sound = play(version, program, plays)
        version = louder(version, levels.target_lufs(program) - loudness.lufs(sound))
    figures, fails = health(version, program)
    return version, figures, fails


def mend(version, figures, fails, program):
    """The version with keys and velocities evened out, or a little softer, where that is what hygiene finds, and what it finds then."""
    found = kinds(fails)
    if found & {"dBoverkeys", "dBovervelocities"}:
        roof = roofs.next_roof(program, roofs.Roof.parse(version.others.get("level", "")), figures, roofs.steepest(version.instrument))
        version, figures, fails = level(candidates.Version(version.instrument, version.laws, roof.among(version.others)), program)
    over_db = 20 * np.log10(figures["peak"] / hygiene.MAX_PEAK)
    if 0 < over_db <= MOST_SOFTER_DB:
        version = louder(version, -over_db - SOFTER_STEP_DB)
        fails = health(version, program)[1]
    return version, fails


def play(version, program, plays):
    """The version at its own number."""
    with players.scratch_folder() as folder:
        path = Path(folder) / "own.tqi"
        path.write_text(version.instrument.text())
        sound_set.make_bank(Path(folder) / "gm.tqb", {program: path}, sound_set.GLOBALS)
        tqm = Path(folder) / "gm.tqm"
        tqm.write_text("\n".join(["melodic_bank = gm.tqb"] + law_text.lines(program, version.laws, version.others)) + "\n")
        return players.play_set(notes.sequence(plays), tqm, sum(slot for *_, slot in plays) / 1000)


def health(version, program):
    """What hygiene says, and whether the main volume could not reach the program's level."""
    figures, fails = hygiene.check(program, play(version, program, hygiene.plays(program)))
    short_db = levels.target_lufs(program) - figures["lufs"]
    return figures, fails + ([f"{short_db:.1f} dB too soft"] if short_db > MOST_SHORT_DB else [])


def is_better(before, after, old_fails, fails):
    """Whether a version is nearer, also on notes that were left out, or hygiene finds less at no great cost; it may find nothing new."""
    nearer = after[0] < 0.99 * before[0] and after[1] < before[1]
    cleaner = len(fails) < len(old_fails) and after[0] < 1.01 * before[0]
    return (nearer or cleaner) and not kinds(fails) - kinds(old_fails)


def told(before, after):
    return f"fit {before[0]:5.2f} -> {after[0]:5.2f}  left out {before[1]:5.2f} -> {after[1]:5.2f}"


def kinds(fails):
    """Findings without their figures."""
    return {"".join(c for c in text if c.isalpha()) for text in fails}


def start_of(sounds, program):
    """The text and laws that are there, or None."""
    path = sound_set.program_texts(sounds).get(program)
    if not path:
        return None
    laws = Path(sounds) / "gm/laws.txt"
    rules, others = law_text.of_program(laws.read_text() if laws.exists() else "", program)
    return candidates.Version(instrument_text.read(path), rules, others)


def choose_start(goal, old, scratch, seed):
    """Starts for the long search: what is there, and the best plain design after a short search of each."""
    chosen = [old] if old else []
    if scratch or not old:
        plain = starts.designs(goal.program, goal.banks)
        first = goal.losses(plain, fit_notes(goal.program))
        tried = [goal.search(plain[i], 2, 0, seed) for i in np.argsort(first)[:6]]
        chosen += [version for version, _ in sorted(tried, key=lambda pair: pair[1])[:1]]
    return chosen


def fit(program, options, tables, say=print):
    goal = Goal(program, tables)
    old = start_of(options.start, program)
    before = goal.verdict(old) if old else (float("inf"), float("inf"))
    old_fails = health(old, program)[1] if old else []
    found = []
    chosen = choose_start(goal, old, options.scratch, options.seed)
    if old and options.recipes and program not in recipes.EVENTS:
        wanted = fit_notes(program)
        chosen += recipes.best(old, wanted, goal.ends(wanted))
    for start in chosen:
        ready = candidates.Version(genes.with_free_peaks(start.instrument), start.laws, start.others)
        found.append((goal.search(ready, options.rounds, options.generations, options.seed), ready))
    (best, loss), ready = min(found, key=lambda pair: pair[0][1])
    # Where the whole way breaks a rule, a part of it may not.
    for share in SHARES:
        instrument, laws = genes.blend((ready.instrument, ready.laws), (best.instrument, best.laws), share)
        version = candidates.Version(genes.without_idle_peaks(instrument), laws, best.others)
        version, fails = mend(*level(version, program), program)
        after = goal.verdict(version)
        accepted = is_better(before, after, old_fails, fails) if old else True
        say(f"{program:3d} {gm.name_of(program):20} {share:4.0%}  {told(before, after)}  loss {loss:5.2f}  "
            f"{'accepted' if accepted else 'refused'}  {', '.join(old_fails)} -> {', '.join(fails)}", flush=True)
        if accepted:
            store(program, version, old, options)
            return True
    return False


def store(program, version, old, options):
    instrument = version.instrument
    if not old:
        instrument.words = {"name": gm.name_of(program), "author": "Tarquil", "category": gm.family_of(program).replace("_", " "),
                            "tags": gm.name_of(program).replace("_", " "), "comment": starts.comment_of(program)}
    source = sound_set.program_texts(options.start).get(program)
    name = source.name if source else Path(gm.text_path(program)).name
    path = Path(options.out) / "gm" / gm.family_of(program) / name
    path.parent.mkdir(parents=True, exist_ok=True)
    path.write_text(instrument.text())
    law_text.replace(Path(options.out) / "gm/laws.txt", program, version.laws, version.others)


def main(argv):
    if argv[:1] == ["drums"]:
        drum_fit.main(argv[1:])
        return
    options = arguments(argv)
    tables = targets.read_all()
    commands.for_each(options.program, lambda program: fit(program, options, tables))


if __name__ == "__main__":
    commands.run("fit", main)

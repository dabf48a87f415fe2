"""Fits the equalisers of programs, and nothing else: `./dev sounds tone [OPTION ...] [PROGRAM ...]`; see --help.

A program is rendered once with its equalisers out; what they make of it is arithmetic (spectra.py), so thousands of settings
cost a second.  They are turned until partials, rest and brightness lie nearest to the two banks' span and the keys are even.
What is found is taken by the same rules as a fit.
"""

import numpy as np

import candidates
import cma_es
import commands
import distance
import equalisers
import fit
import general_midi as gm
import hygiene
import notes
import players
import spectra
import targets

GENERATIONS, POPULATION, SIGMA = 120, 14, 0.12
KEYS_DB = 4.5
KEYS_COST = 0.35
BOOST_COST = 0.01


def render(version, program):
    """Spectra of the fitting notes, and of hygiene's keys."""
    wanted = notes.in_range(notes.FIT_NOTES, *gm.range_of(program))
    keys = [notes.Note(key, 100) for key in hygiene.keys_of(program)]
    sounds = candidates.render([version], wanted + keys)[0][..., :1]
    return (wanted, spectra.Notes(sounds[:len(wanted)], [n.key for n in wanted]),
            spectra.Notes(sounds[len(wanted):], [n.key for n in keys]))


def search(version, program, goal, seed):
    """The best equalisers, or None if there is nothing to turn."""
    bank = equalisers.Bank(version.instrument)
    if not bank.slots:
        return None
    plain = candidates.Version(bank.without(version.instrument), version.laws, version.others)
    wanted, fitted, keys = render(plain, program)
    one, other = (distance.without_level(end) for end in goal.ends(wanted))

    def loss(numbers):
        response = bank.response(numbers)
        rows = distance.without_level(fitted.behind(response))
        far = distance.between(rows, one, distance.FIT_WEIGHTS, other).mean()
        levels = 10 * np.log10((keys.parts[:, :, -2] @ response).max(1) + 1e-12)
        uneven = np.ptp(levels)
        outside = np.maximum(0, np.maximum(-numbers, numbers - 1)).sum()
        return (far + KEYS_COST * max(0.0, uneven - KEYS_DB) + 5 * outside
                + BOOST_COST * sum(abs(db) for db in bank.gains_db(numbers)))

    state = cma_es.CmaEs(bank.start, SIGMA, seed, POPULATION)
    best, least = bank.start, loss(bank.start)
    for _ in range(GENERATIONS):
        asked = state.ask()
        losses = np.array([loss(x) for x in asked])
        state.tell(losses)
        if losses.min() < least:
            best, least = asked[int(losses.argmin())], float(losses.min())
    return candidates.Version(version.instrument.copy(bank.bytes(best)), version.laws, version.others)


def tone(program, options, tables, say=print):
    goal = fit.Goal(program, tables)
    old = fit.start_of(options.start, program)
    if old is None:
        raise players.PlayerError(f"there is no text of program {program} in {options.start}/gm")
    best = search(old, program, goal, options.seed)
    if best is None:
        return False
    before, old_fails = goal.verdict(old), fit.health(old, program)[1]
    version, _, fails = fit.level(best, program)
    after = goal.verdict(version)
    accepted = fit.is_better(before, after, old_fails, fails)
    say(f"{program:3d} {gm.name_of(program):20} {fit.told(before, after)}  "
        f"{'accepted' if accepted else 'refused'}  {', '.join(old_fails)} -> {', '.join(fails)}", flush=True)
    if accepted:
        fit.store(program, version, old, options)
    return accepted


def main(argv):
    options = commands.search_parser("tone", __doc__).parse_args(argv)
    tables = targets.read_all()
    commands.for_each(options.program, lambda program: tone(program, options, tables))


if __name__ == "__main__":
    commands.run("tone", main)

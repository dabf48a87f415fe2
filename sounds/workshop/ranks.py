"""Which of a bank's programs a sound comes nearest to."""

import numpy as np

import distance
import general_midi as gm
import notes


def chosen(program, wanted):
    """Indices into notes.NOTES of those of `wanted` that the program's players use."""
    return [notes.NOTES.index(n) for n in notes.in_range(wanted, *gm.range_of(program))]


def one(program, sound, bank, wanted, weights):
    """Distance of the sound (NOTES x features) to the bank's program, its rank, and the nearest program."""
    index = chosen(program, wanted)
    far = distance.of_program(sound[index], bank[:, index], weights)
    return float(far[program]), 1 + int((far < far[program]).sum()), int(far.argmin())


def drum_ranks(ours, bank, wanted, weights):
    """The same of each drum key, a note each."""
    index = [notes.DRUM_NOTES.index(n) for n in wanted]
    a, b = distance.without_level(ours[index].T).T, distance.without_level(bank[index].T).T
    far = distance.between(a[:, None], b[None], weights)
    own = np.diagonal(far)
    return [(float(own[i]), 1 + int((far[i] < own[i]).sum()), int(far[i].argmin())) for i in range(len(index))]


def summary(programs, rows):
    """Exact, among the five nearest, right family (shares of 1), and the median rank."""
    rank = np.array([r[1] for r in rows])
    family = np.mean([r[2] // 8 == p // 8 for p, r in zip(programs, rows)])
    return float(np.mean(rank == 1)), float(np.mean(rank <= 5)), float(family), float(np.median(rank))

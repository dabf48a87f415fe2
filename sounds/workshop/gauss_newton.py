"""Least squares with a slope table by finite differences: large steps early, where a random search would take thousands of tries.

Levenberg and Marquardt's damped step (K. Levenberg 1944, D. Marquardt 1963) on weighted residuals; differences are weighed anew
by 1 / max(|r|, SOFT), which makes the sum of squares one of absolute values (P. Green 1984).
"""

import numpy as np

SOFT = 1.5
DAMPINGS = (0.03, 0.1, 0.3, 1.0, 3.0, 10.0)
STEP = 0.03
STEP_CAP = 0.2
# Steps on one table of slopes, which each brings up to date by what it saw (C. Broyden 1965).
STEPS_A_TABLE = 3


def improve(start, residuals, loss_of, rounds, least_gain=0.01):
    """Minimises over numbers 0..1; a round is a table of slopes and the steps that it gives.

    residuals(list of points) gives (points x residuals, weights of residuals); loss_of(list of points, those residuals) what counts.
    """
    point = np.clip(np.array(start, float), 0, 1)
    rows, weights = residuals([point])
    best = float(loss_of([point], rows)[0])
    row = rows[0]
    for _ in range(rounds):
        before = best
        # Away from the nearer end, so that a step is one.
        signs = np.where(point > 0.5, -1.0, 1.0)
        points = [point + STEP * sign * unit for sign, unit in zip(signs, np.eye(len(point)))]
        moved, _ = residuals(points)
        slopes = ((moved - row) / (STEP * signs)[:, None]).T
        for number in range(STEPS_A_TABLE):
            trials = steps(point, row, slopes, weights)
            rows, _ = residuals(trials)
            if number == 0:
                # The single moves are tries as well.
                trials, rows = points + trials, np.vstack([moved, rows])
            losses = loss_of(trials, rows)
            place = int(np.argmin(losses))
            if losses[place] >= best:
                break
            gain = 1 - losses[place] / best
            there = np.clip(trials[place], 0, 1)
            way = there - point
            slopes += np.outer(rows[place] - row - slopes @ way, way) / max(way @ way, 1e-9)
            point, best, row = there, float(losses[place]), rows[place]
            if gain < least_gain:
                break
        if best > before * (1 - least_gain):
            break
    return point, best


def steps(point, row, slopes, weights):
    """A point for each damping."""
    pull = weights / np.maximum(np.abs(row), SOFT)
    curve = slopes.T @ (pull[:, None] * slopes)
    down = slopes.T @ (pull * row)
    scale = np.diag(curve) + 0.02 * np.diag(curve).max() + 1e-9
    trials = []
    for damping in DAMPINGS:
        step = np.clip(-np.linalg.solve(curve + damping * np.diag(scale), down), -STEP_CAP, STEP_CAP)
        trials.append(np.clip(point + step, 0, 1))
    return trials

"""Least squares with a slope table by finite differences: large steps early, where a random search would take thousands of tries.

Levenberg and Marquardt's damped step (K. Levenberg 1944, D. Marquardt 1963) on weighted residuals; differences are weighed anew
by 1 / max(|r|, SOFT), which makes the sum of squares one of absolute values (P. Green 1984).
"""

import numpy as np

SOFT = 1.5
DAMPINGS = (0.03, 0.1, 0.3, 1.0, 3.0, 10.0)
STEP = 0.03
STEP_CAP = 0.2


def improve(start, residuals, loss_of, rounds, least_gain=0.01):
    """Minimises over numbers 0..1.

    residuals(list of points) gives (points x residuals, weights of residuals); loss_of(list of points, those residuals) what counts.
    """
    point = np.clip(np.array(start, float), 0, 1)
    rows, weights = residuals([point])
    best = float(loss_of([point], rows)[0])
    row = rows[0]
    for _ in range(rounds):
        # Away from the nearer end, so that a step is one.
        signs = np.where(point > 0.5, -1.0, 1.0)
        points = [point + STEP * sign * unit for sign, unit in zip(signs, np.eye(len(point)))]
        moved, _ = residuals(points)
        slopes = ((moved - row) / (STEP * signs)[:, None]).T
        pull = weights / np.maximum(np.abs(row), SOFT)
        curve = slopes.T @ (pull[:, None] * slopes)
        down = slopes.T @ (pull * row)
        scale = np.diag(curve) + 0.02 * np.diag(curve).max() + 1e-9
        trials = []
        for damping in DAMPINGS:
            step = np.clip(-np.linalg.solve(curve + damping * np.diag(scale), down), -STEP_CAP, STEP_CAP)
            trials.append(np.clip(point + step, 0, 1))
        # The single moves are tries as well.
        trial_rows, _ = residuals(trials)
        every = points + trials
        rows = np.vstack([moved, trial_rows])
        losses = loss_of(every, rows)
        place = int(np.argmin(losses))
        if losses[place] >= best * (1 - least_gain):
            if losses[place] < best:
                point, best = np.clip(every[place], 0, 1), float(losses[place])
            break
        point, best, row = np.clip(every[place], 0, 1), float(losses[place]), rows[place]
    return point, best

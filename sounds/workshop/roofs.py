"""Level laws: a roof over the keys, and decibels for velocities."""

import numpy as np

import hygiene

GOAL_DB = 4.5
RANGE_DB = (21.0, 29.0)
RANGE_GOAL_DB = 25.0
STEEPEST = 6.5
# With copies in random phases, which of them meet differs from note to note: a steep roof would follow that chance.
STEEPEST_AT_RANDOM = 2.0
# A law's step; what an unneeded decibel an octave costs against one over the keys.
STEP, COST = 0.25, 0.1


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

    def among(self, others):
        """The laws that are not controllers', with this one."""
        rest = {key: value for key, value in others.items() if key != "level"}
        return {**rest, "level": self.text()} if self.text() else rest

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


def gain_at(roof, program):
    """What the law makes of a phrase in the program's range, in dB."""
    return float(np.mean(roof.over(hygiene.phrase_keys(program)))) + roof.vel * (100 - 127) / 12

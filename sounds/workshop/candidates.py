"""Renders many versions of one program at once and measures them."""

from pathlib import Path

import numpy as np

import features
import law_text
import notes
import opening
import players
import sound_set

# A note's loudest 10 ms at full main volume (dBFS), below which a phrase can not reach the usual loudness.
LEAST_LEVEL = -23.9
OPENING_COST = 6.0
MOST_PEAK = 0.43
# Of a side for a sound in the middle: power is shared.
CENTRE_GAIN = np.float32(0.5 ** 0.5)
# What hygiene lets pass, less a margin, and decibels from velocity 32 to 127.
MOST_KEYS_DB = 4.0
VELOCITY_DB = (22.0, 28.0)


class Version:
    """An instrument with its laws (slopes) and other rules of the map."""

    def __init__(self, instrument, laws, others):
        self.instrument = instrument
        self.laws = laws
        self.others = others


def write_set(versions, folder):
    """A set whose programs 0... are the versions."""
    lines = ["title = Candidates", "melodic_bank = gm.tqb"]
    texts = {}
    for number, version in enumerate(versions):
        path = Path(folder) / f"{number}.tqi"
        path.write_text(version.instrument.text())
        texts[number] = path
        lines += law_text.lines(number, version.laws, version.others)
    sound_set.make_bank(Path(folder) / "gm.tqb", texts, sound_set.GLOBALS)
    path = Path(folder) / "gm.tqm"
    path.write_text("\n".join(lines) + "\n")
    return path


def render(versions, wanted):
    """versions x notes x frames x sides; one side where both are alike."""
    with players.scratch_folder() as folder:
        tqm = write_set(versions, folder)
        if any(version.instrument["chanfx2_type"] for version in versions):
            plays = [(p, n) for p in range(len(versions)) for n in wanted]
            sound = players.play_set(notes.slots(plays), tqm, len(plays) * notes.SLOT_MS / 1000)
            return players.cut(sound, len(plays), notes.SLOT_MS).reshape(len(versions), len(wanted), -1, 2)
        numbers = list(range(len(versions)))
        numbers += numbers[-1:] * (len(numbers) % 2)
        pairs = list(zip(numbers[::2], numbers[1::2]))
        count = len(pairs) * len(wanted)
        sound = players.play_set(notes.paired_slots(pairs, wanted), tqm, count * notes.SLOT_MS / 1000)
    both = players.cut(sound, count, notes.SLOT_MS).reshape(len(pairs), len(wanted), -1, 2) * CENTRE_GAIN
    return both.transpose(0, 3, 1, 2).reshape(len(numbers), len(wanted), -1, 1)[:len(versions)]


def rows_of(sounds, wanted, wobble=False):
    """versions x notes x features."""
    count = len(sounds)
    flat = sounds.reshape(count * len(wanted), -1, sounds.shape[-1])
    if not wobble:
        # A side is enough for a search.
        flat = flat[..., :1]
    rows = features.measure(flat, [n.key for n in wanted] * count, wobble)
    return rows.reshape(count, len(wanted), -1)


def spread_over(keys, levels, low, high):
    """Decibels between the loudest and the softest key from low to high, by a line through what was measured."""
    if len(keys) < 2:
        return 0.0
    slope, base = np.polyfit(keys, levels, 1)
    beside = np.abs(levels - (slope * np.array(keys) + base)).max()
    return abs(slope) * (high - low) + beside


def faults(versions, sounds, rows, wanted, key_range):
    """For each version what no fit may buy: rumble, clipping, a filter that may ring, too little level, dead or loud keys, velocities of one colour.

    In units of the distance (decibels); 0 is clean.
    """
    out = np.zeros(len(sounds))
    centroid = features.GROUPS["centroid"][0]
    loud = max(note.velocity for note in wanted)
    at_loud = [i for i, note in enumerate(wanted) if note.velocity == loud]
    loud_keys = [wanted[i].key for i in at_loud]
    for version, (sound, row) in enumerate(zip(sounds, rows)):
        levels = row[at_loud, 0]
        spare = 60 * np.log10(127 / max(1, versions[version].instrument["main_volume"]))
        out[version] += 0.1 * max(0.0, LEAST_LEVEL - (levels.max() + spare))
        out[version] += 0.5 * max(0.0, spread_over(loud_keys, levels, *key_range) - MOST_KEYS_DB)
        side = sound[..., 0]
        middle = side[:, 4410:4410 + 32768] if side.shape[1] > 37178 else side
        power = np.abs(np.fft.rfft(middle * np.hanning(middle.shape[1]), axis=1)) ** 2
        hz = np.arange(power.shape[1]) * features.RATE / middle.shape[1]
        for note, spectrum in zip(wanted, power):
            below = spectrum[hz < min(40.0, 0.6 * features.key_hz(note.key))].sum() / max(1e-20, spectrum.sum())
            out[version] += 0.05 * max(0.0, features.decibels(below) + 45) / len(wanted)
        out[version] += 10 * max(0.0, float(np.abs(sound).max()) - MOST_PEAK)
        out[version] += OPENING_COST * opening.octaves_beyond(versions[version].instrument, versions[version].laws)
        by_key = {}
        for note, values in zip(wanted, row):
            by_key.setdefault(note.key, []).append((note.velocity, values[centroid]))
        steps = [max(pair)[1] - min(pair)[1] for pair in by_key.values() if len(pair) > 1]
        for key, pair in by_key.items():
            if len(pair) > 1:
                here = {note.velocity: values[0] for note, values in zip(wanted, row) if note.key == key}
                soft, hard = min(here), max(here)
                whole = (here[hard] - here[soft]) * np.log(127 / 32) / np.log(hard / soft)
                out[version] += 0.2 * max(0.0, VELOCITY_DB[0] - whole, whole - VELOCITY_DB[1])
        if steps:
            out[version] += 0.4 * max(0.0, 2.0 - float(np.mean(steps)))
    return out

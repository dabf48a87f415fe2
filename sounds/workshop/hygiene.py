"""What every sound must pass, whatever it imitates: tuning, levels over keys and velocities, no clicks or DC, silence."""

import numpy as np
import scipy.signal

import exceptions
import features
import general_midi as gm
import loudness
import notes
import players
from notes import Note

RATE = players.RATE
KEY_STEPS = 8
VELOCITIES = (32, 64, 96, 127)
PHRASE = (48, 55, 60, 64, 67, 72)
HOLD, SLOT = 600, 900
TAIL_HOLD, TAIL_SLOT = 500, 5000
PHRASE_HOLD, PHRASE_SLOT = 760, 800
# All over the keyboard, beyond the range as well: a song may ask for it.
SCAN = tuple(Note(key, velocity) for velocity in (60, 120) for key in range(24, 88, 7))
SCAN_HOLD, SCAN_SLOT = 400, 500
# The keyboard from end to end at full strength, for what runs away at some key only.
WIDE = tuple(Note(key, 127) for key in range(16, 109, 4))
WIDE_HOLD, WIDE_SLOT = 300, 350

# Limits; levels in dB of the note's loudest moment unless a name says otherwise.
MAX_CENTS = 2.0
MAX_KEY_DB = 6.0
VELOCITY_DB = (20.0, 30.0)
MAX_CLICK_DB = -50.0
MAX_TAIL_DB = -60.0
MAX_DC_DB = -40.0
MAX_REST_DBFS = -90.0
# Semitones of the centroid from the softest to the hardest velocity.
LEAST_BRIGHTER = 0.5
# Of a note at the set's level, full scale being 1: beyond is a filter that rings at the top of the spectrum.
MAX_PEAK = 0.5
MAX_WIDE_DB = -9.9

# Without a pitch of the key, or with partials that are none of its multiples.
UNTUNED = gm.UNPITCHED | {14, 112}


def keys_of(program):
    low, high = gm.range_of(program)
    return [int(round(k)) for k in np.linspace(low, high, KEY_STEPS)]


def phrase_keys(program):
    """The phrase, moved by octaves to the middle of the program's range."""
    low, high = gm.range_of(program)
    shift = 12 * round(((low + high) / 2 - 60) / 12)
    return [key + shift for key in PHRASE]


def middle_key(program):
    low, high = gm.range_of(program)
    return (low + high) // 2


def scan(program):
    return ([(program, note, SCAN_HOLD, SCAN_SLOT) for note in SCAN]
            + [(program, note, WIDE_HOLD, WIDE_SLOT) for note in WIDE])


def phrase(program):
    return [(program, Note(k, 100), PHRASE_HOLD, PHRASE_SLOT) for k in phrase_keys(program)]


def plays(program):
    keys = [(program, Note(k, 100), HOLD, SLOT) for k in keys_of(program)]
    velocities = [(program, Note(middle_key(program), v), HOLD, SLOT) for v in VELOCITIES]
    tail = [(program, Note(middle_key(program), 100), TAIL_HOLD, TAIL_SLOT)]
    return keys + velocities + tail + phrase(program) + scan(program)


def milliseconds(sound, start, end):
    return sound[round(start * RATE / 1000):round(end * RATE / 1000)]


def rms_db(sound):
    return float(features.decibels(np.mean(np.square(sound, dtype=np.float64)))) if len(sound) else -200.0


def loudest_db(sound):
    """The held note's loudest 150 ms."""
    return max(rms_db(milliseconds(sound, t, t + 150)) for t in range(0, HOLD - 150, 50))


def cents_off(sound, key):
    """Of the partial nearest below 1 kHz or the first, by its phase's advance over the hold; None if too weak.

    A vibrato averages out; beating copies are weighted by their power.
    """
    f0 = features.key_hz(key)
    mono = milliseconds(sound, 120, 590).mean(1).astype(float)
    window = np.hanning(len(mono))
    size = 1 << 18
    spectrum = np.abs(np.fft.rfft(mono * window, size)) ** 2
    whole = spectrum.sum()
    freqs = np.arange(len(spectrum)) * RATE / size
    found = []
    for harmonic in range(1, 7):
        low, high = (np.searchsorted(freqs, f0 * harmonic * 2 ** (c / 1200)) for c in (-60, 60))
        piece = spectrum[low:high]
        if len(piece) and piece.sum() > 0.02 * whole:
            near = piece >= piece.max() / 4
            hz = float((freqs[low:high][near] * piece[near]).sum() / piece[near].sum())
            found.append((float(piece.sum()) * harmonic, 1200 * np.log2(hz / (f0 * harmonic))))
    if not found:
        return None
    weights, cents = np.array(found).T
    return float((weights * cents).sum() / weights.sum())


def click_db(sound, off_ms):
    """What is new above 6 kHz within 40 ms of the note-off, against the note's loudest 5 ms."""
    sos = scipy.signal.butter(4, 6000, "high", fs=RATE, output="sos")
    high = scipy.signal.sosfilt(sos, sound.mean(1).astype(float))
    def peak(start, end):
        piece = milliseconds(high, start, end)
        frames = piece[:len(piece) // 22 * 22].reshape(-1, 22)
        return float((frames ** 2).mean(1).max(initial=0))
    excess = peak(off_ms, off_ms + 40) - 1.6 * peak(off_ms - 60, off_ms)
    whole = sound.astype(float)[:len(sound) // 220 * 220].reshape(-1, 440)
    return float(features.decibels(max(0.0, excess) / max(1e-20, (whole ** 2).mean(1).max())))


def check(program, sound):
    """A dict of figures, and the list of what fails, of the sound of plays(program)."""
    pieces, at = [], 0
    for _, note, hold, slot in plays(program):
        pieces.append((note, hold, milliseconds(sound, at, at + slot)))
        at += slot
    keys, rest = pieces[:KEY_STEPS], pieces[KEY_STEPS:]
    velocities, rest = rest[:len(VELOCITIES)], rest[len(VELOCITIES):]
    tail, rest = rest[0], rest[1:]
    sung, rest = rest[:len(PHRASE)], rest[len(PHRASE):]
    scanned, wide = rest[:len(SCAN)], rest[len(SCAN):]
    out = {}
    cents = [cents_off(s, n.key) for n, _, s in keys] if program not in UNTUNED else []
    cents = [c for c in cents if c is not None]
    out["cents"] = max(cents, key=abs) if cents else 0.0
    levels = [loudest_db(s) for _, _, s in keys]
    out["keys_db"] = max(levels) - min(levels)
    out["levels"] = levels
    out["peak"] = max(float(np.abs(s).max()) for _, _, s in scanned)
    out["wide_db"] = max(loudest_db(s) for _, _, s in wide)
    loud = [loudest_db(s) for _, _, s in velocities]
    out["velocity_db"] = loud[-1] - loud[0]
    spread = np.stack([np.vstack([s, np.zeros((RATE * 6 // 10, 2), s.dtype)]) for _, _, s in velocities])
    rows = features.measure(spread, [n.key for n, _, _ in velocities], wobble=False)
    out["brightness"] = float(rows[-1, features.GROUPS["centroid"][0]] - rows[0, features.GROUPS["centroid"][0]])
    note, hold, s = tail
    top = max(rms_db(milliseconds(s, t, t + 50)) for t in range(0, hold, 25))
    out["tail_db"] = rms_db(milliseconds(s, TAIL_SLOT - 600, TAIL_SLOT - 300)) - top
    out["rest_dbfs"] = 20 * np.log10(max(1e-10, float(np.abs(milliseconds(s, TAIL_SLOT - 300, TAIL_SLOT - 20)).max(initial=0))))
    low = scipy.signal.sosfilt(scipy.signal.butter(2, 8, fs=RATE, output="sos"), s.mean(1).astype(float))
    out["dc_db"] = rms_db(milliseconds(low, 150, hold)) - max(rms_db(milliseconds(s, 150, hold)), top - 30)
    out["click_db"] = max(click_db(s, hold) for _, hold, s in keys[2:6:3])
    out["lufs"] = loudness.lufs(np.concatenate([s for _, _, s in sung]))
    return out, failures(program, out)


def failures(program, out):
    """What fails and is not excepted, in words."""
    low, high = VELOCITY_DB
    found = {
        "cents": abs(out["cents"]) > MAX_CENTS and f"{out['cents']:+.1f} cents",
        "keys": out["keys_db"] > MAX_KEY_DB and f"{out['keys_db']:.1f} dB over keys",
        "velocities": not low <= out["velocity_db"] <= high and f"{out['velocity_db']:.1f} dB over velocities",
        "brightness": out["brightness"] < LEAST_BRIGHTER and f"brightness {out['brightness']:+.1f}",
        "peak": out["peak"] > MAX_PEAK and f"peak {out['peak']:.2f}",
        "runaway": out["wide_db"] > MAX_WIDE_DB and f"runs away: {out['wide_db']:.0f} dB",
        "tail": out["tail_db"] > MAX_TAIL_DB and f"tail {out['tail_db']:.0f} dB",
        "rest": out["rest_dbfs"] > MAX_REST_DBFS and f"not silent: {out['rest_dbfs']:.0f} dBFS",
        "dc": out["dc_db"] > MAX_DC_DB and f"DC {out['dc_db']:.0f} dB",
        "click": out["click_db"] > MAX_CLICK_DB and f"click {out['click_db']:.0f} dB",
    }
    excepted = {kind for _, kind, _ in exceptions.of_program(program)}
    return [text for kind, text in found.items() if text and kind not in excepted]


def check_all(play, programs, per_song=8):
    """{program: (figures, failures)}."""
    found = {}
    for first in range(0, len(programs), per_song):
        some = programs[first:first + per_song]
        plan = [plays(p) for p in some]
        lengths = [sum(slot for *_, slot in p) for p in plan]
        sound = play(notes.sequence([x for p in plan for x in p]), sum(lengths) / 1000)
        at = 0
        for program, length in zip(some, lengths):
            found[program] = check(program, milliseconds(sound, at, at + length))
            at += length
    return found

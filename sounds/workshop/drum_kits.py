"""The kits' table (drums/kits.txt) as rows, and sets in which many versions of drums play at once."""

import re
from collections import namedtuple
from pathlib import Path

import numpy as np

import features
import instrument_text
import notes
import players
import sound_set

# What a key of a kit plays: family, instrument of the drum bank, note, velocity in per cent, pan and length, the keys that it ends.
Row = namedtuple("Row", "family instrument note velocity place chokes")

_ROW = re.compile(r"^k(\d\d)_(\d{3}) = (\w+) (\d+) (\d+) (\d+) (\d+ \w+)(.*)$", re.M)
_LAW = re.compile(r"^d(\d{3})_(.*)$", re.M)
# Kits are numbered with two digits.
VERSIONS_A_SONG = 96
MULTIPLIES = 127
MOST_FAMILIES = 16
# What all notes of an engine's channel share; the rest is each note's own (midi/gm/gm_map.cpp).
_SHARED = re.compile(r"main_volume|panning|aux\d_level|chan_filter|chanfx|osc1_osc2_mix|osc3_volume|filter1_(cutoff|resonance)|lfo\d_speed"
                     r"|portamento|lpc")


def shared_bytes(instrument):
    return tuple(byte for key, byte in instrument.bytes.items() if _SHARED.match(key))


def songs_of(strokes):
    """The strokes in lists of a song's length and of no more families than an engine has channels."""
    out, families = [[]], set()
    for stroke in strokes:
        families.add(shared_bytes(stroke[1]))
        if len(out[-1]) == VERSIONS_A_SONG or len(families) > MOST_FAMILIES:
            out.append([])
            families = {shared_bytes(stroke[1])}
        out[-1].append(stroke)
    return out


def rows(text):
    """{(kit, key): Row}."""
    return {(int(kit), int(key)): Row(family, int(number), int(note), int(velocity), *rest)
            for kit, key, family, number, note, velocity, *rest in _ROW.findall(text)}


def with_velocities(text, velocities):
    """The table with other velocities, {(kit, key): per cent}."""
    def changed(match):
        kit, key, family, number, note, velocity, place, chokes = match.groups()
        velocity = velocities.get((int(kit), int(key)), velocity)
        return f"k{kit}_{key} = {family} {number} {note} {velocity} {place}{chokes}"
    return _ROW.sub(changed, text)


def end_ms(instrument):
    """Milliseconds until the drum has come to silence by itself; None if it holds."""
    source = instrument["amplitude_influence_source"]
    if instrument["env1_sustain"] == 0 and source in (0, 1):
        stages = ("env1_attack", "env1_decay")
    elif instrument["env2_sustain"] == 0 and source == 2 and instrument["amplitude_influence_amount"] == MULTIPLIES:
        stages = ("env2_attack", "env2_decay")
    else:
        return None
    rows = instrument_text.controllers()
    # Stages are cubes of samples; the millisecond more is for what rounding takes.
    samples = sum(int(rows[stage].value(instrument[stage]) ** 3) for stage in stages)
    return -(-samples * 1000 // features.RATE) + 1


def _place(place, instrument):
    """Pan and length of a row, the length being the instrument's own where it has one: a voice that is silent costs as much as any."""
    pan, length = place.split()
    end = end_ms(instrument)
    return place if end is None or not length.isdigit() else f"{pan} {end}"


def with_lengths(text, instruments):
    """The table with note-offs where the drums of {number: instrument} have ended."""
    def changed(match):
        kit, key, family, number, note, velocity, place, chokes = match.groups()
        if int(number) in instruments:
            place = _place(place, instruments[int(number)])
        return f"k{kit}_{key} = {family} {number} {note} {velocity} {place}{chokes}"
    return _ROW.sub(changed, text)


def render(strokes, text, velocity):
    """strokes x features of [((kit, key), instrument)]: each is a kit of its own that plays the instrument as that key's row says."""
    table = rows(text)
    laws = [(int(number), rule) for number, rule in _LAW.findall(text)]
    out = []
    for some in songs_of(strokes):
        alike = list(dict.fromkeys(shared_bytes(instrument) for _, instrument in some))
        lines = ["title = Drums", "melodic_bank = gm.tqb", "drum_bank = drums.tqb",
                 "family = " + " ".join(f"f{number}" for number in range(len(alike)))]
        with players.scratch_folder() as folder:
            texts = {}
            for place, (of, instrument) in enumerate(some):
                row = table[of]
                texts[place] = Path(folder) / f"{place}.tqi"
                texts[place].write_text(instrument.text())
                lines += [f"d{place:03d}_{rule}" for number, rule in laws if number == row.instrument]
                lines.append(f"k{place:02d}_{of[1]:03d} = f{alike.index(shared_bytes(instrument))} {place} {row.note} {row.velocity} "
                             f"{_place(row.place, instrument)}")
            sound_set.make_bank(Path(folder) / "drums.tqb", texts, sound_set.DRUM_GLOBALS)
            sound_set.make_bank(Path(folder) / "gm.tqb", {}, sound_set.GLOBALS)
            (Path(folder) / "gm.tqm").write_text("\n".join(lines) + "\n")
            plays = [(place, notes.Note(of[1], velocity)) for place, (of, _) in enumerate(some)]
            song = notes.slots(plays, channel=9, hold=notes.DRUM_HOLD_MS, slot=notes.DRUM_SLOT_MS)
            sound = players.play_set(song, Path(folder) / "gm.tqm", len(some) * notes.DRUM_SLOT_MS / 1000)
        out.append(measure(players.cut(sound, len(some), notes.DRUM_SLOT_MS)))
    return np.vstack(out)


def measure(slots):
    """As targets.measure_drums: all against the frequency of key 48."""
    filled = np.concatenate([slots, np.zeros((len(slots), slots.shape[1] // 2, 2), slots.dtype)], 1)
    return features.measure(filled, [48] * len(slots), wobble=False)

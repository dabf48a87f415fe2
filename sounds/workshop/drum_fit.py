"""Fits drums to what two sample banks agree on: `./dev sounds fit drums [OPTION ...] [FAMILY ...]`; see --help.

The drums of a family share a channel of the engine, so they are fitted together: each turns its own envelopes and amounts, all of them what
the channel shares.  Least squares on the loud strokes; soft ones and the second measure are for the judge.
"""

import argparse
from pathlib import Path

import numpy as np

import distance
import drum_kits
import gauss_newton
import instrument_text
import notes
import opening
import players
import sound_set
import targets
from genes import Gene

SOUNDS = Path(__file__).resolve().parents[1]
VELOCITY = notes.DRUM_FIT_NOTES[0].velocity
FAR = 100.0
# Loudness is the table's, by the velocities there.
WEIGHTS = {name: weight for name, weight in distance.DRUM_FIT_WEIGHTS.items() if name != "level"}
LEAST_GAIN = 0.02
# Of a family's drums those that are judged.
LEAST_SHARE = 0.4
OPENING_COST = 20.0
# Per cent.
MOST_VELOCITY = 127
JUDGED = {(0, key) for key in notes.DRUM_KEYS}


def arguments(argv):
    parser = argparse.ArgumentParser(prog="dev sounds fit drums", description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("family", nargs="*", help="families of drums/kits.txt; all, if none")
    parser.add_argument("--sounds", default=SOUNDS, help="folder of sounds whose drums are written anew")
    parser.add_argument("--rounds", type=int, default=3, help="of least squares, at most; %(default)s if not given")
    return parser.parse_args(argv)


def own_genes(instrument):
    """What a drum has for itself: a note takes it over at its start."""
    genes = [Gene("byte", "env1_attack", 0, 60), Gene("byte", "env1_decay", 4, 127), Gene("byte", "env2_decay", 2, 120),
             Gene("byte", "env3_decay", 2, 127)]
    if instrument["env1_sustain"]:
        genes.append(Gene("byte", "env1_sustain", 1, 127))
    # A skin's pitch falls, if it moves.
    for name, low, high in (("cutoff1_influence1", 40, 126), ("cutoff1_influence2", 40, 126), ("osc1_influence", 64, 100),
                            ("osc2_influence", 64, 100)):
        if instrument[f"{name}_source"] and instrument[f"{name}_amount"] != drum_kits.MULTIPLIES:
            genes.append(Gene("byte", f"{name}_amount", low, high))
    if instrument["osc1_osc2_ring_modulator"] or instrument["osc1_osc2_mix"]:
        genes.append(Gene("byte", "osc2_coarse_tune", 40, 110))
    return genes


def shared_genes(instrument):
    """What the family's channel shares."""
    genes = [Gene("byte", "filter1_cutoff", 10, 120)] if instrument["filter1_type"] else []
    if instrument["osc3_volume"] and instrument["osc3_type"]:
        genes.append(Gene("byte", "osc3_volume", 1, 120))
    if instrument["osc1_osc2_mix"]:
        genes.append(Gene("byte", "osc1_osc2_mix", 1, 126))
    for number in range(1, 5):
        kind = instrument[f"chan_filter{number}_type"]
        if kind:
            genes.append(Gene("byte", f"chan_filter{number}_cutoff", 10, 120))
        if kind in (6, 7, 8):
            genes.append(Gene("byte", f"chan_filter{number}_gain", 24, 104))
    return genes


class Family:
    """The drums of a family: what plays them, their instruments, and numbers 0..1 for all that may be turned."""

    def __init__(self, name, text, sounds, tables):
        self.text = text
        paths = sound_set.numbered((Path(sounds) / "drums").glob("*.tqi"))
        self.rows = {place: row for place, row in drum_kits.rows(text).items() if row.family == name}
        self.paths = {number: paths[number] for number in sorted({row.instrument for row in self.rows.values()})}
        self.start = {number: instrument_text.read(path) for number, path in self.paths.items()}
        self.judged = {place: row for place, row in self.rows.items() if place in JUDGED}
        numbers = sorted({row.instrument for row in self.judged.values()})
        # A few may not decide on what all of them share.
        shared = shared_genes(self.start[numbers[0]]) if len(numbers) >= LEAST_SHARE * len(self.paths) else []
        self.genes = [(None, gene) for gene in shared]
        self.genes += [(number, gene) for number in numbers for gene in own_genes(self.start[number])]
        self.ends = [{place: table.drums[notes.DRUM_NOTES.index(notes.Note(place[1], VELOCITY))] for place in self.judged}
                     for table in tables.values()]
        self.heard = {}

    def numbers(self):
        first = next(iter(self.start.values()))
        return np.clip([((first if number is None else self.start[number])[gene.controller] - gene.low) / (gene.high - gene.low)
                        for number, gene in self.genes], 0, 1)

    def instruments(self, point):
        changes = {number: {} for number in self.start}
        for (number, gene), value in zip(self.genes, point):
            byte = round(gene.low + float(np.clip(value, 0, 1)) * (gene.high - gene.low))
            for each in changes if number is None else (number,):
                changes[each][gene.controller] = byte
        return {number: instrument.copy(changes[number]) for number, instrument in self.start.items()}

    def features(self, rows, versions):
        """versions x places x features; what was rendered before is not rendered again."""
        named, unheard = [], {}
        for instruments in versions:
            strokes = [(place, instruments[row.instrument]) for place, row in rows.items()]
            names = [(place, tuple(instrument.bytes.values())) for place, instrument in strokes]
            named.append(names)
            unheard.update({name: stroke for name, stroke in zip(names, strokes) if name not in self.heard})
        if unheard:
            self.heard.update(zip(unheard, drum_kits.render(list(unheard.values()), self.text, VELOCITY)))
        return np.array([[self.heard[name] for name in names] for names in named])

    def residuals(self, points):
        versions = [self.instruments(point) for point in points]
        rows = self.features(self.judged, versions)
        one, other = (np.array([end[place] for place in self.judged]) for end in self.ends)
        signed, weights = distance.to_span_signed(rows, one, other, WEIGHTS, FAR)
        beyond = np.array([[opening.octaves_beyond(instruments[row.instrument], key=row.note) for row in self.rows.values()]
                           for instruments in versions])
        return (np.hstack([signed.reshape(len(points), -1), beyond * OPENING_COST]),
                np.append(weights.reshape(len(points), -1)[0], np.ones(len(self.rows))) / len(self.judged))

    def fit(self, rounds):
        """(loss before, loss after, instruments)."""
        start = self.numbers()
        rows, weights = self.residuals([start])

        def loss_of(points, rows):
            return np.minimum(np.abs(rows), distance.CUT) @ weights

        before = float(loss_of([start], rows)[0])
        point, after = gauss_newton.improve(start, self.residuals, loss_of, rounds)
        return before, after, self.instruments(point)

    def store(self, instruments):
        """Writes texts; each place's velocity keeps it as loud as it was, its note-off comes when it has ended.  Gives the table."""
        old, new = self.features(self.rows, [self.start, instruments])[..., 0]
        velocities = {place: louder(row.velocity, db) for (place, row), db in zip(self.rows.items(), old - new)}
        for number, instrument in instruments.items():
            if instrument.bytes != self.start[number].bytes:
                self.paths[number].write_text(instrument.text())
        return drum_kits.with_lengths(drum_kits.with_velocities(self.text, velocities), instruments)


def balanced(text, sounds, tables):
    """The table with velocities that bring each judged drum's level, against all drums', into the banks' span."""
    paths = sound_set.numbered((Path(sounds) / "drums").glob("*.tqi"))
    table = drum_kits.rows(text)
    places = [place for place in table if place in JUDGED]
    own = drum_kits.render([(place, instrument_text.read(paths[table[place].instrument])) for place in places], text, VELOCITY)[:, 0]
    ends = np.array([[table.drums[notes.DRUM_NOTES.index(notes.Note(place[1], VELOCITY)), 0] for place in places]
                     for table in tables.values()])
    ends -= ends.mean(1, keepdims=True)
    own = own - own.mean()
    missing = np.maximum(0, ends.min(0) - own) - np.maximum(0, own - ends.max(0))
    return drum_kits.with_velocities(text, {place: louder(table[place].velocity, db) for place, db in zip(places, missing)})


def louder(velocity, db):
    return int(np.clip(round(velocity * 10 ** (db / 40)), 1, MOST_VELOCITY))


def main(argv):
    options = arguments(argv)
    table = Path(options.sounds) / "drums/kits.txt"
    tables = targets.read_all()
    used = list(dict.fromkeys(row.family for place, row in drum_kits.rows(table.read_text()).items() if place in JUDGED))
    for name in options.family or used:
        if name not in used:
            raise players.PlayerError(f"no drum from key {notes.DRUM_KEYS[0]} to {notes.DRUM_KEYS[-1]} is of the family {name}")
        family = Family(name, table.read_text(), options.sounds, tables)
        before, after, instruments = family.fit(options.rounds)
        is_better = after < before * (1 - LEAST_GAIN)
        print(f"{name:10} {len(family.judged)} keys, {len(family.genes)} numbers: {before:5.2f} -> {after:5.2f}  {'accepted' if is_better else 'refused'}",
              flush=True)
        if is_better:
            table.write_text(family.store(instruments))
    if not options.family:
        table.write_text(balanced(table.read_text(), options.sounds, tables))

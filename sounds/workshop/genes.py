"""What the fit may turn: continuous bytes of an instrument that have an effect, and slopes of its laws."""

from collections import namedtuple

import instrument_text

# kind: byte, key (slope, bytes an octave) or vel (slope, bytes per 12 of velocity).  A gene's number runs from
# 0 to 1 over low..high.
Gene = namedtuple("Gene", "kind controller low high")

SOURCE_ENV = {1: "env1", 2: "env2", 3: "env3"}
NOISE = 5
PEAKING = 6
NEUTRAL_GAIN = 64
# A peak that does nothing yet, for each equaliser that is not in use: (cutoff, resonance) bytes around 300 Hz to 5 kHz.
FREE_PEAKS = ((50, 20), (66, 20), (82, 20), (100, 20))


def with_free_peaks(instrument):
    """The instrument with its unused equalisers made neutral peaks, for the fit to move."""
    changes = {}
    for number, (cutoff, resonance) in enumerate(FREE_PEAKS, 1):
        name = f"chan_filter{number}"
        if instrument[f"{name}_type"] == 0:
            changes.update({f"{name}_type": PEAKING, f"{name}_cutoff": cutoff, f"{name}_resonance": resonance,
                            f"{name}_gain": NEUTRAL_GAIN})
    return instrument.copy(changes)


def without_idle_peaks(instrument, least=3):
    """Peaks below `least` bytes (about a third of a decibel each) switched off again."""
    defaults = instrument_text.controllers()
    changes = {}
    for number in range(1, 5):
        name = f"chan_filter{number}"
        if instrument[f"{name}_type"] == PEAKING and abs(instrument[f"{name}_gain"] - NEUTRAL_GAIN) < least:
            changes.update({f"{name}_{part}": defaults[f"{name}_{part}"].default
                            for part in ("type", "cutoff", "resonance", "gain")})
    return instrument.copy(changes)


def _envelope_genes(instrument):
    used = {1}
    for key, value in instrument.bytes.items():
        if key.endswith("_source") and value in SOURCE_ENV:
            used.add(value)
    genes = []
    for number in sorted(used):
        name = f"env{number}"
        genes += [Gene("byte", f"{name}_attack", 0, 100), Gene("byte", f"{name}_decay", 2, 127),
                  Gene("byte", f"{name}_release", 4, 110), Gene("key", f"{name}_decay", -40, 40)]
        if instrument[f"{name}_sustain"] > 0:
            genes += [Gene("byte", f"{name}_sustain", 1, 127), Gene("key", f"{name}_sustain", -12, 12)]
    genes += [Gene("key", "env1_release", -30, 30), Gene("key", "env1_attack", -12, 12), Gene("vel", "env1_attack", -12, 12)]
    return genes


def _filter_genes(instrument):
    genes = []
    if instrument["filter1_type"]:
        genes += [Gene("byte", "filter1_cutoff", 0, 127), Gene("byte", "filter1_resonance", 4, 60)]
        for number in (1, 2, 3):
            name = f"cutoff1_influence{number}"
            if instrument[f"{name}_source"] and instrument[f"{name}_amount"] != 127:
                genes += [Gene("byte", f"{name}_amount", 20, 126), Gene("key", f"{name}_amount", -20, 20),
                          Gene("vel", f"{name}_amount", -2, 12)]
    for number in range(1, 5):
        name = f"chan_filter{number}"
        kind = instrument[f"{name}_type"]
        if kind:
            genes.append(Gene("byte", f"{name}_cutoff", 10, 120))
        if kind >= PEAKING:
            genes.append(Gene("byte", f"{name}_gain", 24, 104))
        if kind == PEAKING:
            genes.append(Gene("byte", f"{name}_resonance", 6, 90))
    return genes


def _oscillator_genes(instrument):
    genes = []
    if instrument["osc1_type"] and instrument["osc2_type"] and (
            not instrument["osc1_osc2_ring_modulator"]) and instrument["osc1_osc2_mix"]:
        genes.append(Gene("byte", "osc1_osc2_mix", 1, 127))
    if instrument["osc3_type"] and instrument["osc3_volume"]:
        genes.append(Gene("byte", "osc3_volume", 1, 120))
        if instrument["osc3_type"] == NOISE:
            # Its pitch is its colour.
            genes.append(Gene("byte", "osc3_coarse_tune", 10, 124))
    for number in (1, 2, 3):
        if instrument[f"osc{number}_multi_count"]:
            genes.append(Gene("byte", f"osc{number}_spread", 1, 110))
    if instrument["amplitude_influence_source"] in SOURCE_ENV and instrument["amplitude_influence_amount"] != 127:
        genes.append(Gene("byte", "amplitude_influence_amount", 64, 126))
    if instrument["chanfx1_type"] == 1:  # distortion: threshold and drive
        genes += [Gene("byte", "chanfx1_param1", 4, 127), Gene("byte", "chanfx1_param2", 0, 127)]
    return genes


def of_instrument(instrument):
    return _oscillator_genes(instrument) + _filter_genes(instrument) + _envelope_genes(instrument)


def numbers(genes, instrument, laws):
    """Where the instrument and its laws ({controller: (key, vel)}) stand."""
    out = []
    for gene in genes:
        now = instrument[gene.controller]
        if gene.kind != "byte":
            now = laws.get(gene.controller, (0.0, 0.0))[gene.kind == "vel"]
        out.append((now - gene.low) / (gene.high - gene.low))
    return out


def apply(genes, numbers_, instrument, laws):
    """A new instrument and laws, with the numbers cut to 0..1."""
    changes, slopes = {}, {key: list(value) for key, value in laws.items()}
    for gene, number in zip(genes, numbers_):
        value = gene.low + min(1.0, max(0.0, number)) * (gene.high - gene.low)
        if gene.kind == "byte":
            changes[gene.controller] = round(value)
        else:
            slopes.setdefault(gene.controller, [0.0, 0.0])[gene.kind == "vel"] = round(value, 1)
    return instrument.copy(changes), {key: tuple(value) for key, value in slopes.items()}


def blend(start, end, share):
    """(instrument, laws) between two versions of one structure; 0 is the start."""
    (one, laws), (other, other_laws) = start, end
    changes = {key: round(byte + share * (other[key] - byte)) for key, byte in one.bytes.items()}
    slopes = {}
    for controller in {**laws, **other_laws}:
        a, b = laws.get(controller, (0.0, 0.0)), other_laws.get(controller, (0.0, 0.0))
        slopes[controller] = tuple(round(x + share * (y - x), 1) for x, y in zip(a, b))
    return one.copy(changes), slopes

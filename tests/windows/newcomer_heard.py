#!/usr/bin/env python3
"""Whether what the newcomer played sounds as it should: newcomer_heard.py FOLDER

Reads first.wav and second.wav with the names and times of their parts, prints what was measured and
fails when a part is not what its step was to make of it.
"""

import sys
from pathlib import Path

import numpy as np
from scipy.io import wavfile

FRAME = 2048  # samples of a spectrum: 46 ms
LATE = 0.05  # seconds by which a part may begin too early


def decibels(power):
    return 10 * np.log10(max(float(power), 1e-14))


class Part:
    """Level in dBFS, the spectrum's centroid in Hz and how much it moves in octaves, and how far the
    first tenth of a second lies below the second half, in dB."""

    def __init__(self, sound, rate):
        mono = sound.mean(axis=1)
        self.level = decibels(np.mean(mono**2))
        loud = np.flatnonzero(np.abs(mono) > 10 ** (-70 / 20))
        begin = loud[0] if len(loud) else 0
        tenth = rate // 10
        self.swell = decibels(np.mean(mono[len(mono) // 2 :] ** 2)) - decibels(np.mean(mono[begin : begin + tenth] ** 2))
        held = mono[len(mono) // 3 :]
        frequencies = np.fft.rfftfreq(FRAME, 1 / rate)
        centroids = []
        for start in range(0, len(held) - FRAME, FRAME // 2):
            power = np.abs(np.fft.rfft(held[start : start + FRAME] * np.hanning(FRAME))) ** 2
            if power.sum() > 1e-9:
                centroids.append((power * frequencies).sum() / power.sum())
        self.centroid = float(np.mean(centroids)) if centroids else 0.0
        self.movement = float(np.std(np.log2(centroids))) if centroids else 0.0


def parts_of(folder, name):
    rate, samples = wavfile.read(folder / f"{name}.wav")
    sound = samples.astype(np.float64) / 2.0**31  # 24 bits come in the upper ones of 32
    parts = {}
    for line in (folder / f"{name}.parts").read_text().splitlines():
        part, begin, end = line.split()
        span = slice(int((float(begin) + LATE) * rate), int(float(end) * rate))
        assert len(sound[span]) > rate // 4, f"{name}.wav ends before {part}"
        parts[part] = Part(sound[span], rate)
    for part, heard in parts.items():
        print(f"{name:7s} {part:14s} {heard.level:7.1f} dBFS {heard.centroid:7.0f} Hz, moving by {heard.movement:.3f}"
              f" octaves, swelling by {heard.swell:6.1f} dB")
    return parts


def is_like(part, model):
    return abs(part.level - model.level) < 2.0 and abs(np.log2(part.centroid / model.centroid)) < 0.35


def main():
    folder = Path(sys.argv[1])
    first = parts_of(folder, "first")
    second = parts_of(folder, "second")
    checks = {
        "nothing sounds before a key is struck": first["nothing"].level < -90,
        "the initialised program is heard": first["sine"].level > -55,
        "a saw is brighter than a sine": first["saw"].centroid > 2 * first["sine"].centroid,
        "a lowpass darkens it": first["filtered"].centroid < 0.7 * first["saw"].centroid and first["filtered"].level > -55,
        "it stands still": first["filtered"].movement < 0.05,
        "an LFO moves it": first["moving"].movement > 0.15,
        "it begins at once": first["moving"].swell < 3,
        "a long attack makes it swell": first["pad"].swell > 8 and first["pad"].level > -55,
        "a sound of the browser is heard without a key": first["tried"].level > -50,
        "until Escape": first["tried-no-more"].level < -80,
        "and leaves the pad as it was": is_like(first["pad-again"], first["pad"]),
        "the brass is heard on its channel": first["brass"].level > -45 and first["brass"].swell < 3,
        "and is another sound": not is_like(first["brass"], first["pad"]),
        "its cutoff darkens it": first["tweaked"].centroid < 0.85 * first["brass"].centroid,
        "without volume it is silent": first["broken"].level < -70,
        "undo brings it back": is_like(first["undone"], first["tweaked"]),
        "the brass is there in the next session": is_like(second["tweaked"], first["tweaked"]),
        "so is the pad": is_like(second["pad"], first["pad"]) and second["pad"].swell > 8,
    }
    failures = [what for what, holds in checks.items() if not holds]
    for what in failures:
        print(f"FAILED {what}", file=sys.stderr)
    if failures:
        sys.exit(1)
    print(f"ok {len(checks)} things that a newcomer does are heard")


if __name__ == "__main__":
    main()

"""Plays MIDI files into arrays: with this project's renderer and with a player of sample banks."""

import os
import subprocess
import tempfile
from pathlib import Path

import numpy as np

RATE = 44100
ROOT = Path(__file__).resolve().parents[2]
BANK_FILES = {
    "fluid-soundfont-gm": "/usr/share/sounds/sf2/FluidR3_GM.sf2",
    "timgm6mb-soundfont": "/usr/share/sounds/sf2/TimGM6mb.sf2",
    "opl3-soundfont": "/usr/share/sounds/sf2/OPL-3_FM_128M.sf2",
}


class PlayerError(Exception):
    """A renderer that failed, with what it said."""


def tarquil():
    """The renderer: of TARQUIL, or of the build tree."""
    return os.environ.get("TARQUIL") or str(ROOT / "build/release/tools/tarquil")


def scratch_folder():
    """A folder in memory that goes with the object."""
    return tempfile.TemporaryDirectory(dir="/dev/shm" if os.path.isdir("/dev/shm") else None)


def run(arguments):
    try:
        done = subprocess.run(arguments, capture_output=True, text=True, check=False)
    except FileNotFoundError as error:
        raise PlayerError(f"{arguments[0]} is not there; build it or set TARQUIL") from error
    if done.returncode != 0:
        raise PlayerError((done.stderr or done.stdout).strip())


def read_wav(path):
    """Frames x 2 of a stereo WAV file of 32-bit floats."""
    data = Path(path).read_bytes()
    at = 12
    while data[at:at + 4] != b"data":
        at += 8 + int.from_bytes(data[at + 4:at + 8], "little")
    return np.frombuffer(data, "<f4", offset=at + 8).reshape(-1, 2)


def play_set(song, tqm, seconds):
    """The song (bytes of a MIDI file) played with the set, `seconds` of it."""
    with scratch_folder() as folder:
        (Path(folder) / "song.mid").write_bytes(song)
        wav = f"{folder}/song.wav"
        run([tarquil(), "render", "--quiet", "--map", str(tqm), "--midi", "gm", "--bits", "float", "--format", "wav",
             "--tail", "0.5", f"{folder}/song.mid", wav])
        return fitted(read_wav(wav), seconds)


def play_bank(song, sf2, seconds):
    """The same with a sample bank, without its reverb and chorus."""
    with scratch_folder() as folder:
        (Path(folder) / "song.mid").write_bytes(song)
        raw = f"{folder}/song.raw"
        run(["fluidsynth", "-niq", "-R", "0", "-C", "0", "-g", "0.5", "-r", str(RATE), "-T", "raw",
             "-O", "float", "-F", raw, str(sf2), f"{folder}/song.mid"])
        return fitted(np.fromfile(raw, "<f4").reshape(-1, 2), seconds)


def fitted(sound, seconds):
    """Cut or filled up with silence to the length."""
    frames = round(seconds * RATE)
    if len(sound) >= frames:
        return sound[:frames]
    return np.vstack([sound, np.zeros((frames - len(sound), 2), sound.dtype)])


def cut(sound, count, slot_ms):
    """count x frames x 2 of slots of equal length."""
    frames = slot_ms * RATE // 1000
    return sound[:count * frames].reshape(count, frames, 2)

"""Prints what each program costs to play: `./dev sounds costs [OPTION ...] [PROGRAM ...]`; see --help.

Thousandths of a core: for a channel whose notes have ended, for one held note and for eight, each with what the effects behind all
channels cost once there is sound.  The least of several runs counts, since whatever else the machine does only adds.
"""

import os
import subprocess
from pathlib import Path

import commands
import general_midi as gm
import notes
import players
import sound_set

SECONDS = 30
IDLE_CHANNELS = 12
# Fourths, from the lowest key that leaves room for eight in the range.
KEY_STEP = 5
RHYTHM_CHANNEL = 9
VELOCITY = 100


def arguments(argv):
    parser = commands.parser("costs", __doc__, "all")
    parser.add_argument("--sounds", default=commands.SOUNDS, help="folder of sounds")
    parser.add_argument("--repeats", type=int, default=5, help="runs of each song; %(default)s if not given")
    return parser.parse_args(argv)


def keys_of(program, count):
    low, high = gm.range_of(program)
    step = min(KEY_STEP, max(1, (high - low) // max(1, count - 1)))
    first = (low + high - step * (count - 1)) // 2
    return [first + step * i for i in range(count)]


def _ended(channel, program, key):
    """A note that is over at once, so that the channel is in use."""
    return [(0, (0xC0 | channel, program)), (0, (0x90 | channel, key, VELOCITY)), (40, (0x80 | channel, key, 64)),
            (60, (0xB0 | channel, 120, 0))]


def songs(program):
    """{name: MIDI file} of equal length."""
    middle = keys_of(program, 1)[0]
    end = [(SECONDS * 1000, (0xB0, 120, 0))]
    idle_channels = [c for c in range(IDLE_CHANNELS + 1) if c != RHYTHM_CHANNEL]

    def held(count):
        return [(0, (0xC0, program))] + [(0, (0x90, key, VELOCITY)) for key in keys_of(program, count)]

    return {"none": notes.midi_file(_ended(0, program, middle)[:1] + end),
            "idle": notes.midi_file([e for c in idle_channels for e in _ended(c, program, middle)] + end),
            "one": notes.midi_file(held(1) + end),
            "eight": notes.midi_file(held(8) + end)}


def least_seconds(song, tqm, folder, repeats):
    """User seconds of the fastest of several renders."""
    midi, wav = Path(folder) / "cost.mid", Path(folder) / "cost.wav"
    midi.write_bytes(song)
    found = []
    for _ in range(repeats):
        child = subprocess.Popen([players.tarquil(), "render", "--quiet", "--map", str(tqm), "--midi", "gm", "--bits", "float",
                                  "--tail", "0", str(midi), str(wav)], stderr=subprocess.PIPE)
        said = child.stderr.read().decode().strip()
        _, status, used = os.wait4(child.pid, 0)
        child.stderr.close()
        child.returncode = os.waitstatus_to_exitcode(status)
        if child.returncode != 0:
            raise players.PlayerError(said)
        found.append(used.ru_utime)
    return min(found)


def per_mille(seconds):
    """Thousandths of a core by name: of a channel, of the voices held."""
    of = {name: 1000 * (value - seconds["none"]) / SECONDS for name, value in seconds.items()}
    return {"idle": of["idle"] / IDLE_CHANNELS, "one": of["one"], "eight": of["eight"]}


def measure(program, tqm, folder, repeats):
    return per_mille({name: least_seconds(song, tqm, folder, repeats) for name, song in songs(program).items()})


def main(argv):
    options = arguments(argv)
    print("Thousandths of a core: an idle channel, one voice, eight voices")
    with players.scratch_folder() as folder:
        tqm = sound_set.make_set(options.sounds, folder)
        for program in options.program or sorted(sound_set.program_texts(options.sounds)):
            cost = measure(program, tqm, folder, options.repeats)
            print(f"{program:3d} {gm.name_of(program):20} {cost['idle']:6.2f} {cost['one']:6.2f} {cost['eight']:6.2f}", flush=True)


if __name__ == "__main__":
    commands.run("costs", main)

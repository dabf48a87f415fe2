"""Shows and plays programs beside the sample banks': `./dev sounds hear [OPTION ...] PROGRAM ...`; see --help.

Writes OUT/NNN_name.png (spectrograms of one note, envelopes, partials) and .wav (the same notes by us, then by each bank),
and prints what lies outside of the banks' span, as `feature:how far` in decibels or semitones.
"""

from pathlib import Path

import numpy as np
import scipy.io.wavfile

import commands
import features
import general_midi as gm
import hygiene
import notes
import players
import ranks
import sound_set
import targets

VELOCITY = 100
HOLD, SLOT = 1200, 2000
LEAST_DIFFERENCE = 3.0


def arguments(argv):
    parser = commands.parser("hear", __doc__)
    parser.add_argument("--sounds", default=commands.SOUNDS, help="folder with gm/FAMILY/NNN_NAME.tqi and gm/laws.txt")
    parser.add_argument("--out", default="out/hear", help="folder for pictures and sounds; %(default)s if not given")
    parser.add_argument("--no-sound", action="store_true", help="pictures only")
    return parser.parse_args(argv)


def played_keys(program):
    low, high = gm.range_of(program)
    return [low + (high - low) // 5, hygiene.middle_key(program), high - (high - low) // 5]


def spectrogram(sound):
    """Frequencies (Hz), and columns every 10 ms in dB below the loudest point."""
    size, hop = 2048, 441
    mono = np.pad(sound.mean(1), (size // 2, size))
    starts = range(0, len(sound) - hop, hop)
    power = np.array([np.abs(np.fft.rfft(mono[s:s + size] * np.hanning(size))) ** 2 for s in starts]).T
    return np.fft.rfftfreq(size, 1 / players.RATE), features.decibels(power / max(power.max(), 1e-12))


def draw(path, program, sounds):
    """One picture: a spectrogram for each player, then all envelopes and all partials."""
    import matplotlib
    matplotlib.use("Agg")
    from matplotlib import pyplot

    key = hygiene.middle_key(program)
    figure, axes = pyplot.subplots(1, len(sounds) + 2, figsize=(11, 2.3), dpi=80, constrained_layout=True)
    for place, (label, sound) in enumerate(sounds.items()):
        hz, levels = spectrogram(sound)
        axes[place].pcolormesh(np.arange(levels.shape[1]) / 100, hz[1:], levels[1:], vmin=-75, vmax=0, cmap="magma",
                               shading="auto", rasterized=True)
        axes[place].set(yscale="log", ylim=(40, 16000), title=label, xlabel="s")
    row = features.measure(np.stack([s[:notes.SLOT_MS * players.RATE // 1000] for s in sounds.values()]), [key] * len(sounds))
    width = 0.8 / len(sounds)
    for place, (label, sound) in enumerate(sounds.items()):
        power = np.convolve((sound ** 2).mean(1), np.ones(441) / 441, "same")[::441]
        axes[-2].plot(np.arange(len(power)) / 100, np.maximum(-70, features.decibels(power / max(power.max(), 1e-12))), label=label, lw=1)
        partials = [row[place][features.NAMES.index(f"h{k}@1")] for k in range(1, features.HARMONICS + 1)]
        axes[-1].bar(np.arange(1, features.HARMONICS + 1) + (place - 1) * width, np.array(partials) - features.FLOOR, width,
                     bottom=features.FLOOR)
    axes[-2].set(title="level, dB", xlabel="s", ylim=(-70, 3))
    axes[-2].legend(fontsize=5)
    axes[-1].set(title="partials at 0.3 s, dB", ylim=(features.FLOOR, 3))
    figure.suptitle(f"{program} {gm.name_of(program).replace('_', ' ')}, key {key}", fontsize=9)
    for axis in axes:
        axis.tick_params(labelsize=6)
        axis.title.set_fontsize(8)
    figure.savefig(path, pil_kwargs={"optimize": True})
    pyplot.close(figure)


def differences(program, rows, tables):
    """How far ours lie outside of the banks' span, averaged over the program's notes, where it is much."""
    index = ranks.chosen(program, notes.NOTES)
    ends = np.array([table.melodic[program][index] for table in tables.values()])
    low, high = ends.min(0), ends.max(0)
    out = (np.maximum(0, rows[index] - high) - np.maximum(0, low - rows[index])).mean(0)
    return [f"{name}:{value:+.0f}" for name, value in zip(features.FIT_NAMES, out)
            if abs(value) >= LEAST_DIFFERENCE and name != "level"]


def main(argv):
    options = arguments(argv)
    texts = sound_set.program_texts(options.sounds)
    out = Path(options.out)
    out.mkdir(parents=True, exist_ok=True)
    tables = targets.read_all()
    with players.scratch_folder() as folder:
        tqm = sound_set.make_set(options.sounds, folder)
        rows = dict(zip(options.program, targets.measure_programs(sound_set.player_of(tqm), options.program)))
        for program in options.program:
            if program not in texts:
                raise players.PlayerError(f"there is no text of program {program} in {options.sounds}/gm")
            song = notes.sequence([(program, notes.Note(k, VELOCITY), HOLD, SLOT) for k in played_keys(program)])
            seconds = 3 * SLOT / 1000
            sounds = {"this": players.play_set(song, tqm, seconds)}
            for bank in tables:
                sounds[bank] = players.play_bank(song, players.BANK_FILES[bank], seconds)
            path = out / f"{program:03d}_{gm.name_of(program)}"
            draw(f"{path}.png", program, {k: hygiene.milliseconds(s, SLOT, 2 * SLOT) for k, s in sounds.items()})
            if not options.no_sound:
                peak = {k: max(1e-9, float(np.abs(s).max())) for k, s in sounds.items()}
                scipy.io.wavfile.write(f"{path}.wav", players.RATE, np.concatenate([s * (0.5 / peak[k]) for k, s in sounds.items()]))
            print(f"{path}.png: " + (" ".join(differences(program, rows[program], tables)) or "within the banks' span"))


if __name__ == "__main__":
    commands.run("hear", main)

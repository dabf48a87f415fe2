"""Brings programs to their levels: `./dev sounds volumes [OPTION ...] [PROGRAM ...]`; see --help.

Turns the main volumes alone, so that a phrase of each program is as loud as levels.py asks for.
"""

import commands
import fit
import general_midi as gm
import levels
import players
import sound_set

ROUNDS = 2
# Less than a step of the volume's byte.
NEAR_DB = 0.25


def arguments(argv):
    parser = commands.parser("volumes", __doc__, "all")
    parser.add_argument("--sounds", default=commands.SOUNDS, help="folder of sounds whose volumes are set")
    return parser.parse_args(argv)


def set_volumes(programs, sounds, say=print):
    for _ in range(ROUNDS):
        with players.scratch_folder() as folder:
            found = levels.phrase_loudness(sound_set.player_of(sound_set.make_set(sounds, folder)), programs)
        for program, lufs in zip(programs, found):
            short = levels.target_lufs(program) - lufs
            if abs(short) < NEAR_DB:
                continue
            version = fit.start_of(sounds, program)
            turned = fit.louder(version, short)
            was, now = (v.instrument["main_volume"] for v in (version, turned))
            say(f"{program:3d} {gm.name_of(program):20} {lufs:6.1f} LUFS, {short:+.1f} dB wanted: volume {was} -> {now}", flush=True)
            sound_set.program_texts(sounds)[program].write_text(turned.instrument.text())


def main(argv):
    options = arguments(argv)
    set_volumes(options.program or list(range(128)), options.sounds)


if __name__ == "__main__":
    commands.run("volumes", main)

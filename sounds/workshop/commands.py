"""What the workshop's commands have in common: their options, their turn at each program, and how they end."""

import argparse
import sys
import time
from pathlib import Path

import general_midi as gm
import players

SOUNDS = Path(__file__).resolve().parents[1]


def parser(name, description, without_programs=None):
    """With the numbers of programs as arguments; `without_programs`: which are meant if none is given, else one must be."""
    made = argparse.ArgumentParser(prog=f"dev sounds {name}", description=description,
                                   formatter_class=argparse.RawDescriptionHelpFormatter)
    made.add_argument("program", nargs="*" if without_programs else "+", type=int,
                      help=f"numbers from 0; {without_programs}, if none" if without_programs else "numbers from 0")
    return made


def search_parser(name, description):
    """Of a search for better versions of programs."""
    made = parser(name, description, "in the order of use")
    made.add_argument("--start", default=SOUNDS, help="folder of sounds to start from")
    made.add_argument("--out", default=SOUNDS, help="folder of sounds that gets what is accepted")
    made.add_argument("--seed", type=int, default=1)
    return made


def for_each(programs, work):
    for program in programs or gm.order_of_use():
        began = time.monotonic()
        work(program)
        print(f"    {time.monotonic() - began:.1f} s", flush=True)


def run(name, main):
    try:
        main(sys.argv[1:])
    except (players.PlayerError, OSError, ValueError) as error:
        sys.exit(f"dev sounds {name}: {error}")
    except KeyboardInterrupt:
        sys.exit(130)

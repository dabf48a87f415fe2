"""Makes a playable set (banks and map) of the texts in a folder of sounds."""

import re
from pathlib import Path

import general_midi as gm
import players

# The master section that every program is heard through.
GLOBALS = Path(__file__).resolve().parents[1] / "gm/globals.txt"
DRUM_GLOBALS = Path(__file__).resolve().parents[1] / "drums/globals.txt"


def program_texts(sounds):
    """{program: path} of the texts that are there."""
    return {int(path.name[:3]): path for path in sorted((Path(sounds) / "gm").glob("*/[0-9][0-9][0-9]_*.tqi"))}


def numbered(paths):
    """{number: path}: by the number that a name starts with, else by order."""
    found = {}
    for place, path in enumerate(sorted(paths)):
        start = re.match(r"\d+", path.name)
        found[int(start.group()) if start else place] = path
    return found


def make_bank(path, texts, globals_text=None):
    """A bank of {number: path of an instrument's text}; other numbers get the default instrument."""
    arguments = [players.tarquil(), "bank", "new", "--force", str(path)]
    if globals_text and Path(globals_text).exists():
        arguments += ["--globals", str(globals_text)]
    players.run(arguments + [f"{number}={text}" for number, text in sorted(texts.items())])


def make_set(sounds, folder):
    """Writes gm.tqb, gm-drums.tqb and gm.tqm into folder; gives the map's path."""
    sounds, folder = Path(sounds), Path(folder)
    lines = ["title = Workshop", "melodic_bank = gm.tqb"]
    make_bank(folder / "gm.tqb", program_texts(sounds), sounds / "gm/globals.txt")
    laws = sounds / "gm/laws.txt"
    if laws.exists():
        lines.append(laws.read_text())
    drums = numbered((sounds / "drums").glob("*.tqi"))
    kits = sounds / "drums/kits.txt"
    if drums and kits.exists():
        make_bank(folder / "gm-drums.tqb", drums, sounds / "drums/globals.txt")
        lines += ["drum_bank = gm-drums.tqb", kits.read_text()]
    text = "\n".join(lines)
    # The parts may be complete maps of their own: the first of each single line stands.
    for key in ("title", "melodic_bank", "drum_bank"):
        first, *others = re.findall(rf"^{key}\s*=.*$", text, re.M) or [""]
        for other in others:
            text = text[::-1].replace(other[::-1], "", 1)[::-1]
    path = folder / "gm.tqm"
    path.write_text(text + "\n")
    return path


def player_of(tqm):
    return lambda song, seconds: players.play_set(song, tqm, seconds)


def has_drums(tqm):
    return "drum_bank" in Path(tqm).read_text()


def missing(sounds):
    return [p for p in range(128) if p not in program_texts(sounds)]


def home_of(sounds, program):
    return Path(sounds) / "gm" / gm.text_path(program)

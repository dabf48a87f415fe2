"""Laws of programs (lines pNNN_... of a map): reading, and replacing one program's."""

import re
from pathlib import Path

_LINE = re.compile(r"^\s*p(\d{3})_(\w+)\s*=\s*([^#]*)")


def of_program(text, program):
    """{controller: (per octave, per velocity)}, and the other lines' {key: text} (velocity, level, vibrato)."""
    laws, others = {}, {}
    for line in text.splitlines():
        match = _LINE.match(line)
        if not match or int(match[1]) != program:
            continue
        words = match[3].split()
        if match[2] in ("velocity", "level", "vibrato"):
            others[match[2]] = match[3].strip()
        else:
            slopes = dict(zip(words[::2], map(float, words[1::2])))
            laws[match[2]] = (slopes.get("key", 0.0), slopes.get("vel", 0.0))
    return laws, others


def lines(program, laws, others):
    out = [f"p{program:03d}_{key} = {value}" for key, value in others.items()]
    for controller, (key, vel) in laws.items():
        words = [f"{name} {slope:.1f}" for name, slope in (("key", key), ("vel", vel)) if abs(slope) >= 0.05]
        if words:
            out.append(f"p{program:03d}_{controller} = {' '.join(words)}")
    return out


def replace(path, program, laws, others):
    """Writes one program's lines anew where they stood, else in the order of programs; all else stays."""
    path = Path(path)
    old = path.read_text().splitlines() if path.exists() else []
    numbers = [int(match[1]) if (match := _LINE.match(line)) else None for line in old]
    if program in numbers:
        place = numbers.index(program)
    else:
        place = next((at for at, number in enumerate(numbers) if number is not None and number > program), len(old))
        # Above the comment that heads the next program.
        while 0 < place < len(old) and old[place - 1].startswith("#"):
            place -= 1
    before = [line for line, number in zip(old[:place], numbers) if number != program]
    after = [line for line, number in zip(old[place:], numbers[place:]) if number != program]
    path.parent.mkdir(parents=True, exist_ok=True)
    path.write_text("\n".join(before + lines(program, laws, others) + after) + "\n")

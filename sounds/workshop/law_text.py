"""Laws of programs (lines pNNN_... of a map): reading, and replacing one program's."""

import re
from pathlib import Path

_LINE = re.compile(r"^\s*p(\d{3})_(\w+)\s*=\s*([^#]*)")


def of_program(text, program):
    """{controller: (per octave, per velocity)}, and the other lines' {key: text} (velocity, vibrato)."""
    laws, others = {}, {}
    for line in text.splitlines():
        match = _LINE.match(line)
        if not match or int(match[1]) != program:
            continue
        words = match[3].split()
        if match[2] in ("velocity", "vibrato"):
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
    """Writes one program's lines anew, in the order of programs; comments and other programs stay."""
    path = Path(path)
    old = path.read_text().splitlines() if path.exists() else []
    kept = [line for line in old if not ((match := _LINE.match(line)) and int(match[1]) == program)]
    place = len(kept)
    for at, line in enumerate(kept):
        match = _LINE.match(line)
        if match and int(match[1]) > program:
            place = at
            break
    path.parent.mkdir(parents=True, exist_ok=True)
    path.write_text("\n".join(kept[:place] + lines(program, laws, others) + kept[place:]) + "\n")

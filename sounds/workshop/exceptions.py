"""Which rule of hygiene a program does not keep, and why its instrument does not either: the table exceptions.txt."""

from functools import lru_cache
from pathlib import Path

FILE = Path(__file__).resolve().parent / "exceptions.txt"


@lru_cache(maxsize=1)
def read(path=FILE):
    """[(program, rule, reason)]."""
    with open(path, encoding="utf-8") as lines:
        rows = [line.split(None, 2) for line in lines if line[0].isdigit()]
    return [(int(program), rule, reason.strip()) for program, rule, reason in rows]


def of_program(program):
    return [row for row in read() if row[0] == program]

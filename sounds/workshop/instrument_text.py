"""Instrument texts (*.tqi) as controller bytes, by the engine's own table of controllers."""

import re
from functools import lru_cache
from pathlib import Path

TABLE = Path(__file__).resolve().parents[2] / "softsynth/parameters/controllers.def"
_ROW = re.compile(r'^CONTROLLER\((\d+), \w+, "(\w+)", "[^"]*", CHANNEL, (UNMAPPED|MAPPED\(([^,]+), ([^)]+)\)), '
                  r'(VALUE|BYTE)\(([^)]+)\), (\w+)', re.M)


def _number(text):
    """A float literal of the table, or a quotient of two."""
    parts = [float(part.strip().rstrip("F")) for part in text.split("/")]
    return parts[0] / parts[1] if len(parts) == 2 else parts[0]


class Controller:
    """A row of the table: how its file value becomes a byte."""

    def __init__(self, offset, scale, choices):
        self.offset = offset
        self.scale = scale
        self.continuous = choices == "ANY"
        self.default = 0

    def byte(self, value):
        return int(min(127, max(0, int((value - self.offset) / self.scale + 0.5))))

    def value(self, byte):
        return self.offset + self.scale * byte


@lru_cache(maxsize=1)
def controllers():
    """{key: Controller} in the file's order."""
    found = {}
    for _, key, mapping, offset, scale, kind, default, choices in _ROW.findall(TABLE.read_text()):
        row = Controller(*((0.0, 1.0) if mapping == "UNMAPPED" else (_number(offset), _number(scale))), choices)
        row.default = int(default) if kind == "BYTE" else row.byte(_number(default))
        found[key] = row
    return found


class Instrument:
    """Bytes of all controllers, and the words that come with them."""

    def __init__(self, bytes_by_key=None, words=None, head=""):
        self.bytes = {key: row.default for key, row in controllers().items()}
        self.bytes.update(bytes_by_key or {})
        self.words = dict(words or {})
        self.head = head

    def __getitem__(self, key):
        return self.bytes[key]

    def copy(self, changes=None):
        return Instrument({**self.bytes, **(changes or {})}, self.words, self.head)

    def text(self):
        """The name, what differs from the defaults in the table's order, and the other words."""
        lines = [self.head] if self.head else []
        lines += [f"name = {self.words['name']}"] if "name" in self.words else []
        rows = controllers()
        for key, row in rows.items():
            if self.bytes[key] != row.default:
                lines.append(f"{key} = {shortest(row, self.bytes[key])}")
        lines += [f"{key} = {value}" for key, value in self.words.items() if key != "name"]
        return "\n".join(lines) + "\n"


def shortest(row, byte):
    """The shortest number that the engine reads as the byte."""
    value = row.value(byte)
    for digits in range(7):
        text = f"{value:.{digits}f}"
        # Not at the edge between two bytes, where rounding may differ.
        if row.byte(float(text)) == byte and abs(float(text) - value) <= 0.3 * row.scale:
            return text if float(text) != 0 else "0"
    return f"{value:.7f}"


def parse(text):
    """An Instrument of a text; comments at its top are kept."""
    found, words, head = {}, {}, []
    rows = controllers()
    for line in text.splitlines():
        if line.lstrip().startswith("#"):
            if not found and not words:
                head.append(line)
            continue
        key, equals, value = (part.strip() for part in line.partition("="))
        if key in rows:
            found[key] = rows[key].byte(float(value.split("#")[0]))
        elif equals:
            words[key] = value
    return Instrument(found, words, "\n".join(head))


def read(path):
    return parse(Path(path).read_text(encoding="utf-8"))

"""Which notes are measured, and the MIDI files that play them.

Two sets: what the fit may use, and what is held out of it and judged apart.  A note lies in a slot of
its own; "all sound off" ends it, so that no tail reaches the next one.
"""

import struct
from collections import namedtuple

Note = namedtuple("Note", "key velocity")

HOLD_MS = 1000
SLOT_MS = 1500

FIT_NOTES = [Note(k, v) for k in (33, 45, 57, 69, 81, 93) for v in (60, 112)]
HELD_OUT_NOTES = [Note(k, v) for k in (39, 51, 63, 75, 87) for v in (42, 90)]
NOTES = FIT_NOTES + HELD_OUT_NOTES

DRUM_KEYS = tuple(range(35, 82))
DRUM_HOLD_MS = 300
DRUM_SLOT_MS = 1000
DRUM_FIT_NOTES = [Note(k, 110) for k in DRUM_KEYS]
DRUM_HELD_OUT_NOTES = [Note(k, 70) for k in DRUM_KEYS]
DRUM_NOTES = DRUM_FIT_NOTES + DRUM_HELD_OUT_NOTES


def in_range(notes, low, high):
    """The notes within the keys; the nearest one's key if none is."""
    found = [n for n in notes if low <= n.key <= high]
    if found:
        return found
    middle = (low + high) / 2
    nearest = min((n.key for n in notes), key=lambda key: abs(key - middle))
    return [n for n in notes if n.key == nearest]


def variable_length(value):
    out = [value & 127]
    while value := value >> 7:
        out.insert(0, 128 | value & 127)
    return bytes(out)


def midi_file(events):
    """A file of format 0, a tick a millisecond, from (milliseconds, message bytes); stable in time."""
    track = bytearray(b"\0\xff\x51\x03" + (1_000_000).to_bytes(3, "big"))
    now = 0
    for time, message in sorted(events, key=lambda event: event[0]):
        track += variable_length(time - now) + bytes(message)
        now = time
    track += b"\0\xff\x2f\0"
    return (b"MThd" + struct.pack(">IHHH", 6, 0, 1, 1000) + b"MTrk" + struct.pack(">I", len(track))
            + bytes(track))


def _dry(channel, pan=64):
    return [(0, (0xB0 | channel, number, value)) for number, value in ((91, 0), (93, 0), (10, pan))]


def _struck(channel, note, start, hold, slot):
    return [(start, (0x90 | channel, note.key, note.velocity)), (start + hold, (0x80 | channel, note.key, 64)),
            (start + slot - 10, (0xB0 | channel, 120, 0))]


def sequence(plays, channel=0):
    """A MIDI file of (program, Note, hold, slot) in milliseconds, one after the other, dry."""
    events = _dry(channel)
    current = None
    start = 0
    for program, note, hold, slot in plays:
        if program != current:
            events.append((start, (0xC0 | channel, program)))
            current = program
        events += _struck(channel, note, start, hold, slot)
        start += slot
    events.append((start, (0xB0 | channel, 120, 0)))
    return midi_file(events)


def slots(plays, channel=0, hold=HOLD_MS, slot=SLOT_MS):
    """The same of (program, Note) pairs of equal length."""
    return sequence([(program, note, hold, slot) for program, note in plays], channel)


def paired_slots(pairs, wanted, hold=HOLD_MS, slot=SLOT_MS):
    """The notes by two programs at once, one on the left and one on the right, for each of the pairs: half of the time."""
    events = _dry(0, 0) + _dry(1, 127)
    start = 0
    for programs in pairs:
        events += [(start, (0xC0 | channel, program)) for channel, program in enumerate(programs)]
        for note in wanted:
            for channel in (0, 1):
                events += _struck(channel, note, start, hold, slot)
            start += slot
    events.append((start, (0xB0, 120, 0)))
    return midi_file(events)

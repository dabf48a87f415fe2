"""A small screen reader over the library that the real ones use: reader.py STEP, as reader.sh tells."""

import subprocess
import sys
import time

import pyatspi
from gi.repository import GLib

CUTOFF = "Filter cutoff"
OF_PARENT = 2  # AtspiCoordType, which pyatspi has no name for
heard = []  # events since the last expectation: kind, name of the part, detail


def check(is_right, what):
    if not is_right:
        sys.exit(f"reader: {what}; heard {heard[-12:]}")


def on_event(event):
    name = event.source.name if event.source else ""
    heard.append((str(event.type), name, event.detail1))


def settle(seconds):
    loop = GLib.MainLoop()
    GLib.timeout_add(int(seconds * 1000), loop.quit)
    loop.run()


def wait_until(is_so, what):
    for _ in range(100):
        if is_so():
            return
        settle(0.05)
    check(False, what)


def hears(name, *kinds, detail=None):
    """Every one of these kinds, of the part of that name."""
    for kind in kinds:
        wait_until(
            lambda kind=kind: any(k.startswith(kind) and n == name and detail in (None, d) for k, n, d in heard),
            f"{kind} of {name} is not heard",
        )
    heard.clear()


def program():
    desktop = pyatspi.Registry.getDesktop(0)
    return next((one for one in desktop if one and one.name == "Tarquil"), None)


def parts(start):
    yield start
    for child in start:
        if child:
            yield from parts(child)


def find(name, role=None):
    found = []

    def look():
        found[:] = [
            p for p in parts(program()) if p.name == name and role in (None, p.getRoleName())
        ]
        return found

    wait_until(look, f'there is no {role or "part"} "{name}"')
    return found[0]


def value_text(part):
    return dict(a.split(":", 1) for a in part.getAttributes()).get("valuetext", "")


def press(part):
    check(part.queryAction().doAction(0), f"{part.name} can not be pressed")


def has(part, state):
    return part.getState().contains(state)


def xdotool(*words):
    subprocess.run(["xdotool", *words], check=True)


def listen():
    for kind in ("object:state-changed", "object:property-change", "object:text-changed",
                 "object:children-changed", "window"):
        pyatspi.Registry.registerEventListener(on_event, kind)
    settle(0.3)
    heard.clear()


def nobody():
    wait_until(lambda: program() is None, "the window is shown without being asked for")


def walk():
    wait_until(lambda: program() is not None, "the window is not shown")
    frame = program()[0]
    check(frame.getRoleName() == "frame" and frame.name.endswith("Tarquil"), "no frame")
    wait_until(lambda: has(frame, pyatspi.STATE_ACTIVE), "the window that has the keyboard is not active")
    press(find("Filter", "page tab"))
    cutoff = find(CUTOFF, "slider")
    check(cutoff.parent.name == "Voice filter", f"it stands in {cutoff.parent.name}")
    check(value_text(cutoff).endswith("Hz"), f"its value is {value_text(cutoff)}")
    check(len(cutoff.description) > 10, "it has no help")
    started = time.time()
    count = sum(1 for part in parts(program()) if part.getRoleName() and part.getState())
    on_screen = cutoff.queryComponent().getExtents(pyatspi.DESKTOP_COORDS)
    around = cutoff.parent.queryComponent().getExtents(pyatspi.DESKTOP_COORDS)
    inside = cutoff.queryComponent().getPosition(OF_PARENT)
    check(inside == (on_screen.x - around.x, on_screen.y - around.y), f"it stands at {inside}")
    middle = (on_screen.x + on_screen.width // 2, on_screen.y + on_screen.height // 2)
    there = frame.queryComponent().getAccessibleAtPoint(*middle, pyatspi.DESKTOP_COORDS)
    check(there == cutoff, f"{there} is under its middle")
    print(f"{count} parts in {time.time() - started:.3f} s")


def edit():
    listen()
    kind = find("Filter type", "combo box")
    cutoff = find(CUTOFF)
    before = value_text(cutoff)
    for index in (0, 1):  # off, and the first kind of filter
        press(kind)
        items = [p for p in find("Menu", "menu")]
        check(any(has(p, pyatspi.STATE_FOCUSED) for p in items), "no item of a menu has the focus")
        chosen = items[index].name
        press(items[index])
        hears(CUTOFF, "object:state-changed:enabled", detail=index)
        check(value_text(kind) == chosen == kind.queryText().getText(0, -1), "it was not chosen")
        check(has(cutoff, pyatspi.STATE_ENABLED) == bool(index), "its state is as before")
        check(("No effect now" in cutoff.description) != bool(index), "it does not say why")
    value = cutoff.queryValue()
    value.currentValue = 40
    hears(CUTOFF, "object:property-change:accessible-value")
    check(value.currentValue == 40 and value.maximumValue == 127, "the value is not set")
    check(value_text(cutoff) != before, "its text stays")
    for wrong in (float("nan"), float("inf")):
        value.currentValue = wrong
    check(value.currentValue == 40, "nonsense is taken for a value")
    name = find("Program name", "entry")
    name.queryEditableText().setTextContents("Orgäl")
    hears("Program name", "object:text-changed:insert")
    check(name.queryText().getText(0, 4) == "Orgä", "the name is not typed")
    check(name.queryText().getCharacterAtOffset(3) == ord("ä"), "it is read byte by byte")
    check(name.queryText().getTextBeforeOffset(4, pyatspi.TEXT_BOUNDARY_CHAR) == ("ä", 3, 4), "nothing is before it")
    check(name.queryText().getAttributeRun(0, True) == [[], 0, 5], "its looks are not told")
    name.queryEditableText().insertText(5, "chen", 4)
    name.queryEditableText().deleteText(5, 9)
    check(name.queryText().getText(0, -1) == "Orgäl", "what is inserted can not be deleted")
    press(find("Undo", "push button"))
    hears("Redo", "object:state-changed:enabled", "object:state-changed:sensitive", detail=1)
    press(find("Redo", "push button"))
    keys = find("Keys", "toggle button")
    was_on = has(keys, pyatspi.STATE_CHECKED)
    box = keys.queryComponent().getExtents(pyatspi.DESKTOP_COORDS)
    xdotool("mousemove", str(box.x + box.width // 2), str(box.y + box.height // 2), "click", "1")
    hears("Keys", "object:state-changed:checked", "object:state-changed:pressed", detail=0 if was_on else 1)


def keys():
    listen()
    cutoff = find(CUTOFF)
    check(cutoff.queryComponent().grabFocus(), "it takes no focus")
    hears(CUTOFF, "object:state-changed:focused", detail=1)
    for key in ("Up", "Down"):
        xdotool("key", key)
        hears(CUTOFF, "object:property-change:accessible-value")
    xdotool("key", "Tab")
    hears(CUTOFF, "object:state-changed:focused", detail=0)
    xdotool("key", "Escape")


def command():
    """Up is the reader's own now; other keys go on to the window."""
    taken = []

    def on_key(event):
        taken.append((event.event_string, event.type == pyatspi.KEY_PRESSED_EVENT))
        return event.event_string == "Up"

    listen()
    check(find(CUTOFF).queryComponent().grabFocus(), "it takes no focus")
    pyatspi.Registry.registerKeystrokeListener(
        on_key, kind=(pyatspi.KEY_PRESSED_EVENT, pyatspi.KEY_RELEASED_EVENT), mask=0,
        synchronous=True, preemptive=True)
    settle(0.3)
    value = find(CUTOFF).queryValue()
    before = value.currentValue
    xdotool("key", "Up")
    wait_until(lambda: ("Up", True) in taken and ("Up", False) in taken, f"keys are not told: {taken}")
    settle(0.3)
    check(value.currentValue == before, "the reader's key reaches the window")
    xdotool("key", "Down")
    wait_until(lambda: value.currentValue == before - 1, "another key does not")
    xdotool("key", "End")
    wait_until(lambda: value.currentValue == 127, "another key does not")
    value.currentValue = before


def saves():
    listen()
    xdotool("key", "Return")
    wait_until(
        lambda: any(k.startswith("object:state-changed:showing") and "read.tqb" in n
                    for k, n, _ in heard),
        "what was saved is not said",
    )


def host():
    wait_until(lambda: program() is not None, "the plug-in's window is not shown")
    find("Panic", "push button")
    slider = next(p for p in parts(program()) if p.getRoleName() == "slider" and p.parent.name == "Mix")
    slider.queryValue().currentValue = 77
    check(slider.queryValue().currentValue == 77, "the value is not set")


STEPS = {step.__name__: step for step in (nobody, walk, edit, keys, command, saves, host)}
STEPS[sys.argv[1]]()

"""Plays README.md's keyboard session to the running program while Orca listens.

Usage: orca_session.py PROGRAM CALENDAR_FILE FAKETIME_LIBRARY ORCA_DEBUG_FILE LOG

LOG gets the AT-SPI events heard, and LOG.program what the program printed.

Run by scripts/orca-session.sh on a private desktop. After each step it prints
what Orca said (the SPEECH OUTPUT lines its debug file gained).
"""

import os
import re
import sys
import time

sys.path.insert(0, os.path.join(os.path.dirname(os.path.abspath(__file__)), "..", "tests",
                                "desktop"))

from atspi_session import Session, program_environment  # noqa: E402
from screen_reader_test import in_editor, tab_until  # noqa: E402

SPOKEN = re.compile(r"SPEECH OUTPUT: '(.*?)'")


class Orca:
    """What Orca writes to its debug file, read a step at a time."""

    def __init__(self, debug_file):
        self.debug_file = debug_file
        self.read = 0

    def size(self):
        return os.path.getsize(self.debug_file) if os.path.exists(self.debug_file) else 0

    def _text(self, start):
        if not os.path.exists(self.debug_file):
            return b""
        with open(self.debug_file, "rb") as debug:
            debug.seek(start)
            return debug.read()

    def spoken_count(self):
        return len(SPOKEN.findall(self._text(self.read).decode("utf-8", "replace")))

    def settle(self, session, quiet=1.2, deadline=10):
        """Waits until Orca has said nothing new for QUIET seconds.

        Its file never rests (it notes every event, spoken or not), so what is
        counted is what it said.
        """
        end = time.monotonic() + deadline
        count, since = self.spoken_count(), time.monotonic()
        while time.monotonic() < end and time.monotonic() - since < quiet:
            session.turn(0.1)
            if self.spoken_count() != count:
                count, since = self.spoken_count(), time.monotonic()

    def said(self, session):
        """The SPEECH OUTPUT lines written since the last call."""
        self.settle(session)
        text = self._text(self.read).decode("utf-8", "replace")
        self.read += len(text.encode("utf-8", "replace"))
        return [match.group(1) for match in SPOKEN.finditer(text)]


def report(orca, session, step):
    print(f"== {step}")
    for line in orca.said(session) or ["(nothing)"]:
        print(f"   {line}")
    sys.stdout.flush()


def play(session, orca):
    def step(name, *keys):
        session.press(*keys)
        report(orca, session, name)

    report(orca, session, "start (the grid has the keyboard)")
    for key in ("Right", "Left", "Down", "Up", "Home", "End", "Next", "Prior"):
        step(key, key)

    step("Enter (date editor)", "Return")
    tab_until(session, lambda event: event.role == "text" and event.name.startswith("Title"),
              30)
    report(orca, session, "Tab to the Title box")
    session.press("ctrl+a", until=lambda heard: True, quiet=0.3)
    session.type_text("Harbour walk")
    report(orca, session, "type a title")
    tab_until(session, lambda event: event.role == "push button" and event.name == "OK", 30)
    report(orca, session, "Tab to OK")
    step("Space on OK", "space")

    step("Enter (date editor again)", "Return")
    step("Escape", "Escape")
    step("Delete (question)", "Delete")
    step("Escape (No)", "Escape")

    step("Enter (date editor for the schedule)", "Return")
    step("Ctrl+Tab (Schedule page)", "ctrl+Tab")
    tab_until(session, lambda event: event.role == "text" and "Start" in event.name
              and in_editor(event), 10)
    report(orca, session, "Tab to Start Time")
    session.type_text("9:30")
    report(orca, session, "type 9:30")
    tab_until(session, lambda event: event.role == "text" and "Description" in event.name, 10)
    session.type_text("Tide tables")
    report(orca, session, "Description: Tide tables")
    tab_until(session, lambda event: event.role == "push button" and event.name == "Add", 10)
    report(orca, session, "Tab to Add")
    step("Space on Add", "space")
    tab_until(session, lambda event: event.role == "push button" and event.name == "OK", 30)
    report(orca, session, "Tab to OK")
    step("Space on OK", "space")

    step("Ctrl+V (Examine Date)", "ctrl+v")
    step("Ctrl+D (schedule)", "ctrl+d")
    step("Ctrl+D (schedule again)", "ctrl+d")


def main():
    program, calendar, faketime, debug_file, log_name = sys.argv[1:6]
    orca = Orca(debug_file)
    with open(log_name, "w") as log, open(log_name + ".program", "w") as output:
        session = Session([program, calendar],
                          program_environment(faketime, "2026-11-18 10:00:00"), log, output)
        try:
            play(session, orca)
        finally:
            session.end()
    return 0


if __name__ == "__main__":
    sys.exit(main())

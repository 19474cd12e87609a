"""Runs the program on the private desktop and hears it as a screen reader does.

The listeners record what AT-SPI reports; the keys go in through the X server
(xdotool), as a user's keys do. Events arrive through GLib's main context,
which the waits below turn while they poll.
"""

import os
import re
import subprocess
import time

import pyatspi
from gi.repository import GLib

LISTENED = (
    "object:state-changed:focused",
    "focus:",
    "object:state-changed:selected",
    "object:state-changed:showing",
    "object:property-change:accessible-name",
    "object:property-change:accessible-description",
    "object:children-changed",
    "window:activate",
)

# Roles whose name changes do not count as the program answering a key: the
# status bar's clock renames its label as the minute turns.
QUIET_ROLES = ("label",)


class Heard:
    """One event, with what its source was called when it came."""

    def __init__(self, event):
        self.type = event.type
        self.detail = event.detail1
        self.source = event.source
        self.role = _safely(lambda: event.source.getRoleName(), "?")
        self.name = _safely(lambda: event.source.name, "?")
        self.value = _value_of(event.any_data)

    def is_focus(self):
        return self.type == "focus:" or (
            self.type == "object:state-changed:focused" and self.detail == 1
        )

    def counts_as_answer(self):
        return not (self.type.startswith("object:property-change") and self.role in QUIET_ROLES)

    def __str__(self):
        detail = "" if self.type in ("focus:", "window:activate") else f" {self.detail}"
        value = f" -> {self.value!r}" if self.value and self.value != self.name else ""
        return f"{self.type}{detail} [{self.role}] {self.name!r}{value}"


def _value_of(data):
    """An event's text, or the name of the child it adds or removes."""
    if isinstance(data, str):
        return data
    return _safely(lambda: data.name, None) if data is not None else None


def is_clock(heard):
    """The status bar's clock: a label named by the time."""
    return (heard.role == "label"
            and re.fullmatch(r"\d\d?:\d\d(:\d\d)?( ?[AaPp][Mm])?", heard.name) is not None)


def _safely(read, fallback):
    try:
        return read()
    except Exception:  # the object may be gone by the time it is asked
        return fallback


class Session:
    """The program under test, its window and what has been heard from it."""

    def __init__(self, command, environment, log, output=None):
        self.heard = []
        self.log = log
        self._context = GLib.MainContext.default()
        for event_type in LISTENED:
            pyatspi.Registry.registerEventListener(self._record, event_type)
        self.process = subprocess.Popen(command, env=environment, stdout=output, stderr=output)
        self.window = self._find_window()

    def _record(self, event):
        heard = Heard(event)
        heard.at = time.monotonic()
        self.heard.append(heard)
        if not is_clock(heard):
            self.log.write(f"{heard.at:.3f} {heard}\n")

    def turn(self, seconds):
        """Delivers events for SECONDS."""
        end = time.monotonic() + seconds
        while time.monotonic() < end:
            while self._context.pending():
                self._context.iteration(False)
            time.sleep(0.01)

    def _find_window(self, deadline=30):
        end = time.monotonic() + deadline
        while time.monotonic() < end:
            if self.process.poll() is not None:
                raise RuntimeError(f"the program ended at start-up ({self.process.returncode})")
            found = subprocess.run(
                ["xdotool", "search", "--onlyvisible", "--pid", str(self.process.pid),
                 "--name", "^Kelvane"],
                capture_output=True, text=True).stdout.split()
            if found:
                subprocess.run(["xdotool", "windowactivate", "--sync", found[0]],
                               capture_output=True, timeout=deadline)
                self.turn(0.2)
                return found[0]
            self.turn(0.1)
        raise RuntimeError("the main window did not appear")

    def mark(self):
        return len(self.heard)

    def since(self, mark):
        return self.heard[mark:]

    def press(self, *keys, until=None, deadline=10, quiet=0.6):
        """Presses KEYS and waits for the program to answer; returns what it said.

        The answer is complete once UNTIL (a test of the events heard since,
        by default a focus event) holds and nothing has been said for QUIET
        seconds, or at DEADLINE.
        """
        mark = self.mark()
        self.log.write(f"--- keys: {' '.join(keys)}\n")
        subprocess.run(["xdotool", "key", "--clearmodifiers", *keys], check=True)
        return self._settle(mark, until or _any_focus, deadline, quiet)

    def wait_for(self, until, deadline=20, quiet=0.6):
        """Waits, without a key, for what UNTIL accepts among all that was heard."""
        return self._settle(0, until, deadline, quiet)

    def type_text(self, text):
        mark = self.mark()
        self.log.write(f"--- typed: {text}\n")
        subprocess.run(["xdotool", "type", "--delay", "20", text], check=True)
        return self._settle(mark, lambda heard: True, 10, 0.4)

    def _settle(self, mark, until, deadline, quiet):
        end = time.monotonic() + deadline
        answered = False
        while time.monotonic() < end:
            self.turn(0.05)
            heard = self.since(mark)
            answered = answered or until(heard)
            answers = [event.at for event in heard if event.counts_as_answer()]
            last = answers[-1] if answers else 0
            if answered and time.monotonic() - last >= quiet:
                break
        return self.since(mark)

    def end(self):
        if self.process.poll() is None:
            self.process.terminate()
            try:
                self.process.wait(timeout=10)
            except subprocess.TimeoutExpired:
                self.process.kill()
                self.process.wait()


def _any_focus(heard):
    return any(event.is_focus() for event in heard)


def last_focus(heard):
    focus = [event for event in heard if event.is_focus()]
    return focus[-1] if focus else None


def window_of(accessible):
    """The dialog or frame an object is in, or None."""
    node = accessible
    for _ in range(30):
        if node is None:
            return None
        role = _safely(lambda: node.getRoleName(), "")
        if role in ("dialog", "frame", "alert", "window", "file chooser"):
            return node
        node = _safely(lambda: node.parent, None)
    return None


def program_environment(faketime_library, now):
    """The program's environment: the fixed clock for it alone."""
    environment = dict(os.environ)
    environment["LD_PRELOAD"] = faketime_library
    environment["FAKETIME"] = "@" + now
    environment["FAKETIME_DONT_FAKE_MONOTONIC"] = "1"
    return environment

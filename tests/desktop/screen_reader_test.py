"""The keyboard session of a blind user, checked against what AT-SPI reports.

Usage: screen_reader_test.py PROGRAM CALENDAR_FILE FAKETIME_LIBRARY LOG

The clock is fixed at Wednesday 18 November 2026, 10:00, so the grid opens on
November with the 18th selected. Each check prints PASS or FAIL with what was
heard; the script goes on after a failure where it can and fails at the end.
"""

import sys

from atspi_session import Session, is_clock, last_focus, program_environment, window_of

NEW_TITLE = "Harbour walk"
ACTIVITY = "Tide tables"


class Checks:
    def __init__(self, session):
        self.session = session
        self.failed = []

    def check(self, name, passed, message, heard=()):
        heard = [event for event in heard if not is_clock(event)]
        print(f"{'PASS' if passed else 'FAIL'} {name}: {message}")
        if not passed:
            self.failed.append(name)
            print("    heard:" if heard else "    heard nothing")
            for event in heard:
                print(f"      {event}")
        sys.stdout.flush()
        return passed

    def focus_is_cell(self, name, heard, day, also=None):
        """The last focus event names the table cell of DAY (and ALSO)."""
        focus = last_focus(heard)
        passed = (focus is not None and focus.role == "table cell"
                  and focus.name.startswith(day) and (also is None or also in focus.name))
        wanted = f"a table cell named {day!r}" + (f" with {also!r}" if also else "")
        return self.check(name, passed, f"last focus is {wanted}", heard)


def selected_events(heard, day, on):
    return [event for event in heard
            if event.type == "object:state-changed:selected" and event.detail == (1 if on else 0)
            and event.role == "table cell" and event.name.startswith(day)]


def ends_on_a_cell(heard):
    """Coming back to the grid is over once the last focus is on a day: the
    table's own focus comes first, the day's after it from the event loop."""
    focus = last_focus(heard)
    return focus is not None and focus.role == "table cell"


def tab_until(session, found, most):
    """Presses Tab until the focus is on what FOUND accepts; returns it or None."""
    focus = last_focus(session.heard)
    for _ in range(most):
        if focus is not None and found(focus):
            return focus
        focus = last_focus(session.press("Tab")) or focus
    return focus if focus is not None and found(focus) else None


def in_grid(event):
    return event.role in ("table", "table cell")


def enter_grid(checks):
    """The grid has the keyboard at start; Tab brings it there otherwise."""
    session = checks.session
    session.wait_for(lambda heard: any(event.is_focus() for event in heard))
    start = list(session.heard)
    focus = tab_until(session, in_grid, 15)
    checks.check("tab_reaches_grid", focus is not None, "the month grid has the keyboard",
                 session.heard[-40:])
    if focus is not None:
        checks.focus_is_cell("start_focus_names_cell", start, "Wednesday 18 November")
    return focus is not None


def arrow(checks, key, old_day, new_day):
    """Moves the selection by KEY; returns the accessible of the cell now focused."""
    heard = checks.session.press(key)
    step = key.lower()
    checks.focus_is_cell(f"{step}_focus_names_cell", heard, new_day)
    checks.check(f"{step}_selects_new_cell", bool(selected_events(heard, new_day, True)),
                 f"{new_day!r} is reported selected", heard)
    checks.check(f"{step}_unselects_old_cell", bool(selected_events(heard, old_day, False)),
                 f"{old_day!r} is reported no longer selected", heard)
    focus = last_focus(heard)
    return focus.source if focus is not None and focus.role == "table cell" else None


def table_selection(checks, cell, day):
    """The table itself tells which of its cells is selected: DAY's, alone."""
    table = cell.parent.queryTable()
    selected = [table.getAccessibleAt(row, column).name
                for row in range(table.nRows) for column in range(table.nColumns)
                if table.isSelected(row, column)]
    checks.check("table_reports_selection", len(selected) == 1 and selected[0].startswith(day),
                 f"the table's one selected cell is {day!r}; it reports {selected!r}")


def cancel_save_as(checks, day):
    """Ctrl+S opens Save As; Escape closes it and the keyboard is back on DAY."""
    session = checks.session
    heard = session.press("ctrl+s", until=lambda heard: any(
        event.is_focus() and not in_grid(event) for event in heard))
    if not checks.check("save_as_opens", any(event.is_focus() and not in_grid(event)
                                             for event in heard),
                        "Ctrl+S opens Save As with the keyboard in it", heard):
        return
    heard = session.press("Escape", until=ends_on_a_cell)
    checks.focus_is_cell("save_as_returns_focus_to_cell", heard, day)


def in_editor(event):
    window = window_of(event.source)
    return window is not None and window.name == "Tivrel Edit"


def open_editor(checks, step):
    heard = checks.session.press("Return", until=lambda heard: any(
        event.is_focus() and in_editor(event) for event in heard))
    focus = last_focus(heard)
    opened = focus is not None and in_editor(focus)
    checks.check(f"{step}_opens_editor", opened, "Enter opens Tivrel Edit", heard)
    return heard if opened else None


def edit_title(checks, cell):
    """Gives the date of CELL (its accessible, heard before) a new title."""
    session = checks.session
    heard = open_editor(checks, "enter")
    if heard is None:
        return False
    focus = last_focus(heard)
    checks.check("editor_focus_in_title", focus.role == "text" and focus.name.startswith("Title"),
                 "the keyboard starts in the Title box", heard)
    dialog = window_of(focus.source)
    description = dialog.description if dialog is not None else ""
    checks.check("editor_describes_date", "Wednesday 18 November" in description,
                 f"the editor's description names the date, it is {description!r}")

    title = tab_until(session, lambda event: event.role == "text" and in_editor(event)
                      and event.name.startswith("Title"), 30)
    if not checks.check("tab_reaches_title", title is not None, "Tab reaches the Title box",
                        session.heard[-20:]):
        return False
    session.press("ctrl+a", until=lambda heard: True, quiet=0.3)
    session.type_text(NEW_TITLE)
    ok = tab_until(session, lambda event: event.role == "push button" and event.name == "OK", 30)
    if not checks.check("tab_reaches_ok", ok is not None, "Tab reaches OK", session.heard[-20:]):
        return False

    heard = session.press("space", until=ends_on_a_cell)
    checks.focus_is_cell("ok_returns_focus_to_cell", heard, "Wednesday 18 November",
                        NEW_TITLE)
    renamed = [event for event in heard if event.type == "object:property-change:accessible-name"
               and event.role == "table cell" and NEW_TITLE in (event.value or event.name)]
    checks.check("ok_announces_new_name", bool(renamed),
                 f"a name change of the cell with {NEW_TITLE!r} arrives", heard)
    name = cell.name
    checks.check("cell_reads_new_title", NEW_TITLE in name,
                 f"the cell, asked again, reads its new title; it reads {name!r}")
    return True


def cancel_editor(checks):
    if open_editor(checks, "enter_again") is None:
        return
    heard = checks.session.press("Escape", until=ends_on_a_cell)
    checks.focus_is_cell("escape_returns_focus_to_cell", heard, "Wednesday 18 November",
                         NEW_TITLE)


def refuse_delete(checks):
    session = checks.session
    heard = session.press("Delete", until=lambda heard: any(
        event.is_focus() and window_of(event.source) is not None
        and window_of(event.source).name != "Kelvane - plans.cal" for event in heard))
    focus = last_focus(heard)
    box = window_of(focus.source) if focus is not None else None
    asked = box is not None and box.getRoleName() != "frame"
    if not checks.check("delete_asks", asked, "Delete asks a question in a box of its own",
                        heard):
        return
    description = box.description
    checks.check("delete_question_describes_date", "Wednesday 18 November" in description,
                 f"the question's description names the date, it is {description!r}")
    heard = session.press("Escape", until=ends_on_a_cell)
    checks.focus_is_cell("no_returns_focus_to_cell", heard, "Wednesday 18 November", NEW_TITLE)


def tells_the_line(event):
    """Orca reads a notification out as it shows, and nothing else of it."""
    return (event.type == "object:state-changed:showing" and event.detail == 1
            and event.role == "notification" and ACTIVITY in event.name)


def add_activity(checks):
    """Adds a line on the editor's Schedule page, which some event must announce."""
    session = checks.session
    if open_editor(checks, "enter_for_schedule") is None:
        return
    session.press("ctrl+Tab", until=lambda heard: True)
    start = tab_until(session, lambda event: event.role == "text" and in_editor(event)
                      and event.name.startswith("Start Time"), 15)
    if not checks.check("tab_reaches_start_time", start is not None,
                        "Tab reaches the Schedule page's Start Time box", session.heard[-20:]):
        return
    session.type_text("9:30")
    session.press("Tab", "Tab")
    session.type_text(ACTIVITY)
    add = tab_until(session, lambda event: event.role == "push button" and event.name == "Add", 10)
    if not checks.check("tab_reaches_add", add is not None, "Tab reaches Add",
                        session.heard[-20:]):
        return
    heard = session.press("space", until=lambda heard: any(map(tells_the_line, heard)))
    checks.check("add_announces_new_line", any(map(tells_the_line, heard)),
                 f"a notification with {ACTIVITY!r} shows", heard)
    session.press("Escape")


def clock_is_quiet(checks):
    """The status bar's clock is renamed as the minute turns, never each second."""
    heard = checks.session.heard
    renamed = [event for event in heard
               if is_clock(event) and event.type == "object:property-change:accessible-name"]
    minutes = (heard[-1].at - heard[0].at) / 60 if heard else 0
    checks.check("clock_is_quiet", len(renamed) <= int(minutes) + 1,
                 f"the clock was renamed {len(renamed)} times in {minutes:.1f} minutes")


def main():
    program, calendar, faketime, log_name = sys.argv[1:5]
    with open(log_name, "w") as log:
        session = Session([program, calendar],
                          program_environment(faketime, "2026-11-18 10:00:00"), log)
        checks = Checks(session)
        try:
            if enter_grid(checks):
                arrow(checks, "Right", "Wednesday 18 November", "Thursday 19 November")
                arrow(checks, "Left", "Thursday 19 November", "Wednesday 18 November")
                arrow(checks, "Down", "Wednesday 18 November", "Wednesday 25 November")
                cell = arrow(checks, "Up", "Wednesday 25 November", "Wednesday 18 November")
                if cell is not None:
                    table_selection(checks, cell, "Wednesday 18 November")
                cancel_save_as(checks, "Wednesday 18 November")
                if cell is not None and edit_title(checks, cell):
                    cancel_editor(checks)
                    refuse_delete(checks)
                    add_activity(checks)
            clock_is_quiet(checks)
        finally:
            session.end()
    if checks.failed:
        print(f"{len(checks.failed)} failed: {' '.join(checks.failed)}")
        return 1
    return 0


if __name__ == "__main__":
    sys.exit(main())

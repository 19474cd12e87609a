#!/usr/bin/env python3
"""Writes whole_year_report.txt: the coming-up report expected over all of
2000 from 1 January, by months, twelve of them, with schedules shown, for the
calendar that whole_year_report_test.cpp fills. Worked out here on its own,
with Python's calendar, so that the test does not compare the program with
itself."""
import datetime
import pathlib


def twelve_hour(hour, minute):
    suffix = " am" if hour < 12 else " pm"
    shown = 12 if hour == 0 else hour - 12 if hour > 12 else hour
    return f"{shown}:{minute:02d}{suffix}"


def main():
    lines = ["* * * C O M M I N G   U P * * *",
             "From 1-1-2000  (Saturday)",
             "To 31-12-2000  (Sunday)",
             ""]
    day = datetime.date(2000, 1, 1)
    n = 1
    while day.year == 2000:
        # The test's calendar: every tenth date has no title; every date has a
        # morning walk with an end and an afternoon call without one.
        lines.append("" if n % 10 == 0 else f"Day {n} of the year")
        lines.append(f"{day.day}-{day.month}-2000 ({day.strftime('%A')})")
        lines.append(f"->Call {n}")
        lines.append("-->From " + twelve_hour(13, n % 60))
        lines.append("->Morning walk")
        lines.append("-->From " + twelve_hour(7 + n % 4, 15) + " to " + twelve_hour(8 + n % 4, 0))
        lines.append("")
        day += datetime.timedelta(days=1)
        n += 1
    out = pathlib.Path(__file__).with_name("whole_year_report.txt")
    out.write_text("\n".join(lines), encoding="ascii", newline="\n")


if __name__ == "__main__":
    main()

#!/usr/bin/env python3
"""Fails, naming file:line, when a file of kelvane-cal, of its tests or of the
calendar-file library includes a layer it must not depend on, so that the
layers keep depending one way: cli on publish, publish on caldav and ical,
ical on src/calfile, and none of them on the program's own libraries."""

import pathlib
import re
import sys

INCLUDE = re.compile(r'^\s*#\s*include\s*[<"]([^>"]+)[>"]')
SOURCE_SUFFIXES = {".h", ".hpp", ".cpp", ".cc"}

# The kelvane-cal libraries each may not include.
HIGHER_LAYERS = {
    "caldav": ["ical", "publish", "cli"],
    "ical": ["caldav", "publish", "cli"],
    "publish": ["cli"],
}


def program_libraries(root):
    """Every library of src/ except calfile, the one kelvane-cal builds on."""
    return sorted(
        folder.name + "/"
        for folder in (root / "src").iterdir()
        if folder.is_dir() and folder.name != "calfile"
    )


def rules(root):
    """(folder, include prefixes its files must not use), folders relative to root."""
    program = program_libraries(root)
    found = [("src/calfile", program + ["kelvane_cal/"])]
    for base in ("tools/kelvane_cal", "tests/tools/kelvane_cal"):
        found.append((base, program))
        for layer, higher in HIGHER_LAYERS.items():
            found.append((f"{base}/{layer}", [f"kelvane_cal/{name}/" for name in higher]))
    return found


FIXTURES = "tests/tools/kelvane_cal/fixtures"


def includes_of(path):
    """(line number, included name) of each #include in a file."""
    lines = path.read_text(encoding="utf-8", errors="replace").splitlines()
    for number, line in enumerate(lines, start=1):
        match = INCLUDE.match(line)
        if match:
            yield number, match.group(1)


def reached_includes(root, path, seen):
    """The includes of a file and, for the tests, of the shared fixtures it
    includes, followed to the end: (file, line, included name)."""
    for number, name in includes_of(path):
        yield path, number, name
        fixture = root / FIXTURES / name.removeprefix("fixtures/")
        if name.startswith("fixtures/") and fixture.is_file() and fixture not in seen:
            seen.add(fixture)
            yield from reached_includes(root, fixture, seen)


def sources(root, folder):
    files = [path for path in sorted((root / folder).rglob("*"))
             if path.suffix in SOURCE_SUFFIXES and path.is_file()]
    if not files:
        raise SystemExit(f"{folder}/ holds no sources: the rules name a folder that is gone")
    return files


def wrong_includes(root, folder, forbidden, checked):
    for path in sources(root, folder):
        checked.add(path)
        for where, number, name in reached_includes(root, path, {path}):
            if name.startswith(tuple(forbidden)):
                through = "" if where == path else f" (through {path.relative_to(root)})"
                yield f"{where.relative_to(root)}:{number}: includes {name}, " \
                      f"which {folder}/ must not depend on{through}"


def main():
    root = pathlib.Path(sys.argv[1] if len(sys.argv) > 1 else ".").resolve()
    checked = set()
    problems = [
        problem
        for folder, forbidden in rules(root)
        for problem in wrong_includes(root, folder, forbidden, checked)
    ]
    for problem in problems:
        print(problem)
    if problems:
        print(f"{len(problems)} include(s) against the one-way layers")
        return 1
    print(f"kelvane-cal's layers include one way ({len(checked)} files checked)")
    return 0


if __name__ == "__main__":
    sys.exit(main())

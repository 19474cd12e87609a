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


def wrong_includes(root, folder, forbidden):
    for path in sorted((root / folder).rglob("*")):
        if path.suffix not in SOURCE_SUFFIXES or not path.is_file():
            continue
        lines = path.read_text(encoding="utf-8", errors="replace").splitlines()
        for number, line in enumerate(lines, start=1):
            match = INCLUDE.match(line)
            if match and match.group(1).startswith(tuple(forbidden)):
                yield f"{path.relative_to(root)}:{number}: includes {match.group(1)}, " \
                      f"which {folder}/ must not depend on"


def main():
    root = pathlib.Path(sys.argv[1] if len(sys.argv) > 1 else ".").resolve()
    problems = [
        problem
        for folder, forbidden in rules(root)
        for problem in wrong_includes(root, folder, forbidden)
    ]
    for problem in problems:
        print(problem)
    if problems:
        print(f"{len(problems)} include(s) against the one-way layers")
        return 1
    print("kelvane-cal's layers include one way")
    return 0


if __name__ == "__main__":
    sys.exit(main())

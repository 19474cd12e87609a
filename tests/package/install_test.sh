#!/usr/bin/env bash
# Installs a build tree into a temporary prefix with `cmake --install` and
# checks that exactly the expected files land there, and that the desktop
# entry, the MIME type and the manual page are sound.
#
#   bash tests/package/install_test.sh BUILD_DIR SOURCE_DIR
set -euo pipefail

build="$1"
source="$2"
. "$source/tests/package/common.sh"
# CTest names the CMake that configured the build.
cmake="${KELVANE_CMAKE:-cmake}"

work="$(mktemp -d "${TMPDIR:-/tmp}/kelvane-install-test.XXXXXX")"
trap 'rm -rf "$work"' EXIT
trap 'exit 130' INT TERM
prefix="$work/prefix"

if ! "$cmake" --install "$build" --prefix "$prefix" >"$work/install.log" 2>&1; then
    cat "$work/install.log" >&2
    fail "cmake --install did not finish"
fi

# Exactly the expected files, and no empty folders left over.
found="$(cd "$prefix" && find . \( -type f -o -type l \) | LC_ALL=C sort)"
if ! diff <(expected_files . .1) <(echo "$found") >"$work/files.diff"; then
    echo "< expected, > installed:" >&2
    cat "$work/files.diff" >&2
    fail "the install tree is not as expected"
fi
empty="$(cd "$prefix" && find . -type d -empty)"
[[ -z "$empty" ]] || fail "empty folders in the install tree: $empty"

for program in kelvane kelvane-cal; do
    [[ -x "$prefix/bin/$program" ]] || fail "bin/$program is not executable"
done

# The data files are the checked-in ones.
packaging="$source/packaging"
cmp "$packaging/kelvane.desktop" "$prefix/share/applications/kelvane.desktop"
cmp "$packaging/kelvane.xml" "$prefix/share/mime/packages/kelvane.xml"
cmp "$packaging/kelvane-cal.1" "$prefix/share/man/man1/kelvane-cal.1"
for size in "${icon_sizes[@]}"; do
    icon="${size}x${size}/apps/kelvane.png"
    cmp "$packaging/icons/hicolor/$icon" "$prefix/share/icons/hicolor/$icon"
done

# The desktop entry and the MIME type pass their own tools, where installed.
if command -v desktop-file-validate >/dev/null; then
    desktop-file-validate "$prefix/share/applications/kelvane.desktop" ||
        fail "desktop-file-validate found faults in kelvane.desktop"
else
    echo "desktop-file-validate is missing (desktop-file-utils): the desktop entry was not checked"
fi
if command -v update-mime-database >/dev/null; then
    # It warns about a database outside the data folders it is told of.
    if ! XDG_DATA_DIRS="$prefix/share" update-mime-database "$prefix/share/mime" \
        >"$work/mime.log" 2>&1 ||
        [[ -s "$work/mime.log" ]]; then
        cat "$work/mime.log" >&2
        fail "update-mime-database did not take kelvane.xml cleanly"
    fi
    [[ -f "$prefix/share/mime/application/x-kelvane-calendar.xml" ]] ||
        fail "update-mime-database made no application/x-kelvane-calendar"
    grep -q '^50:application/x-kelvane-calendar:\*\.cal$' "$prefix/share/mime/globs2" ||
        fail "the MIME database has no *.cal pattern"
    grep -aq 'Marrowby Kelvane 2000 File' "$prefix/share/mime/magic" ||
        fail "the MIME database has no magic for the first line"
else
    echo "update-mime-database is missing (shared-mime-info): the MIME type was not checked"
fi

# The manual page renders without a single warning.
if ! groff -man -Tutf8 -ww -z "$prefix/share/man/man1/kelvane-cal.1" >"$work/groff.log" 2>&1 ||
    [[ -s "$work/groff.log" ]]; then
    cat "$work/groff.log" >&2
    fail "the manual page does not render cleanly"
fi

echo "install tree as expected: $(echo "$found" | wc -l) files"

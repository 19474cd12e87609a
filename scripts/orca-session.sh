#!/usr/bin/env bash
# Runs Orca on a private desktop (as tests/desktop does for its own listener),
# plays README.md's keyboard session to the program and prints, step by step,
# what Orca said. Not a test: its output is for reading.
# Usage: bash scripts/orca-session.sh [PROGRAM]   (default build/plain/src/kelvane)
# KEEP=1 keeps the session's folder (Orca's whole debug file, the events heard,
# what the program printed) and names it.
set -uo pipefail

source_dir=$(cd "$(dirname "$0")/.." && pwd)
program=$(realpath "${1:-$source_dir/build/plain/src/kelvane}")
here=$source_dir/tests/desktop
source "$here/private-desktop.sh"
python=/usr/bin/python3
faketime_library=$(ls /usr/lib/*/faketime/libfaketime.so.1 2>/dev/null | head -n 1)
for needed in "$program" /usr/bin/orca "$faketime_library"; do
    [[ -e $needed ]] || { echo "missing: ${needed:-libfaketime}" >&2; exit 1; }
done

root=$(mktemp -d "${TMPDIR:-/tmp}/kelvane-orca.XXXXXX")
group=
finish() {
    local status=$?
    [[ -n $group ]] && desktop_end_group "$group"
    if [[ ${KEEP:-0} == 1 ]]; then
        echo "kept: $root (orca.debug, events.log)"
    else
        rm -rf "$root"
    fi
    exit "$status"
}
trap finish EXIT
trap 'exit 1' INT TERM

desktop_install_program "$root" "$program" "$source_dir"

session() {
    desktop_start "$root" || exit 1
    # Orca's debug file is written in blocks; line by line, each step's speech
    # is there when the step ends.
    mkdir -p "$XDG_DATA_HOME/orca"
    printf '%s\n' 'from orca import debug' \
        'if debug.debugFile is not None:' \
        '    debug.debugFile.reconfigure(line_buffering=True)' \
        >"$XDG_DATA_HOME/orca/orca-customizations.py"
    # Only the debug file's SPEECH OUTPUT lines are wanted: no speech server
    # (speech-dispatcher would leave the process group) and no braille.
    orca --replace --disable speech --disable braille --debug-file "$root/orca.debug" \
        >"$root/orca.log" 2>&1 &
    local ready=
    for _ in $(seq 300); do
        # Orca starts its registry last, when its listeners are in place.
        grep -q "ORCA: Starting registry" "$root/orca.debug" 2>/dev/null && { ready=1; break; }
        sleep 0.1
    done
    [[ -n $ready ]] || { echo "Orca did not start (see $root/orca.log)" >&2; exit 1; }
    cd "$root/program" || exit 1
    "$python" "$source_dir/scripts/orca_session.py" "$root/program/kelvane" \
        "$root/program/plans.cal" "$faketime_library" "$root/orca.debug" "$root/events.log"
    local status=$?
    desktop_stop
    exit "$status"
}

export -f session desktop_start desktop_stop desktop_wait_for_file
export root source_dir python faketime_library PYTHONDONTWRITEBYTECODE=1
setsid bash -c session &
group=$!
wait "$group"

#!/usr/bin/env bash
# Runs the real program on a private desktop and checks, through AT-SPI, what
# a screen reader hears during a keyboard session (screen_reader_test.py).
# Usage: screen_reader_test.sh PROGRAM SOURCE_DIR
# Everything it starts runs in a process group of its own, which is ended at
# the end, whatever happened.
set -uo pipefail

program=$1
source_dir=$2
here=$(cd "$(dirname "$0")" && pwd)
source "$here/private-desktop.sh"

missing() {
    echo "FAILED: $1 is missing (scripts/install-deps.sh installs it)" >&2
    exit 1
}
for tool in Xvfb openbox xdotool dbus-daemon /usr/libexec/at-spi-bus-launcher; do
    command -v "$tool" >/dev/null || missing "$tool"
done
python=/usr/bin/python3
"$python" -c 'import pyatspi' || missing python3-pyatspi
faketime_library=$(ls /usr/lib/*/faketime/libfaketime.so.1 2>/dev/null | head -n 1)
[[ -n $faketime_library ]] || missing libfaketime

root=$(mktemp -d "${TMPDIR:-/tmp}/kelvane-screen-reader.XXXXXX")
group=
finish() {
    local status=$?
    if [[ -n $group ]]; then
        desktop_end_group "$group" || status=1
    fi
    if ((status != 0)) && [[ -f $root/events.log ]]; then
        echo "--- every event heard ---"
        cat "$root/events.log"
    fi
    rm -rf "$root"
    exit "$status"
}
trap finish EXIT
trap 'exit 1' INT TERM

desktop_install_program "$root" "$program" "$source_dir"

session() {
    desktop_start "$root" || exit 1
    cd "$root/program" || exit 1
    # A hung step must still leave time for the ending below within CTest's limit.
    timeout --kill-after=10 150 "$python" "$here/screen_reader_test.py" \
        "$root/program/kelvane" "$root/program/plans.cal" "$faketime_library" "$root/events.log"
    local status=$?
    desktop_stop
    exit "$status"
}

export -f session desktop_start desktop_stop desktop_wait_for_file
# The test's Python modules are read from the source tree, which stays clean.
export root here python faketime_library PYTHONDONTWRITEBYTECODE=1
setsid bash -c session &
group=$!
wait "$group"

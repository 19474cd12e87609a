#!/usr/bin/env bash
# Builds the benchmarks optimised and runs each of them, then measures Kelvane's
# start-up: the time from process start to the first paint of its main window
# under Xvfb, beside the same for a minimal Qt program with an empty main window.
#
#   bash scripts/bench.sh [--startup-only]
#
# KELVANE_STARTUP_RUNS sets how many measured start-ups each program gets (11).
set -euo pipefail
cd "$(dirname "$0")/.."

startup_only=false
case "${1:-}" in
    "") ;;
    --startup-only) startup_only=true ;;
    *)
        echo "usage: $0 [--startup-only]" >&2
        exit 1
        ;;
esac

# The start-up measurement needs an X server and the X libraries its probe
# links; they are installed before the build, so that CMake finds them. The
# publish benchmark needs Cyrus IMAP's CalDAV server, and curl, whose time for
# the same requests it compares with kelvane-cal's.
scripts/install-deps.sh xvfb libx11-dev libxdamage-dev cyrus-common cyrus-caldav sasl2-bin curl

cmake -S . -B build/bench -G Ninja -DCMAKE_BUILD_TYPE=Release \
    -DKELVANE_BUILD_TESTS=OFF -DKELVANE_BUILD_BENCHMARKS=ON
cmake --build build/bench -j "$(nproc)"
if ! $startup_only; then
    for benchmark in build/bench/bench/*_bench; do
        echo "== $benchmark"
        QT_QPA_PLATFORM=offscreen "$benchmark"
    done
fi

# ---- Start-up to first paint -------------------------------------------------

shopt -s inherit_errexit

runs="${KELVANE_STARTUP_RUNS:-11}"
if ! [[ "$runs" =~ ^[1-9][0-9]*$ ]]; then
    echo "KELVANE_STARTUP_RUNS must be a positive whole number, not '$runs'" >&2
    exit 1
fi
probe=build/bench/bench/first_paint_probe
minimal=build/bench/bench/minimal_window
kelvane=build/bench/src/kelvane
for program in "$probe" "$minimal" "$kelvane"; do
    if [[ ! -x "$program" ]]; then
        echo "$program was not built" >&2
        exit 1
    fi
done
probe="$PWD/$probe"

work="$(mktemp -d "${TMPDIR:-/tmp}/kelvane-startup.XXXXXX")"
xvfb_pid=""
stop_xvfb() {
    if [[ -n "$xvfb_pid" ]]; then
        kill "$xvfb_pid" 2>/dev/null || true
        wait "$xvfb_pid" 2>/dev/null || true
        xvfb_pid=""
    fi
    rm -rf "$work"
}
trap stop_xvfb EXIT
trap 'exit 130' INT TERM

# Xvfb picks a free display itself and writes its number once it takes
# connections.
Xvfb -displayfd 3 -screen 0 1280x1024x24 -nolisten tcp -noreset \
    3>"$work/display" 2>"$work/xvfb.log" &
xvfb_pid=$!
for ((wait_tenths = 0; wait_tenths < 100; wait_tenths++)); do
    if (($(wc -l <"$work/display") > 0)) || ! kill -0 "$xvfb_pid" 2>/dev/null; then
        break
    fi
    sleep 0.1
done
display_number="$(head -n 1 "$work/display")"
if ! [[ "$display_number" =~ ^[0-9]+$ ]]; then
    echo "Xvfb did not start:" >&2
    cat "$work/xvfb.log" >&2
    exit 1
fi
display=":$display_number"

# Both programs start in the same bare environment: a fresh home, settings and
# runtime folder for every run (the user's own are never touched), a font cache
# shared by all runs, no session bus and no session manager.
mkdir -p "$work/cache"
base_environment=(
    "PATH=$PATH"
    "LANG=${LANG:-C.UTF-8}"
    "DISPLAY=$display"
    "QT_QPA_PLATFORM=xcb"
    "XDG_CACHE_HOME=$work/cache"
    "DBUS_SESSION_BUS_ADDRESS=unix:path=$work/no-session-bus"
)
if [[ -n "${LC_ALL:-}" ]]; then
    base_environment+=("LC_ALL=$LC_ALL")
fi

# Starts a copy of PROGRAM alone in a fresh folder (Kelvane keeps its temporary
# files beside itself) under the probe, and prints the milliseconds to the first
# paint of its window titled TITLE. The probe closes the program and waits for
# it to end before it returns, so runs never overlap.
startup_run() {
    local title="$1" program="$2"
    local attempt status milliseconds run
    for attempt in 1 2 3; do
        run="$(mktemp -d "$work/run.XXXXXX")"
        mkdir "$run/bin" "$run/home" "$run/runtime"
        chmod 700 "$run/runtime"
        cp "$program" "$run/bin/"
        status=0
        milliseconds="$(cd "$run" && env -i "${base_environment[@]}" \
            "HOME=$run/home" \
            "XDG_CONFIG_HOME=$run/home/.config" \
            "XDG_DATA_HOME=$run/home/.local/share" \
            "XDG_STATE_HOME=$run/home/.local/state" \
            "XDG_RUNTIME_DIR=$run/runtime" \
            "$probe" --title "$title" --timeout 30 -- "$run/bin/$(basename "$program")" \
            2>"$work/last-run.log")" || status=$?
        rm -rf "$run"
        if ((status == 0)); then
            echo "$milliseconds"
            return 0
        fi
        # Status 3: the window was mapped before the probe could watch it (the
        # probe was held up); that run says nothing, so it is made again.
        if ((status != 3)); then
            break
        fi
    done
    echo "Start-up run of $program failed (probe status $status):" >&2
    cat "$work/last-run.log" >&2
    return 1
}

# Prints the median and the minimum of the numbers given.
median_and_min() {
    printf '%s\n' "$@" | sort -g | awk '
        { value[NR] = $1 }
        END {
            middle = int((NR + 1) / 2)
            median = (NR % 2) ? value[middle] : (value[middle] + value[middle + 1]) / 2
            printf "%.2f %.2f\n", median, value[1]
        }'
}

echo "== start-up to first paint (Xvfb $display, 1 warm-up and $runs runs of each)"
startup_run "Minimal" "$minimal" >/dev/null
startup_run "Kelvane v1.0" "$kelvane" >/dev/null
minimal_times=()
kelvane_times=()
for ((run_index = 0; run_index < runs; run_index++)); do
    # The order alternates so that neither program always runs second.
    if ((run_index % 2 == 0)); then
        minimal_times+=("$(startup_run "Minimal" "$minimal")")
        kelvane_times+=("$(startup_run "Kelvane v1.0" "$kelvane")")
    else
        kelvane_times+=("$(startup_run "Kelvane v1.0" "$kelvane")")
        minimal_times+=("$(startup_run "Minimal" "$minimal")")
    fi
done

read -r minimal_median minimal_min < <(median_and_min "${minimal_times[@]}")
read -r kelvane_median kelvane_min < <(median_and_min "${kelvane_times[@]}")
echo "load average: $(cut -d ' ' -f 1-3 /proc/loadavg)"
echo "minimal_window runs (ms): ${minimal_times[*]}"
echo "kelvane runs (ms):        ${kelvane_times[*]}"
awk -v mm="$minimal_median" -v mn="$minimal_min" -v km="$kelvane_median" -v kn="$kelvane_min" '
    BEGIN {
        printf "%-18s %10s %10s\n", "", "median", "min"
        printf "%-18s %7.2f ms %7.2f ms\n", "minimal_window", mm, mn
        printf "%-18s %7.2f ms %7.2f ms\n", "kelvane", km, kn
        ratio = km / mm
        printf "start-up of kelvane / empty Qt window, median to median: %.2f" \
               " (target: at most 1.50 - %s; min to min %.2f)\n",
               ratio, (ratio <= 1.5) ? "met" : "NOT met", kn / mn
    }'

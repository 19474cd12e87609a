# A private desktop for running the program as a user meets it: its own X
# server, window manager, session bus and accessibility bus, and its own home.
# Sourced by the screen-reader test and by scripts/orca-session.sh; the
# caller runs it in a process group of its own (setsid), so that whatever the
# buses start is ended with the group (see desktop_end_group).

# Starts the desktop in ROOT (an empty folder) and exports its environment.
desktop_start() {
    local root=$1
    export HOME=$root/home
    export XDG_CONFIG_HOME=$HOME/.config XDG_DATA_HOME=$HOME/.local/share
    export XDG_CACHE_HOME=$HOME/.cache XDG_RUNTIME_DIR=$root/run
    mkdir -p "$XDG_CONFIG_HOME" "$XDG_DATA_HOME" "$XDG_CACHE_HOME" "$XDG_RUNTIME_DIR"
    chmod 700 "$XDG_RUNTIME_DIR"
    unset SESSION_MANAGER DESKTOP_AUTOSTART_ID AT_SPI_BUS_ADDRESS WAYLAND_DISPLAY

    Xvfb -displayfd 5 -screen 0 1280x1024x24 -nolisten tcp -noreset \
        5>"$root/display" >"$root/xvfb.log" 2>&1 &
    DESKTOP_PIDS=($!)
    desktop_wait_for_file "$root/display" "the X server" || return 1
    export DISPLAY=:$(head -n 1 "$root/display")

    dbus-daemon --session --nofork --address="unix:path=$root/bus" --print-address=6 \
        6>"$root/bus-address" >"$root/dbus.log" 2>&1 &
    DESKTOP_PIDS+=($!)
    desktop_wait_for_file "$root/bus-address" "the session bus" || return 1
    export DBUS_SESSION_BUS_ADDRESS=$(head -n 1 "$root/bus-address")

    openbox --startup "touch $root/openbox-ready" >"$root/openbox.log" 2>&1 &
    DESKTOP_PIDS+=($!)
    desktop_wait_for_file "$root/openbox-ready" "the window manager" -e || return 1

    export QT_LINUX_ACCESSIBILITY_ALWAYS_ON=1 QT_QPA_PLATFORM=xcb
    export GSETTINGS_BACKEND=memory
}

# Copies PROGRAM alone into ROOT/program, where its temporary files go beside
# it, with ROOT/program/plans.cal: the sample calendar laid out as 2026 is. Its
# second line (0) leaves the leap rule to the clock's year, its third says
# 1 January is the fifth weekday (a Thursday), so 18 November is a Wednesday.
desktop_install_program() {
    local root=$1 program=$2 source_dir=$3
    mkdir -p "$root/program"
    cp "$program" "$root/program/kelvane"
    sed -e '2s/.*/ 0 /' -e '3s/.*/ 5 /' "$source_dir/tests/store/data/known_document.cal" \
        >"$root/program/plans.cal"
}

# Waits up to 20 s for FILE to be there with content (or at all, for "-e").
desktop_wait_for_file() {
    local file=$1 what=$2 test=${3:--s}
    for _ in $(seq 200); do
        test "$test" "$file" && return 0
        sleep 0.1
    done
    echo "private desktop: $what did not start" >&2
    return 1
}

# Ends what desktop_start started, the newest first.
desktop_stop() {
    local index
    for ((index = ${#DESKTOP_PIDS[@]} - 1; index >= 0; index--)); do
        kill "${DESKTOP_PIDS[index]}" 2>/dev/null || true
        wait "${DESKTOP_PIDS[index]}" 2>/dev/null || true
    done
    DESKTOP_PIDS=()
}

# The live (not zombie) processes of process group GROUP.
desktop_group_members() {
    ps -e -o pid=,pgid=,stat= | awk -v group="$1" '$2 == group && $3 !~ /^Z/ { print $1 }'
}

# Ends every process left in process group GROUP (the accessibility bus and
# registry the session bus started, a program that hung), politely first.
# Fails when one is still there after that. D-Bus starts its services as
# orphans, so the system's init reaps them once ended.
desktop_end_group() {
    local group=$1
    kill -TERM -- "-$group" 2>/dev/null || true
    for _ in $(seq 50); do
        [[ -z $(desktop_group_members "$group") ]] && return 0
        sleep 0.1
    done
    kill -KILL -- "-$group" 2>/dev/null || true
    sleep 0.5
    local left
    left=$(desktop_group_members "$group")
    if [[ -n $left ]]; then
        echo "private desktop: processes left behind: $left" >&2
        return 1
    fi
}

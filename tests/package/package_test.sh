#!/usr/bin/env bash
# Builds the Debian package from a build tree with CPack, checks its control
# fields and contents, checks that this system has what it depends on, then
# installs it into a private dpkg root (the system's own packages are never
# touched) and starts both programs from there.
#
#   bash tests/package/package_test.sh BUILD_DIR SOURCE_DIR VERSION
set -euo pipefail

build="$1"
source="$2"
version="$3"
. "$source/tests/package/common.sh"
# CTest names the CPack of the CMake that configured the build.
cpack="${KELVANE_CPACK:-cpack}"

work="$(mktemp -d "${TMPDIR:-/tmp}/kelvane-package-test.XXXXXX")"
cleanup() {
    # A run that found its folder read-only left it so.
    chmod -R u+w "$work" 2>/dev/null || true
    rm -rf "$work"
}
trap cleanup EXIT
trap 'exit 130' INT TERM

# ---- The package -------------------------------------------------------------

started=$SECONDS
if ! "$cpack" -G DEB --config "$build/CPackConfig.cmake" -B "$work/cpack" >"$work/cpack.log" 2>&1; then
    cat "$work/cpack.log" >&2
    fail "cpack did not make the package"
fi
echo "cpack took $((SECONDS - started)) s"
architecture="$(dpkg --print-architecture)"
deb="$work/cpack/kelvane_${version}_${architecture}.deb"
[[ -f "$deb" ]] || fail "no $(basename "$deb"); cpack made: $(ls "$work/cpack")"

dpkg-deb --info "$deb"
field() {
    dpkg-deb --field "$deb" "$1"
}
[[ "$(field Package)" == kelvane ]] || fail "Package: $(field Package)"
[[ "$(field Version)" == "$version" ]] || fail "Version: $(field Version)"
[[ "$(field Architecture)" == "$architecture" ]] || fail "Architecture: $(field Architecture)"
[[ "$(field Maintainer)" == *"<"*@*">" ]] || fail "Maintainer: $(field Maintainer)"
[[ -n "$(field Section)" ]] || fail "no Section"
[[ "$(field Description)" == "desktop calendar and day planner"$'\n'* ]] ||
    fail "Description: $(field Description)"

# Every library the programs link comes from dpkg-shlibdeps; the program also
# needs Qt's platform plugins at run time, which it loads itself.
depends="$(field Depends)"
for plugin in libqxcb.so libqoffscreen.so; do
    owner="$(dpkg -S "*/qt6/plugins/platforms/$plugin" 2>/dev/null |
        awk -F : 'NR == 1 { print $1 }' || true)"
    [[ -n "$owner" ]] || fail "no installed package ships $plugin"
    [[ ", $depends," == *", $owner "* || ", $depends," == *", $owner,"* ]] ||
        fail "Depends lacks $owner, which ships $plugin: $depends"
done

# Only the expected files, all under /usr/bin and /usr/share.
dpkg-deb --contents "$deb" >"$work/contents"
outside="$(awk '{ print $NF }' "$work/contents" | grep -Ev '^\./usr/((bin|share)(/.*)?)?$' || true)"
[[ -z "$outside" ]] || fail "the package holds paths outside /usr/bin and /usr/share: $outside"
packaged="$(grep -v '^d' "$work/contents" | awk '{ print $NF }' | LC_ALL=C sort)"
if ! diff <(expected_files ./usr .1.gz) <(echo "$packaged") >"$work/files.diff"; then
    echo "< expected, > packaged:" >&2
    cat "$work/files.diff" >&2
    fail "the package does not hold the expected files"
fi

# ---- What it depends on ------------------------------------------------------

# Every dependency is installed here in a version that satisfies it, as dpkg
# itself judges; the control file only has to exist.
if ! dpkg-checkbuilddeps -d "$depends" /dev/null; then
    fail "this system lacks what the package depends on"
fi
# And apt, asked to install the package, would install nothing else (nothing at
# all when this very package is installed already).
(cd "$work/cpack" && apt-get -s install "./$(basename "$deb")") >"$work/apt.log" 2>&1 || {
    cat "$work/apt.log" >&2
    fail "apt-get -s cannot install the package"
}
installs="$(awk '$1 == "Inst" { print $2 }' "$work/apt.log")"
[[ -z "$installs" || "$installs" == kelvane ]] ||
    fail "apt would install more than kelvane: $installs"

# ---- Installed into a private root -------------------------------------------

root="$work/root"
mkdir -p "$root/var/lib/dpkg/updates" "$root/var/lib/dpkg/info"
touch "$root/var/lib/dpkg/status"
# The private root's database knows none of the system's packages, hence
# --force-depends; the dependencies were checked above.
if ! PATH="$PATH:/usr/sbin:/sbin" dpkg --root="$root" --log="$work/dpkg.log" \
    --force-not-root --force-depends -i "$deb" >"$work/dpkg-i.log" 2>&1; then
    cat "$work/dpkg-i.log" >&2
    fail "dpkg did not install the package into the private root"
fi
status="$(dpkg-query --admindir="$root/var/lib/dpkg" -W -f='${Status}' kelvane)"
[[ "$status" == "install ok installed" ]] || fail "kelvane in the private root: $status"
for file in $(expected_files usr .1.gz); do
    [[ -f "$root/$file" ]] || fail "not installed: /$file"
done
zcat "$root/usr/share/man/man1/kelvane-cal.1.gz" | cmp - "$source/packaging/kelvane-cal.1" ||
    fail "the installed manual page is not the checked-in one"

# kelvane-cal answers --help with its usage.
status=0
"$root/usr/bin/kelvane-cal" --help >"$work/cal.out" 2>"$work/cal.err" || status=$?
if ((status != 0)); then
    cat "$work/cal.out" "$work/cal.err" >&2
    fail "kelvane-cal --help ended with status $status"
fi
[[ "$(head -c 18 "$work/cal.out")" == "usage: kelvane-cal" ]] || {
    cat "$work/cal.out" >&2
    fail "kelvane-cal --help printed no usage"
}

# Starts the installed kelvane under the offscreen platform in a fresh home,
# runtime folder and session, lets it run for 5 seconds and stops it with
# SIGTERM. It must still be running then, and must have printed nothing
# alarming. Any further arguments come before the program, to run it as
# another user.
run_kelvane() {
    local name="$1"
    shift
    local home="$work/$name/home" runtime="$work/$name/runtime" status=0
    env -i PATH=/usr/bin:/bin LANG=C.UTF-8 QT_QPA_PLATFORM=offscreen \
        HOME="$home" XDG_CONFIG_HOME="$home/.config" XDG_DATA_HOME="$home/.local/share" \
        XDG_CACHE_HOME="$home/.cache" XDG_STATE_HOME="$home/.local/state" \
        XDG_RUNTIME_DIR="$runtime" DBUS_SESSION_BUS_ADDRESS="unix:path=$work/no-session-bus" \
        timeout -k 5 5 "$@" "$root/usr/bin/kelvane" >"$work/$name/output" 2>&1 || status=$?
    if ((status != 124)); then
        cat "$work/$name/output" >&2
        fail "kelvane ($name) ended with status $status before it was stopped"
    fi
    if grep -Eiq 'error|warning|critical|fatal|fail|cannot|could not|unable|abort|segmentation|sanitizer' \
        "$work/$name/output"; then
        cat "$work/$name/output" >&2
        fail "kelvane ($name) printed something alarming"
    fi
}

# Makes the folders of a run; the runtime folder must be private.
make_run_folders() {
    mkdir -p "$work/$1/home" "$work/$1/runtime"
    chmod 700 "$work/$1/runtime"
}

temporary_files=("~tempAppoint.tmp" "~tmpDiaryCal")
recent_list="~tmpFileList"
user_folder=".local/share/Kelvane"

# Checks that a kelvane stopped by SIGTERM ended in order in folder $1: its
# recent-file list written there, its temporary files deleted.
check_ended_in_order() {
    [[ -f "$1/$recent_list" ]] || fail "no $recent_list in $1"
    for file in "${temporary_files[@]}"; do
        [[ ! -e "$1/$file" ]] || fail "$file left in $1"
    done
}

# Where its folder can be written, its files go beside it.
make_run_folders beside
run_kelvane beside
check_ended_in_order "$root/usr/bin"
rm "$root/usr/bin/$recent_list"
[[ ! -e "$work/beside/home/$user_folder" ]] || fail "kelvane made $user_folder with a writable folder"

# Where it cannot, as for an ordinary user with /usr/bin, they go to the user's
# data folder. Root writes anywhere, so root runs it as nobody.
make_run_folders read-only
run_as=()
if (($(id -u) == 0)); then
    if command -v setpriv >/dev/null && nobody="$(id -u nobody 2>/dev/null)"; then
        chmod 755 "$work"
        chown -R "$nobody" "$work/read-only"
        run_as=(setpriv --reuid="$nobody" --regid="$(id -g nobody)" --clear-groups)
        # The temporary folder may sit where nobody cannot reach it.
        if ! "${run_as[@]}" test -x "$root/usr/bin/kelvane"; then
            run_as=(skip)
        fi
    else
        run_as=(skip)
    fi
else
    chmod a-w "$root/usr/bin"
fi
if [[ "${run_as[*]}" == skip ]]; then
    echo "skipped the read-only run: root needs setpriv and a user 'nobody' who can reach $work"
else
    run_kelvane read-only "${run_as[@]}"
    check_ended_in_order "$work/read-only/home/$user_folder"
    [[ ! -e "$root/usr/bin/$recent_list" ]] || fail "$recent_list beside a read-only kelvane"
fi

echo "package $(basename "$deb") as expected; Depends: $depends"

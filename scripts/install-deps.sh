#!/usr/bin/env bash
# Installs the Debian packages Kelvane needs to build, test, package and
# benchmark, and any further packages named as arguments; packages already
# present are left alone.
set -euo pipefail

packages=(
    cmake ninja-build g++
    qt6-base-dev fonts-dejavu-core
    libgtest-dev libgmock-dev libbenchmark-dev
    libical-dev libcurl4-openssl-dev dpkg-dev
    desktop-file-utils shared-mime-info
    clang libclang-rt-dev lld
    radicale nginx
    calcurse khal python3-icalendar
    cyrus-common cyrus-caldav sasl2-bin curl
    xvfb openbox xdotool dbus-daemon at-spi2-core python3-pyatspi faketime
    "$@"
)

missing=()
for package in "${packages[@]}"; do
    if ! dpkg-query -W -f='${Status}' "$package" 2>/dev/null | grep -q "install ok installed"; then
        missing+=("$package")
    fi
done

if ((${#missing[@]} > 0)); then
    sudo=()
    if [[ "$(id -u)" -ne 0 ]]; then
        if ! command -v sudo >/dev/null; then
            echo "Missing packages: ${missing[*]}" >&2
            echo "Run this script as root, or install sudo, to install them." >&2
            exit 1
        fi
        sudo=(sudo)
    fi
    echo "Installing: ${missing[*]}"
    "${sudo[@]}" apt-get update
    "${sudo[@]}" env DEBIAN_FRONTEND=noninteractive apt-get install -y "${missing[@]}"
fi

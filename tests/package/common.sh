# Shared by the install and package tests: what an installation holds.

# The icon sizes of kProgramIconSizes (src/gui/ProgramIcon.h).
icon_sizes=(16 24 32 48 64 128 256)

# Prints, one a line and sorted, the files an installation under PREFIX holds
# (PREFIX without a trailing slash, such as "usr" or "."); MAN_SUFFIX is what
# follows the manual page's name (".1", or ".1.gz" in the package).
expected_files() {
    local prefix="$1" man_suffix="$2" size
    {
        echo "$prefix/bin/kelvane"
        echo "$prefix/bin/kelvane-cal"
        echo "$prefix/share/applications/kelvane.desktop"
        echo "$prefix/share/man/man1/kelvane-cal$man_suffix"
        echo "$prefix/share/mime/packages/kelvane.xml"
        for size in "${icon_sizes[@]}"; do
            echo "$prefix/share/icons/hicolor/${size}x${size}/apps/kelvane.png"
        done
    } | LC_ALL=C sort
}

# Stops the test with a message.
fail() {
    echo "FAILED: $*" >&2
    exit 1
}

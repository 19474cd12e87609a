#!/bin/sh
# Runs a test program in a mount namespace of its own, in which it may mount
# the small file systems it fills up (see TinyDisk.h) without touching the
# machine's. Root needs only the namespace; any other user gets root's rights
# inside a user namespace of its own as well. Where neither may be had (a
# locked-down container), the program runs as it is and its tests of a full
# disk skip themselves.
if [ "$(id -u)" -eq 0 ]; then
    own="--mount --propagation private"
else
    own="--user --map-root-user --mount --propagation private"
fi
# The options are words of their own.
# shellcheck disable=SC2086
if unshare $own true 2>/dev/null; then
    exec unshare $own -- "$@"
fi
exec "$@"

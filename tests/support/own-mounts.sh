#!/bin/sh
# Runs a test program in a mount namespace of its own, in which it may mount
# the small file systems it fills up (see TinyDisk.h) without touching the
# machine's. Root needs only the namespace; any other user gets root's rights
# inside a user namespace of its own as well.
if [ "$(id -u)" -eq 0 ]; then
    exec unshare --mount --propagation private -- "$@"
fi
exec unshare --user --map-root-user --mount --propagation private -- "$@"

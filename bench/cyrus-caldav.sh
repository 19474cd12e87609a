#!/bin/sh
# A throwaway Cyrus IMAP httpd (CalDAV) confined to one folder, for the
# publish benchmark. Needs Debian's cyrus-common, cyrus-caldav, sasl2-bin and
# curl (scripts/bench.sh installs them).
#
# Start:  cyrus-caldav.sh FOLDER PORT [USER [PASSWORD]]
#   FOLDER    directory for everything (created if missing).  Re-using a folder
#             of an earlier (stopped) run keeps its data.
#   PORT      free TCP port; the server listens on 127.0.0.1:PORT only
#   USER/PASSWORD  default alice / secret (HTTP Basic, checked against a
#             SASL sasldb2 file in FOLDER)
#   Prints the PID of the Cyrus master process as the last line of stdout,
#   exit status 0 once the calendar collection answers PROPFIND with 207.
#   Calendar collection:  http://127.0.0.1:PORT/dav/calendars/user/USER/Default/
#
# Stop:   cyrus-caldav.sh --stop FOLDER
#         (= kill -TERM "$(cat FOLDER/master.pid)"; master stops its children;
#          then rm -rf FOLDER to throw everything away)
#
# Run as root: master binds the port, then drops to user "cyrus" (cyrus_user
# in imapd.conf); FOLDER is chowned to cyrus:mail.  Run as another user: all
# processes run as that user.  Nothing outside FOLDER is written.
set -eu

CYRBIN=/usr/lib/cyrus/bin

stop_instance() {
    D=$(cd "$1" && pwd)
    [ -f "$D/master.pid" ] || { echo "no $D/master.pid (not running?)" >&2; return 1; }
    PID=$(cat "$D/master.pid")
    if kill -0 "$PID" 2>/dev/null &&
       grep -q "$D/imapd.conf" "/proc/$PID/cmdline" 2>/dev/null; then
        kill -TERM "$PID"
        i=0
        while kill -0 "$PID" 2>/dev/null; do
            i=$((i+1))
            if [ $i -gt 150 ]; then kill -KILL "$PID" 2>/dev/null || true; break; fi
            sleep 0.1
        done
    fi
    rm -f "$D/master.pid"
}

if [ "${1:-}" = "--stop" ]; then
    stop_instance "${2:?usage: $0 --stop FOLDER}"
    exit $?
fi

[ $# -ge 2 ] || { echo "usage: $0 FOLDER PORT [USER [PASSWORD]] | --stop FOLDER" >&2; exit 2; }
mkdir -p "$1"
D=$(cd "$1" && pwd)
PORT=$2
DAVUSER=${3:-alice}
DAVPASS=${4:-secret}

for b in master httpd lmtpd deliver ctl_cyrusdb; do
    [ -x "$CYRBIN/$b" ] || { echo "missing $CYRBIN/$b (apt-get install cyrus-common cyrus-caldav)" >&2; exit 1; }
done
command -v saslpasswd2 >/dev/null || { echo "missing saslpasswd2 (apt-get install sasl2-bin)" >&2; exit 1; }

if [ -f "$D/master.pid" ] && kill -0 "$(cat "$D/master.pid")" 2>/dev/null; then
    echo "an instance is already running in $D (pid $(cat "$D/master.pid"))" >&2; exit 1
fi
# Cyrus master does not fail when it cannot bind; it only logs to syslog.
# So refuse an occupied port up front (curl exit 7 = connection refused).
rc=0; curl -s -o /dev/null --max-time 2 "http://127.0.0.1:$PORT/" || rc=$?
if [ $rc -ne 7 ]; then echo "port $PORT on 127.0.0.1 is in use" >&2; exit 1; fi

if [ "$(id -u)" = 0 ]; then
    RUNUSER=cyrus
    RUNGROUP=$(id -gn cyrus)
    asuser() { setpriv --reuid="$RUNUSER" --regid="$RUNGROUP" --init-groups -- "$@"; }
else
    RUNUSER=$(id -un)
    RUNGROUP=$(id -gn)
    asuser() { "$@"; }
fi

mkdir -p "$D/conf/db" "$D/conf/socket" "$D/conf/msg" "$D/conf/log" \
         "$D/spool" "$D/lock" "$D/proc" "$D/socket" "$D/sieve"

cat > "$D/imapd.conf" <<EOF
# --- everything inside $D ---
configdirectory: $D/conf
partition-default: $D/spool
defaultpartition: default
proc_path: $D/proc
mboxname_lockpath: $D/lock
sievedir: $D/sieve
lmtpsocket: $D/socket/lmtp
idlesocket: $D/socket/idle
notifysocket: $D/socket/notify
cyrus_user: $RUNUSER
cyrus_group: $RUNGROUP
servername: localhost
syslog_prefix: cyrus-caldav-test
hashimapspool: true
unixhierarchysep: yes
altnamespace: no
umask: 077

# --- HTTP / CalDAV ---
httpmodules: caldav
# Basic auth over plain HTTP
allowplaintext: yes
caldav_realm: cyrus-caldav-test
dav_realm: cyrus-caldav-test
# auto-create calendars/user/USER/Default on the user's first authenticated request
caldav_create_default: yes
caldav_create_sched: yes
caldav_create_attach: no
# no iTIP scheduling side effects for ORGANIZER/ATTENDEE events
caldav_allowscheduling: off

# --- user provisioning: LMTP delivery auto-creates the INBOX ---
autocreate_quota: 0
autocreate_post: yes
lmtp_downcase_rcpt: yes

# --- authentication: SASL sasldb file inside the folder ---
sasl_pwcheck_method: auxprop
sasl_auxprop_plugin: sasldb
sasl_sasldb_path: $D/sasldb2
sasl_mech_list: PLAIN
sasl_auto_transition: no
EOF

cat > "$D/cyrus.conf" <<EOF
START {
  recover cmd="$CYRBIN/ctl_cyrusdb -C $D/imapd.conf -r"
}
SERVICES {
  http cmd="$CYRBIN/httpd -C $D/imapd.conf" listen="127.0.0.1:$PORT" prefork=1 maxchild=20
  # LMTP only on a unix socket in the folder (used once, to create the INBOX)
  lmtpunix cmd="$CYRBIN/lmtpd -C $D/imapd.conf" listen="$D/socket/lmtp" prefork=0 maxchild=2
}
EVENTS {
  checkpoint cmd="$CYRBIN/ctl_cyrusdb -C $D/imapd.conf -c" period=30
}
DAEMON {
}
EOF

# SASL password for USER; realm = servername ("localhost"), which is what
# Cyrus httpd passes to sasl_checkpass for Basic auth.
printf '%s\n' "$DAVPASS" | saslpasswd2 -p -c -f "$D/sasldb2" -u localhost "$DAVUSER"

if [ "$(id -u)" = 0 ]; then
    chown -R "$RUNUSER:$RUNGROUP" "$D"
fi
chmod 700 "$D"

rm -f "$D/master.pid"
# started as root: master binds the port, then setuid()s to cyrus_user itself
"$CYRBIN/master" -C "$D/imapd.conf" -M "$D/cyrus.conf" -p "$D/master.pid" -L "$D/master.log" -d

fail() {
    echo "$1 (see $D/master.log)" >&2
    [ -f "$D/master.pid" ] && stop_instance "$D"
    exit 1
}

# wait until master wrote its pid and our httpd answers
i=0
until [ -s "$D/master.pid" ] && curl -s -o /dev/null --max-time 2 "http://127.0.0.1:$PORT/"; do
    i=$((i+1)); [ $i -gt 300 ] && fail "cyrus httpd did not come up"
    sleep 0.05
done
MPID=$(cat "$D/master.pid")
kill -0 "$MPID" 2>/dev/null || fail "cyrus master exited"
# make sure the listener on PORT is ours (master keeps running if bind fails)
if command -v ss >/dev/null; then
    ss -ltnpH "sport = :$PORT" | grep -q "pid=$MPID," || fail "port $PORT is not served by master $MPID"
fi

# Provision the user.  CalDAV auto-provisioning (calendar home + "Default")
# needs the user's INBOX mailbox; httpd cannot create it ("could not
# autoprovision calendars for userid X: Invalid user" -> HTTP 500), and imapd
# is not part of cyrus-common.  So deliver one message over LMTP (unix socket
# in the folder); lmtpd auto-creates the INBOX (autocreate_post/_quota).
if [ ! -e "$D/.provisioned-$DAVUSER" ]; then
    printf 'From: setup@localhost\r\nTo: %s@localhost\r\nSubject: provision\r\n\r\nprovision\r\n' "$DAVUSER" |
        asuser "$CYRBIN/deliver" -C "$D/imapd.conf" "$DAVUSER" ||
        fail "LMTP delivery (INBOX creation) failed"
fi
# the first authenticated request creates calendars/user/USER/Default/
code=$(curl -s -o /dev/null --max-time 20 -w '%{http_code}' -u "$DAVUSER:$DAVPASS" \
       -X PROPFIND -H 'Depth: 0' "http://127.0.0.1:$PORT/dav/calendars/user/$DAVUSER/Default/") || true
[ "$code" = 207 ] || fail "calendar collection not available (HTTP $code)"
touch "$D/.provisioned-$DAVUSER"
echo "$MPID"

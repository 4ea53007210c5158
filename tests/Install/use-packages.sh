#!/usr/bin/env bash
# use-packages.sh: the part of check-packages.sh that runs on the copy of the machine, beside the packages. It installs them,
# builds against the library, has a desktop's tools start the program, and purges them again.
set -euo pipefail
cd "$(dirname "$0")"
export DEBIAN_FRONTEND=noninteractive LC_ALL=C.UTF-8
quietly() {
  "$@" >/tmp/quiet.log 2>&1 || { cat /tmp/quiet.log >&2; exit 1; }
}

quietly apt-get install -y --no-install-recommends ./*.deb
version=$(dpkg-query -W -f '${Version}' orvane)
orvane --version | grep -qF "$version"
orvane --help | grep -q '^Usage: orvane '
./build-consumer.sh c++ /usr '' /tmp/consumer

# A session program as its package would bring it; it tells how it was started.
session_program='/usr/lib/orvane/Orvane Connection.app/Contents/MacOS/Orvane Connection'
mkfifo -m 666 /tmp/started
printf '#!/bin/sh\necho "$*" >/tmp/started\n' >/usr/bin/fake-session
chmod +x /usr/bin/fake-session
ln -s /usr/bin/fake-session "$session_program"

# As an ordinary user, on a screen and a bus of its own.
mkdir -m 700 /tmp/home /tmp/home/runtime
printf 'full address:u:192.0.2.7\nusername:u:anna\n' >/tmp/home/Writer.ovl
chown -R 65534:65534 /tmp/home
as_user=(setpriv --reuid 65534 --regid 65534 --clear-groups env -i PATH="$PATH" HOME=/tmp/home XDG_RUNTIME_DIR=/tmp/home/runtime
  LC_ALL=C.UTF-8 timeout 120)
"${as_user[@]}" xvfb-run -a dbus-run-session -- bash -euo pipefail -c '
  call() { gdbus call --session --dest org.freedesktop.DBus --object-path /org/freedesktop/DBus --method "org.freedesktop.DBus.$@"; }

  # As from the menu: the service file, the program, and a window that the desktop knows by the entry.
  entry=/usr/share/applications/example.orvane.Connector.desktop
  gapplication launch example.orvane.Connector
  xdotool search --sync --onlyvisible --class "^$(sed -n s/^StartupWMClass=//p "$entry")\$" >/dev/null
  program=$(call GetConnectionUnixProcessID example.orvane.Connector | grep -o "[0-9]*,")
  [ "$(readlink "/proc/${program%,}/exe")" = /usr/lib/orvane/orvane ]

  # By a double click on a launch file: its type, the entry, the program, the session program.
  gio open /tmp/home/Writer.ovl
  [ "$(cat /tmp/started)" = "--ovl /tmp/home/Writer.ovl" ]

  orvane --quit
  timeout 30 tail --pid "${program%,}" -f /dev/null'

rm /usr/bin/fake-session "$session_program"
quietly apt-get purge -y orvane 'liborvane-sdk*'

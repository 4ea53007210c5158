#!/usr/bin/env bash
# check-desktop.sh PREFIX WORK: a desktop's own tools accept what is installed for them, and find by it what a launch file
# is, what opens it and the links, and how it looks.
set -euo pipefail
prefix=$1 work=$2 id=example.orvane.Connector type=application/x-orvane-launch
export LC_ALL=C.UTF-8 PATH=$prefix/bin:$PATH

rm -rf "$work"
mkdir -p "$work"
cp -r "$prefix/share" "$work/share"
export XDG_DATA_HOME=$work/share XDG_DATA_DIRS=/usr/share XDG_CONFIG_HOME=$work/config
cd "$work/share"

desktop-file-validate "applications/$id.desktop"
appstreamcli validate --no-net "metainfo/$id.metainfo.xml" >"$work/appstream.log" || { cat "$work/appstream.log" >&2; exit 1; }
update-mime-database mime
update-desktop-database applications

expect() {
  grep -qE "$2" <<<"$3" || { echo "$1: expected $2, but: $3" >&2; exit 1; }
}

# Whatever its bytes, and beside all other types of this machine.
printf 'full address:u:server.example\n' >"$work/plain.ovl"
printf '\211PNG\r\n\032\n' >"$work/ENCIPHERED.OVL"
for file in plain.ovl ENCIPHERED.OVL; do
  expect "the type of $file" "standard::content-type: $type\$" "$(gio info -a standard::content-type "$work/$file")"
  expect "the icon of $file" " application-x-orvane-launch," "$(gio info -a standard::icon "$work/$file")"
done
for opened in "$type" x-scheme-handler/orvane x-scheme-handler/helperorvane; do
  expect "what opens $opened" "^Default application .*: $id.desktop\$" "$(gio mime "$opened")"
done

for language in de es fr ja ko zh_CN zh_TW; do
  for key in GenericName Comment Keywords; do
    expect "the desktop entry" "^$key\[$language\]=." "$(cat "applications/$id.desktop")"
  done
  expect "the type's name" "<comment xml:lang=\"$language\">" "$(cat "mime/packages/$id.xml")"
done

for icon in "apps/$(sed -n 's/^Icon=//p' "applications/$id.desktop")" mimetypes/application-x-orvane-launch; do
  [ -s "icons/hicolor/scalable/$icon.svg" ]
  for size in 16 22 24 32 48 64 128 256; do
    expect "$icon" "PNG image data, $size x $size, 8-bit/color RGBA" "$(file "icons/hicolor/${size}x$size/$icon.png")"
  done
done
grep -qx "Name=$id" "dbus-1/services/$id.service"

#!/usr/bin/env bash
# Installs those Debian packages named in the given list files that are missing here. Needs root or sudo only if any is.
set -euo pipefail

mapfile -t wanted < <(grep -hvE '^\s*(#|$)' "$@")
missing=()
for package in "${wanted[@]}"; do
  dpkg-query -W -f '${Status}' "$package" 2>/dev/null | grep -q 'ok installed' || missing+=("$package")
done
[ ${#missing[@]} -gt 0 ] || exit 0

echo "Installing: ${missing[*]}"
as_root=()
if [ "$(id -u)" -ne 0 ]; then
  command -v sudo >/dev/null || { echo "These packages are missing and need root or sudo to install." >&2; exit 1; }
  as_root=(sudo)
fi
"${as_root[@]}" apt-get update -q
"${as_root[@]}" env DEBIAN_FRONTEND=noninteractive apt-get install -q -y --no-install-recommends "${missing[@]}"

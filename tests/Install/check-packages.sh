#!/usr/bin/env bash
# check-packages.sh: what cmake/build-packages.sh has built passes Debian's checker, can be had with nothing but Debian's own
# packages, and can be installed, used as a desktop would, and purged without a trace. That happens on a copy of this machine
# that is gone afterwards, without a network. Needs root or sudo.
set -euo pipefail
cd "$(dirname "$0")/../.."
[ "$(id -u)" -eq 0 ] || exec sudo "$0"
packages=(build/packages/*.deb)

lintian --allow-root --fail-on error,warning "${packages[@]}"

work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
[ -n "$(apt-cache madison libqt6svg6)" ] || apt-get update -qq
: >"$work/nothing"
apt-get install -qq --simulate --no-install-recommends -o Dir::State::status="$work/nothing" "${packages[@]/#/./}" >/dev/null

# shellcheck disable=SC2016 # expanded inside
unshare --mount --net --pid --fork --kill-child bash -euc '
  work=$1 root=$1/root
  shift
  mount -t tmpfs none "$work"
  mkdir "$work/changes" "$work/scratch" "$root"
  mount -t overlay none -o "lowerdir=/,upperdir=$work/changes,workdir=$work/scratch" "$root"
  mount -t tmpfs none "$root/tmp"
  mount -t proc none "$root/proc"
  mount --rbind /dev "$root/dev"
  mkdir "$root/tmp/packages"
  cp -r tests/Install/. "$@" "$root/tmp/packages"
  chroot "$root" /tmp/packages/use-packages.sh
  # Besides the logs, nothing that was there before or was made in between tells of the packages.
  find "$work/changes" -iname "*orvane*" ! -path "*/var/log/*" ! -path "*/var/cache/*" >"$work/left"
  grep -rli orvane "$work/changes/usr" "$work/changes/etc" "$work/changes/var/lib" >>"$work/left" || true
  sed -i "/status-old$/d" "$work/left"
  if [ -s "$work/left" ]; then
    echo "Left behind:" >&2
    cat "$work/left" >&2
    exit 1
  fi' check "$work" "${packages[@]}"

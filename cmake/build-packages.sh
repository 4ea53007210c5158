#!/usr/bin/env bash
# Builds the Debian packages into build/packages: orvane, liborvane-sdk0 and liborvane-sdk-dev. The same tree gives the same
# bytes.
set -euo pipefail
cd "$(dirname "$0")/.."

cmake/build-preset.sh release "$@" --target orvane orvane_sdk orvane_sdk_shared package-files
rm -rf build/packages
SOURCE_DATE_EPOCH=$(date -d "$(sed -n 's/^ -- .*>  //p' data/package/changelog)" +%s)
export SOURCE_DATE_EPOCH
umask 022
if ! cpack --config build/release/CPackConfig.cmake -B "$PWD/build/packages" >build/release/cpack.log 2>&1; then
  cat build/release/cpack.log >&2
  exit 1
fi
rm -rf build/packages/_CPack_Packages
ls build/packages/*.deb

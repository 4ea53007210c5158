#!/usr/bin/env bash
# build-consumer.sh CXX PREFIX SANITIZERS WORK: builds the five-line program against the installed tree with CMake (static
# and shared) and with pkg-config, and runs it.
set -euo pipefail
cxx=$1 prefix=$2 sanitizers=$3 work=$4
source_dir=$(cd "$(dirname "$0")/consumer" && pwd)
expected=https://broker.example:443

rm -rf "$work"
flags=${sanitizers:+-fsanitize=$sanitizers}
cmake -S "$source_dir" -B "$work" -DCMAKE_CXX_COMPILER="$cxx" -DCMAKE_PREFIX_PATH="$prefix" -DCMAKE_CXX_FLAGS="$flags" >/dev/null
cmake --build "$work" >/dev/null
for program in static shared; do [ "$("$work/consumer_$program")" = "$expected" ]; done

pkgconfig=$(dirname "$(find "$prefix" -name orvane_sdk.pc)")
# shellcheck disable=SC2046 # a list of flags
"$cxx" -std=c++20 $flags "$source_dir/main.cpp" -o "$work/consumer_pkgconfig" \
  $(PKG_CONFIG_PATH=$pkgconfig pkg-config --define-variable=prefix="$prefix" --cflags --libs orvane_sdk) -Wl,-rpath,"$(dirname "$pkgconfig")"
[ "$("$work/consumer_pkgconfig")" = "$expected" ]

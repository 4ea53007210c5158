#!/usr/bin/env bash
# build-preset.sh PRESET [cmake option ...] [--target TARGET ...]: configures and builds one preset, or some of its targets,
# with ccache where it is installed. Prints nothing but warnings and errors.
set -euo pipefail
cd "$(dirname "$0")/.."

preset=$1
shift
options=()
while [ $# -gt 0 ] && [ "$1" != --target ]; do
  options+=("$1")
  shift
done

if command -v ccache >/dev/null; then
  # Precompiled headers carry no time stamps worth checking.
  export CCACHE_SLOPPINESS=pch_defines,time_macros
  # One clone's objects serve another.
  export CCACHE_BASEDIR=$PWD CCACHE_NOHASHDIR=true
  options+=(-DCMAKE_C_COMPILER_LAUNCHER=ccache -DCMAKE_CXX_COMPILER_LAUNCHER=ccache)
fi
cmake --preset "$preset" "${options[@]}" >/dev/null
cmake --build --preset "$preset" "$@" -- --quiet

#!/usr/bin/env bash
# build-preset.sh PRESET [cmake option ...]: configures and builds one preset, with ccache where it is installed.
set -euo pipefail
cd "$(dirname "$0")/.."

preset=$1
shift
launcher=()
if command -v ccache >/dev/null; then
  # Precompiled headers carry no time stamps worth checking.
  export CCACHE_SLOPPINESS=pch_defines,time_macros
  launcher=(-DCMAKE_C_COMPILER_LAUNCHER=ccache -DCMAKE_CXX_COMPILER_LAUNCHER=ccache)
fi
cmake --preset "$preset" "${launcher[@]}" "$@" >/dev/null
cmake --build --preset "$preset"

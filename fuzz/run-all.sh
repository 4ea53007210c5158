#!/usr/bin/env bash
# run-all.sh SECONDS [TARGET ...]: runs each fuzz target (or those named) so long, starting from its seeds. What it finds on
# the way stays in the build folder; a crash leaves its input there and ends the run.
set -euo pipefail
cd "$(dirname "$0")/.."
seconds=$1
shift
targets=("$@")
[ ${#targets[@]} -gt 0 ] || mapfile -t targets < <(cd fuzz && ls ./*.cpp | xargs -n1 basename -s .cpp)

for target in "${targets[@]}"; do
  found=build/fuzz/found/$target
  mkdir -p "$found"
  options=(-max_total_time="$seconds" -timeout=10 -rss_limit_mb=4096 -artifact_prefix="$found/" -print_final_stats=0)
  [ ! -f "fuzz/$target.dict" ] || options+=(-dict="fuzz/$target.dict")
  echo "fuzz: $target for $seconds s"
  "build/fuzz/fuzz/fuzz_$target" "${options[@]}" "$found" "fuzz/corpus/$target" 2>&1 | tail -n 3
done

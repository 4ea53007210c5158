#!/usr/bin/env bash
# compile-headers.sh CXX CC PREFIX: each installed header must compile alone, and the C layer's as C too.
set -euo pipefail
cxx=$1 cc=$2 include=$3/include/orvane

count=0
while IFS= read -r header; do
  echo "#include \"$header\"" | "$cxx" -std=c++20 -Wall -Wextra -Wpedantic -Werror -I"$include" -fsyntax-only -x c++ -
  count=$((count + 1))
done < <(cd "$include" && find . -name '*.h' | sort)
echo '#include "Files/ovsettings.h"' | "$cc" -std=c11 -Wall -Wextra -Wpedantic -Werror -I"$include" -fsyntax-only -x c -

echo "$count headers"
[ "$count" -gt 10 ]

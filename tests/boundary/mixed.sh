#!/usr/bin/env bash
# mixed.sh CXX SCRATCH STANDIN LIBRARY...: a program compiled for the other OpenPegasus than the
# LIBRARIES were built with must not link with them, although it reads events through pointers alone,
# and the linker must say which name is missing. STANDIN is the stand-in's library, empty when they
# were built with the real one.
set -euo pipefail
cxx=$1 scratch=$2 standin=$3
shift 3
root=$(cd "$(dirname "$0")/../.." && pwd)
rm -rf "$scratch"
mkdir -p "$scratch"

other=$root/platform/pegasus/include
missing='Pegasus::MPUEvent::create_Quarn_Event[abi:pegasus_standin]() const'
if [ -n "$standin" ]; then
  # Without their tag, its names are those of the real one.
  cp -r "$other" "$scratch/real"
  other=$scratch/real
  sed -i 's/ __attribute__((abi_tag(.*)))$//' "$other/Pegasus/Common/Linkage.h"
  missing=${missing/\[*\]/}
  if nm -D --defined-only "$standin" | grep 7Pegasus | grep -v B15pegasus_standin; then
    echo "$standin: names without the tag"
    exit 1
  fi
fi

for source in "$root"/tests/consumer/*.cpp; do
  "$cxx" -std=c++11 -c "$source" -o "$scratch/$(basename "$source").o" -I"$root/include" \
    -I"$other" -I"$root/platform/cmap/include"
done
if LC_ALL=C "$cxx" "$scratch"/*.o "$@" -o "$scratch/agent" 2>"$scratch/errors"; then
  echo 'it links'
  exit 1
fi
grep -qF "$missing" "$scratch/errors" || {
  cat "$scratch/errors"
  echo "no word of $missing"
  exit 1
}

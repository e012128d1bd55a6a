#!/usr/bin/env bash
# no_early_work.sh NM LIBRARY: no source of the library may have work to do before main. (The file's
# symbol table is read: it must not be stripped.)
set -euo pipefail
symbols=$("$1" --defined-only --format=posix "$2" | cut -d ' ' -f 1)
grep -q '^_ZN8mpuevent' <<<"$symbols" || {
  echo "$2 is stripped: nothing can be said of it"
  exit 1
}
# <iostream> brings an initialiser of its own; Trace.cpp alone includes it.
early=$(grep '^_GLOBAL__sub_I_' <<<"$symbols" | grep -vx '_GLOBAL__sub_I_Trace.cpp' || true)
[ -z "$early" ] || {
  echo "Work before main: $early"
  exit 1
}

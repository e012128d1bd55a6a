#!/usr/bin/env bash
# symbols.sh NM LIBRARY LIST: the names that the library exports must be those of the list and those
# of the modules' classes, no more and no fewer. The tag of the names that the stand-in of OpenPegasus
# reaches counts for nothing: the list serves either.
#
#   symbols.sh NM LIBRARY >LIST    writes the list
set -euo pipefail
nm=$1 library=$2
modules=$(dirname "$0")/../../src/modules/Modules.def
exported() {
  "$nm" -D --defined-only --format=posix "$library" | cut -d ' ' -f 1 |
    sed 's/B15pegasus_standin//g' | LC_ALL=C sort -u
}
# Of each class its constructor, its destructor and its type.
classes() {
  sed -nE 's/^(MODULE|HEX)\([0-9]+, "[^"]*", ([A-Z0-9_]+)[,)].*/\2_Event/p' "$modules" |
    while read -r class; do
      name=${#class}$class
      printf '_ZN7Pegasus%s\n' "$name"{C1,C2}EPNS_13EmpEvLogMsg_sEi "$name"{D0,D1,D2}Ev
      printf "_ZT%sN7Pegasus${name}E\n" I S V
    done
}

if [ $# -eq 2 ]; then
  LC_ALL=C comm -23 <(exported) <(classes | LC_ALL=C sort)
  exit
fi
diff --unified <(cat "$3" <(classes) | LC_ALL=C sort) <(exported) || {
  echo "The exported names differ (- missing, + new). If that is meant: $0 $nm $library >$3"
  exit 1
}

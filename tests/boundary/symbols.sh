#!/usr/bin/env bash
# symbols.sh NM LIBRARY LIST: the names that the library exports must be those of the list, no more
# and no fewer. The tag of the names that the stand-in of OpenPegasus reaches counts for nothing: the
# list serves either.
#
#   symbols.sh NM LIBRARY >LIST    writes the list
set -euo pipefail
nm=$1 library=$2
exported() {
  "$nm" -D --defined-only --format=posix "$library" | cut -d ' ' -f 1 |
    sed 's/B15pegasus_standin//g' | LC_ALL=C sort -u
}

if [ $# -eq 2 ]; then
  exported
  exit
fi
diff --unified "$3" <(exported) || {
  echo "The exported names differ (- missing, + new). If that is meant: $0 $nm $library >$3"
  exit 1
}

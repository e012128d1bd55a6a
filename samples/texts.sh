#!/usr/bin/env bash
# Holds what the tool makes of the sample records against the texts in text/: of each event what its
# module decides, without what the log adds to it, and what is left of it when its record is cut.
#
#   texts.sh module MADE NAME TOOL...   text/NAME.txt is what MADE/NAME.cmap decodes to
#   texts.sh log TOOL...                each event of array.cmap stands in one of the texts
#   texts.sh update MADE TOOL...        writes the texts anew
set -euo pipefail
samples=$(cd "$(dirname "$0")" && pwd)

# decoded FILE: the tool's blocks without the lines that differ from log to log.
decoded() {
  "${tool[@]}" decode "$1" | grep -vE \
    '^(Index|Offset|(Enclosure|Controller) serial|Controller slot|Log instance|Sequence id|Timestamp):'
}

# module MADE NAME: the text of a module, each event with its line of cuts.
module() {
  decoded "$1/$2.cmap" | awk -v cuts="$1/$2.cuts" '
    function cut() { getline line < cuts; print line }
    /^$/ { cut() }
    { print }
    END { cut() }'
}

case $1 in
  module)
    made=$2 name=$3 tool=("${@:4}")
    module "$made" "$name" | diff -u "$samples/text/$name.txt" - || {
      echo "samples/text/$name.txt differs (- expected, + decoded). If that is meant:" \
        "script/build release update-golden"
      exit 1
    }
    ;;
  log)
    tool=("${@:2}")
    decoded "$samples/array.cmap" | awk -v RS= '
      FILENAME != "-" { sub(/\nElements at cuts:.*/, ""); known[$0] = 1; next }
      { ++events }
      !($0 in known) { print "In no text:\n" $0 "\n"; wrong = 1 }
      END { exit wrong || events == 0 }' "$samples"/text/*.txt - || {
      echo "If a sample changed: script/build release update-sample-log"
      exit 1
    }
    ;;
  update)
    made=$2 tool=("${@:3}")
    mkdir -p "$samples/text"
    for log in "$made"/*.cmap; do
      name=$(basename "$log" .cmap)
      [ "$name" = array ] || module "$made" "$name" >"$samples/text/$name.txt"
    done
    ;;
esac

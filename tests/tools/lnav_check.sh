#!/usr/bin/env bash
# lnav_check.sh MPUEVENT SAMPLE: lnav, without a terminal, knows the JSON lines of the sample by the
# format file: levels, times, operation ids (of what it shows alone), texts, with and without an epoch.
set -euo pipefail
tool=$1 sample=$2
format=$(cd "$(dirname "$0")/../../tools/lnav" && pwd)/mpuevent.lnav.json
HOME=$(mktemp -d)
trap 'rm -rf "$HOME"' EXIT
export HOME TZ=UTC
unset XDG_CONFIG_HOME
mkdir -p "$HOME/.lnav/formats/mpuevent"
cp "$format" "$HOME/.lnav/formats/mpuevent/"

# ask LOG QUERY: lnav's answer as CSV without the line of names.
ask() { timeout 60 lnav -n -c ";$2" -c ':write-csv-to -' "$1" </dev/null | tail -n +2; }
same() { [ "$2" = "$3" ] || { echo "lnav: $1: '$2', not '$3'" >&2; exit 1; }; }
count() { "$tool" decode --count -t "$1" "$sample" | cut -d ' ' -f 1; }

# What has no type of its own is information to lnav.
levels=$(printf '%s\n' "$(count error),error" "$(count informational,other),info" "$(count warning),warning" | sort)
for epoch in '' 2005-01-01; do
  log=$HOME/events.jsonl table=mpuevent_log first=2006-11-13T12:45:51
  [ -n "$epoch" ] || table=mpuevent_undated_log
  "$tool" decode ${epoch:+--epoch "$epoch"} -o jsonl "$sample" >"$log"
  [ -z "$epoch" ] || first=$(sed -n '1s/.*"time":"\([^"]*\)Z".*/\1/p' "$log")
  same levels "$(ask "$log" "select count(*), log_level from $table group by log_level" | sort)" "$levels"
  same 'the first event' \
    "$(ask "$log" "select log_time, log_opid, sequence_id, source, log_body from $table limit 1")" \
    "${first/T/ }.000,48211,48211,MIP,MIP8P Unexpected Message Type"
  same 'operation ids' "$(ask "$log" "select count(*) from $table where log_opid || '' = sequence_id || ''")" "$(wc -l <"$log")"
  same 'an element' \
    "$(ask "$log" "select json_extract(fields, '\$[0].key') from $table where source = 'ICS' limit 1")" \
    "$("$tool" decode --source ics --head 1 -o jsonl "$sample" | sed 's/.*"fields":\[{"key":"\([^"]*\)".*/\1/')"
  shown=$(timeout 60 lnav -n "$log" </dev/null | sed -n 2p)
  [[ $shown == "${first%T*}"*'Error '*'Cache 1 '*'Bugcheck 13: Unexpected interrupt' ]] || same 'a line' "$shown" '...'
done
echo "lnav: $(ask "$log" 'select count(*) from mpuevent_log') events"

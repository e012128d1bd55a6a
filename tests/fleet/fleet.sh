#!/usr/bin/env bash
# What the road promises, with real servers on this machine: three nodes of NATS with a stream of
# three replicas, a sender that follows a log, two workers, PostgreSQL. While the log is written
# each of them is killed or restarted, in the end all nodes at once; then every record is in the
# store exactly once. After that ten senders send pulls of one log that overlap.
#
#   fleet.sh TOOL SAMPLE RECORDS SECONDS    SECONDS is how long the log is written for
set -euo pipefail
tool=$1 sample=$2 records=$3 seconds=$4
here=$(cd "$(dirname "$0")" && pwd)
. "$here/servers.sh"
declare -a nats_pid=()
declare -a worker_pid=()
sender_pid= writer_pid=
work=$(mktemp -d)
chmod 755 "$work"
log=$work/fleet.log
started=$SECONDS
finish() {
  local rc=$?
  for pid in $writer_pid $sender_pid "${worker_pid[@]}"; do kill -9 "$pid" 2>/dev/null || true; done
  stop_servers
  [ "$rc" = 0 ] || { tail -n 5 "$work"/*.err "$work"/nats-*.log "$work/postgres/log" >&2 || true; }
  [ -n "${KEEP_FLEET:-}" ] || rm -rf "$work"
  exit "$rc"
} 2>/dev/null
trap finish EXIT
say() { printf 'fleet: %3d s: %s\n' $((SECONDS - started)) "$*"; }
fail() { echo "fleet: $*" >&2; exit 1; }

start_sender() {
  "$tool" send --to "$servers" --follow --cursor-file "$work/cursor" "$log" \
    >>"$work/send.out" 2>>"$work/send.err" &
  sender_pid=$!
}
start_worker() { # 1 or 2
  "$tool" work --from "$servers" --into "$database" >>"$work/work-$1.out" 2>>"$work/work-$1.err" &
  worker_pid[$1]=$!
}
kill_hard() { kill -9 "$1" && { wait "$1" || true; } 2>/dev/null; }
state() { "$tool" stream --to "$servers" 2>/dev/null; }
leader() { state | sed -n 's/.*leader node-\([123]\).*/\1/p'; }
stored() { ask 'SELECT count(*) FROM events'; }
# As the processes' own words for it: all is acknowledged, and nothing waits for a worker.
is_worked() { state | grep -q 'waiting for workers 0, not acknowledged 0'; }
is_led() { [ -n "$(leader)" ]; }

start_nats
start_postgres
wait_until 60 "$tool" stream --create --to "$servers"
# Both workers could make the tables.
"$tool" store "$database" "$sample" >/dev/null && ask 'DELETE FROM events' >/dev/null
python3 "$here/write_log.py" "$sample" "$log" 8 "$records" "$seconds" &
writer_pid=$!
start_worker 1
start_worker 2
start_sender
step=$((seconds / 6))

sleep $step
node=$(leader)
say "$(stored) stored; kill -9 of node $node, which leads the stream"
kill_node "$node"
sleep $step
start_node "$node"
say "$(stored) stored; node $node is back; kill -9 of a worker"
kill_hard "${worker_pid[1]}"
start_worker 1
sleep $step
say "$(stored) stored; kill -9 of the sender"
kill_hard "$sender_pid"
start_sender
sleep $step
say "$(stored) stored; PostgreSQL is restarted as if it had crashed"
postgres_now restart
sleep $step
say "$(stored) stored; kill -9 of all three nodes at once"
kill -9 "${nats_pid[@]}"
for node in 1 2 3; do
  { wait "${nats_pid[$node]}" || true; } 2>/dev/null
  start_node "$node"
done
wait_until 60 "$tool" stream --create --to "$servers"
wait "$writer_pid"
say "the log is written, $(wc -c <"$log") bytes"

wait_until 120 is_led
sleep 3 # for the sender to look for more
kill -TERM "$sender_pid"
wait "$sender_pid" || fail "the sender did not end well"
wait_until 180 is_worked
say "$(stored) stored; $("$tool" audit --no-gaps "$database" "$log" | tail -1)"
# Nodes that died all at once may have lost what they had acknowledged.
for round in 1 2 3; do
  "$tool" audit --no-gaps -o raw "$database" "$log" >"$work/missing.log" && break
  say "sending again what is missing, $("$tool" decode --count "$work/missing.log") records"
  "$tool" send --again --to "$servers" "$work/missing.log"
  wait_until 60 is_worked
done
"$tool" audit "$database" "$log" || fail "audit finds that something is missing"
distinct="SELECT count(*), count(DISTINCT (enclosure_serial, controller_serial, log_instance, sequence_id)) FROM events"
[ "$(ask "$distinct")" = "$records|$records" ] || fail "$records records became $(ask "$distinct")"
say "$records records, each is stored once"

say "ten senders with pulls of one log that overlap"
for pull in 0 1 2 3 4 5 6 7 8 9; do
  python3 "$here/write_log.py" "$sample" "$work/pull-$pull.log" 1 $((records / 20)) 0 $((1000000 + pull * records / 40))
done
senders=()
for pull in 0 1 2 3 4 5 6 7 8 9; do
  "$tool" send --to "$servers" "$work/pull-$pull.log" >>"$work/pulls.out" &
  senders+=($!)
done
for sender in "${senders[@]}"; do wait "$sender" || fail "a sender failed"; done
wait_until 60 is_worked
cat "$work/pulls.out"
"$tool" audit --no-gaps "$database" "$work"/pull-*.log
pulled=$((records / 20 + 9 * (records / 40)))
[ "$(stored)" = $((records + pulled)) ] || fail "$pulled records became $(($(stored) - records))"
say "$pulled records of $((10 * (records / 20))) that were sent, each is stored once"

stop_workers() {
  kill -TERM "${worker_pid[@]}"
  for pid in "${worker_pid[@]}"; do wait "$pid" || fail "a worker did not end well"; done
  worker_pid=()
}
stop_workers
say "what was acknowledged is lost, and nobody has worked it: all nodes die, and their disks"
lost=$((records / 40))
python3 "$here/write_log.py" "$sample" "$work/lost.log" 1 "$lost" 0 2000000
"$tool" send --to "$servers" "$work/lost.log"
kill -9 "${nats_pid[@]}"
for node in 1 2 3; do { wait "${nats_pid[$node]}" || true; } 2>/dev/null; done
rm -r "$work"/nats-?
for node in 1 2 3; do start_node "$node"; done
start_worker 1
start_worker 2
wait_until 60 "$tool" stream --create --to "$servers"
rc=0
"$tool" audit --no-gaps "$database" "$work/lost.log" >"$work/audit.out" || rc=$?
tail -n 1 "$work/audit.out"
[ $rc = 1 ] || fail "audit does not see what was lost: exit code $rc"
{ "$tool" audit --no-gaps -o raw "$database" "$work/lost.log" || true; } | "$tool" send --again --to "$servers"
wait_until 60 "$tool" audit --no-gaps "$database" "$work/lost.log"
[ "$(stored)" = $((records + pulled + lost)) ] || fail "$(stored) records are stored"
say "$lost records are lost, found, sent again, and each is stored once"
stop_workers
cat "$work"/work-?.out

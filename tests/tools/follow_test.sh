#!/usr/bin/env bash
# follow_test.sh MPUEVENT...: a log is written in pieces and renamed away while the tool follows it, is
# killed again and again, and goes on from its cursor; then it is copied and truncated instead.
set -u
tool=("${@:1:$#-1}" "$(realpath "${!#}")")
here=$(mktemp -d)
trap 'rm -rf "$here"' EXIT
cd "$here" || exit 1
last=60
failures=0
fail() {
  printf 'FAILED: %s\n' "$*"
  failures=$((failures + 1))
}

zeros() { head -c "$1" /dev/zero; }
# record SEQUENCE_ID: 157 bytes.
record() {
  printf 'ENC7' && zeros 60 && printf 'CTL1' && zeros 66
  printf '%b' "\0\3\0\0$(printf '\\x%02x\\x%02x' $(($1 / 256)) $(($1 % 256)))"
  printf '\0\0\0\7\0\5\15\3\4\6\2\1hello'
}
write_log() {
  local i
  for ((i = 0; i < last; ++i)); do
    record "$i" >piece
    head -c $((RANDOM % 157)) piece >part
    cat part >>log
    [ $((i % 4)) = 0 ] && sleep 0.05
    tail -c +$(($(stat -c %s part) + 1)) piece >>log
    [ $((RANDOM % 8)) != 0 ] || mv log "log.$i"
  done
}
options=(decode -o csv --no-header --fields sequence_id,record_length --cursor-file place)
follow() { "${tool[@]}" "${options[@]}" --follow log >>out 2>>err & }
# arrived IDS...: each came, and nothing but whole lines.
arrived() { [ "$(sort -n -u out)" = "$(printf '%d,157\r\n' "$@")" ]; }

write_log &
writer=$!
while kill -0 $writer 2>/dev/null; do
  follow
  sleep 0.$((RANDOM % 7 + 2))
  kill -9 $!
  wait $! 2>/dev/null
done
: >>log  # it may just have been renamed
follow
# come IDS...: they do, within a while.
come() {
  local i
  for ((i = 0; i < 600; ++i)); do
    arrived "$@" && return
    sleep 0.1
  done
  fail "$(sort -n -u out | wc -l) of $# events: $(cat err)"
}
come $(seq 0 $((last - 1)))
[ "$(wc -l <out)" -lt $((2 * last)) ] || fail "$(wc -l <out) lines: the place was not kept"
grep -v 'is not there yet, waiting' err && fail 'messages'
# What is written just before it is copied and truncated is in the copy alone, often twice while nobody
# looks.
for i in 1 2 3 4 5 6; do
  [ $((RANDOM % 2)) = 0 ] || { kill -9 $! && wait $! 2>/dev/null; }
  for id in $last $((last + 1)) $((last + 2)); do
    record "$id" >>log
    [ $((RANDOM % 2)) = 0 ] || { cp log "log.10$i.$id" && : >log; }
  done
  last=$((last + 3))
  kill -0 $! 2>/dev/null || follow
  [ $((RANDOM % 2)) = 0 ] || come $(seq 0 $((last - 1)))
done
come $(seq 0 $((last - 1)))
sleep 1  # it may have begun just now
kill -TERM $!
wait $!
code=$?
[ $code -le 1 ] || fail "stopped: exit code $code"

# Without --follow it goes on as well, also in what was rotated twice meanwhile.
: >out
for i in 200 201 202; do
  [ $i = 200 ] || mv log "log.$i"
  record $i >>log
done
"${tool[@]}" "${options[@]}" log >>out
sed -i '/^20[012],/!d' out
arrived 200 201 202 || fail "went on: $(cat out)"
"${tool[@]}" "${options[@]}" log >out
[ $? = 1 ] || fail 'nothing is new'
rm log*
record 9 >log
"${tool[@]}" "${options[@]}" log >out 2>err && arrived 9 || fail "another log: $(cat out)"
grep -q 'sequence id 202, is neither there nor in a log rotated away' err || fail "$(cat err)"
[ "$failures" = 0 ]

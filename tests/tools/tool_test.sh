#!/usr/bin/env bash
# tool_test.sh MPUEVENT...: runs the tool, given as a command of one or more words, and checks exit
# codes, what goes to which stream, and whole lines of output.
set -u
tool=("${@:1:$#-1}" "$(realpath "${!#}")")
samples=$(realpath "$(dirname "$0")/../../samples")
here=$(mktemp -d)
trap 'rm -rf "$here"' EXIT
cd "$here" || exit 1
failures=0

fail() {
  printf 'FAILED: %s\n' "$*"
  failures=$((failures + 1))
}

# expect CODE ARGUMENT...: runs the tool, output in ./out and messages in ./err.
expect() {
  local code=$1 got
  shift
  "${tool[@]}" "$@" >out 2>err
  got=$?
  [ "$got" = "$code" ] || fail "exit code $got, not $code: $*: $(cat err)"
}
same() { [ "$2" = "$3" ] || fail "$1: got '$2', not '$3'"; }
lines() { wc -l <"$1" | tr -d ' '; }

u16() { printf '%b' "$(printf '\\x%02x\\x%02x' $(($1 / 256)) $(($1 % 256)))"; }
zeros() { head -c "$1" /dev/zero; }
# record SEQUENCE_ID: 157 bytes of source 13 with the payload "hello".
record() {
  printf 'ENC7' && zeros 60 && printf 'CTL\377' && zeros 60
  u16 0 && u16 2 && u16 0 && u16 3 && u16 0 && u16 "$1" && u16 258 && u16 772
  u16 5 && printf '\015\003\004\006' && u16 513 && printf hello
}
message() { zeros 10 && u16 221 && zeros 52 && record "$1"; }
{ message 1 && message 2; } >log
{ record 1 && record 2; } >records
{ message 1 && message 2 | head -c 220; } >"$here"/truncated
{ zeros 10 && u16 221 && zeros 52 && record 1 | sed 's/\x0d\x03\x04\x06/\x20\x03\x04\x06/'; } >odd
{ zeros 144 && u16 65535 && zeros 65541; } >long
: >empty
mkdir directory

second='"decoder":"OB0_Event","enclosure_serial":"ENC7","controller_serial":"CTLÿ",'
second+='"controller_slot":2,"log_instance":3,"sequence_id":2,"timestamp":16909060,"source_code":13,'
second+='"source":"OB0","category_code":4,"category":"Device","event_type_code":3,'
second+='"event_type":"Error","event_code":513,"event_id_version":6,"event_id":"513",'
second+='"summary":"Unhandled Event by OB0","body":"<Hex>68656C6C6F</Hex>",'
second+='"fields":[{"key":"Hex","value":"68656C6C6F"}],"raw_event_type":3,"record_length":157,'
second+='"struct_length":5,"payload":null,"file":'

# Usage
expect 2
same 'help without arguments goes to standard error' "$(grep -c Usage err)$(lines out)" 10
for wrong in '--bogus' 'decode --bogus' 'decode -o xml log' 'decode --input pcap log' 'frobnicate' \
  'help frobnicate'; do
  read -ra arguments <<<"$wrong"
  expect 2 "${arguments[@]}"
  same "$wrong: one message" "$(grep -c '^mpuevent: ' err) $(lines err) $(lines out)" '1 1 0'
done
for forgotten in 'log' 'x.cmap' '-o jsonl log'; do
  read -ra arguments <<<"$forgotten"
  expect 2 "${arguments[@]}"
  grep -q "did you mean 'mpuevent decode ${arguments[0]}" err || fail "$forgotten: $(cat err)"
done
for version in --version -V 'decode -V' 'decode --version log'; do
  read -ra arguments <<<"$version"
  expect 0 "${arguments[@]}"
  [[ $(cat out) =~ ^mpuevent\ [0-9]+\.[0-9]+\.[0-9]+$ ]] || fail "$version: $(cat out)"
done
expect 0 --help
cp out help
expect 0 help
cmp -s out help || fail 'help and --help differ'
for command in $(sed -n '/^Commands:/,/^$/s/^  \([a-z]*\) .*/\1/p' help); do
  expect 0 "$command" --help
  cp out "$command.help"
  expect 0 help "$command"
  cmp -s out "$command.help" || fail "help $command and $command --help differ"
  grep -q 'Exit codes' out || fail "$command --help tells the exit codes"
  [ "$(wc -L <out)" -le 80 ] || fail "$command --help is wider than 80 columns"
done
[ -f decode.help ] || fail 'help lists the commands'
cp log decode
expect 0 decode -o line --exact -o jsonl --exact --payload always --payload never decode
same 'the last option counts' "$(tail -n 1 out)" "{\"index\":1,\"offset\":221,$second\"decode\"}"

# Output forms, input forms, standard input
expect 0 decode -o jsonl log
same 'jsonl, second line' "$(tail -n 1 out)" "{\"index\":1,\"offset\":221,$second\"log\"}"
same 'jsonl, lines and messages' "$(lines out) $(lines err)" '2 0'
expect 0 decode -o jsonl records
same 'records, second line' "$(tail -n 1 out)" "{\"index\":1,\"offset\":157,$second\"records\"}"
for form in messages records; do
  expect 0 decode -o jsonl --input $form "${form/messages/log}"
  same "--input $form" "$(lines out)" 2
done
expect 0 decode -o jsonl --payload always - <log
same 'standard input, payload' "$(tail -n 1 out)" \
  "{\"index\":1,\"offset\":221,${second/null/'"68656C6C6F"'}null}"
expect 0 decode -o line log
same 'line' "$(head -n 1 out)" "Enclosure Ser#: 'ENC7', Card Ser#: 'CTLÿ', Slot: 2, Log Instance # 3,\
 Sequence ID=1, Timestamp=16909060, Source: 'OB0', Category: 'Device', EventType=3, EventID: '513',\
 Summary: 'Unhandled Event by OB0', Body: '<Hex>68656C6C6F</Hex>'"
mv out whole
for input in '' '-'; do
  "${tool[@]}" decode -o line $input <log | cmp -s - whole || fail "standard input as '$input'"
done
expect 0 decode log
same 'text' "$(grep -c '^Event type:        Error (3)$' out) $(grep -c '^  Hex: 68656C6C6F$' out)" '2 2'
expect 0 decode -o jsonl log records
same 'each file counts anew' "$(grep -c '^{"index":0,"offset":0,' out)" 2

expect 0 decode log records
same 'headings' "$(grep -n '^==> ' out | tr '\n' ' ')" '1:==> log <== 40:==> records <== '
for when in 'always 1' 'never 0' 'auto 0'; do
  expect 0 decode --color "${when% *}" log
  same "colour ${when% *}" "$(grep -c $'\033' out | sed 's/[1-9].*/1/')" "${when#* }"
done

# Control characters, in a file and on a terminal
{ message 1 | sed 's/ENC7/\x1b\n\xc2\x9b/'; } >hostile
expect 0 decode -o line hostile
same 'escaped' "$(lines out) $(grep -cF "'\\x1B\\x0A\\x9B'" out)" '1 1'
expect 0 decode -o line --exact hostile
same 'exact' "$(lines out) $(grep -c $'\033' out)" '2 1'
for form in '-o line --exact' '-o line' '-o jsonl' '-o text --color never' '-o jsonl --trace'; do
  script -qec "${tool[*]} decode $form hostile" /dev/null </dev/null >out 2>err
  same "$form on a terminal" "$(LC_ALL=C grep -c $'\033\|\302\233' out)" 0
  [ -s out ] || fail "$form on a terminal: no output"
done

# JSON
sample="$samples/array.cmap"
expect 0 decode -o jsonl "$sample"
cp out objects
expect 0 decode -o json "$sample"
{ echo '[' && sed '$!s/$/,/' objects && echo ']'; } | cmp -s - out || fail 'json is not the array of jsonl'
expect 1 decode -o json --head 0 log
same 'json of nothing' "$(cat out)" '[]'
expect 0 decode -o jsonl --no-body --no-fields log
same 'no body, no fields' "$(grep -c '"summary":"Unhandled Event by OB0","raw_event_type"' out)" 2
expect 0 decode -o json --no-fields log
same 'no fields' "$(grep -c '"body":"<Hex>68656C6C6F</Hex>","raw_event_type"' out)" 2
expect 0 decode -o jsonl --no-body log
same 'no body' "$(grep -c 'by OB0","fields":\[{"key":"Hex"' out)" 2

# Short
expect 0 decode -o short --epoch unix hostile
same 'short' "$(cat out)" '1970-07-15T16:57:40Z  2 Error         OB0        513: Unhandled Event by OB0'
expect 0 decode -o short "$sample"
mv out whole
script -qec "stty cols 50; ${tool[*]} decode -o short --color always '$sample'" /dev/null </dev/null |
  sed 's/\r$//' >coloured
same 'short: errors are red' "$(grep -c '^.\[1;31m.* Error ' coloured)" "$(grep -c '^.\{13\} Error ' whole)"
sed 's/\x1b\[[0-9;]*m//g' coloured >out
cut -c 1-50 whole | cmp -s - out || fail 'short is not cut at the width of the terminal'

# CSV
if command -v python3 >/dev/null; then
  expect 0 decode -o csv --epoch unix "$sample"
  mv out table
  expect 0 decode -o jsonl --epoch unix "$sample"
  python3 -c '
import csv, json
table = list(csv.DictReader(open("table", encoding="utf-8", newline="")))
events = [json.loads(line) for line in open("out", encoding="utf-8")]
for event in events: del event["fields"]
assert [list(row) for row in table] == [list(event) for event in events], "keys"
assert table == [{k: "" if v is None else str(v) for k, v in e.items()} for e in events], "values"
assert len(events) > 300' 2>err || fail "a CSV has the keys and values of JSON: $(tail -n 1 err)"
fi
expect 0 decode -o csv --no-header --fields fields.Hex,sequence_id log
same 'columns' "$(cat out)" $'68656C6C6F,1\r\n68656C6C6F,2\r'
for wrong in '-o csv --fields fields' '-o csv --fields index,,file' '-o line --fields index' \
  '-o jsonl --fields index --no-body'; do
  read -ra arguments <<<"$wrong"
  expect 2 decode "${arguments[@]}" log
done

# Raw: what is in the input, and a log again
for input in "$sample" log records long; do
  expect 0 decode -o raw $([ $input = long ] && echo --input records) "$input"
  cmp -s out "$input" || fail "raw of $input"
done
expect 3 decode -o raw log truncated records
{ cat log && message 1 && cat records; } | cmp -s - out || fail 'raw leaves damage out, and nothing else'
cp out mixed
expect 0 decode -o raw mixed
cmp -s out mixed || fail 'raw of messages, then records'
expect 0 decode -o raw --type error,warning "$sample"
mv out errors
expect 0 decode -o raw --source iomgr,iscsimp errors
mv out cut
expect 0 decode -o line cut
mv out expected
expect 0 decode -o line --type error,warning --source iomgr,iscsimp "$sample"
cmp -s out expected || fail "a cut-out of a cut-out: $(lines out) events, not $(lines expected)"
[ -s out ] || fail 'nothing was cut out'
script -qec "${tool[*]} decode -o raw log" /dev/null </dev/null >out 2>err
same 'raw on a terminal' "$(grep -c 'not for terminals' out) $(LC_ALL=C grep -c ENC7 out)" '1 0'

# Bad input
expect 3 decode -o jsonl truncated
same 'truncated' "$(lines out) $(cat err)" "1 mpuevent: truncated: offset 0xdd: cut off: 220 bytes of \
221, up to the end; skipped
mpuevent: truncated: 1 event, 221 bytes decoded, 220 skipped, 0 padding"
expect 1 decode empty
same 'empty' "$(lines out) $(cat err)" '0 mpuevent: empty: no events, the input is empty'
expect 0 decode -o line empty log
expect 2 decode -o line missing directory truncated log
same 'the rest is decoded' "$(lines out) $(grep -c '^mpuevent: [a-z]*: ' err) $(lines err)" '3 3 3'
zeros 100000 >nothing
expect 3 decode -o line nothing
same 'zeros' "$(lines out) $(cat err)" '0 mpuevent: nothing: not recognised as an event log'
expect 0 decode -o line --input records nothing
same 'zeros, as asked for' "$(lines out)" 657
{ cat log nothing; } >padded
expect 0 decode -v -o line padded
same 'padding' "$(lines out) $(cat err)" "2 mpuevent: padded: offset 0x1ba: 100000 bytes of padding, up \
to the end
mpuevent: padded: 2 events, 442 bytes decoded, 0 skipped, 100000 padding"
if "${tool[@]}" help decode | grep -q 'does not unpack'; then
  gzip -c log >packed
  expect 3 decode packed
  grep -q 'packed with gzip; try: gzip -dc' err || fail "packed: $(cat err)"
fi
# What comes is given out when it comes.
for form in message record; do
  { $form 1 && sleep 2 && $form 2; } | "${tool[@]}" decode -o line - | { read -r -t 1 && lines /dev/stdin >out; }
  same "a growing log of ${form}s" "$? $(cat out)" '0 1'
done
expect 3 decode -o line --input records long
same 'longest record' "$(lines out) $(grep -c 'record of 65687 bytes is longer' err)" '1 1'

# Many files
mkdir -p bundle/logs/.hidden bundle/logs/deep
cp log bundle/logs/b.cmap && cp records bundle/logs/a.cmap && cp log bundle/logs/deep/c.cmap
cp log bundle/logs/.d.cmap && cp log bundle/logs/.hidden/e.cmap && ln -s .. bundle/logs/deep/up
# The files that events came from, in order.
files() { sed 's/.*"file":"\([^"]*\)"}$/\1/' out | uniq | tr '\n' ' '; }
expect 0 decode -o jsonl bundle/logs log
same 'directory' "$(files)" 'bundle/logs/a.cmap bundle/logs/b.cmap log '
expect 0 decode -o jsonl -r bundle/
same 'recursive' "$(files)" 'bundle/logs/a.cmap bundle/logs/b.cmap bundle/logs/deep/c.cmap '
printf 'log\n\nmissing\nbundle/logs\nrecords' >names
expect 2 decode -o jsonl --files-from names odd
same 'names' "$(files)$(grep -c missing err)" 'odd log bundle/logs/a.cmap bundle/logs/b.cmap records 1'
expect 0 decode -o jsonl --null --files-from - < <(printf 'log\0records\0')
same 'names that end with NUL' "$(files)" 'log records '
expect 1 decode directory
same 'empty directory' "$(cat err)" 'mpuevent: no files to read'

# Archives
if ! "${tool[@]}" help decode | grep -q 'does not unpack'; then
  record 3 | gzip -c >bundle/logs/deep/f.gz
  tar -cf bundle.tar --sort=name bundle
  inside='bundle/logs/.d.cmap bundle/logs/.hidden/e.cmap bundle/logs/a.cmap bundle/logs/b.cmap '
  inside+='bundle/logs/deep/c.cmap bundle/logs/deep/f.gz '
  for packer in cat gzip xz zstd bzip2; do
    command -v $packer >/dev/null || continue
    $packer -c <bundle.tar >"bundle.$packer" 2>/dev/null || cat bundle.tar >"bundle.$packer"
    expect 0 decode -o jsonl "bundle.$packer"
    same "tar, $packer" "$(files)" "${inside//bundle\/logs/bundle.$packer:bundle\/logs}"
    expect 0 decode -o jsonl - <"bundle.$packer"
    same "tar, $packer, standard input" "$(files)" "${inside//bundle\/logs/-:bundle\/logs}"
  done
  # What comes before a break is at least what the packer's own program makes of it.
  for i in {1..400}; do record "$i"; done >long.records
  for packer in gzip xz zstd bzip2; do
    command -v $packer >/dev/null || continue
    $packer -c long.records >packed
    for part in 30 60 90; do
      head -c $(($(stat -c %s packed) * part / 100)) packed >cut
      $packer -dc <cut >prefix 2>/dev/null
      expect 3 decode -o line cut
      grep -q '^mpuevent: cut: broken: ' err || fail "$packer cut off at $part %: $(cat err)"
      "${tool[@]}" decode -o line prefix 2>/dev/null >expected
      head -c "$(stat -c %s expected)" out | cmp -s - expected || fail "$packer, $part %: $(lines out)"
    done
  done
  head -c 3000 bundle.tar >cut.tar
  expect 3 decode -o jsonl cut.tar log
  same 'tar cut off' "$(grep -c '^mpuevent: cut.tar.*: broken: ' err) $(files | grep -c 'log $')" '1 1'
  # Where its library cannot be loaded an archive is told of, and all else is decoded.
  if soname=$(grep -aom 1 'libarchive\.so\.[0-9]*' "${tool[-1]}"); then
    mkdir unloadable && : >"unloadable/$soname"
    LD_LIBRARY_PATH=$here/unloadable expect 3 decode -o jsonl bundle.gzip packed bundle.tar log
    same 'no libarchive' "$(grep -c "^mpuevent: bundle.*: broken: .*$soname: " err) $(files)" '2 packed log '
  fi
fi

# Trace lines, each before the event that it is about
cat log log log >six
"${tool[@]}" decode -o line --trace six >both 2>&1
same 'trace lines among events' \
  "$(sed -E 's/.*Unknown EventID.*/T/; s/^Enclosure.*/E/' both | tr -d '\n')" TETETETETETE
expect 0 decode -o line --trace odd
same 'trace' "$(lines out) $(grep -c 'has no case for source # 32$' err)" '1 1'
expect 0 decode -o line odd
same 'no trace' "$(lines err)" 0

# Explain
expect 0 explain log --index 1 -o json
same 'explain: all bytes of the record' "$(grep -o '"offset":[0-9]*,"length":[0-9]*' out |
  awk -F '[:,]' '$2 != end + 0 { print "gap at " $2 } { end = $2 + $4 } END { print end }')" 157
same 'explain: the payload' "$(grep payload out)" \
  '{"offset":152,"length":5,"bytes":"68656C6C6F","part":"payload","field":"Hex"}'
mv out explained
for choice in '--at 221' '--at 441' '--at 0xdd' '--sequence 2'; do
  read -ra arguments <<<"$choice"
  expect 0 explain log "${arguments[@]}" -o json
  cmp -s out explained || fail "explain $choice"
done
expect 0 explain records --index 0
same 'explain: text' "$(grep -c '^  0098  68 65 6C 6C 6F           |hello|     Hex$' out) \
$(grep -c '^Sequence id:       1$' out) $(grep -c '^Message header' out)" '1 1 0'
tail -c 221 log | od -A x -t x1 | sed 's/^/> /' | "${tool[@]}" explain --hex -o json - >out 2>err
cmp -s out explained || fail "explain --hex: $(cat err)"
for missing in '--index 2' '--at 442' '--sequence 3'; do
  read -ra arguments <<<"$missing"
  expect 1 explain log "${arguments[@]}"
  same "explain $missing" "$(lines out) $(grep -c 'log: no event .*; it has 2 events$' err)" '0 1'
done
cat log log >doubled
expect 0 explain doubled --sequence 1
same 'explain: which of several' "$(cat err)" \
  'mpuevent: doubled: the sequence id is also that of --index 2'
expect 2 explain log
expect 2 explain log --index 1 --at 1
expect 2 explain missing --index 0
expect 2 explain --hex empty
record 1 | head -c 154 | od -An -v -t x1 >part
expect 3 explain --hex part
same 'explain: a part of a record' "$(grep -c '^  0098  68 65 .*Hex$' out)" 1

# Choosing
expect 0 decode -o line --sequence 2 log records
same 'choosing' "$(grep -c 'Sequence ID=2,' out) $(lines out)" '2 2'
expect 0 decode --count --sequence 2 log records empty
same 'counts' "$(cat out)" $'1 log\n1 records\n0 empty\n2 total'
expect 2 decode --count log missing
same 'counts of what was read' "$(cat out)" $'2 log\n2 total'
expect 0 decode --count --merge log records
same 'merged' "$(tail -n 1 out)" '2 total'
expect 1 decode --source SCSI log
same 'nothing chosen' "$(lines out) $(lines err)" '0 0'
expect 3 decode --source SCSI truncated
for wrong in '--source frob' '--since 2006-01-01' '--epoch never' '--code 5-4' '--slot x' '--grep (' \
  '--head 1 -n 1' '--type err'; do
  read -ra arguments <<<"$wrong"
  expect 2 decode "${arguments[@]}" log
  same "$wrong" "$(grep -c "^mpuevent: --*${arguments[0]#-}" err) $(lines err) $(lines out)" '1 1 0'
done
expect 2 decode --category frob log
grep -q 'System, Management, Environmental, Device, Volume, SCSI' err || fail "words: $(cat err)"
MPUEVENT_EPOCH=unix expect 0 decode -o jsonl log
same 'time is the last key' "$(grep -c '"file":"log","time":"1970-07-15T16:57:40Z"}$' out)" 2
expect 1 decode --epoch 2000-01-01 --until 2000-07-13 log
same 'the date beside the count' "$(grep -c '^Timestamp: *16909060 (2000-07-14T' out)" 0
expect 0 decode --epoch 2000-01-01 --until 2000-07-14 log
same 'the date beside the count' "$(grep -c '^Timestamp: *16909060 (2000-07-14T' out)" 2
while cat records; do :; done 2>/dev/null | "${tool[@]}" decode --head 3 -o line >out 2>err
same '--head stops reading' "$(lines out)" 3

# Output that fails
# The clients of servers bring tens of libraries, which cost memory and time: not unasked.
clients=$([ $# != 1 ] || ldd "$1" | grep -E 'libpq|libnats|libssl')
same 'libraries of servers' "$clients" ''

cp log many
for _ in {1..11}; do cat many many >twice && mv twice many; done
{ "${tool[@]}" decode many 2>err; echo "$?" >code; } | head -n 1 >out
same 'closed pipe' "$(cat code) $(lines err)" '0 0'
if [ -w /dev/full ]; then
  for size in log many; do
    "${tool[@]}" decode $size >/dev/full 2>err
    same 'full disk' "$? $(cat err)" '2 mpuevent: standard output: No space left on device'
  done
fi

[ "$failures" = 0 ]

#!/usr/bin/env bash
# summary_test.sh SAMPLES MPUEVENT...: what the summary says of logs that are cut, damaged and put
# together is held against what was done to them and against the events that `decode` writes.
#
#   summary_test.sh update SAMPLES MPUEVENT...   writes the golden files anew
set -eu
update=false
[ "$1" != update ] || { update=true; shift; }
samples=$1
shift
tool=("${@:1:$#-1}" "$(realpath "${!#}")")
here=$(mktemp -d)
trap 'rm -rf "$here"' EXIT

cd "$samples"
for form in text json; do
  "${tool[@]}" summary -o "$form" array.cmap >"$here/array.$form"
  if $update; then cp "$here/array.$form" summary/; fi
  diff -u "summary/array.$form" "$here/array.$form" || {
    echo "If that is meant: script/build release update-golden"
    exit 1
  }
  [ "$(wc -L <"$here/array.$form")" -le 80 ] || [ "$form" = json ] || {
    echo "the text is wider than 80 columns"
    exit 1
  }
done

exec python3 - "$here" "$samples/array.cmap" "${tool[@]}" <<'PYTHON'
import collections, json, random, struct, subprocess, sys

here, sample, *tool = sys.argv[1:]


def run(command, *arguments):
    return subprocess.run([*tool, command, *arguments], capture_output=True).stdout


def summary(*arguments):
    return json.loads(run("summary", "-o", "json", *arguments))


def messages(log):
    while log:
        size = struct.unpack_from(">H", log, 10)[0]
        yield log[:size]
        log = log[size:]


def with_id(message, number):
    return message[:200] + struct.pack(">I", number % 2**32) + message[204:]


def write(name, log):
    with open(f"{here}/{name}", "wb") as file:
        file.write(log)
    return f"{here}/{name}"


def log_of(message):
    return message[64:200]


def severity(event):
    return ["other", "informational", "warnings", "errors"][event["event_type_code"]]


def check_counts(name, *options):
    """The numbers of the summary are those of the events that decode writes."""
    got = summary(name, *options)
    events = [json.loads(line) for line in run("decode", "-o", "jsonl", name, *options).splitlines()]
    assert got["events"] == len(events) == sum(file["events"] for file in got["files"])
    counts = collections.Counter(map(severity, events))
    assert got["event_types"] == {key: counts[key] for key in got["event_types"]}
    times = [event["timestamp"] for event in events]
    assert [got["first_timestamp"], got["last_timestamp"]] == [min(times), max(times)]
    for key, fields in [
        ("logs", ["enclosure_serial", "controller_serial", "controller_slot", "log_instance"]),
        ("sources", ["source_code", "source", "decoder"]),
        ("frequent", ["source_code", "source", "event_id", "summary"]),
    ]:
        counts = collections.Counter(tuple(event[field] for field in fields) for event in events)
        assert counts == {tuple(row[field] for field in fields): row["events"] for row in got[key]}, key
    for row in got["sources"]:
        for kind in ["errors", "warnings", "informational"]:
            assert row[kind] == sum(
                severity(event) == kind and event["source_code"] == row["source_code"] for event in events)
    errors = [event for event in events if severity(event) == "errors"][-10:]
    assert [(row["offset"], row["index"], row["summary"]) for row in got["last_errors"]] == [
        (event["offset"], event["index"], event["summary"]) for event in errors]
    for kind in ["errors", "warnings", "informational"]:
        assert sum(sum(lanes[kind]) for lanes in got["time_lanes"]) == got["event_types"][kind]
    return got


def check_cuts(dice, log, first_id):
    """Stretches cut out of a log are the gaps, and nothing else is."""
    numbers, kept, left_out, numbered = {}, [], 0, collections.defaultdict(list)
    for message in log:
        number = numbers[log_of(message)] = numbers.get(log_of(message), first_id - 1) + 1
        left_out = left_out - 1 if left_out else dice.choice([0] * 12 + [1, 3, 20])
        if not left_out:
            kept.append(with_id(message, number))
            numbered[log_of(message)].append(number)
    got = summary(write("cut", b"".join(kept)))
    expected = []
    for ids in numbered.values():
        gaps = [(a % 2**32, b % 2**32, b - a - 1) for a, b in zip(ids, ids[1:]) if b - a > 1]
        expected.append((len(ids), ids[0] % 2**32, ids[-1] % 2**32, sum(gap[2] for gap in gaps), gaps))
    assert expected == [
        (row["events"], row["first_sequence_id"], row["last_sequence_id"], row["missing"],
         [(gap["after"], gap["before"], gap["missing"]) for gap in row["gaps"]])
        for row in got["logs"]]
    assert all(row["repeats"] == row["steps_back"] == 0 for row in got["logs"])


def check_damage(dice, log):
    """Every byte is decoded, skipped or padding, as the reader told on standard error."""
    kept, offset = bytearray(), dice.randrange(2000, len(log) - 4000)
    kept += log[:offset] + bytes(dice.randrange(1, 256) for _ in range(900)) + log[offset + 700:]
    kept += bytes(500)
    name = write("damaged", bytes(kept))
    told = subprocess.run([*tool, "decode", "-v", name], capture_output=True).stderr.decode()
    file = check_counts(name)["files"][0]
    totals = (f"{file['events']} events, {file['decoded_bytes']} bytes decoded, "
              f"{file['skipped_bytes']} skipped, {file['padding_bytes']} padding")
    assert totals in told, (totals, told)
    assert file["bytes"] == len(kept) == sum(
        file[key] for key in ["decoded_bytes", "skipped_bytes", "padding_bytes"])
    assert file["damage"]
    for damage in file["damage"]:
        assert f"offset {damage['offset']:#x}: {damage['reason']}" in told


seed = random.randrange(2**32)
print("seed", seed)
dice = random.Random(seed)
with open(sample, "rb") as file:
    whole = file.read()
log = list(messages(whole))
check_counts(sample)
check_counts(sample, "--type", "error", "--not-source", "5")
for first_id in [1, 48210, 2**31 - 100, 2**32 - 100]:
    check_cuts(dice, log, first_id)
check_damage(dice, whole)
# Pulled twice, the second time from a log that has begun anew; the last event is there twice.
one = [message for message in log if log_of(message) == log_of(log[0])][:40]
pulls = [with_id(m, 1000 + n) for n, m in enumerate(one)] + [with_id(m, 1 + n) for n, m in enumerate(one)]
row, = summary(write("pulls", b"".join(pulls + pulls[-1:])))["logs"]
assert [row[key] for key in ["events", "missing", "gaps", "repeats", "steps_back"]] == [81, 0, [], 1, 1]

# Texts that are markup, and more logs, gaps, kinds and bytes of damage than a page has room for.
hostile = []
for number in range(4000):
    serial = (b'"><script>&' * 6 if number % 3 else b"\xff\x1b<" * 21)[:60] + b"%03d" % (number % 300)
    record = log[number % len(log)][64:]
    record = serial.ljust(64, b"'") * 2 + record[128:136] + struct.pack(
        ">2I", number * 7, dice.randrange(2**32)) + record[144:]
    hostile.append(record + bytes(dice.randrange(256) for _ in range(30 if number % 100 == 0 else 0)))
name = write("hostile", b"".join(hostile))
subprocess.run([*tool, "summary", name, "--html", f"{here}/page.html"], capture_output=True)
with open(f"{here}/page.html", encoding="utf-8") as file:
    page = file.read()
assert len(page.encode()) < 200_000, len(page.encode())
assert page.endswith("</html>\n") and "<script" not in page and "\x1b" not in page
assert "&quot;&gt;&lt;script&gt;&amp;" in page
PYTHON

#!/usr/bin/env python3
"""store_test.py LOG KILLS TARGET MPUEVENT...: keeps events of overlapping logs, made from the messages
of LOG, in the store TARGET (a name for a file, or an empty PostgreSQL database) and compares it row
by row with what the tool decodes; kills the tool KILLS times while it stores; ten store at once."""
import json
import os
import random
import signal
import sqlite3
import struct
import subprocess
import sys
import tempfile
import time

LOG, KILLS, TARGET = sys.argv[1], int(sys.argv[2]), sys.argv[3]
TOOL = sys.argv[4:-1] + [os.path.realpath(sys.argv[-1])]
SERVER = TARGET.startswith("postgresql://")
BATCH = 10000
NUL_SHOWN = "\u2400"  # PostgreSQL cannot have NUL in a text


def run(*arguments, code=0):
    done = subprocess.run([*TOOL, *arguments], capture_output=True, text=True)
    assert done.returncode == code, f"exit code {done.returncode}, not {code}: {arguments}: {done.stderr}"
    return done.stdout if code != 2 else done.stderr


def query(sql, target=TARGET):
    """Rows, of numbers, texts and, from PostgreSQL, JSON."""
    if not SERVER:
        with sqlite3.connect(target) as database:
            return [list(row) for row in database.execute(sql)]
    script = f"SELECT json_agg(r) FROM ({sql}) r" if sql.startswith("SELECT") else sql
    done = subprocess.run(["psql", "-XAtqc", script, target], capture_output=True, text=True, check=True)
    return [list(row.values()) for row in json.loads(done.stdout.strip() or "[]")]


def records(log):
    with open(log, "rb") as file:
        data = file.read()
    found, at = [], 0
    while at < len(data):
        total = struct.unpack_from(">H", data, at + 10)[0]
        found.append(data[at + 64:at + total])
        at += total
    return found


def write(name, some):
    with open(name, "wb") as file:
        file.write(b"".join(some))


def numbered(record, number):
    """Of one of three controllers, a minute later than the one before."""
    time_of = struct.pack(">I", 1163421951 + 60 * number)
    serial = b"SCB%d" % (number % 3) + bytes(60)
    return record[:64] + serial + record[128:132] + struct.pack(">II", 7, number) + time_of + record[144:]


def check_rows(lines, raw):
    """Every fact of the JSON is in its column, and the record as it was."""
    keys = list(json.loads(lines[0]))
    columns = ", ".join(f'"{key}"' for key in keys)
    record = "encode(record, 'hex')" if SERVER else "lower(hex(record))"
    rows = query(f"SELECT {columns}, {record} AS raw, tool_version, reason FROM events ORDER BY id")
    assert len(rows) == len(lines), (len(rows), len(lines))
    for row, line, bytes_ in zip(rows, lines, raw):
        if SERVER:
            line = line.replace("\\u0000", NUL_SHOWN)
        expected = list(json.loads(line).values()) + [bytes_.hex(), VERSION, None]
        at = keys.index("fields")
        if isinstance(row[at], str):
            row[at] = json.loads(row[at])
        assert row == expected, (row, expected)


def check_overlapping(lines, raw):
    assert run("store", TARGET, "a") == "600 events read, 600 new\n"
    assert run("store", TARGET, "a", "b") == "1201 events read, 301 new\n"
    assert run("store", TARGET, "b", "a") == "1201 events read, 0 new\n"
    check_rows(lines, raw)
    assert run("decode", "-o", "jsonl", TARGET).splitlines() == lines
    for choice in (["-t", "error"], ["--not-source", "iomgr,5"], ["--controller", "SCB1"],
                   ["--since", "1163440000", "--sequence", "100..500"], ["--not-type", "other,1"],
                   ["-i", "--grep", "drive"], ["-n", "7"], ["--head", "7"]):
        expected = run("decode", "-o", "jsonl", *choice, "once")
        got = run("decode", "-o", "jsonl", *choice, TARGET)
        facts = [[json.loads(line) for line in text.splitlines()] for text in (got, expected)]
        for event in facts[0] + facts[1]:
            del event["file"], event["index"], event["offset"]
        assert facts[0] == facts[1] and facts[0], choice
    assert ", 901 events, " in run("summary", TARGET)
    explained = ["explain", "--sequence", "77", "-o", "json"]
    assert run(*explained, TARGET) == run(*explained, "once")


def check_views():
    errors = run("decode", "--count", "-t", "error", "once").strip()
    assert str(query("SELECT count(*) AS n FROM errors")[0][0]) == errors
    assert query("SELECT sum(events) AS n FROM modules_by_hour")[0][0] == 901
    assert query("SELECT count(*) AS n FROM gaps WHERE missing = 2")[0][0] == 897
    found = ("words @@ word('Parity')" if SERVER else
             "id IN (SELECT rowid FROM words WHERE words MATCH 'Parity')")
    words = f"SELECT count(*) AS n FROM events WHERE {found}"
    count = query(words)[0][0]
    assert count == int(run("decode", "--count", "-i", "--grep", "(^|[^a-z0-9])parity([^a-z0-9]|$)", "once"))
    return words, count


def check_again(lines, raw, words, count):
    query("UPDATE events SET summary = 'stale', body = '', fields = NULL, event_id = '', tool_version = '0'")
    assert "901 events decoded again" in run("store", TARGET, "--again")
    check_rows(lines, raw)
    assert query(words)[0][0] == count


def stored():
    return query("SELECT count(*) AS n FROM events")[0][0]


def check_kills(log):
    events, before = len(MANY), stored()
    begin = time.monotonic()
    run("store", "timed", log)
    longest = (time.monotonic() - begin) * (3 if SERVER else 1)
    seen = set()
    for kill in range(1, KILLS + 1):
        process = subprocess.Popen([*TOOL, "store", TARGET, log], stdout=subprocess.DEVNULL)
        time.sleep(random.uniform(0, longest * kill / KILLS))
        process.send_signal(signal.SIGKILL)
        process.wait()
        seen.add(stored() - before)
    # A server goes on with the batch that it has, so the last number may come late.
    assert all(count % BATCH == 0 or count == events for count in seen), seen
    print(f"store: killed {KILLS} times, with {sorted(seen)} of {events} events stored")
    run("store", TARGET, log)
    assert run("store", TARGET, log) == f"{events} events read, 0 new\n"
    distinct = query("SELECT count(*) AS n, count(DISTINCT hash) AS d FROM events")[0]
    assert distinct == [events + before] * 2, distinct
    if not SERVER:
        assert query("PRAGMA integrity_check") == [["ok"]]


def check_at_once():
    """Ten programs store pulls that overlap."""
    before, each, step = stored(), 2000, 400
    pulled = [numbered(SAMPLES[i % len(SAMPLES)], 100000 + i) for i in range(each + 9 * step)]
    for pull in range(10):
        write(f"pull{pull}", pulled[pull * step:pull * step + each])
    running = [subprocess.Popen([*TOOL, "store", TARGET, f"pull{pull}"], stdout=subprocess.PIPE, text=True)
               for pull in range(10)]
    words = [process.communicate()[0].split() for process in running]
    assert all(process.returncode == 0 for process in running), words
    assert sum(int(word[3]) for word in words) == stored() - before == len(pulled), words
    assert run("audit", "--no-gaps", TARGET, *(f"pull{pull}" for pull in range(10)))


def check_audit():
    """What the store lacks of a log, and gaps between what it has."""
    write("partly", RECORDS[:30] + [numbered(SAMPLES[0], 200000 + 3 * i) for i in range(5)] + RECORDS[30:60])
    found = run("audit", "--no-gaps", TARGET, "partly", code=1).splitlines()
    for line, number in zip(found, range(200000, 200015, 3)):
        assert line.endswith(f"1 record not in the store, sequence id {number}"), found
    assert found[5:] == ["65 records in the files, 5 not in the store"], found
    gaps = run("audit", TARGET, code=1).splitlines()
    assert gaps[897:] == ["897 gaps, 1794 ids missing"] and "2 ids missing between 0 and 3" in gaps[0], gaps


def check_versions(lines, raw):
    """A newer store is left alone, an older one is made of its records anew."""
    set_version = "UPDATE store_version SET version = %d" if SERVER else "PRAGMA user_version = %d"
    query(set_version % 99)
    for command in (["store", TARGET, "a"], ["decode", TARGET]):
        assert "version 99" in run(*command, code=2)
    query("UPDATE events SET reason = 'no record: but why' WHERE sequence_id = 5")
    query((set_version + ("; ALTER TABLE events DROP COLUMN summary CASCADE" if SERVER else "")) % 0)
    assert "older version" in run("decode", TARGET, code=2)
    assert run("store", TARGET, "b") == "601 events read, 0 new\n"
    assert query("SELECT summary FROM events WHERE reason = 'no record: but why'") == [[None]]
    query("DELETE FROM events WHERE reason IS NOT NULL")
    assert run("store", TARGET, "a") == "600 events read, 1 new\n"
    check_rows(lines[:5] + lines[6:] + lines[5:6], raw[:5] + raw[6:] + raw[5:6])


def check_foreign():
    write("log", [b"no store"] * 100)
    with sqlite3.connect("foreign") as database:
        database.execute("CREATE TABLE t(a)")
    with open("foreign", "rb") as file:
        before = file.read()
    for command in (["store", "foreign", "a"], ["decode", "foreign"]):
        assert "another program" in run(*command, code=2)
    with open("foreign", "rb") as file:
        assert file.read() == before
    assert "no SQLite database" in run("store", "log", "a", code=2)


SAMPLES = records(LOG)
RECORDS = [numbered(SAMPLES[i % len(SAMPLES)], i) for i in range(900)]
MANY = [numbered(SAMPLES[i % len(SAMPLES)], i) for i in range(1000, 1000 + BATCH * min(6, KILLS + 1))]
VERSION = subprocess.run([*TOOL, "--version"], capture_output=True, text=True, check=True).stdout.split()[1]
with tempfile.TemporaryDirectory() as directory:
    os.chdir(directory)
    again = numbered(SAMPLES[3], 599)[:-1] + b"\xff"  # an id that is used again
    write("a", RECORDS[:600])
    write("b", RECORDS[300:] + [again])
    write("once", RECORDS + [again])
    write("many", MANY)
    both = run("decode", "-o", "jsonl", "a", "b").splitlines()
    LINES, RAW = both[:600] + both[900:], RECORDS + [again]
    check_overlapping(LINES, RAW)
    check_again(LINES, RAW, *check_views())
    check_versions(LINES, RAW)
    check_audit()
    check_kills("many")
    check_at_once()
    if not SERVER:
        check_foreign()

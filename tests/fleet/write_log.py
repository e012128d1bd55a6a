#!/usr/bin/env python3
"""Writes a log of several arrays to a file as a program does that is in no hurry: raw records with
the payloads of a sample log, the sequence ids of each controller's log rising without a gap.

    write_log.py SAMPLE LOG ARRAYS RECORDS SECONDS [FIRST]

FIRST is the number of the first record; the same number is the same record.
"""
import struct
import sys
import time


def records_of(messages):
    at = 0
    while at < len(messages):
        (length,) = struct.unpack_from(">H", messages, at + 10)
        yield messages[at + 64 : at + length]
        at += length


def record_of(number, patterns, arrays):
    array, turn = number % arrays, number // arrays
    controller, sequence = turn % 2, 1000 + turn // 2
    record = bytearray(patterns[number % len(patterns)])
    record[0:64] = (b"FLEET-%05d" % array).ljust(64, b"\0")
    record[64:128] = (b"CTL-%05d-%d" % (array, controller)).ljust(64, b"\0")
    struct.pack_into(">IIII", record, 128, controller, controller + 1, sequence, 1163421907 + turn)
    return record


def main():
    sample, path = sys.argv[1:3]
    arrays, count, seconds, first = map(int, (sys.argv[3:] + ["0"])[:4])
    with open(sample, "rb") as file:
        patterns = list(records_of(file.read()))
    start = time.monotonic()
    with open(path, "ab") as log:
        for done in range(count):
            log.write(record_of(first + done, patterns, arrays))
            ahead = start + seconds * done / count - time.monotonic()
            if ahead > 0.05:
                log.flush()
                time.sleep(ahead)


main()

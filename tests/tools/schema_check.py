#!/usr/bin/env python3
"""schema_check.py MPUEVENT SAMPLE: what the tool writes as JSON is what its schemas say, for the sample,
10,000 generated records, damage and nothing at all; and the schemas refuse what is not so."""
import copy
import json
import random
import struct
import subprocess
import sys
import tempfile

import jsonschema

TOOL, SAMPLE = sys.argv[1:]
RECORDS = 10000


def run(*arguments, data=None):
    done = subprocess.run([TOOL, *arguments], input=data, capture_output=True, check=False)
    assert done.returncode in (0, 1, 3), (arguments, done.stderr[-500:])
    return done.stdout


def closed(schema):
    """The schema, taking no key that it does not name: readers pass over new ones, this check does not."""
    if isinstance(schema, dict):
        schema = {key: closed(value) for key, value in schema.items()}
        if "properties" in schema:
            schema["additionalProperties"] = False
    elif isinstance(schema, list):
        schema = [closed(value) for value in schema]
    return schema


def validator(name):
    schema = json.loads(run("schema", name))
    jsonschema.Draft202012Validator.check_schema(schema)
    return jsonschema.Draft202012Validator(closed(schema))


VALIDATORS = {name: validator(name) for name in ("event", "summary", "explain")}


def check(name, document):
    error = next(VALIDATORS[name].iter_errors(document), None)
    assert error is None, f"{name}: {error.json_path}: {error.message[:300]}\n{json.dumps(document)[:2000]}"


def check_lines(text):
    lines = [json.loads(line) for line in text.splitlines()]
    for line in lines:
        check("event", line)
    return lines


def messages_of(log):
    at = 0
    while at < len(log):
        length = struct.unpack_from(">H", log, at + 10)[0]
        yield log[at + 64:at + length]
        at += length


def generated(records):
    """Records of the sample with other bytes, of other sources, cut, or grown; some of noise alone."""
    dice = random.Random(20261122)
    for number in range(RECORDS):
        record = bytearray(dice.choice(records))
        if dice.random() < 0.2:
            record[152:] = dice.randbytes(dice.randrange(400))
        for _ in range(dice.choice((0, 1, 4, 16))):
            record[dice.randrange(len(record))] = dice.choice((0, 0xFF, 0x22, 0x3C, dice.randrange(256)))
        if dice.random() < 0.1:
            record[146] = dice.randrange(256)
        if dice.random() < 0.2:
            del record[dice.randrange(152, len(record) + 1):]
        struct.pack_into(">I", record, 136, number)
        struct.pack_into(">H", record, 144, len(record) - 152)
        yield struct.pack(">10xH52x", 64 + len(record)) + record


def check_explained(file, index):
    explained = json.loads(run("explain", file, "--index", str(index), "-o", "json"))
    check("explain", explained)
    assert explained


def refuses(name, document):
    """Each key of it is asked for or has a type of its own; none is let in besides."""
    for key in document:
        for wrong in ({**document, key: {"no": "such value"}}, {**document, key + "_": 0}):
            assert not VALIDATORS[name].is_valid(wrong), f"{name}: {key} may be anything"
    for key in VALIDATORS[name].schema["required"]:
        less = copy.deepcopy(document)
        del less[key]
        assert not VALIDATORS[name].is_valid(less), f"{name}: {key} may be missing"


def main():
    with open(SAMPLE, "rb") as file:
        sample = file.read()
    records = list(messages_of(sample))
    for options in ([], ["--epoch", "unix", "--payload", "always"], ["--no-body"], ["--no-fields"]):
        lines = check_lines(run("decode", "-o", "jsonl", *options, SAMPLE))
        assert len(lines) == len(records)
        assert ("time" in lines[0]) == ("--epoch" in options)
    for event in json.loads(run("decode", "-o", "json", data=sample)):
        check("event", event)
    for index in range(0, len(records), 23):
        check_explained(SAMPLE, index)

    with tempfile.NamedTemporaryFile() as log:
        log.write(b"".join(generated(records)))
        log.flush()
        events = check_lines(run("decode", "--input", "messages", "-o", "jsonl", "--epoch", "2005-01-01", log.name))
        assert len(events) == RECORDS, len(events)
        decoders = {event["decoder"] for event in events}
        assert len(decoders) > 15, decoders
        check("summary", json.loads(run("summary", "--input", "messages", "-o", "json", log.name)))
        for index in range(0, RECORDS, 1000):
            check_explained(log.name, index)

    summary = json.loads(run("summary", "-o", "json", SAMPLE))
    for document in (summary, *(json.loads(run("summary", "-o", "json", data=data))
                                for data in (b"", sample[:-5], sample[:9000] + sample[9001:]))):
        check("summary", document)
    refuses("event", lines[0])
    refuses("summary", summary)
    print(f"schema: {len(records)} events of the sample and {len(events)} generated, of {len(decoders)} decoders")


main()

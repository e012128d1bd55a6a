-- Each event is once in "events": the columns of the JSON under the same names, the record itself,
-- and what is to be known of both. "timestamp" counts from the firmware's own beginning.
CREATE TABLE events (
  id INTEGER PRIMARY KEY,            -- rises as events come in
  "index" INTEGER NOT NULL,          -- the place in the file that it was first read from
  "offset" INTEGER NOT NULL,
  decoder TEXT,                      -- this and what has no NOT NULL: null where "reason" is not
  enclosure_serial TEXT NOT NULL,
  controller_serial TEXT NOT NULL,
  controller_slot INTEGER,
  log_instance INTEGER NOT NULL,
  sequence_id INTEGER NOT NULL,
  timestamp INTEGER NOT NULL,
  source_code INTEGER,
  source TEXT,
  category_code INTEGER,
  category TEXT,
  event_type_code INTEGER,           -- 1 informational, 2 warning, 3 error, 0 none of these
  event_type TEXT,
  event_code INTEGER,
  event_id_version INTEGER,
  event_id TEXT,
  summary TEXT,
  body TEXT,
  fields TEXT,                       -- JSON
  raw_event_type INTEGER,
  record_length INTEGER,
  struct_length INTEGER,
  payload TEXT,                      -- in hex, where the decoder shows nothing of it
  file TEXT,
  record BLOB NOT NULL,
  hash BLOB NOT NULL,                -- of the record: XXH3, 128 bits
  tool_version TEXT NOT NULL,        -- that decoded it
  reason TEXT                        -- why the record could not be decoded
);

-- The hash is of all that makes a key: serials, log and sequence id are bytes of the record, and so is
-- the timestamp, by which those that come together lie together.
CREATE UNIQUE INDEX events_once ON events (timestamp, hash);
-- What went wrong in an array in a span of time. It holds all that tells logs and their gaps.
CREATE INDEX events_by_array ON events
  (enclosure_serial, event_type_code, timestamp, controller_serial, log_instance, sequence_id);
-- Spans of time; counts by module and hour, which it holds all of.
CREATE INDEX events_by_time ON events (timestamp, source_code, source, event_type_code);

-- Words: SELECT ... FROM events WHERE id IN (SELECT rowid FROM words WHERE words MATCH 'parity').
CREATE VIRTUAL TABLE words USING fts5(event_id, summary, body, content='events',
  content_rowid='id', columnsize=0);
INSERT INTO words(words, rank) VALUES ('hashsize', 16777216);  -- bytes that are written at once
-- Sixteen pieces of about the same size are merged, not four: each word is written less often.
INSERT INTO words(words, rank) VALUES ('automerge', 16);
-- There is no trigger for INSERT, which would write the words event by event: who inserts an event
-- inserts its words as well.
CREATE TRIGGER words_delete AFTER DELETE ON events BEGIN
  INSERT INTO words(words, rowid, event_id, summary, body)
    VALUES ('delete', old.id, old.event_id, old.summary, old.body);
END;
CREATE TRIGGER words_update AFTER UPDATE OF event_id, summary, body ON events BEGIN
  INSERT INTO words(words, rowid, event_id, summary, body)
    VALUES ('delete', old.id, old.event_id, old.summary, old.body);
  INSERT INTO words(rowid, event_id, summary, body)
    VALUES (new.id, new.event_id, new.summary, new.body);
END;

CREATE VIEW errors AS SELECT * FROM events WHERE event_type_code = 3;

-- Sequence ids that are missing between two of a log. Half of 2^32 or more is no gap.
CREATE VIEW gaps AS
  SELECT enclosure_serial, controller_serial, log_instance, after, before,
    before - after - 1 AS missing
  FROM (
    SELECT enclosure_serial, controller_serial, log_instance, sequence_id AS after,
      lead(sequence_id) OVER (
        PARTITION BY enclosure_serial, controller_serial, log_instance
        ORDER BY sequence_id) AS before
    FROM events)
  WHERE before - after BETWEEN 2 AND 2147483647;

-- "hour" is the timestamp at which it begins, if timestamps count seconds.
CREATE VIEW modules_by_hour AS
  SELECT timestamp / 3600 * 3600 AS hour, source_code, source, count(*) AS events,
    sum(event_type_code = 3) AS errors, sum(event_type_code = 2) AS warnings
  FROM events WHERE source_code IS NOT NULL
  GROUP BY 1, 2, 3;

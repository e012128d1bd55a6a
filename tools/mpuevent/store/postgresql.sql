-- Each event is once in "events": the columns of the JSON under the same names, the record itself,
-- and what is to be known of both. "timestamp" counts from the firmware's own beginning. It is
-- partitioned by that, each partition (events_0, events_1, ...) has 2^22 of its counts and is made
-- when the first event of its span comes. A text cannot hold NUL here: it has U+2400 instead.
CREATE TABLE store_version (version bigint NOT NULL);

CREATE SEQUENCE events_id;  -- of batches: an event's is 2^20 times its batch's and its place
CREATE TABLE events (
  id bigint NOT NULL,                -- rises as events come in
  "index" bigint NOT NULL,           -- the place in the file that it was first read from
  "offset" bigint NOT NULL,
  decoder text,                      -- this and what has no NOT NULL: null where "reason" is not
  enclosure_serial text COLLATE "C" NOT NULL,
  controller_serial text COLLATE "C" NOT NULL,
  controller_slot bigint,
  log_instance bigint NOT NULL,
  sequence_id bigint NOT NULL,
  timestamp bigint NOT NULL,
  source_code bigint,
  source text COLLATE "C",
  category_code bigint,
  category text,
  event_type_code bigint,            -- 1 informational, 2 warning, 3 error, 0 none of these
  event_type text,
  event_code bigint,
  event_id_version bigint,
  event_id text,
  summary text,
  body text COMPRESSION lz4,
  fields json COMPRESSION lz4,       -- as it was written; fields::jsonb has more operators
  raw_event_type bigint,
  record_length bigint,
  struct_length bigint,
  payload text COMPRESSION lz4,      -- in hex, where the decoder shows nothing of it
  file text,
  record bytea COMPRESSION lz4 NOT NULL,
  hash bytea NOT NULL,               -- of the record: XXH3, 128 bits
  tool_version text NOT NULL,        -- that decoded it
  reason text,                       -- why the record could not be decoded
  words tsvector COMPRESSION lz4 NOT NULL  -- of event_id, summary and body
) PARTITION BY RANGE (timestamp);

-- A row stays in one piece: texts of a long one are compressed, and moved out as the last resort.
DO $$
DECLARE col text;
BEGIN
  FOR col IN SELECT attname FROM pg_attribute WHERE attrelid = 'events'::regclass AND attstorage = 'x' LOOP
    EXECUTE format('ALTER TABLE events ALTER %I SET STORAGE MAIN', col);
  END LOOP;
END $$;

-- The hash is of all that makes a key: serials, log and sequence id are bytes of the record, and so is
-- the timestamp, which a key must have that is to hold for all partitions. Its index serves spans of
-- time, too, and counts by module and hour, as it holds all of them.
CREATE UNIQUE INDEX events_once ON events (timestamp, hash)
  INCLUDE (source_code, source, event_type_code);
CREATE INDEX events_by_id ON events (id);
-- What went wrong in an array in a span of time. It holds all that tells logs and their gaps.
CREATE INDEX events_by_array ON events (enclosure_serial, event_type_code, timestamp)
  INCLUDE (controller_serial, log_instance, sequence_id);

-- Words: SELECT ... FROM events WHERE words @@ word('parity') AND NOT words @@ word('192.0.2.5').
-- They are runs of letters and digits, in lower case; several are looked for next to one another.
CREATE FUNCTION word(text) RETURNS tsquery LANGUAGE sql IMMUTABLE PARALLEL SAFE
  RETURN phraseto_tsquery('simple', regexp_replace($1, '[^[:alnum:]]+', ' ', 'g'));
-- Words wait in a list of 16 MB at most before they are sorted in.
CREATE INDEX events_words ON events USING gin (words) WITH (gin_pending_list_limit = 16384);

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
    FROM events) AS neighbours
  WHERE before - after BETWEEN 2 AND 2147483647;

-- "hour" is the timestamp at which it begins, if timestamps count seconds.
CREATE VIEW modules_by_hour AS
  SELECT timestamp / 3600 * 3600 AS hour, source_code, source, count(*) AS events,
    count(*) FILTER (WHERE event_type_code = 3) AS errors,
    count(*) FILTER (WHERE event_type_code = 2) AS warnings
  FROM events WHERE source_code IS NOT NULL
  GROUP BY 1, 2, 3;

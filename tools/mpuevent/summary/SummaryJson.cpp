#include <string_view>

#include "forms/JsonWriter.h"
#include "summary/SummaryForms.h"

namespace mpuevent::tool {

namespace {

/// The object of the summary: a line a member, and a line an element of those that are lists.
class SummaryObject {
 public:
  explicit SummaryObject(TextBuffer& to) : to_(to) {}

  void end() { to_ += "\n}\n"; }

  template <typename Write>
  void member(std::string_view key, const Write& write) {
    begin(key);
    JsonWriter json(to_);
    write(json);
  }
  void number(std::string_view key, std::uint64_t number) {
    member(key, [&](JsonWriter& json) { json.number(number); });
  }
  template <typename Elements, typename Write>
  void list(std::string_view key, const Elements& elements, const Write& write) {
    begin(key);
    to_ += '[';
    std::string_view between = "\n";
    for (const auto& element : elements) {
      to_ += between;
      between = ",\n";
      JsonWriter json(to_);
      json.beginObject();
      write(json, element);
      json.endObject();
    }
    to_ += elements.empty() ? "]" : "\n]";
  }

 private:
  void begin(std::string_view key) {
    to_ += first_ ? "{\n\"" : ",\n\"";
    first_ = false;
    to_ += key;
    to_ += "\":";
  }

  TextBuffer& to_;
  bool first_ = true;
};

void number(JsonWriter& json, std::string_view key, std::uint64_t number) {
  json.plainKey(key);
  json.number(number);
}

void text(JsonWriter& json, std::string_view key, std::string_view text) {
  json.plainKey(key);
  json.text(text);
}

void file(JsonWriter& json, const std::optional<std::string>& name) {
  json.plainKey("file");
  if (name) {
    json.text(std::string_view(*name));
  } else {
    json.null();
  }
}

void severities(JsonWriter& json, const SeverityCounts& events) {
  number(json, "errors", events.of[error]);
  number(json, "warnings", events.of[warning]);
  number(json, "informational", events.of[informational]);
}

void timestamp(JsonWriter& json, std::uint32_t timestamp, bool any) {
  if (any) {
    json.number(timestamp);
  } else {
    json.null();
  }
}

void writeFile(JsonWriter& json, const FileSummary& summary) {
  file(json, summary.name);
  json.plainKey("form");
  if (summary.messages || summary.records) {
    json.text(std::string_view(summary.messages && summary.records ? "mixed"
                               : summary.messages                  ? "messages"
                                                                   : "records"));
  } else {
    json.null();
  }
  number(json, "bytes", summary.accounting.bytes());
  number(json, "decoded_bytes", summary.accounting.eventBytes);
  number(json, "skipped_bytes", summary.accounting.skippedBytes);
  number(json, "padding_bytes", summary.accounting.paddingBytes);
  number(json, "events", summary.events);
  json.plainKey("damage");
  json.beginArray();
  for (const log::Finding& damage : summary.damage) {
    json.beginObject();
    number(json, "offset", damage.offset);
    number(json, "length", damage.length);
    text(json, "reason", describe(damage));
    json.endObject();
  }
  json.endArray();
  if (summary.moreDamage != 0) number(json, "more_damage", summary.moreDamage);
}

void writeLog(JsonWriter& json, const LogSummary& log) {
  text(json, "enclosure_serial", log.enclosureSerial);
  text(json, "controller_serial", log.controllerSerial);
  number(json, "controller_slot", log.controllerSlot);
  number(json, "log_instance", log.logInstance);
  number(json, "events", log.events);
  const Sequence& sequence = log.sequence;
  number(json, "first_sequence_id", sequence.first());
  number(json, "last_sequence_id", sequence.last());
  number(json, "missing", sequence.missing());
  json.plainKey("gaps");
  json.beginArray();
  for (const SequenceGap& gap : sequence.gaps()) {
    json.beginObject();
    number(json, "after", gap.after);
    number(json, "before", gap.before);
    number(json, "missing", gap.missing());
    number(json, "after_timestamp", gap.afterTimestamp);
    number(json, "before_timestamp", gap.beforeTimestamp);
    json.endObject();
  }
  json.endArray();
  const std::uint64_t more = sequence.gapCount() - sequence.gaps().size();
  if (more != 0) number(json, "more_gaps", more);
  number(json, "repeats", sequence.repeats());
  number(json, "steps_back", sequence.stepsBack());
}

void writeSource(JsonWriter& json, const SourceSummary& source) {
  number(json, "source_code", source.code);
  text(json, "source", source.name);
  text(json, "decoder", source.decoder);
  number(json, "events", source.events.total());
  severities(json, source.events);
  json.plainKey("undecoded_event_codes");
  json.beginArray();
  for (const unsigned code : source.undecodedCodes) json.number(code);
  json.endArray();
}

void writeKind(JsonWriter& json, const KindSummary& kind) {
  number(json, "source_code", kind.sourceCode);
  text(json, "source", kind.source);
  text(json, "event_id", kind.eventId);
  text(json, "summary", kind.summary);
  number(json, "events", kind.events);
  number(json, "first_timestamp", kind.time.first);
  number(json, "last_timestamp", kind.time.last);
}

void writeError(JsonWriter& json, const ErrorSummary& error) {
  file(json, error.file);
  number(json, "index", error.index);
  number(json, "offset", error.offset);
  text(json, "controller_serial", error.controllerSerial);
  number(json, "controller_slot", error.controllerSlot);
  number(json, "sequence_id", error.sequenceId);
  number(json, "timestamp", error.timestamp);
  text(json, "source", error.source);
  text(json, "event_id", error.eventId);
  text(json, "summary", error.summary);
}

template <typename Number>
void lane(JsonWriter& json, std::string_view key, const TimeLanes& lanes, const Number& of) {
  json.plainKey(key);
  json.beginArray();
  for (const TimeLanes::Column& column : lanes.columns) json.number(of(column));
  json.endArray();
}

void writeLanes(JsonWriter& json, const TimeLanes& lanes) {
  text(json, "controller_serial", lanes.controllerSerial);
  json.plainKey("controller_slot");
  if (lanes.controllerSlot) {
    json.number(*lanes.controllerSlot);
  } else {
    json.null();
  }
  constexpr std::string_view keys[] = {"errors", "warnings", "informational", "other"};
  for (std::size_t severity = 0; severity < std::size(keys); ++severity) {
    lane(json, keys[severity], lanes,
         [&](const TimeLanes::Column& column) { return column.events.of[severity]; });
  }
  lane(json, "holes", lanes,
       [](const TimeLanes::Column& column) -> std::uint64_t { return column.hole ? 1 : 0; });
}

void writeAxis(SummaryObject& object, const TimeAxis& axis) {
  object.member("time_axis", [&](JsonWriter& json) {
    json.beginObject();
    number(json, "begin", axis.begin);
    number(json, "end", axis.end);
    number(json, "columns", axis.columns);
    json.endObject();
  });
  object.list("time_lanes", axis.controllers, writeLanes);
}

}  // namespace

void appendSummaryJson(TextBuffer& to, const Summary& summary) {
  SummaryObject object(to);
  const bool any = summary.events.total() != 0;
  object.list("files", summary.files, writeFile);
  object.number("events", summary.events.total());
  object.member("first_timestamp",
                [&](JsonWriter& json) { timestamp(json, summary.time.first, any); });
  object.member("last_timestamp",
                [&](JsonWriter& json) { timestamp(json, summary.time.last, any); });
  object.member("event_types", [&](JsonWriter& json) {
    json.beginObject();
    severities(json, summary.events);
    number(json, "other", summary.events.of[other]);
    json.endObject();
  });
  object.list("logs", summary.logs, writeLog);
  object.list("sources", summary.sources, writeSource);
  object.list("frequent", summary.kinds, writeKind);
  object.list("last_errors", summary.lastErrors, writeError);
  writeAxis(object, summary.axis);
  object.member("left_out", [&](JsonWriter& json) {
    json.beginObject();
    number(json, "files", summary.leftOut.files);
    number(json, "log_events", summary.leftOut.logEvents);
    number(json, "frequent_events", summary.leftOut.kindEvents);
    json.endObject();
  });
  object.end();
}

}  // namespace mpuevent::tool

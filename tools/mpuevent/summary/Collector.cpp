#include "summary/Collector.h"

#include <algorithm>
#include <cstring>

#include "forms/Utf8.h"
#include "log/choosing/RecordBytes.h"

namespace mpuevent::tool {

namespace {

Severity severityOf(const Record& record) {
  switch (record.type()) {
    case 1:
      return informational;
    case 2:
      return warning;
    case 3:
      return error;
    default:
      return other;
  }
}

std::string utf8Of(std::string_view bytes) {
  Utf8Text text;
  return std::string(std::string_view(text.assignBytes(bytes)));
}

}  // namespace

void Collector::beginFile(const LogFile& file) {
  if (summary_.files.size() == mostFiles) {
    ++summary_.leftOut.files;
    return;
  }
  summary_.files.emplace_back();
  if (file.name) summary_.files.back().name = utf8Of(*file.name);
}

FileSummary* Collector::fileOf(const LogFile& file) {
  return file.number < summary_.files.size() ? &summary_.files[file.number] : nullptr;
}

void Collector::find(const LogFile& file, const log::Finding& finding) {
  FileSummary* const to = fileOf(file);
  if (to == nullptr || !finding.isDamage()) return;
  if (damage_ == mostDamage) {
    ++to->moreDamage;
  } else {
    ++damage_;
    to->damage.push_back(finding);
  }
}

void Collector::endFile(const LogFile& file, const log::Accounting& accounting) {
  summary_.accounting += accounting;
  if (FileSummary* const to = fileOf(file)) to->accounting = accounting;
}

void Collector::read(const log::LogUnit& unit) {
  FileSummary* const file = summary_.leftOut.files == 0 ? &summary_.files.back() : nullptr;
  if (file != nullptr) (unit.header != nullptr ? file->messages : file->records) = true;
  Log* const log = logOf(unit);
  if (log == nullptr) return;
  const Record record = log::recordOf(unit.record);
  const std::size_t room = log->summary.sequence.gaps().size() + (mostGaps - gaps_);
  if (log->summary.sequence.add(record.sequenceId(), record.timestamp(), room)) ++gaps_;
}

void Collector::take(const LogFile& file, const log::LogUnit& unit, std::uint64_t index) {
  const Record record = log::recordOf(unit.record);
  const Severity severity = severityOf(record);
  if (FileSummary* const to = fileOf(file)) ++to->events;
  ++summary_.events.of[severity];
  ++sources_[record.source()].of[severity];
  summary_.time.add(record.timestamp());
  kinds_.add(unit);
  if (severity == error) keepError(file, unit, index);
  if (Log* const log = logOf(unit)) {
    ++log->summary.events;
    bins_.add(log->group, severity, record.timestamp());
  } else {
    ++summary_.leftOut.logEvents;
  }
}

// Records of one log mostly come after another.
Collector::Log* Collector::logOf(const log::LogUnit& unit) {
  Identity identity;
  std::memcpy(identity.data(), unit.record.data(), identity.size());
  if (lastLog_ && identity == lastIdentity_) return &logs_[*lastLog_];
  lastIdentity_ = identity;
  for (const std::size_t serial :
       {Record::enclosureSerialNumberAt, Record::controllerSerialNumberAt}) {
    char* const begin = identity.data() + serial;
    char* const end = begin + Record::serialSize;
    std::fill(std::find(begin, end, '\0'), end, '\0');
  }
  const auto known = logsByIdentity_.find(std::string(identity.data(), identity.size()));
  if (known == logsByIdentity_.end()) return addLog(log::recordOf(unit.record), identity);
  lastLog_ = known->second;
  return &logs_[*lastLog_];
}

Collector::Log* Collector::addLog(const Record& record, const Identity& identity) {
  lastLog_.reset();
  if (logs_.size() == mostLogs) return nullptr;
  LogSummary log;
  log.enclosureSerial = firmwareText_(record.enclosureSerialNumber());
  log.controllerSerial = firmwareText_(record.controllerSerialNumber());
  log.controllerSlot = record.controllerSlot();
  log.logInstance = record.logInstance();
  lastLog_ = logs_.size();
  logsByIdentity_.emplace(std::string(identity.data(), identity.size()), logs_.size());
  const std::size_t group = groupOf(log);
  logs_.push_back({std::move(log), group});
  return &logs_.back();
}

std::size_t Collector::groupOf(const LogSummary& log) {
  for (std::size_t group = 0; group < controllers_.size(); ++group) {
    const TimeLanes& lanes = controllers_[group];
    if (lanes.controllerSerial == log.controllerSerial &&
        lanes.controllerSlot == log.controllerSlot) {
      return group;
    }
  }
  if (controllers_.size() > mostControllers) return mostControllers;
  const bool last = controllers_.size() == mostControllers;
  controllers_.push_back({last ? "other controllers" : log.controllerSerial,
                          last ? std::nullopt : std::optional<std::uint32_t>(log.controllerSlot),
                          {}});
  return bins_.addGroup();
}

void Collector::keepError(const LogFile& file, const log::LogUnit& unit, std::uint64_t index) {
  Error& error = errors_[static_cast<std::size_t>(errorCount_++ % mostErrors)];
  error.file = file.number;
  error.index = index;
  error.offset = unit.offset;
  error.header.clear();
  if (unit.header != nullptr) {
    error.header.assign(unit.header, unit.header + log::messageHeaderSize);
  }
  error.record.assign(unit.record.begin(), unit.record.end());
}

ErrorSummary Collector::describe(const Error& error) const {
  const log::LogUnit unit{error.offset, error.header.empty() ? nullptr : error.header.data(),
                          error.record};
  const std::unique_ptr<Pegasus::Quarn_Event> event = EventDecoder::decode(unit);
  const Record record = log::recordOf(unit.record);
  ErrorSummary summary;
  if (error.file < summary_.files.size()) summary.file = summary_.files[error.file].name;
  summary.index = error.index;
  summary.offset = error.offset;
  summary.controllerSerial = firmwareText_(record.controllerSerialNumber());
  summary.controllerSlot = record.controllerSlot();
  summary.sequenceId = record.sequenceId();
  summary.timestamp = record.timestamp();
  Utf8Text source;
  summary.source = std::string_view(source.assign(event->getSource()));
  summary.eventId = firmwareText_(event->getEventID());
  summary.summary = firmwareText_(event->getSummary());
  return summary;
}

void Collector::fillAxis() {
  summary_.axis = bins_.axis(mostColumns);
  std::vector<bool> any(controllers_.size());
  for (const Log& log : logs_) any[log.group] = any[log.group] || log.summary.events != 0;
  for (std::size_t group = 0; group < controllers_.size(); ++group) {
    if (any[group]) controllers_[group].columns = bins_.columns(group, mostColumns);
  }
  for (const Log& log : logs_) {
    if (log.summary.events == 0) continue;
    std::vector<TimeLanes::Column>& columns = controllers_[log.group].columns;
    for (const SequenceGap& gap : log.summary.sequence.gaps()) {
      const auto [from, to] = std::minmax(gap.afterTimestamp, gap.beforeTimestamp);
      std::size_t first = 0;
      std::size_t last = 0;
      if (!bins_.columnsOf(from, to, columns.size(), first, last)) continue;
      for (std::size_t at = first; at <= last; ++at) columns[at].hole = true;
    }
  }
  for (TimeLanes& lanes : controllers_) {
    if (!lanes.columns.empty()) summary_.axis.controllers.push_back(std::move(lanes));
  }
}

Summary Collector::finish() {
  fillAxis();
  for (Log& log : logs_) {
    if (log.summary.events != 0) summary_.logs.push_back(std::move(log.summary));
  }
  for (unsigned code = 0; code < sources_.size(); ++code) {
    if (sources_[code].total() == 0) continue;
    SourceSummary source;
    source.code = code;
    source.events = sources_[code];
    kinds_.describe(source);
    summary_.sources.push_back(std::move(source));
  }
  std::stable_sort(
      summary_.sources.begin(), summary_.sources.end(),
      [](const SourceSummary& a, const SourceSummary& b) { return a.events.of > b.events.of; });
  summary_.kinds = kinds_.byFrequency();
  summary_.leftOut.kindEvents = kinds_.leftOut();
  const std::uint64_t kept = std::min<std::uint64_t>(errorCount_, mostErrors);
  for (std::uint64_t at = errorCount_ - kept; at < errorCount_; ++at) {
    summary_.lastErrors.push_back(describe(errors_[static_cast<std::size_t>(at % mostErrors)]));
  }
  return std::move(summary_);
}

}  // namespace mpuevent::tool

#include "LogRun.h"

#include <unistd.h>

#include <algorithm>
#include <filesystem>
#include <stdexcept>
#include <system_error>
#include <vector>

#include "EventDecoder.h"
#include "StopSignals.h"
#include "forms/Numbers.h"
#include "log/input/InputFile.h"
#include "log/input/InputNames.h"
#include "log/input/PackingAdvice.h"
#include "redaction/LearntInputs.h"
#include "store/Store.h"

namespace mpuevent::tool {

namespace {

constexpr std::string_view kStandardInput = "-";

// A cursor costs a write to the disk.
constexpr std::chrono::seconds kSavePeriod(1);

std::string_view shownName(std::string_view input) {
  return input == kStandardInput ? "standard input" : input;
}

}  // namespace

LogRun::LogRun(const InputOptions& input, const ChoosingOptions& choosing, Output& output)
    : options_(input), choosing_(choosing), output_(output) {
  const auto make = [&choosing](const std::vector<std::string>& patterns) {
    return patterns.empty() ? nullptr : std::make_unique<Grep>(patterns, choosing.ignoreCase);
  };
  grep_ = make(choosing.patterns);
  notGrep_ = make(choosing.notPatterns);
}

void LogRun::forEachUnit(const VisitUnit& visit, const VisitFile& beginFile) {
  visit_ = visit;
  beginFile_ = beginFile;
  try {
    if (choosing_.first != 0 && choosing_.last != 0) readAll();
    visitKept();
  } catch (const Enough&) {
    // What was not read is nobody's business.
  }
}

void LogRun::readAll() {
  if (follows_ || cursor_) return readFollowed(options_.selection.names.front());
  log::InputNames names(options_.selection,
                        [this](const std::string& name, const std::string& reason) {
                          failed_ = true;
                          report(shownName(name), reason);
                        });
  std::vector<LearntInput> learnt;
  bool any = false;
  while (const std::optional<std::string> input = names.next()) {
    any = true;
    if (isPartOfStore(*input)) continue;
    if (redaction_ != nullptr) {
      learnt.push_back(learnInput(*input));
    } else {
      readInput(*input, names.several());
    }
  }
  for (LearntInput& input : learnt) readInput(input, names.several());
  if (!any && !failed_) complain("no files to read");
}

ExitCode LogRun::exitCode() const {
  if (failed_) return ExitCode::failed;
  if (damaged_) return inputDamaged;
  return visited_ != 0 ? decodedAll : nothingDecoded;
}

void LogRun::readInput(const std::string& input, bool several) {
  if (isStore(input)) return readStore(input, several);
  warnOfTerminal(input);
  readFile(input, log::InputFile(input), UINT64_MAX, several);
}

// The second time, of two.
void LogRun::readInput(LearntInput& input, bool several) {
  if (isStore(input.name)) return readStore(input.name, several);
  readFile(input.name, openAgain(input), input.bytes, several);
  input.file.reset();
}

LearntInput LogRun::learnInput(const std::string& input) {
  if (!isStore(input)) {
    warnOfTerminal(input);
    return learn(input, options_.form, *redaction_);
  }
  try {
    openStore(input, StoreAccess::read)->read({}, {}, [this](const StoredRecord& stored) {
      if (stored.isDecoded) redaction_->learn({stored.offset, nullptr, stored.record});
    });
  } catch (const StoreError&) {
    // It is told when it is read.
  }
  return {input, nullptr, 0};
}

void LogRun::warnOfTerminal(const std::string& input) {
  if (input == kStandardInput && ::isatty(STDIN_FILENO) != 0) {
    report(shownName(input), "reads a terminal; --help tells of files");
  }
}

void LogRun::readFile(const std::string& input, const log::InputFile& file, std::uint64_t most,
                      bool several) {
  std::uint64_t left = most;
  const auto roomFor = [](std::size_t room, std::uint64_t bytes) {
    return static_cast<std::size_t>(std::min<std::uint64_t>(room, bytes));
  };
  const log::LogSource source{input,
                              [&](unsigned char* to, std::size_t room) {
                                // What is done is not held back while more input is awaited.
                                output_.flush();
                                if (watch_.settle && file.idle()) settle();
                                const long got = file.read(to, roomFor(room, left));
                                if (got > 0) left -= static_cast<std::uint64_t>(got);
                                return got;
                              },
                              [&] { return file.idle(); },
                              [&](std::uint64_t offset, unsigned char* to, std::size_t room) {
                                return file.readAt(offset, to,
                                                   roomFor(room, most - std::min(offset, most)));
                              }};
  log::LogVisitor visitor;
  visitor.visit = [&](const log::LogSource& log) {
    const bool packed = log.name != input;
    const bool named = log.name != kStandardInput;
    readLog({named ? std::optional<std::string_view>(log.name) : std::nullopt, shownName(log.name),
             several || packed, files_++},
            log);
  };
  visitor.broken = [&](const std::string& name, const std::string& reason) {
    damaged_ = true;
    report(shownName(name), "broken: " + reason);
  };
  forEachLog(source, visitor);
}

void LogRun::follow(const FollowOptions& options) {
  if (!options.follow && options.cursorFile.empty()) return;
  if (redaction_ != nullptr) {
    throw std::invalid_argument("--redact reads all first: not with --follow and --cursor-file");
  }
  const std::vector<std::string>& names = options_.selection.names;
  if (names.size() != 1 || names[0] == kStandardInput || !options_.selection.namesFile.empty()) {
    throw std::invalid_argument("--follow and --cursor-file go with one FILE");
  }
  if (isStore(names[0])) {
    throw std::invalid_argument("--follow and --cursor-file go with logs, not with a store");
  }
  if (options.follow && choosing_.merge) {
    throw std::invalid_argument("--follow does not go with --merge, which needs all events first");
  }
  std::error_code unknown;
  const bool regular = std::filesystem::is_regular_file(names[0], unknown);
  if (!options.cursorFile.empty()) {
    if (!regular && std::filesystem::exists(names[0], unknown)) {
      throw std::invalid_argument("--cursor-file: " + names[0] + " is no regular file");
    }
    cursor_.emplace(options.cursorFile);
  }
  follows_ = options.follow;
}

void LogRun::readFollowed(const std::string& name) {
  const StopSignals signals;
  log::FollowedFile file(name, follows_, StopSignals::came);
  beginBehindCursor(file, name);
  log::LogSource source = sourceOf(file, name);
  source.read = [&](unsigned char* to, std::size_t room) {
    if (file.idle()) beforeWaiting();
    output_.flush();
    if (std::chrono::steady_clock::now() - saved_ > kSavePeriod) saveCursor();
    const long got = file.read(to, room);
    // What is there in part only is not damaged.
    if (StopSignals::came()) throw Enough();
    return got;
  };
  while (file.next()) {
    begin_ = file.begin();
    index_ = begin_ == 0 ? 0 : cursor_->place()->index + 1;
    readLog({name, name, false, files_++}, source);
  }
}

void LogRun::beginBehindCursor(log::FollowedFile& file, const std::string& name) {
  if (cursor_ && !cursor_->place()) {
    cursor_->saveBeginning(file.beginning());
  } else if (cursor_) {
    const log::LogPlace& place = *cursor_->place();
    if (!file.beginBehind(place.file, place.time) && place.file.length != 0) {
      report(name, "the event of the cursor, sequence id " + std::to_string(place.sequenceId) +
                       ", is neither there nor in a log rotated away; all is read");
    }
  }
  std::error_code unknown;
  if (follows_ && !std::filesystem::exists(name, unknown)) {
    report(name, "is not there yet, waiting for it");
  }
}

void LogRun::beforeWaiting() {
  if (keepsLast()) {
    visitKept();
    last_.clear();
    showedLast_ = true;
  }
  output_.flush();
  if (!cursor_) settle();
  saveCursor();
}

// Not while there are events that are kept to be written later.
void LogRun::saveCursor() {
  if (!cursor_ || choosing_.merge || keepsLast() || !settle()) return;
  output_.synchronise();
  cursor_->save();
  saved_ = std::chrono::steady_clock::now();
}

void LogRun::finish() {
  if (cursor_) output_.synchronise();
  output_.close();
  if (cursor_ && settle()) cursor_->save();
}

// A store is one file, although each of its events names the one that it came from.
void LogRun::readStore(const std::string& name, bool several) {
  const LogFile store{name, name, several, files_++};
  if (beginFile_) beginFile_(store);
  log::Accounting accounting;
  const auto read = [&](const log::Choice& choice, const Reading& reading, const auto& visitUnit) {
    openStore(name, StoreAccess::read)->read(choice, reading, [&](const StoredRecord& stored) {
      if (!stored.isDecoded) return;
      visitUnit(LogFile{stored.file, name, several, store.number},
                log::LogUnit{stored.offset, nullptr, stored.record}, stored.index);
    });
  };
  try {
    if (watch_.read) {
      // What was not chosen is not missing.
      read({}, {Reading::byLog},
           [this](const LogFile& file, const log::LogUnit& unit, std::uint64_t) {
             watch_.read(file, redaction_ != nullptr ? redaction_->redactHeader(unit) : unit);
           });
    }
    // The last are the store's business where nothing else decides which they are.
    const bool lastAlone = !choosing_.merge && !grep_ && !notGrep_ && !watch_.endFile;
    read(choosing_.choice, {Reading::asStored, lastAlone ? choosing_.last : std::nullopt},
         [&](const LogFile& file, const log::LogUnit& unit, std::uint64_t index) {
           ++accounting.events;
           accounting.eventBytes += unit.record.size();
           if (isChosen(unit)) take(file, unit, index);
           endIfEnough();
         });
  } catch (const StoreError& error) {
    failed_ = true;
    if (watch_.fail) watch_.fail(store);
    output_.flush();
    complain(error.what());
  }
  if (watch_.endFile) watch_.endFile(store, accounting);
}

void LogRun::readLog(const LogFile& file, const log::LogSource& source) {
  if (beginFile_) beginFile_(file);
  log::LogReader reader(
      source.read, options_.form, [&](const log::Finding& finding) { tell(file, finding); },
      source.isIdle, source.readAt);
  try {
    readUnits(file, reader);
  } catch (const Enough&) {
    if (watch_.endFile) watch_.endFile(file, reader.accounting());
    throw;
  }
  if (watch_.endFile) watch_.endFile(file, reader.accounting());
  sumUp(file, reader);
}

void LogRun::readUnits(const LogFile& file, log::LogReader& reader) {
  log::LogUnit unit;
  for (std::uint64_t index = index_; reader.next(unit); ++index) {
    unit.offset += begin_;
    if (watch_.read) watch_.read(file, redaction_ ? redaction_->redactHeader(unit) : unit);
    if (isChosen(unit)) take(file, unit, index);
    if (cursor_) cursor_->moveBehind(unit, unit.offset, index);
    endIfEnough();
  }
}

// The cheap tests come first.
bool LogRun::isChosen(const log::LogUnit& unit) {
  if (!choosing_.choice.chooses(unit.record)) return false;
  if (!grep_ && !notGrep_) return true;
  decoded_ = EventDecoder::decode(unit);
  return (!grep_ || grep_->matches(*decoded_)) && (!notGrep_ || !notGrep_->matches(*decoded_));
}

std::unique_ptr<Pegasus::Quarn_Event> LogRun::takeDecoded() {
  // Not of the redacted unit.
  return redaction_ != nullptr ? nullptr : std::move(decoded_);
}

void LogRun::take(const LogFile& file, const log::LogUnit& unit, std::uint64_t index) {
  if (choosing_.merge) {
    merge_.add(unit, keep(file), index);
  } else if (keepsLast()) {
    if (last_.size() == *choosing_.last) last_.pop_front();
    last_.emplace_back(unit, keep(file), index);
  } else {
    visit(file, unit, index);
  }
}

// The names of a file, of which an event is kept, last longer than it. Returns their place; for a
// merge, which wants a file's events one after another, a new one with each change of file.
std::size_t LogRun::keep(const LogFile& file) {
  const auto isThisOne = [&file](const FileNames& names) {
    return names.number == file.number && names.name == file.name;
  };
  const auto from =
      choosing_.merge && !keptFiles_.empty() ? keptFiles_.end() - 1 : keptFiles_.begin();
  const auto known = std::find_if(from, keptFiles_.end(), isThisOne);
  const auto place = static_cast<std::size_t>(known - keptFiles_.begin());
  if (known == keptFiles_.end()) {
    keptFiles_.push_back({file.name ? std::optional<std::string>(*file.name) : std::nullopt,
                          std::string(file.shownName), file.isOneOfSeveral, file.number});
  }
  return place;
}

void LogRun::visit(const LogFile& file, const log::LogUnit& unit, std::uint64_t index) {
  if (unit.record.size() > EventDecoder::longestRecord && !longRecordsAccepted_) {
    damaged_ = true;
    reportAt(file.shownName, unit.offset,
             "record of " + std::to_string(unit.record.size()) +
                 " bytes is longer than an envelope holds, the bytes after the first " +
                 std::to_string(EventDecoder::longestRecord) + " are left out");
  }
  visit_(file, redaction_ != nullptr ? redaction_->redact(unit) : unit, index);
  ++visited_;
}

void LogRun::endIfEnough() const {
  if (stopped_ || visited_ == choosing_.first) throw Enough();
}

void LogRun::visitKept() {
  const std::vector<const log::KeptUnit*> merged = merge_.order();
  std::size_t skipped = 0;
  if (choosing_.last && *choosing_.last < merged.size()) {
    skipped = merged.size() - static_cast<std::size_t>(*choosing_.last);
  }
  for (std::size_t at = skipped; at < merged.size(); ++at) visitKept(*merged[at]);
  for (const log::KeptUnit& unit : last_) visitKept(unit);
}

void LogRun::visitKept(const log::KeptUnit& unit) {
  const FileNames& names = keptFiles_[unit.file()];
  decoded_.reset();
  visit({names.name, names.shownName, names.isOneOfSeveral, names.number}, unit.unit(),
        unit.index());
  endIfEnough();
}

void LogRun::tell(const LogFile& file, const log::Finding& finding) {
  if (watch_.find) watch_.find(file, finding);
  const std::string_view name = file.shownName;
  damaged_ = damaged_ || finding.isDamage();
  if (finding.kind == log::Finding::Kind::notALog) {
    report(name, describe(finding));
  } else {
    reportAt(name, begin_ + finding.offset, describe(finding));
  }
}

void LogRun::sumUp(const LogFile& file, const log::LogReader& reader) {
  const std::string_view name = file.shownName;
  if (reader.readError() != 0) {
    failed_ = true;
    if (watch_.fail) watch_.fail(file);
    report(name, std::generic_category().message(reader.readError()));
  }
  const log::Accounting& accounting = reader.accounting();
  if (accounting.bytes() == 0) {
    const bool goesOn = follows_ || cursor_;
    if (reader.readError() == 0 && !goesOn) report(name, "no events, the input is empty");
  } else if (accounting.events != 0 && (options_.verbose || accounting.skippedBytes != 0)) {
    report(name, describe(accounting));
  } else if (accounting.events == 0 && reader.packing() != log::Packing::none) {
    report(name, packingAdvice(reader.packing(), file.name.value_or("")));
  }
}

void LogRun::reportAt(std::string_view name, std::uint64_t offset, std::string_view reason) {
  TextBuffer message;
  message += "offset ";
  appendHex(message, offset);
  message += ": ";
  message += reason;
  report(name, message.view());
}

// Where both go to the same place, a message comes after the events before it.
void LogRun::report(std::string_view name, std::string_view reason) {
  output_.flush();
  TextBuffer message;
  message += name;
  message += ": ";
  message += reason;
  complain(message.view());
}

}  // namespace mpuevent::tool

#include "LogRun.h"

#include <unistd.h>

#include <system_error>

#include "EventDecoder.h"
#include "forms/Numbers.h"
#include "log/input/InputFile.h"
#include "log/input/InputNames.h"

namespace mpuevent::tool {

namespace {

constexpr std::string_view kStandardInput = "-";

std::string_view shownName(std::string_view input) {
  return input == kStandardInput ? "standard input" : input;
}

}  // namespace

void LogRun::forEachUnit(const VisitUnit& visit) {
  log::InputNames names(options_.selection,
                        [this](const std::string& name, const std::string& reason) {
                          failed_ = true;
                          report(shownName(name), reason);
                        });
  bool any = false;
  while (const std::optional<std::string> input = names.next()) {
    any = true;
    readInput(*input, names.several(), visit);
  }
  if (!any && !failed_) complain("no files to read");
}

ExitCode LogRun::exitCode() const {
  if (failed_) return ExitCode::failed;
  if (damaged_) return inputDamaged;
  return anyUnit_ ? decodedAll : nothingDecoded;
}

void LogRun::readInput(const std::string& input, bool several, const VisitUnit& visit) {
  if (input == kStandardInput && ::isatty(STDIN_FILENO) != 0) {
    report(shownName(input), "reads a terminal; --help tells of files");
  }
  const log::InputFile file(input);
  const log::LogSource source{input,
                              [&](unsigned char* to, std::size_t room) {
                                // What is done is not held back while more input is awaited.
                                output_.flush();
                                return file.read(to, room);
                              },
                              [&] { return file.idle(); }};
  log::LogVisitor visitor;
  visitor.visit = [&](const log::LogSource& log) {
    const bool packed = log.name != input;
    const bool named = log.name != kStandardInput;
    readLog({named ? std::optional<std::string_view>(log.name) : std::nullopt, shownName(log.name),
             several || packed},
            log, visit);
  };
  visitor.broken = [&](const std::string& name, const std::string& reason) {
    damaged_ = true;
    report(shownName(name), "broken: " + reason);
  };
  forEachLog(source, visitor);
}

void LogRun::readLog(const LogFile& file, const log::LogSource& source, const VisitUnit& visit) {
  log::LogReader reader(
      source.read, options_.form,
      [&](const log::Finding& finding) { tell(file.shownName, finding); }, source.isIdle);
  log::LogUnit unit;
  std::uint64_t index = 0;
  for (; reader.next(unit); ++index) {
    if (unit.record.size() > EventDecoder::longestRecord) {
      damaged_ = true;
      reportAt(file.shownName, unit.offset,
               "record of " + std::to_string(unit.record.size()) +
                   " bytes is longer than an envelope holds, the bytes after the first " +
                   std::to_string(EventDecoder::longestRecord) + " are left out");
    }
    visit(file, unit, index);
  }
  anyUnit_ = anyUnit_ || index != 0;
  sumUp(file, reader);
}

void LogRun::tell(std::string_view name, const log::Finding& finding) {
  damaged_ = damaged_ || finding.isDamage();
  if (finding.kind == log::Finding::Kind::notALog) {
    report(name, describe(finding));
  } else {
    reportAt(name, finding.offset, describe(finding));
  }
}

void LogRun::sumUp(const LogFile& file, const log::LogReader& reader) {
  const std::string_view name = file.shownName;
  if (reader.readError() != 0) {
    failed_ = true;
    report(name, std::generic_category().message(reader.readError()));
  }
  const log::Accounting& accounting = reader.accounting();
  if (accounting.bytes() == 0) {
    if (reader.readError() == 0) report(name, "no events, the input is empty");
  } else if (accounting.events != 0 && (options_.verbose || accounting.skippedBytes != 0)) {
    report(name, describe(accounting));
  } else if (accounting.events == 0 && reader.compression() != nullptr) {
    report(name, describe(*reader.compression(), file.name.value_or("")));
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

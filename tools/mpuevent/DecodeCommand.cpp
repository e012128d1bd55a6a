#include "DecodeCommand.h"

#include <sys/ioctl.h>
#include <unistd.h>

#include <cstdlib>
#include <memory>
#include <optional>
#include <span>
#include <stdexcept>
#include <string>
#include <string_view>
#include <tuple>
#include <vector>

#include "EventDecoder.h"
#include "LogRun.h"
#include "Output.h"
#include "TraceLines.h"
#include "forms/EventForm.h"
#include "forms/Numbers.h"
#include "forms/Utf8.h"

namespace mpuevent::tool {

namespace {

bool colourWanted(Colour colour) {
  if (colour != Colour::automatic) return colour == Colour::always;
  const char* noColour = std::getenv("NO_COLOR");
  const char* terminal = std::getenv("TERM");
  return ::isatty(STDOUT_FILENO) != 0 && (noColour == nullptr || *noColour == '\0') &&
         terminal != nullptr && std::string_view(terminal) != "dumb";
}

// Of the terminal; 0 if there is none.
std::size_t terminalWidth() {
  winsize size{};
  return ::ioctl(STDOUT_FILENO, TIOCGWINSZ, &size) == 0 ? size.ws_col : 0;
}

void requireColumnsOf(OutputForm form, const std::string& columns) {
  const bool table = form == OutputForm::csv;
  if (!columns.empty() && !table && form != OutputForm::json && form != OutputForm::jsonl) {
    throw std::invalid_argument("--fields goes with -o csv, jsonl and json");
  }
  if (table && ("," + columns + ",").find(",fields,") != std::string::npos) {
    throw std::invalid_argument("--fields: a CSV has fields.KEY, not fields");
  }
}

std::unique_ptr<EventForm> makeForm(const DecodeOptions& options) {
  switch (options.output) {
    case OutputForm::shortLine:
      return makeShortForm(terminalWidth(), colourWanted(options.colour));
    case OutputForm::line:
      // A serial number must not command the terminal.
      return makeLineForm(options.exact && ::isatty(STDOUT_FILENO) == 0);
    case OutputForm::jsonl:
    case OutputForm::json:
      return makeJsonForm({options.payload, options.output == OutputForm::json, !options.noBody,
                           !options.noFields, options.columns});
    case OutputForm::csv:
      return makeCsvForm({options.payload, options.columns, !options.noHeader,
                          options.choosing.epoch.has_value(), ::isatty(STDOUT_FILENO) != 0});
    case OutputForm::text:
    case OutputForm::raw:
      break;
  }
  return makeTextForm(options.payload, colourWanted(options.colour));
}

struct FileCount {
  std::string name;
  std::uint64_t events = 0;
};

void appendCount(TextBuffer& to, std::uint64_t count, std::string_view of) {
  appendDecimal(to, count);
  if (!of.empty()) {
    to += ' ';
    appendVisible(to, of);
  }
  to += '\n';
}

ExitCode count(const DecodeOptions& options) {
  Output output;
  LogRun run(options.input, options.choosing, output);
  run.follow(options.following);
  std::vector<FileCount> counts;
  bool several = false;
  std::uint64_t total = 0;
  run.forEachUnit(
      [&](const LogFile& file, const log::LogUnit&, std::uint64_t) {
        ++counts[file.number].events;
        ++total;
      },
      [&](const LogFile& file) {
        counts.push_back({std::string(file.shownName)});
        several = several || file.isOneOfSeveral;
      });
  if (several) {
    for (const FileCount& file : counts) appendCount(output.text(), file.events, file.name);
  }
  appendCount(output.text(), total, several ? "total" : "");
  run.finish();
  return run.exitCode();
}

std::string_view asText(std::span<const unsigned char> bytes) {
  // NOLINTNEXTLINE(cppcoreguidelines-pro-type-reinterpret-cast): any bytes may be read as char.
  return {reinterpret_cast<const char*>(bytes.data()), bytes.size()};
}

/// The chosen messages and records as they are: a log again.
ExitCode copy(const DecodeOptions& options) {
  if (::isatty(STDOUT_FILENO) != 0) {
    complain("-o raw is not for terminals; send it to a file or another program");
    return failed;
  }
  Output output;
  LogRun run(options.input, options.choosing, output);
  std::optional<Redaction> redaction;
  if (options.redact) run.redact(redaction.emplace(Redaction::Serials::sameLength));
  run.follow(options.following);
  run.acceptLongRecords();
  run.forEachUnit([&](const LogFile&, const log::LogUnit& unit, std::uint64_t) {
    if (unit.header != nullptr) {
      output.text() += asText({unit.header, std::tuple_size_v<EventDecoder::MessageHeader>});
    }
    output.text() += asText(unit.record);
    output.flushIfLarge();
  });
  run.finish();
  return run.exitCode();
}

}  // namespace

ExitCode decode(const DecodeOptions& options) {
  requireColumnsOf(options.output, options.columns);
  if (options.count && options.following.follow) {
    throw std::invalid_argument("--follow does not go with --count, which needs all events first");
  }
  if (options.count) return count(options);
  if (options.output == OutputForm::raw) return copy(options);
  const std::unique_ptr<EventForm> form = makeForm(options);
  std::optional<TraceLines> trace;
  if (options.trace) trace.emplace();
  std::optional<Pegasus::FieldRecorder> fields;
  if (options.output != OutputForm::line) fields.emplace();
  EventDecoder decoder;
  Output output;
  LogRun run(options.input, options.choosing, output);
  std::optional<Redaction> redaction;
  if (options.redact) run.redact(redaction.emplace(Redaction::Serials::named));
  run.follow(options.following);

  LogRun::Watch watch;
  // Those of events that were only looked at.
  if (trace) watch.read = [&trace](const LogFile&, const log::LogUnit&) { trace->drop(); };
  run.watch(std::move(watch));
  form->begin(output.text());
  std::optional<std::size_t> lastFile;
  run.forEachUnit([&](const LogFile& file, const log::LogUnit& unit, std::uint64_t index) {
    if (file.isOneOfSeveral && lastFile != file.number) form->beginFile(file.shownName);
    lastFile = file.number;
    std::unique_ptr<Pegasus::Quarn_Event> event = run.takeDecoded();
    if (!event) {
      if (trace) trace->drop();
      event = decoder.decode(unit);
    }
    if (trace && trace->any()) {
      output.flush();
      trace->passOn();
    }
    if (redaction) redaction->name(*event);
    const std::size_t begin = output.text().size();
    form->write(
        {file.name, index, unit.offset, unit.record, EventDecoder::className(*event), *event,
         fields ? &*fields : nullptr, options.choosing.timeOf(event->getTimestamp())},
        output.text());
    if (redaction) redaction->name(output.text(), begin);
    output.flushIfLarge();
  });
  form->end(output.text());
  run.finish();
  return run.exitCode();
}

}  // namespace mpuevent::tool

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
#include <utility>
#include <vector>

#include "EventDecoder.h"
#include "LogRun.h"
#include "Output.h"
#include "TraceLines.h"
#include "forms/EventForm.h"
#include "forms/Numbers.h"
#include "forms/Utf8.h"
#include "log/choosing/RecordBytes.h"

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
  bool failed = false;

  bool wasRead() const { return !failed || events != 0; }
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
  LogRun::Watch watch;
  watch.fail = [&](const LogFile& file) { counts[file.number].failed = true; };
  run.watch(std::move(watch));
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
  std::erase_if(counts, [](const FileCount& file) { return !file.wasRead(); });
  if (several) {
    for (const FileCount& file : counts) appendCount(output.text(), file.events, file.name);
  }
  if (!counts.empty() || run.exitCode() != failed) {
    appendCount(output.text(), total, several ? "total" : "");
  }
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

namespace {

/// Decodes the chosen events and writes them in their form.
class Decoding {
 public:
  explicit Decoding(const DecodeOptions& options)
      : options_(options),
        form_(makeForm(options)),
        run_(options.input, options.choosing, output_) {
    if (options.trace) trace_.emplace();
    const bool bodyShown =
        options.output != OutputForm::line && options.output != OutputForm::shortLine;
    if (bodyShown) fields_.emplace();
    if (options.redact) run_.redact(redaction_.emplace(Redaction::Serials::named));
    run_.follow(options.following);
    LogRun::Watch watch;
    // Those of events that were only looked at.
    if (trace_) watch.read = [this](const LogFile&, const log::LogUnit&) { trace_->drop(); };
    run_.watch(std::move(watch));
  }

  ExitCode run() {
    form_->begin(output_.text());
    run_.forEachUnit([this](const LogFile& file, const log::LogUnit& unit, std::uint64_t index) {
      if (file.isOneOfSeveral && lastFile_ != file.number) form_->beginFile(file.shownName);
      lastFile_ = file.number;
      write(file, unit, index);
      output_.flushIfLarge();
    });
    form_->end(output_.text());
    run_.finish();
    return run_.exitCode();
  }

 private:
  void write(const LogFile& file, const log::LogUnit& unit, std::uint64_t index) {
    const std::unique_ptr<Pegasus::Quarn_Event> event = decode(unit);
    const std::size_t begin = output_.text().size();
    const Record record = log::headerOf(unit.record);
    form_->write(
        {file.name, index, unit.offset, unit.record, EventDecoder::className(record.source()),
         *event, fields_ ? &*fields_ : nullptr, options_.choosing.timeOf(record.timestamp())},
        output_.text());
    if (redaction_) redaction_->name(output_.text(), begin);
  }

  std::unique_ptr<Pegasus::Quarn_Event> decode(const log::LogUnit& unit) {
    std::unique_ptr<Pegasus::Quarn_Event> event = run_.takeDecoded();
    if (!event) {
      if (trace_) trace_->drop();
      event = EventDecoder::decode(unit);
    }
    if (trace_ && trace_->any()) {
      output_.flush();
      trace_->passOn();
    }
    // Before they are cut.
    if (redaction_) redaction_->name(*event);
    return event;
  }

  const DecodeOptions& options_;
  const std::unique_ptr<EventForm> form_;
  std::optional<TraceLines> trace_;
  std::optional<Pegasus::FieldRecorder> fields_;
  std::optional<Redaction> redaction_;
  Output output_;
  LogRun run_;
  std::optional<std::size_t> lastFile_;
};

}  // namespace

ExitCode decode(const DecodeOptions& options) {
  requireColumnsOf(options.output, options.columns);
  if (options.count && options.following.follow) {
    throw std::invalid_argument("--follow does not go with --count, which needs all events first");
  }
  if (options.count) return count(options);
  if (options.output == OutputForm::raw) return copy(options);
  return Decoding(options).run();
}

}  // namespace mpuevent::tool

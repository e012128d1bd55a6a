#include "DecodeCommand.h"

#include <unistd.h>

#include <cstdlib>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <system_error>

#include "EventDecoder.h"
#include "Output.h"
#include "TraceLines.h"
#include "forms/EventForm.h"
#include "forms/Numbers.h"
#include "log/input/InputFile.h"

namespace mpuevent::tool {

namespace {

bool colourWanted(Colour colour) {
  if (colour != Colour::automatic) return colour == Colour::always;
  const char* noColour = std::getenv("NO_COLOR");
  const char* terminal = std::getenv("TERM");
  return ::isatty(STDOUT_FILENO) != 0 && (noColour == nullptr || *noColour == '\0') &&
         terminal != nullptr && std::string_view(terminal) != "dumb";
}

std::unique_ptr<EventForm> makeForm(const DecodeOptions& options) {
  switch (options.output) {
    case OutputForm::line:
      // A serial number must not command the terminal.
      return makeLineForm(options.exact && ::isatty(STDOUT_FILENO) == 0);
    case OutputForm::jsonl:
      return makeJsonForm(options.payload);
    case OutputForm::text:
      break;
  }
  return makeTextForm(options.payload, colourWanted(options.colour));
}

class DecodeRun {
 public:
  explicit DecodeRun(const DecodeOptions& options)
      : input_(options.input.form), form_(makeForm(options)) {
    if (options.trace) trace_.emplace();
    if (options.output != OutputForm::line) fields_.emplace();
  }

  void decodeFile(const std::string& file) {
    const std::string name = file == "-" ? "standard input" : file;
    const log::InputFile input(file);
    if (file == "-" && ::isatty(STDIN_FILENO) != 0) {
      report("reading standard input, which is a terminal; --help tells of files");
    }
    log::LogReader reader(
        [&](unsigned char* to, std::size_t room) {
          // What has been decoded is not held back while more input is awaited.
          output_.flush();
          return input.read(to, room);
        },
        input_,
        [&](std::uint64_t offset, std::string_view reason) { damage(name, offset, reason); });

    const std::optional<std::string_view> given =
        file == "-" ? std::nullopt : std::optional<std::string_view>(file);
    if (several_) form_->beginFile(name);
    log::LogUnit unit;
    std::uint64_t index = 0;
    for (; reader.next(unit); ++index) {
      if (unit.record.size() > EventDecoder::longestRecord) {
        damage(name, unit.offset,
               "record of " + std::to_string(unit.record.size()) +
                   " bytes is longer than an envelope holds, the bytes after the first " +
                   std::to_string(EventDecoder::longestRecord) + " are left out");
      }
      write(given, unit, index);
    }
    wroteAny_ = wroteAny_ || index != 0;
    if (reader.readError() != 0) {
      failed_ = true;
      report(name + ": " + std::generic_category().message(reader.readError()));
    } else if (reader.offset() == 0) {
      report(name + ": no events, the input is empty");
    }
  }

  /// The events of each file are told to be its own.
  void expectSeveral(bool several) { several_ = several; }

  ExitCode finish() {
    output_.close();
    if (failed_) return ExitCode::failed;
    if (damaged_) return inputDamaged;
    return wroteAny_ ? decodedAll : nothingDecoded;
  }

 private:
  void write(std::optional<std::string_view> file, const log::LogUnit& unit, std::uint64_t index) {
    const std::unique_ptr<Pegasus::Quarn_Event> event = decoder_.decode(unit);
    if (trace_ && trace_->any()) {
      output_.flush();
      trace_->passOn();
    }
    form_->write({file, index, unit.offset, unit.record, EventDecoder::className(*event), *event,
                  fields_ ? &*fields_ : nullptr},
                 output_.text());
    output_.flushIfLarge();
  }

  void damage(const std::string& name, std::uint64_t offset, std::string_view reason) {
    damaged_ = true;
    TextBuffer message;
    message += name;
    message += ": offset ";
    appendHex(message, offset);
    message += ": ";
    message += reason;
    report(message.view());
  }

  // Where both go to the same place, a message comes after the events before it.
  void report(std::string_view message) {
    output_.flush();
    complain(message);
  }

  const log::LogForm input_;
  const std::unique_ptr<EventForm> form_;
  std::optional<TraceLines> trace_;
  std::optional<Pegasus::FieldRecorder> fields_;  // of the event decoded last
  EventDecoder decoder_;
  Output output_;
  bool several_ = false;
  bool wroteAny_ = false;
  bool failed_ = false;
  bool damaged_ = false;
};

}  // namespace

ExitCode decode(const DecodeOptions& options) {
  DecodeRun run(options);
  run.expectSeveral(options.input.files.size() > 1);
  for (const std::string& file : options.input.files) run.decodeFile(file);
  if (options.input.files.empty()) run.decodeFile("-");
  return run.finish();
}

}  // namespace mpuevent::tool

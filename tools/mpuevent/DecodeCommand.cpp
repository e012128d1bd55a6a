#include "DecodeCommand.h"

#include <unistd.h>

#include <cstdlib>
#include <memory>
#include <optional>
#include <string_view>

#include "EventDecoder.h"
#include "LogRun.h"
#include "Output.h"
#include "TraceLines.h"
#include "forms/EventForm.h"

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

}  // namespace

ExitCode decode(const DecodeOptions& options) {
  const std::unique_ptr<EventForm> form = makeForm(options);
  std::optional<TraceLines> trace;
  if (options.trace) trace.emplace();
  std::optional<Pegasus::FieldRecorder> fields;
  if (options.output != OutputForm::line) fields.emplace();
  EventDecoder decoder;
  Output output;
  LogRun run(options.input, output);

  run.forEachUnit([&](const LogFile& file, const log::LogUnit& unit, std::uint64_t index) {
    if (index == 0 && file.isOneOfSeveral) form->beginFile(file.shownName);
    const std::unique_ptr<Pegasus::Quarn_Event> event = decoder.decode(unit);
    if (trace && trace->any()) {
      output.flush();
      trace->passOn();
    }
    form->write({file.name, index, unit.offset, unit.record, EventDecoder::className(*event),
                 *event, fields ? &*fields : nullptr},
                output.text());
    output.flushIfLarge();
  });
  output.close();
  return run.exitCode();
}

}  // namespace mpuevent::tool

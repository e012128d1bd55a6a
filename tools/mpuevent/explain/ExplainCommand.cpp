#include "explain/ExplainCommand.h"

#include <MPUEvent/FieldRecorder.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <memory>
#include <optional>
#include <string_view>
#include <system_error>
#include <vector>

#include "EventDecoder.h"
#include "LogRun.h"
#include "Output.h"
#include "explain/ExplainForms.h"
#include "explain/HexText.h"
#include "forms/EventForm.h"
#include "forms/Numbers.h"
#include "log/choosing/KeptUnit.h"
#include "log/choosing/RecordBytes.h"
#include "log/input/InputFile.h"
#include "store/Store.h"

namespace mpuevent::tool {

namespace {

using namespace std::chrono_literals;

// With this, the longest record takes less than a second.
constexpr auto kLimit = 800ms;
constexpr std::size_t kMostNamed = 8;

std::string_view shownName(const ExplainOptions& options) {
  return options.file == "-" ? std::string_view("standard input") : options.file;
}

void report(const ExplainOptions& options, std::string_view text) {
  complain(std::string(shownName(options)) + ": " + std::string(text));
}

bool matches(const ExplainOptions& options, const log::LogUnit& unit, std::uint64_t index) {
  if (options.index) return index == *options.index;
  if (options.sequence) return log::recordOf(unit.record).sequenceId() == *options.sequence;
  const std::size_t size =
      (unit.header == nullptr ? 0 : log::messageHeaderSize) + unit.record.size();
  return *options.at >= unit.offset && *options.at - unit.offset < size;
}

// Several events may have the sequence id: controllers count for themselves.
void reportOthers(const ExplainOptions& options, const std::vector<std::uint64_t>& others) {
  std::string text = "the sequence id is also that of --index ";
  for (std::size_t i = 0; i < std::min(others.size(), kMostNamed); ++i) {
    if (i != 0) text += ", ";
    text += std::to_string(others[i]);
  }
  if (others.size() > kMostNamed) {
    text += " and of " + std::to_string(others.size() - kMostNamed) + " more";
  }
  report(options, text);
}

void reportNothing(const ExplainOptions& options, std::uint64_t events) {
  TextBuffer text;
  text += "no event ";
  if (options.at) {
    text += "at offset ";
    appendHex(text, *options.at);
  } else {
    text += options.index ? "with index " : "with sequence id ";
    appendDecimal(text, options.index ? *options.index : *options.sequence);
  }
  if (events != 0) {
    text += "; it has ";
    appendDecimal(text, events);
    text += events == 1 ? " event" : " events";
  }
  report(options, text.view());
}

// The event that was asked for, in the first log that has it, and what became of the logs.
ExitCode findEvent(const ExplainOptions& options, Output& output,
                   std::optional<log::KeptUnit>& found) {
  InputOptions input;
  input.selection.names = {options.file};
  input.form = options.form;
  ChoosingOptions choosing;
  // A store finds it; of a file all is read, to tell of others that have the id.
  if (options.sequence && isStore(options.file)) {
    const auto id = static_cast<std::uint32_t>(*options.sequence);
    choosing.choice.require(log::HeaderNumber::sequenceId, {
                                                               {id, id}
    });
  }
  LogRun run(input, choosing, output);
  std::uint64_t events = 0;
  std::vector<std::uint64_t> others;
  run.forEachUnit([&](const LogFile&, const log::LogUnit& unit, std::uint64_t index) {
    ++events;
    if (!matches(options, unit, index)) return;
    if (!found) {
      found.emplace(unit, 0, index);
      if (!options.sequence) run.stop();
    } else {
      others.push_back(index);
    }
  });
  if (!others.empty()) reportOthers(options, others);
  if (!found && events != 0) reportNothing(options, events);
  return found || run.exitCode() != decodedAll ? run.exitCode() : nothingDecoded;
}

// One message or record. Pasted text may hold less than all of it; what there is can be decoded.
ExitCode takeEvent(const ExplainOptions& options, std::span<const unsigned char> bytes,
                   std::optional<log::KeptUnit>& found) {
  const std::size_t smallest = log::messageHeaderSize + Record::headerSize;
  const std::size_t total =
      bytes.size() < smallest ? 0 : RecordView(bytes.data(), bytes.size()).u16(log::totalLengthAt);
  const bool looksLikeMessage =
      total >= smallest &&
      (total == bytes.size() ||
       total == smallest + log::recordOf(bytes.subspan(log::messageHeaderSize)).structLength());
  const bool message = options.form == log::LogForm::messages ||
                       (options.form == log::LogForm::automatic && looksLikeMessage);
  const auto record = bytes.subspan(std::min(bytes.size(), message ? log::messageHeaderSize : 0));
  if (record.size() < Record::headerSize) {
    report(options, std::to_string(bytes.size()) + " bytes are no " +
                        (message ? "message" : "record") + ": it has " +
                        std::to_string(message ? smallest : Record::headerSize) + " or more");
    return inputDamaged;
  }
  const std::size_t length = looksLikeMessage && message
                                 ? total - log::messageHeaderSize
                                 : Record::headerSize + log::recordOf(record).structLength();
  const std::size_t held = std::min(length, record.size());
  found.emplace(log::LogUnit{0, message ? bytes.data() : nullptr, record.first(held)}, 0, 0);
  if (record.size() > held) {
    report(options, std::to_string(record.size() - held) + " bytes behind the record left out");
  }
  if (held == length) return decodedAll;
  report(options, "the record is cut off: it has " + std::to_string(length) + " bytes, of which " +
                      std::to_string(held) + " are there");
  return inputDamaged;
}

ExitCode readHexEvent(const ExplainOptions& options, std::optional<log::KeptUnit>& found) {
  const log::InputFile file(options.file);
  if (options.file == "-" && ::isatty(STDIN_FILENO) != 0) {
    report(options, "reads a terminal; Ctrl-D ends what is pasted");
  }
  std::string text;
  std::array<unsigned char, 65536> room;
  long got = 0;
  while ((got = file.read(room.data(), room.size())) > 0) {
    text.append(room.begin(), room.begin() + got);
  }
  const HexText hex = got < 0 ? HexText{{}, std::generic_category().message(static_cast<int>(-got))}
                              : readHexText(text);
  if (hex.error.empty()) return takeEvent(options, hex.bytes, found);
  report(options, hex.error);
  return failed;
}

void writeEvent(const ExplainOptions& options, const log::KeptUnit& found, TextBuffer& to) {
  const log::LogUnit unit = found.unit();
  const Pegasus::FieldRecorder fields;
  const auto event = EventDecoder::decode(unit);
  const bool named = options.file != "-";
  makeTextForm(ShowPayload::never, false)
      ->write({named ? std::optional<std::string_view>(options.file) : std::nullopt, found.index(),
               unit.offset, unit.record,
               EventDecoder::className(log::headerOf(unit.record).source()), *event, &fields},
              to);
}

}  // namespace

ExitCode explain(const ExplainOptions& options) {
  if (!options.hex && !options.at && !options.index && !options.sequence) {
    complain("which event? Name it by --at, --index or --sequence; see 'mpuevent help explain'");
    return failed;
  }
  Output output;
  std::optional<log::KeptUnit> found;
  const ExitCode result =
      options.hex ? readHexEvent(options, found) : findEvent(options, output, found);
  if (found) {
    const std::vector<ByteRun> runs = Examination(found->unit(), kLimit).runs();
    if (options.output == ExplainOutput::json) {
      appendExplainedJson(output.text(), found->unit(), runs);
    } else {
      appendExplainedDump(output.text(), found->unit(), runs);
      output.text() += '\n';
      writeEvent(options, *found, output.text());
    }
  }
  output.close();
  return result;
}

}  // namespace mpuevent::tool

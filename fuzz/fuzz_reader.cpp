// Arbitrary bytes as a log file, taken apart by the tool's reader.
#include <log/framing/LogReader.h>

#include <algorithm>
#include <charconv>
#include <cstring>
#include <string>
#include <string_view>
#include <vector>

#include "FuzzTarget.h"

namespace {

using mpuevent::fuzz::require;
using mpuevent::log::LogForm;
using mpuevent::log::LogReader;
using mpuevent::log::LogUnit;

// The reader's; an input repeated until it is longer makes the window move.
constexpr std::size_t kWindow = std::size_t{512} << 10;
constexpr std::size_t kRepeatedSizes = 64;  // seldom: it takes far longer

/// What the reader gave: a unit or a report, and how many bytes of the log that accounts for.
struct Step {
  std::uint64_t offset;
  std::size_t length;
  std::string reason;  // empty for a unit

  bool operator==(const Step&) const = default;
};

std::size_t numberBehind(std::string_view text, std::string_view mark) {
  const std::size_t at = text.find(mark);
  require(at != std::string_view::npos, "a report says how much is passed");
  std::size_t number = 0;
  std::from_chars(text.data() + at + mark.size(), text.data() + text.size(), number);
  return number;
}

std::size_t lengthPassed(std::string_view reason) {
  if (reason.find("the record's own") != std::string_view::npos) return 0;
  if (reason.find("is shorter") != std::string_view::npos) {
    return 64 + numberBehind(reason, "record of ");
  }
  return numberBehind(reason,
                      reason.find(" skipped") == std::string_view::npos ? "cut off after " : "; ");
}

/// Reads a log that comes in pieces of sizes from `sizes`, over and over.
std::vector<Step> read(std::string_view log, LogForm form, std::string_view sizes) {
  std::vector<Step> steps;
  std::size_t at = 0;
  std::size_t piece = 0;
  const unsigned char* window = nullptr;
  const auto next = [&](unsigned char* to, std::size_t room) {
    window = window == nullptr ? to : window;
    require(room > 0 && to >= window && to + room <= window + kWindow, "one window, of one size");
    const auto size = std::size_t{static_cast<unsigned char>(sizes[piece++ % sizes.size()])};
    const std::size_t count = std::min({room, log.size() - at, size * size + 1});
    std::memcpy(to, log.data() + at, count);
    at += count;
    return static_cast<long>(count);
  };
  LogReader reader(next, form, [&steps](std::uint64_t offset, std::string_view reason) {
    steps.push_back({offset, lengthPassed(reason), std::string(reason)});
  });
  LogUnit unit;
  while (reader.next(unit)) {
    const std::size_t header = unit.header == nullptr ? 0 : 64;
    const unsigned char* begin = unit.record.data() - header;
    const std::size_t length = unit.record.size() + header;
    require(unit.record.size() >= 152, "a record has a header");
    require(header == 0 || unit.header == begin, "a message is one piece");
    require(unit.offset <= log.size() && length <= log.size() - unit.offset, "units in the log");
    require(std::memcmp(begin, log.data() + unit.offset, length) == 0, "units as in the log");
    steps.push_back({unit.offset, length, {}});
  }
  require(reader.offset() == log.size() && reader.readError() == 0, "all of the log is passed");
  return steps;
}

}  // namespace

/// The input: form, sizes of the pieces (3 bytes), log; its size decides whether
/// the log is repeated.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  std::string input(data, data + size);
  input.resize(std::max<std::size_t>(size, 4));
  const auto form = static_cast<LogForm>(static_cast<unsigned char>(input[0]) % 3);
  std::string log = input.substr(4);
  while (size % kRepeatedSizes == 0 && !log.empty() && log.size() <= kWindow) log += log;

  std::vector<Step> steps;
  mpuevent::fuzz::inLinearTime(log.size(), [&] { steps = read(log, form, "\xFF"); });
  std::uint64_t passed = 0;
  for (const Step& step : steps) {
    require(step.offset == passed, "units and reports follow one another without a gap");
    passed += step.length;
  }
  require(passed == log.size(), "units and reports account for the log");
  require(read(log, form, std::string_view(input).substr(1, 3)) == steps,
          "the same whatever the pieces");
  return 0;
}

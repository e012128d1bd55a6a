// Arbitrary bytes as a log file, taken apart by the reader.
#include <log/framing/LogReader.h>

#include <algorithm>
#include <cstring>
#include <string>
#include <string_view>
#include <vector>

#include "FuzzTarget.h"

namespace {

using mpuevent::fuzz::require;
using mpuevent::log::Finding;
using mpuevent::log::LogForm;
using mpuevent::log::LogReader;
using mpuevent::log::LogUnit;

// The reader's; an input repeated until it is longer makes the window move.
constexpr std::size_t kWindow = std::size_t{512} << 10;
constexpr std::uint32_t kRepeatedShare = 1 << 14;  // one takes as long as thousands of others
constexpr std::uint32_t kThoroughShare = 8;

/// What the reader gave: a unit, or a finding.
struct Step {
  bool isUnit;
  Finding finding;  // of a unit only offset and length

  bool operator==(const Step&) const = default;
  bool accountsForBytes() const {
    return isUnit || finding.passesOver() || finding.kind == Finding::Kind::padding;
  }
};

void requireUnit(const LogUnit& unit, std::string_view log) {
  const std::size_t header = unit.header == nullptr ? 0 : 64;
  const unsigned char* begin = unit.record.data() - header;
  const std::size_t length = unit.record.size() + header;
  require(unit.record.size() >= 152, "a record has a header");
  require(header == 0 || unit.header == begin, "a message is one piece");
  require(unit.offset <= log.size() && length <= log.size() - unit.offset, "units in the log");
  require(std::memcmp(begin, log.data() + unit.offset, length) == 0, "units as in the log");
}

/// Reads a log that comes in pieces of sizes from `sizes`, over and over; between them the source
/// is idle if `pauses`.
std::vector<Step> read(std::string_view log, LogForm form, std::string_view sizes, bool pauses) {
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
  LogReader reader(
      next, form,
      [&steps](const Finding& finding) {
        steps.push_back({false, finding});
      },
      [pauses] { return pauses; });
  std::uint64_t events = 0;
  for (LogUnit unit; reader.next(unit); ++events) {
    requireUnit(unit, log);
    const std::size_t header = unit.header == nullptr ? 0 : 64;
    steps.push_back({
        true, {Finding::Kind::skipped, unit.offset, unit.record.size() + header}
    });
  }
  require(reader.accounting().events == events, "every event counted");
  require(reader.accounting().bytes() == log.size(), "events, skipped and padding are all bytes");
  require(reader.readError() == 0, "no error");
  return steps;
}

void requireNoGap(const std::vector<Step>& steps, std::size_t size) {
  std::uint64_t passed = 0;
  for (const Step& step : steps) {
    require(step.finding.offset == passed, "units and findings in order, without a gap");
    if (step.accountsForBytes()) passed += step.finding.length;
    require(!describe(step.finding).empty(), "findings have words");
  }
  require(passed == size, "units and findings account for the log");
}

}  // namespace

/// The input: form, sizes of the pieces (3 bytes), log. A small share are repeated, too, and read
/// as logs of which the window holds a part.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  std::string input(data, data + size);
  input.resize(std::max<std::size_t>(size, 4));
  const auto form = static_cast<LogForm>(static_cast<unsigned char>(input[0]) % 3);
  const std::string_view sizes = std::string_view(input).substr(1, 3);
  std::string log = input.substr(4);
  if (mpuevent::fuzz::isThorough(input, kRepeatedShare) && !log.empty()) {
    while (log.size() <= kWindow) log += log;
    mpuevent::fuzz::inLinearTime(log.size(), [&](std::size_t part) {
      return [&, part] { read(std::string_view(log).substr(0, part), form, "\xFF", false); };
    });
  }
  const std::vector<Step> steps = read(log, form, sizes, false);
  requireNoGap(steps, log.size());
  if (mpuevent::fuzz::isThorough(input, kThoroughShare)) {
    require(read(log, form, "\xFF", false) == steps, "the same whatever the pieces");
    requireNoGap(read(log, form, sizes, true), log.size());
  }
  return 0;
}

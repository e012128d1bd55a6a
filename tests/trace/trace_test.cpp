// A program of its own, with a trace service of its own, which the library asks in place of the
// stand-in.
#include <MPUEvent/ISNSC_Event.h>
#include <MPUEvent/OB0_Event.h>
#include <ProviderTraceServices.h>
#include <gtest/gtest.h>

#include <iostream>
#include <limits>
#include <sstream>
#include <string>
#include <vector>

#include "support/RecordBuilder.h"

namespace {

/// How many times yet the service answers that lines are wanted.
int wantedAnswers = 0;

}  // namespace

namespace Pegasus {

bool ProviderTraceServices::ptsGetTraceSuppressForPid() { return wantedAnswers-- <= 0; }
std::string ProviderTraceServices::ptsGetTimeStampString() { return "[12:00]"; }
std::string ProviderTraceServices::ptsGetPidString() { return "[77]"; }
std::string ProviderTraceServices::ptsGetFileLineString(const char* file, int line, int width) {
  return std::string(file) + "|" + std::to_string(line) + "|" + std::to_string(width);
}
std::string ProviderTraceServices::ptsGetIndentString() { return "-->"; }

}  // namespace Pegasus

namespace {

using Lines = std::vector<std::string>;
using mpuevent::support::RecordBuilder;

/// The lines of an event's construction if the service wants as many as `wanted`.
template <class Event>
Lines linesOf(const std::string& record, int wanted) {
  std::string bytes = record;
  std::ostringstream written;
  std::streambuf* terminal = std::cout.rdbuf(written.rdbuf());
  wantedAnswers = wanted;
  const Event event(reinterpret_cast<Pegasus::EmpEvLogMsg_s*>(bytes.data()),
                    static_cast<int>(bytes.size()));
  std::cout.rdbuf(terminal);
  Lines lines;
  std::istringstream text(written.str());
  for (std::string line; std::getline(text, line);) lines.push_back(line);
  return lines;
}

TEST(Trace, PutsTheServicesTextsTogether) {
  EXPECT_EQ(linesOf<Pegasus::OB0_Event>(RecordBuilder().source(13).id(26).str(), 1),
            Lines{"[12:00] [77] OB0_Event|99|30:----: -->Unknown EventID: 0x26"});
}

TEST(Trace, AsksTheServiceOnceForEachLine) {
  const auto expectFirst = [](const auto& linesFor, std::size_t count) {
    const Lines all = linesFor(std::numeric_limits<int>::max());
    ASSERT_EQ(all.size(), count);
    for (std::size_t wanted = 0; wanted <= count; ++wanted) {
      SCOPED_TRACE(wanted);
      const Lines first(all.begin(), all.begin() + static_cast<std::ptrdiff_t>(wanted));
      EXPECT_EQ(linesFor(static_cast<int>(wanted)), first);
    }
  };
  // Three codes without a word, three lines for the length, and the decoder's own.
  const std::string record =
      RecordBuilder().source(200).category(100).type(99).structLength(40).str();
  expectFirst([&](int wanted) { return linesOf<Pegasus::OB0_Event>(record, wanted); }, 7);
  expectFirst([&](int wanted) { return linesOf<Pegasus::ISNSC_Event>(record, wanted); }, 8);
}

}  // namespace

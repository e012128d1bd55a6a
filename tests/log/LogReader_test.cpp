#include "log/framing/LogReader.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cerrno>
#include <random>
#include <string>
#include <vector>

#include "log/input/PackingAdvice.h"
#include "support/RecordBuilder.h"

namespace mpuevent::log {
namespace {

using support::RecordBuilder;
using Lines = std::vector<std::string>;
constexpr LogForm automatic = LogForm::automatic;

/// Gives out bytes, at most `step` at a time, and then the end or an error.
ReadBytes source(const std::string& bytes, std::size_t step, int error = 0) {
  return [&bytes, step, error, at = std::size_t{0}](unsigned char* to, std::size_t room) mutable {
    const std::size_t count = std::min({step, room, bytes.size() - at});
    std::copy_n(bytes.begin() + static_cast<std::ptrdiff_t>(at), count, to);
    at += count;
    return count == 0 ? -long{error} : static_cast<long>(count);
  };
}

/// What the reader makes of the bytes: "OFFSET: #SEQUENCE_ID, SIZE bytes" for each record, "OFFSET:
/// FINDING" in words for the rest.
Lines readLog(const std::string& bytes, LogForm form = automatic,
              std::size_t step = std::string::npos) {
  Lines seen;
  const auto tell = [&seen](std::uint64_t offset, const std::string& text) {
    seen.push_back(std::to_string(offset) + ": " + text);
  };
  LogReader reader(source(bytes, step), form,
                   [&](const Finding& finding) { tell(finding.offset, describe(finding)); });
  for (LogUnit unit; reader.next(unit);) {
    const RecordView record(unit.record.data(), unit.record.size());
    tell(unit.offset,
         "#" + std::to_string(record.u32(136)) + ", " + std::to_string(record.size()) + " bytes");
  }
  EXPECT_EQ(reader.accounting().bytes(), bytes.size());
  return seen;
}

std::string record(std::uint16_t number) {
  return RecordBuilder().sequenceId(number).payload(std::string(number, '\xA5')).str();
}
std::string message(std::uint16_t number) { return support::message(record(number)); }

std::string withNumber(std::string unit, std::size_t at, std::uint16_t number) {
  return unit.replace(at, 2, support::Payload().u16(number).str());
}
std::string withTotalLength(const std::string& message, std::uint16_t length) {
  return withNumber(message, 10, length);
}
std::string withStructLength(const std::string& message, std::uint16_t length) {
  return withNumber(message, 64 + 144, length);
}

// Below, message(n) has 216 + n bytes and carries record(n) of 152 + n.

TEST(LogReader, ReadsBothFormsAlsoInOneFile) {
  EXPECT_EQ(readLog(""), Lines());
  EXPECT_EQ(readLog(message(1) + message(2) + message(300)),
            Lines({"0: #1, 153 bytes", "217: #2, 154 bytes", "435: #300, 452 bytes"}));
  EXPECT_EQ(readLog(message(1) + message(2) + record(3) + record(4)),
            Lines({"0: #1, 153 bytes", "217: #2, 154 bytes",
                   "435: records follow, where messages were before", "435: #3, 155 bytes",
                   "590: #4, 156 bytes"}));
  EXPECT_EQ(readLog(record(1) + message(2) + record(3)),
            Lines({"0: #1, 153 bytes", "153: messages follow, where records were before",
                   "153: #2, 154 bytes", "371: #3, 155 bytes"}));
}

TEST(LogReader, KnowsTheShortestAndTheLongest) {
  EXPECT_EQ(readLog(message(0)), Lines({"0: #0, 152 bytes"}));
  EXPECT_EQ(readLog(record(0)), Lines({"0: #0, 152 bytes"}));
  EXPECT_EQ(readLog(message(65319) + message(1)),
            Lines({"0: #65319, 65471 bytes", "65535: #1, 153 bytes"}));
  EXPECT_EQ(readLog(record(0xFFFF) + record(1)),
            Lines({"0: #65535, 65687 bytes", "65687: #1, 153 bytes"}));
}

TEST(LogReader, TakesTheLengthThatLeadsOn) {
  const std::string disagrees = "the message's total length is ";
  EXPECT_EQ(readLog(message(1) + withTotalLength(message(2), 218 + 219) + message(3) + message(4)),
            Lines({"0: #1, 153 bytes",
                   "217: " + disagrees + "437, but its record makes it 218; taken as 218",
                   "217: #2, 154 bytes", "435: #3, 155 bytes", "654: #4, 156 bytes"}));
  EXPECT_EQ(readLog(withStructLength(message(20), 13)),
            Lines({"0: " + disagrees + "236, but its record makes it 229; taken as 236",
                   "0: #20, 172 bytes"}));
  EXPECT_EQ(readLog(withTotalLength(message(1), 12) + message(2)),
            Lines({"0: " + disagrees + "12, but its record makes it 217; taken as 217",
                   "0: #1, 153 bytes", "217: #2, 154 bytes"}));
}

TEST(LogReader, TellsWhatIsCutOffOrTooShort) {
  EXPECT_EQ(
      readLog(message(1) + message(200).substr(0, 251) + message(3) + message(4)),
      Lines({"0: #1, 153 bytes", "217: cut off: 251 bytes of 416, where another begins; skipped",
             "468: #3, 155 bytes", "687: #4, 156 bytes"}));
  EXPECT_EQ(readLog(record(1) + record(900).substr(0, 200)),
            Lines({"0: #1, 153 bytes", "153: cut off: 200 bytes of 1052, up to the end; skipped"}));
  EXPECT_EQ(readLog(message(1) + support::message(record(2).substr(0, 151)) + message(3)),
            Lines({"0: #1, 153 bytes",
                   "217: message of 215 bytes is too short for a record's 152-byte header; skipped",
                   "432: #3, 155 bytes"}));
}

TEST(LogReader, TakesAnIntactChainWhateverItsBytes) {
  std::string strange;
  std::string inside;
  for (std::uint16_t number = 1; number < 40; ++number) {
    std::string one = record(number);
    for (std::size_t at = 0; at < 128; ++at) one[at] = static_cast<char>(at * 37 + number * 101);
    strange += withNumber(one, 147, static_cast<std::uint16_t>(number % 5 * 256 + 3));
    inside += RecordBuilder().sequenceId(number).payload(record(number + 1) + message(7)).str();
  }
  EXPECT_EQ(readLog(strange).size(), 39U);
  EXPECT_EQ(readLog(inside).size(), 39U);
  // A length that leads past the next record, exactly to the one behind.
  EXPECT_EQ(
      readLog(record(1) + withNumber(record(2), 144, 2 + 155) + record(3) + record(4)),
      Lines({"0: #1, 153 bytes", "153: cut off: 154 bytes of 309, where another begins; skipped",
             "307: #3, 155 bytes", "462: #4, 156 bytes"}));
}

// More than can be in view, with serials of noise, none, or now and then one or the other, and
// codes that the firmware does not have.
TEST(LogReader, TakesAnIntactFileOfStrangeRecordsWhole) {
  constexpr std::size_t records = 2000;
  std::mt19937 random(11);
  enum class Serials { noise, none, sometimes };
  for (const Serials serials : {Serials::noise, Serials::none, Serials::sometimes}) {
    const int kind = static_cast<int>(serials);
    std::string file;
    for (std::uint16_t number = 0; number < records; ++number) {
      std::string one = record(number % 300);
      const bool empty = serials == Serials::none || number % 8 == 4;
      if (serials != Serials::sometimes || number % 4 == 0) {
        std::generate_n(one.begin(), 128, [&] { return static_cast<char>(empty ? 0U : random()); });
      }
      if (number % 3 == 1) one[147] = one[148] = '\x7F';
      file += one;
    }
    const auto countEvents = [](const std::string& bytes) {
      LogReader reader(
          source(bytes, std::string::npos), automatic, [](const Finding&) {}, {},
          [&bytes](std::uint64_t offset, unsigned char* to, std::size_t room) {
            const std::size_t at = std::min(static_cast<std::size_t>(offset), bytes.size());
            return static_cast<long>(bytes.copy(reinterpret_cast<char*>(to), room, at));
          });
      LogUnit unit;
      while (reader.next(unit)) continue;
      EXPECT_EQ(reader.accounting().bytes(), bytes.size());
      return reader.accounting().events;
    };
    EXPECT_EQ(countEvents(file), records) << kind;
    // Lengths that lead past the end prove nothing.
    file.pop_back();
    EXPECT_LT(countEvents(file), records) << kind;
  }
}

// The same with codes that it has, out of a pipe: no end is in view, and sequence ids lead nowhere.
TEST(LogReader, TakesStrangeRecordsOutOfAPipe) {
  constexpr std::size_t records = 2000;
  std::mt19937 random(12);
  for (const bool empty : {false, true}) {
    std::string log;
    for (std::size_t number = 0; number < records; ++number) {
      std::string one = record(static_cast<std::uint16_t>(random() % 300));
      std::generate_n(one.begin(), 128, [&] { return static_cast<char>(empty ? 0U : random()); });
      log += one;
    }
    log.resize(log.size() + 3000);  // padding
    LogReader reader(
        source(log, 4000), automatic, [](const Finding&) {}, [] { return true; });
    LogUnit unit;
    while (reader.next(unit)) continue;
    EXPECT_EQ(reader.accounting().events, records) << empty;
    EXPECT_EQ(reader.accounting().paddingBytes, 3000U) << empty;
  }
}

TEST(LogReader, DecodesNothingThatIsNoLog) {
  std::string text;
  std::string counted;
  for (int i = 0; i < 100000; ++i) {
    text += "0123456789abcdef"[i * 7919 % 16];
    counted += static_cast<char>(i % 4);
  }
  for (const std::string& bytes : {text, counted, std::string(70000, '\0'),
                                   std::string(70000, '\xFF'), std::string(1, '\x1F')}) {
    EXPECT_EQ(readLog(bytes), Lines({"0: not recognised as an event log"})) << bytes.substr(0, 4);
  }
  // Whoever names the form knows better.
  EXPECT_EQ(
      readLog(std::string(400, '\0'), LogForm::records),
      Lines({"0: #0, 152 bytes", "152: #0, 152 bytes", "304: 96 bytes of padding, up to the end"}));
}

TEST(LogReader, SaysWhatAFileIsPackedWith) {
  const std::string packed = std::string("\xFD") + "7zXZ" + std::string(300, '\0');
  LogReader reader(source(packed, 100), automatic, [](const Finding&) {});
  LogUnit unit;
  EXPECT_FALSE(reader.next(unit));
  EXPECT_EQ(packingAdvice(reader.packing(), "a.xz"),
            "packed with xz; try: xz -dc 'a.xz' | mpuevent decode");
}

TEST(LogReader, GivesOutWhatIsThereWhenTheSourceIsIdle) {
  for (const auto& [one, two] :
       {std::pair(message(1), message(2)), std::pair(record(1), record(2))}) {
    const std::string log = one + two;
    std::size_t there = one.size();
    std::size_t at = 0;
    LogReader reader(
        [&](unsigned char* to, std::size_t) {
          if (at == log.size()) return 0L;
          EXPECT_LT(at, there) << "reads when it would wait";
          *to = static_cast<unsigned char>(log[at++]);
          return 1L;
        },
        automatic, [](const Finding& finding) { ADD_FAILURE() << describe(finding); },
        [&] { return at == there; });
    LogUnit unit;
    ASSERT_TRUE(reader.next(unit));
    EXPECT_EQ(at, one.size());
    there = log.size();
    ASSERT_TRUE(reader.next(unit));
    EXPECT_EQ(unit.offset, one.size());
    EXPECT_FALSE(reader.next(unit));
  }
}

TEST(LogReader, WaitsForNoHalfUnitBeforeAWholeOne) {
  // A header that may be one, of a record that is not all there.
  std::string half = withNumber(record(0), 144, 0x4000);
  for (std::size_t at = 0; at < 128; ++at) half[at] = static_cast<char>(at * 37 + 11);
  for (const std::string& one : {message(1), record(100)}) {
    const std::string log = std::string(200, 'x') + half + one;
    const ReadBytes bytes = source(log, std::string::npos);
    bool isIdle = false;
    LogReader reader(
        [&](unsigned char* to, std::size_t room) {
          EXPECT_FALSE(isIdle) << "reads when it would wait";
          isIdle = true;
          return bytes(to, room);
        },
        automatic, [](const Finding&) {}, [&] { return isIdle; });
    LogUnit unit;
    ASSERT_TRUE(reader.next(unit));
    EXPECT_EQ(unit.offset, 200 + half.size());
  }
}

TEST(LogReader, TellsOfAFailedRead) {
  const std::string log = message(1) + message(2);
  LogReader reader(source(log, 300, EIO), automatic,
                   [](const Finding& finding) { ADD_FAILURE() << describe(finding); });
  LogUnit unit;
  EXPECT_TRUE(reader.next(unit));
  EXPECT_TRUE(reader.next(unit));
  EXPECT_FALSE(reader.next(unit));
  EXPECT_EQ(reader.readError(), EIO);
}

}  // namespace
}  // namespace mpuevent::log

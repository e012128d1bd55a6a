#include "log/framing/LogReader.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cerrno>
#include <string>
#include <vector>

#include "support/RecordBuilder.h"

namespace mpuevent::log {
namespace {

using support::RecordBuilder;

/// Gives out bytes, at most `step` at a time, and then the end or an error.
ReadBytes source(const std::string& bytes, std::size_t step, int error = 0) {
  return [&bytes, step, error, at = std::size_t{0}](unsigned char* to, std::size_t room) mutable {
    const std::size_t count = std::min({step, room, bytes.size() - at});
    std::copy_n(bytes.begin() + static_cast<std::ptrdiff_t>(at), count, to);
    at += count;
    return count == 0 ? -long{error} : static_cast<long>(count);
  };
}

std::string at(std::uint64_t offset) { return std::to_string(offset) + ": "; }

/// What the reader makes of the bytes: "OFFSET: #SEQUENCE_ID, SIZE bytes" for each record, "OFFSET:
/// REASON" for damage.
std::vector<std::string> readLog(const std::string& bytes, LogForm form,
                                 std::size_t step = std::string::npos) {
  std::vector<std::string> seen;
  LogReader reader(source(bytes, step), form, [&](std::uint64_t offset, std::string_view reason) {
    seen.push_back(at(offset).append(reason));
  });
  for (LogUnit unit; reader.next(unit);) {
    const std::string record(unit.record.begin(), unit.record.end());
    const auto offset = static_cast<std::size_t>(unit.offset);
    if (unit.header == nullptr) {
      EXPECT_EQ(bytes.compare(offset, record.size(), record), 0);
    } else {
      const std::string header(unit.header, unit.header + 64);
      EXPECT_EQ(bytes.compare(offset, 64 + record.size(), header + record), 0);
    }
    const int sequenceId = unit.record[138] << 8 | unit.record[139];
    seen.push_back(at(unit.offset) + "#" + std::to_string(sequenceId) + ", " +
                   std::to_string(record.size()) + " bytes");
  }
  EXPECT_EQ(reader.offset(), bytes.size());
  EXPECT_EQ(reader.readError(), 0);
  return seen;
}

std::string record(std::uint16_t number) {
  return RecordBuilder().sequenceId(number).payload(std::string(number, '\xA5')).str();
}
std::string message(std::uint16_t number) { return support::message(record(number)); }

std::string withNumber(std::string message, std::size_t at, std::uint16_t number) {
  return message.replace(at, 2, support::Payload().u16(number).str());
}
std::string withTotalLength(const std::string& message, std::uint16_t length) {
  return withNumber(message, 10, length);
}
std::string withStructLength(const std::string& message, std::uint16_t length) {
  return withNumber(message, 64 + 144, length);
}

// Below, message(n) has 216 + n bytes and carries record(n) of 152 + n.
using Lines = std::vector<std::string>;
constexpr LogForm automatic = LogForm::automatic;
constexpr LogForm messages = LogForm::messages;

TEST(LogReader, TellsTheFormsApart) {
  EXPECT_EQ(readLog("", automatic), Lines());
  EXPECT_EQ(readLog(message(1) + message(2) + message(300), automatic),
            Lines({"0: #1, 153 bytes", "217: #2, 154 bytes", "435: #300, 452 bytes"}));
  EXPECT_EQ(readLog(record(1) + record(2) + record(300), automatic),
            Lines({"0: #1, 153 bytes", "153: #2, 154 bytes", "307: #300, 452 bytes"}));
  // None agrees, but their lengths chain up to the end of the input.
  EXPECT_EQ(
      readLog(withStructLength(message(20), 13) + withStructLength(message(30), 4000), automatic),
      Lines({"0: #20, 172 bytes", "236: #30, 182 bytes"}));
  // None agrees, the end is cut off, but the chain is long.
  std::string log;
  for (int i = 0; i < 70; ++i) log += withStructLength(message(20), 13);
  const Lines seen = readLog(log + "tail", automatic);
  ASSERT_EQ(seen.size(), 71U);
  EXPECT_EQ(seen[69], "16284: #20, 172 bytes");
}

TEST(LogReader, KnowsMessagesWhoseFirstIsDamaged) {
  EXPECT_EQ(
      readLog(withTotalLength(message(1), 12) + message(2), automatic),
      Lines(
          {"0: total length 12 does not lead to the next message, but 217, the record's own, does",
           "0: #1, 153 bytes", "217: #2, 154 bytes"}));
  EXPECT_EQ(
      readLog(withStructLength(withTotalLength(message(1), 12), 777) + message(2) + message(3),
              automatic),
      Lines({"0: total length 12 is less than the 64-byte message header; 217 bytes skipped",
             "217: #2, 154 bytes", "435: #3, 155 bytes"}));
  // As records these would chain, too: their zeros are lengths of 0, and they are 5 * 152 bytes.
  const auto zeros = [](std::uint16_t number, std::size_t size) {
    return support::message(
        RecordBuilder().sequenceId(number).payload(std::string(size, '\0')).str());
  };
  EXPECT_EQ(
      readLog(withTotalLength(zeros(1, 200), 12) + zeros(2, 128), automatic),
      Lines(
          {"0: total length 12 does not lead to the next message, but 416, the record's own, does",
           "0: #1, 352 bytes", "416: #2, 280 bytes"}));
}

TEST(LogReader, MendsADamagedTotalLength) {
  const std::string reason = " does not lead to the next message, but 218, the record's own, does";
  // It covers two messages.
  EXPECT_EQ(readLog(message(1) + withTotalLength(message(2), 218 + 219) + message(3) + message(4),
                    messages),
            Lines({"0: #1, 153 bytes", "217: total length 437" + reason, "217: #2, 154 bytes",
                   "435: #3, 155 bytes", "654: #4, 156 bytes"}));
}

TEST(LogReader, FindsTheNextMessage) {
  EXPECT_EQ(
      readLog(message(1) + withStructLength(withTotalLength(message(2), 0), 777), messages),
      Lines({"0: #1, 153 bytes",
             "217: total length 0 is less than the 64-byte message header; 218 bytes skipped, "
             "up to the end"}));
  // The next one is followed by another that is damaged.
  EXPECT_EQ(
      readLog(withStructLength(withTotalLength(message(1), 63), 777) + message(2) +
                  withTotalLength(message(3), 9) + message(4),
              messages),
      Lines(
          {"0: total length 63 is less than the 64-byte message header; 217 bytes skipped",
           "217: #2, 154 bytes",
           "435: total length 9 does not lead to the next message, but 219, the record's own, does",
           "435: #3, 155 bytes", "654: #4, 156 bytes"}));
  // It begins where a step of the search ends.
  EXPECT_EQ(
      readLog(support::messageHeader(12) + withStructLength(message(65256), 777) + message(2),
              messages),
      Lines({"0: total length 12 is less than the 64-byte message header; 65536 bytes skipped",
             "65536: #2, 154 bytes"}));
}

TEST(LogReader, ReportsWhatIsCutOff) {
  EXPECT_EQ(readLog(message(1) + message(200).substr(0, 251) + message(3) + message(4), messages),
            Lines({"0: #1, 153 bytes",
                   "217: message of 416 bytes is cut off after 251, where another begins",
                   "468: #3, 155 bytes", "687: #4, 156 bytes"}));
  EXPECT_EQ(readLog(message(1) + message(60000).substr(0, 251) + message(3) + message(4), messages),
            Lines({"0: #1, 153 bytes",
                   "217: message of 60216 bytes is cut off after 690; 251 bytes skipped",
                   "468: #3, 155 bytes", "687: #4, 156 bytes"}));
  EXPECT_EQ(readLog(message(1) + message(2).substr(0, 217), automatic),
            Lines({"0: #1, 153 bytes",
                   "217: message of 218 bytes is cut off after 217; 217 bytes skipped, up to the "
                   "end"}));
  EXPECT_EQ(readLog(message(1) + message(2).substr(0, 63), automatic),
            Lines({"0: #1, 153 bytes", "217: message header of 64 bytes is cut off after 63"}));
  EXPECT_EQ(readLog(record(1) + record(2).substr(0, 151), automatic),
            Lines({"0: #1, 153 bytes", "153: record header of 152 bytes is cut off after 151"}));
}

TEST(LogReader, KnowsTheShortestAndTheLongest) {
  EXPECT_EQ(readLog(support::messageHeader(64) + message(1) +
                        support::message(record(2).substr(0, 151)) + message(3),
                    messages),
            Lines({"0: record of 0 bytes is shorter than its 152-byte header", "64: #1, 153 bytes",
                   "281: record of 151 bytes is shorter than its 152-byte header",
                   "496: #3, 155 bytes"}));
  EXPECT_EQ(readLog(message(65319) + message(1), automatic),
            Lines({"0: #65319, 65471 bytes", "65535: #1, 153 bytes"}));
  EXPECT_EQ(readLog(record(0xFFFF) + record(1), automatic),
            Lines({"0: #65535, 65687 bytes", "65687: #1, 153 bytes"}));
}

TEST(LogReader, PassesZerosAndOnes) {
  EXPECT_EQ(readLog(std::string(400, '\0'), automatic),
            Lines({"0: #0, 152 bytes", "152: #0, 152 bytes",
                   "304: record header of 152 bytes is cut off after 96"}));
  EXPECT_EQ(readLog(std::string(70000, '\xFF'), messages),
            Lines({"0: #65535, 65471 bytes",
                   "65535: message of 65535 bytes is cut off after 4465; 4465 bytes skipped, up to "
                   "the end"}));
}

/// A log in which every kind of damage stands near a border of the reader's window somewhere.
std::string longDamagedLog() {
  std::string log;
  for (std::uint16_t round = 0; round < 60; ++round) {
    const auto size = static_cast<std::uint16_t>(20000 + 701 * round);
    log += message(size) + withTotalLength(message(size), round);
    log += message(7) + message(900).substr(0, 500) + message(8) + message(9);
    log += withTotalLength(withStructLength(message(size), 5), 30) + message(10) + message(11);
  }
  return log;
}

TEST(LogReader, SeesTheSameHoweverTheBytesArrive) {
  const std::string log = longDamagedLog();
  const std::vector<std::string> whole = readLog(log, LogForm::automatic);
  EXPECT_EQ(whole.size(), 60U * (7 + 3));
  for (const std::size_t step : {1U, 4093U, 262144U}) {
    EXPECT_EQ(readLog(log, LogForm::automatic, step), whole) << step;
  }
}

TEST(LogReader, GivesEveryWholeUnitOfALogCutAnywhere) {
  const auto expectCut = [](const std::string& log, LogForm form, std::vector<std::size_t> ends) {
    for (std::size_t size = 1; size <= log.size(); ++size) {
      const auto whole = std::upper_bound(ends.begin(), ends.end(), size) - ends.begin();
      const bool onBorder = std::find(ends.begin(), ends.end(), size) != ends.end();
      EXPECT_EQ(readLog(log.substr(0, size), form).size(),
                static_cast<std::size_t>(whole) + (onBorder ? 0 : 1))
          << size;
    }
  };
  expectCut(message(1) + message(40) + message(3), LogForm::messages,
            {217, 217 + 256, 217 + 256 + 219});
  expectCut(record(1) + record(40) + record(3), LogForm::records,
            {153, 153 + 192, 153 + 192 + 155});
}

TEST(LogReader, TellsOfAFailedRead) {
  const std::string log = message(1) + message(2);
  std::vector<std::uint64_t> damage;
  LogReader reader(source(log, 300, EIO), LogForm::automatic,
                   [&](std::uint64_t offset, std::string_view) { damage.push_back(offset); });
  LogUnit unit;
  EXPECT_TRUE(reader.next(unit));
  EXPECT_TRUE(reader.next(unit));
  EXPECT_FALSE(reader.next(unit));
  EXPECT_EQ(reader.readError(), EIO);
  EXPECT_TRUE(damage.empty());
}

}  // namespace
}  // namespace mpuevent::log

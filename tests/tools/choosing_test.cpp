// Events that the tool chooses, against a filter over its JSON lines of all events.
#include <gtest/gtest.h>
#include <rapidjson/document.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <functional>
#include <sstream>
#include <string>
#include <utility>
#include <vector>

#include "ToolRun.h"
#include "choosing/Grep.h"
#include "records/SampleRecords.h"
#include "support/RecordBuilder.h"

namespace {

using Json = rapidjson::Document;
using mpuevent::tool::tests::Dice;
using mpuevent::tool::tests::linesOf;
using mpuevent::tool::tests::outputOf;
using mpuevent::tool::tests::Words;
using mpuevent::tool::tests::write;

/// Where an event may come from: enclosure and controller.
using Card = std::pair<std::string, std::string>;
const Card kCards[] = {Card("ENC-1", "A"), Card("ENC-1", "B\xFF"), Card("ENC-\xC3\xBC", "A"),
                       Card("ENC\xFF", std::string(63, 'F'))};
constexpr std::array<std::uint32_t, 5> kNumbers = {0, 1, 2, 10, 0xFFFFFFFF};

/// All samples under headers of every kind; times go back and forth.
std::vector<std::string> makeRecords(Dice& dice) {
  std::vector<std::string> records;
  for (const auto& module : mpuevent::samples::modules()) {
    for (const auto& sample : module.samples()) {
      auto record = mpuevent::samples::record(module, sample);
      const Card& card = dice.oneOf(kCards);
      record.enclosureSerial(card.first)
          .controllerSerial(card.second)
          .slot(dice.oneOf(kNumbers))
          .logInstance(dice.oneOf(kNumbers))
          .sequenceId(100 + dice.below(50))
          .timestamp(dice.below(8) == 0 ? dice.oneOf(kNumbers) : 86400 * 20 + dice.below(86400));
      if (dice.below(3) == 0) record.type(static_cast<std::uint8_t>(dice.below(6)));
      if (dice.below(3) == 0) record.category(static_cast<std::uint8_t>(dice.below(16)));
      if (dice.below(3) == 0) record.source(static_cast<std::uint8_t>(dice.below(40)));
      records.push_back(record.str());
    }
  }
  return records;
}

std::string stringOf(const Json& event, const char* key) {
  return {event[key].GetString(), event[key].GetStringLength()};
}

/// An option and what it says of an event in JSON.
struct Condition {
  Words arguments;
  std::function<bool(const Json&)> holds;
};

Condition when(Words arguments, std::function<bool(const Json&)> holds) {
  return {std::move(arguments), std::move(holds)};
}

std::string lower(std::string text) {
  for (char& c : text) c = c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
  return text;
}

/// A log of all kinds of events, and conditions under which some of them are chosen.
class Choosing : public testing::Test {
 protected:
  Choosing() {
    const std::vector<std::string> records = makeRecords(dice_);
    std::vector<std::string> messages;
    for (const std::string& record : records) {
      messages.push_back(mpuevent::support::message(record));
    }
    files_ = {write("choosing.records", records), write("choosing.messages", messages)};
    for (std::size_t i = 0; i < files_.size(); ++i) {
      lines_[i] = linesOf(outputOf({"decode", "-o", "jsonl", "--epoch", "unix", files_[i]}));
      EXPECT_EQ(lines_[i].size(), records.size());
    }
    for (const std::string& line : lines_[0]) events_.emplace_back().Parse(line.c_str());
  }
  ~Choosing() override {
    for (const std::string& file : files_) std::remove(file.c_str());
  }

  const Json& someEvent() { return events_[dice_.below(events_.size())]; }
  std::string text(const char* key) { return stringOf(someEvent(), key); }
  std::uint32_t number(const char* key) { return someEvent()[key].GetUint(); }

  Condition since(bool until);
  Condition range(const std::string& option, const char* key);
  Condition word(const std::string& option, const char* key, const char* codeKey);
  Condition type();
  Condition module();
  Condition serial(const std::string& option, const char* key);
  Condition grep();
  Condition condition(std::size_t which);
  static constexpr std::size_t kConditions = 14;

  /// The condition, or its opposite if there is such an option.
  static Condition maybeOpposite(Condition condition, bool opposite) {
    const std::string option = condition.arguments[0];
    if (!opposite || option == "--since" || option == "--until") return condition;
    const std::string other = option == "-t" ? "--not-type" : "--not-" + option.substr(2);
    std::replace(condition.arguments.begin(), condition.arguments.end(), option, other);
    return when(condition.arguments,
                [holds = condition.holds](const Json& e) { return !holds(e); });
  }

  /// How many of the events are wanted.
  Words limit() {
    const std::array<const char*, 4> options = {"", "-n", "--head", "--count"};
    const std::string option = dice_.oneOf(options);
    if (option.empty()) return {};
    if (option == "--count") return {option};
    return {option, std::to_string(1 + dice_.below(4))};
  }

  void check(std::size_t file, const std::vector<Condition>& conditions, const Words& more = {});

  Dice dice_;
  std::array<std::string, 2> files_;
  std::array<Words, 2> lines_;
  std::vector<Json> events_;
};

Condition Choosing::since(bool until) {
  const Json& event = someEvent();
  const std::uint32_t time = event["timestamp"].GetUint();
  const std::string date = event["time"].GetString();
  const std::array<std::string, 4> said = {std::to_string(time), date,
                                           date.substr(0, date.size() - 1), date.substr(0, 10)};
  const std::size_t way = dice_.below(said.size());
  const std::uint64_t day = time / 86400 * std::uint64_t{86400};
  const std::uint64_t first = way == 3 ? day : time;
  const std::uint64_t last = way == 3 ? day + 86399 : time;
  return when({until ? "--until" : "--since", said[way]}, [=](const Json& e) {
    const std::uint64_t at = e["timestamp"].GetUint();
    return until ? at <= last : at >= first;
  });
}

Condition Choosing::range(const std::string& option, const char* key) {
  const std::uint32_t a = number(key);
  const std::uint32_t b = number(key);
  const auto [first, last] = std::minmax({a, b});
  const std::uint32_t alone = number(key);
  std::ostringstream value;
  value << first << (dice_.below(2) == 0 ? "-" : "..") << last << ",0x" << std::hex << alone;
  return when({option, value.str()}, [=, from = first, to = last](const Json& e) {
    const std::uint32_t n = e[key].GetUint();
    return (n >= from && n <= to) || n == alone;
  });
}

Condition Choosing::word(const std::string& option, const char* key, const char* codeKey) {
  const std::string one = text(key);
  const std::uint32_t code = number(codeKey);
  const std::string value = dice_.below(2) == 0 ? lower(one) : one;
  return when({option, value + "," + std::to_string(code)}, [=](const Json& e) {
    return stringOf(e, key) == one || e[codeKey].GetUint() == code;
  });
}

Condition Choosing::type() {
  static const std::array<std::string, 4> kTypes = {"other", "Informational", "WARNING", "error"};
  const std::uint32_t code = dice_.below(4);
  const std::uint32_t raw = number("raw_event_type");
  return when({"-t", kTypes[code] + "," + std::to_string(raw)}, [=](const Json& e) {
    return e["event_type_code"].GetUint() == code || e["raw_event_type"].GetUint() == raw;
  });
}

Condition Choosing::module() {
  const Json* event = &someEvent();
  while ((*event)["decoder"] == "Quarn_Event") event = &someEvent();
  const std::string decoder = (*event)["decoder"].GetString();
  std::string name = decoder.substr(0, decoder.size() - std::string("_Event").size());
  if (name.ends_with("8P") && dice_.below(2) == 0) name.resize(name.size() - 2);
  return when({"--source", lower(name)},
              [=](const Json& e) { return stringOf(e, "decoder") == decoder; });
}

Condition Choosing::serial(const std::string& option, const char* key) {
  const std::string one = text(key);
  const std::string two = text(key);
  return when({option, one, option, two},
              [=](const Json& e) { return stringOf(e, key) == one || stringOf(e, key) == two; });
}

Condition Choosing::grep() {
  static const std::array<std::string, 5> kTexts = {"Unhandled", "iscsi", "Volume", "513", "0x0"};
  const std::string one = dice_.oneOf(kTexts);
  const std::string two = dice_.oneOf(kTexts);
  return when({"--grep", one + "|" + two, "-i"}, [=](const Json& e) {
    const std::array<const char*, 3> keys = {"event_id", "summary", "body"};
    return std::any_of(keys.begin(), keys.end(), [&](const char* key) {
      const std::string found = lower(stringOf(e, key));
      return found.find(lower(one)) != std::string::npos ||
             found.find(lower(two)) != std::string::npos;
    });
  });
}

Condition Choosing::condition(std::size_t which) {
  switch (which) {
    case 0:
    case 1:
      return since(which == 1);
    case 2:
      return type();
    case 3:
      return word("--source", "source", "source_code");
    case 4:
      return module();
    case 5:
      return word("--category", "category", "category_code");
    case 6:
      return range("--code", "event_code");
    case 7:
      return range("--slot", "controller_slot");
    case 8:
      return range("--log", "log_instance");
    case 9:
    case 10:
      return range("--sequence", "sequence_id");
    case 11:
      return serial("--controller", "controller_serial");
    case 12:
      return serial("--enclosure", "enclosure_serial");
    default:
      return mpuevent::tool::Grep::isBuiltIn ? grep() : since(false);
  }
}

void Choosing::check(std::size_t file, const std::vector<Condition>& conditions,
                     const Words& more) {
  Words arguments = {"decode", "-o", "jsonl", "--epoch", "unix"};
  Words expected;
  for (const Condition& condition : conditions) {
    arguments.insert(arguments.end(), condition.arguments.begin(), condition.arguments.end());
  }
  for (std::size_t i = 0; i < events_.size(); ++i) {
    const auto holds = [&](const Condition& condition) { return condition.holds(events_[i]); };
    if (std::all_of(conditions.begin(), conditions.end(), holds)) {
      expected.push_back(lines_[file][i]);
    }
  }
  if (!more.empty()) {
    arguments.insert(arguments.end(), more.begin(), more.end());
    const std::size_t most = more.size() < 2 ? expected.size() : std::stoul(more[1]);
    const auto kept = static_cast<std::ptrdiff_t>(std::min(expected.size(), most));
    if (more[0] == "--count") expected = {std::to_string(expected.size())};
    if (more[0] == "-n") expected.erase(expected.begin(), expected.end() - kept);
    if (more[0] == "--head") expected.erase(expected.begin() + kept, expected.end());
  }
  arguments.push_back(files_[file]);
  std::string shown;
  for (const std::string& argument : arguments) shown += argument + ' ';
  const Words got = linesOf(outputOf(arguments));
  EXPECT_TRUE(got == expected) << shown << ": " << got.size() << " lines, not " << expected.size();
}

TEST_F(Choosing, EachOptionAndItsOpposite) {
  for (std::size_t which = 0; which < kConditions; ++which) {
    for (const bool opposite : {false, true, false, true}) {
      check(which % 2, {maybeOpposite(condition(which), opposite)});
    }
  }
}

TEST_F(Choosing, AnyThreeOptions) {
  for (int round = 0; round < 150; ++round) {
    std::vector<Condition> conditions;
    while (conditions.size() < 3) {
      Condition another = maybeOpposite(condition(dice_.below(kConditions)), dice_.below(2) == 0);
      // The same option again is not another condition: its values are more values.
      const auto isSame = [&another](const Condition& condition) {
        return condition.arguments[0] == another.arguments[0];
      };
      if (std::none_of(conditions.begin(), conditions.end(), isSame)) {
        conditions.push_back(std::move(another));
      }
    }
    check(static_cast<std::size_t>(round % 2), conditions, limit());
  }
}

// Events keep their facts in a cut-out of a cut-out, and in every form.
TEST_F(Choosing, CutOutsAndOtherForms) {
  const auto with = [](Words arguments, const Words& more, const std::string& file) {
    arguments.insert(arguments.end(), more.begin(), more.end());
    arguments.push_back(file);
    return outputOf(arguments);
  };
  const Words facts = {"decode", "-o", "jsonl", "--fields", "sequence_id,event_id,body,fields"};
  const Words numbers = {"--fields", "index,offset,timestamp,event_code"};
  for (std::size_t round = 0; round < 30; ++round) {
    const std::string& file = files_[round % 2];
    Words first = {"--epoch", "unix"};
    Words second = first;
    for (Words* words : {&first, &second}) {
      const Words more =
          maybeOpposite(condition(dice_.below(kConditions)), dice_.below(2) == 0).arguments;
      words->insert(words->end(), more.begin(), more.end());
    }
    const std::string cut = write("cut", {with({"decode", "-o", "raw"}, first, file)});
    EXPECT_EQ(with(facts, first, file), with(facts, {}, cut));
    // Of one option twice the values would be one's.
    if (first[2].ends_with(second[2].substr(2)) || second[2].ends_with(first[2].substr(2)))
      continue;
    const std::string cutAgain = with({"decode", "-o", "raw"}, second, cut);
    Words both = first;
    both.insert(both.end(), second.begin() + 2, second.end());
    EXPECT_EQ(cutAgain, with({"decode", "-o", "raw"}, both, file));
    std::remove(cut.c_str());

    first.insert(first.end(), numbers.begin(), numbers.end());
    const Words lines = linesOf(with({"decode", "-o", "jsonl"}, first, file));
    std::string array = "[";
    std::string table;
    for (const std::string& line : lines) {
      array += (array == "[" ? "\n" : ",\n") + line;
      for (const char c : line) {
        if ((c >= '0' && c <= '9') || c == ',') table += c;
      }
      table += "\r\n";
    }
    EXPECT_EQ(with({"decode", "-o", "json"}, first, file),
              array + (lines.empty() ? "]\n" : "\n]\n"));
    EXPECT_EQ(with({"decode", "-o", "csv", "--no-header"}, first, file), table);
  }
}

// Two controllers' logs, one of them pulled three times with its clock set back twice.
TEST(Merging, MakesOneStoryOfLogs) {
  const auto logOf = [](const std::string& serial, const std::vector<std::uint32_t>& times) {
    std::vector<std::string> log;
    for (const std::uint32_t time : times) {
      log.push_back(mpuevent::support::RecordBuilder()
                        .controllerSerial(serial)
                        .timestamp(time)
                        .sequenceId(static_cast<std::uint32_t>(log.size()))
                        .str());
    }
    return log;
  };
  const auto a = logOf("A", {10, 40, 50, 20, 60, 5, 70, 45, 90});
  const auto b = logOf("B", {30, 30, 40, 40, 80, 100});
  const auto part = [](const std::vector<std::string>& log, std::size_t from, std::size_t to) {
    return std::vector<std::string>(log.begin() + static_cast<std::ptrdiff_t>(from),
                                    log.begin() + static_cast<std::ptrdiff_t>(to));
  };
  Words arguments = {"decode", "-o", "jsonl", "--merge"};
  // A pull that begins behind the clock's change does not come before what it continues.
  const Words files = {write("merge.late", part(a, 5, 9)), write("merge.early", part(a, 0, 4)),
                       write("merge.b", b), write("merge.middle", part(a, 2, 7))};
  const auto storyOf = [](const Words& said) {
    Words story;
    for (const std::string& line : linesOf(outputOf(said))) {
      Json event;
      event.Parse(line.c_str());
      story.push_back(stringOf(event, "controller_serial") +
                      std::to_string(event["sequence_id"].GetUint()));
    }
    return story;
  };
  arguments.insert(arguments.end(), files.begin(), files.end());
  const Words expected = {"A0", "B0", "B1", "A1", "B2", "B3", "A2", "A3",
                          "A4", "A5", "A6", "A7", "B4", "A8", "B5"};
  EXPECT_EQ(storyOf(arguments), expected);
  arguments.insert(arguments.end(), {"-n", "4", "--since", "45"});
  EXPECT_EQ(storyOf(arguments), Words(expected.end() - 4, expected.end()));
  for (const std::string& file : files) std::remove(file.c_str());
}

}  // namespace

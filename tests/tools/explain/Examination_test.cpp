#include "explain/Examination.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <fstream>
#include <map>
#include <set>
#include <sstream>
#include <string>
#include <string_view>
#include <vector>

#include "explain/ExplainForms.h"
#include "records/SampleRecords.h"
#include "support/RecordBuilder.h"

namespace {

using namespace mpuevent;
using tool::ByteRun;
using tool::Part;

constexpr std::size_t kHeader = 152;
constexpr std::chrono::hours kNoLimit{1};
const std::string kDirectory = MPUEVENT_EXPLAIN_SAMPLES "/";

/// A record with what a log has around it.
class Message {
 public:
  explicit Message(std::string_view record) : bytes_(support::message(record)) {}
  Message(const samples::Module& module, const samples::Sample& sample)
      : Message(samples::record(module, sample).str()) {}

  log::LogUnit unit() const {
    const auto* bytes = reinterpret_cast<const unsigned char*>(bytes_.data());
    return {0, bytes, std::span(bytes, bytes_.size()).subspan(64)};
  }

 private:
  std::string bytes_;
};

const samples::Module& module(std::string_view name) {
  return *std::find_if(samples::modules().begin(), samples::modules().end(),
                       [&](const samples::Module& module) { return module.name == name; });
}

// Every byte once, in order, and neighbours that differ.
void expectWhole(const std::vector<ByteRun>& runs, std::size_t recordSize) {
  std::ptrdiff_t next = -64;
  const ByteRun* last = nullptr;
  for (const ByteRun& run : runs) {
    ASSERT_EQ(run.offset, next);
    ASSERT_GT(run.length, 0U);
    EXPECT_EQ(run.part, next < 0 ? Part::message : next < 152 ? Part::header : Part::payload);
    EXPECT_TRUE(last == nullptr || last->part != run.part || last->field != run.field);
    next += static_cast<std::ptrdiff_t>(run.length);
    last = &run;
  }
  EXPECT_EQ(next, static_cast<std::ptrdiff_t>(recordSize));
}

/// Places in the payloads of a module's samples.
using Places = std::set<std::pair<std::size_t, std::size_t>>;  // sample, offset

std::map<std::string, Places> listedAsNotShown() {
  std::map<std::string, Places> listed;
  std::ifstream in(kDirectory + "not_shown.txt");
  for (std::string line; std::getline(in, line);) {
    if (line.starts_with('#')) continue;
    std::istringstream words(line);
    std::string name, samplesText, placesText, reason;
    words >> name >> samplesText >> placesText;
    std::getline(words, reason);
    EXPECT_GT(reason.size(), 5U) << line;
    std::istringstream samplesIn(samplesText);
    for (std::string sample; std::getline(samplesIn, sample, ',');) {
      std::istringstream placesIn(placesText);
      for (std::string place; std::getline(placesIn, place, ',');) {
        const std::size_t begin = std::stoul(place);
        const std::size_t length = std::stoul(place.substr(place.find('+') + 1));
        for (std::size_t at = begin; at < begin + length; ++at) {
          EXPECT_TRUE(listed[name].emplace(std::stoul(sample), at).second) << line;
        }
      }
    }
  }
  return listed;
}

class Explained : public testing::TestWithParam<samples::Module> {};

// A check of the decoders: nothing of a payload is forgotten.
TEST_P(Explained, EveryPayloadByteIsShownOrDecidesOrIsListed) {
  Places notShown;
  std::size_t sample = 0;
  for (const samples::Sample& each : GetParam().samples()) {
    SCOPED_TRACE(testing::Message() << "sample " << sample);
    const Message message(GetParam(), each);
    const std::vector<ByteRun> runs = tool::Examination(message.unit(), kNoLimit).runs();
    expectWhole(runs, message.unit().record.size());
    for (const ByteRun& run : runs) {
      EXPECT_FALSE(run.sampled);
      for (std::size_t i = 0; run.part == Part::payload && i < run.length; ++i) {
        const std::size_t at = static_cast<std::size_t>(run.offset) - kHeader + i;
        if (run.field == "not shown") notShown.emplace(sample, at);
      }
    }
    ++sample;
  }
  Places listed = listedAsNotShown()[std::string(GetParam().name)];
  for (const auto& [number, at] : notShown) {
    EXPECT_EQ(listed.erase({number, at}), 1U) << "not shown: sample " << number << ", byte " << at;
  }
  for (const auto& [number, at] : listed) {
    ADD_FAILURE() << "listed, but shown: sample " << number << ", byte " << at;
  }
}

INSTANTIATE_TEST_SUITE_P(Modules, Explained, testing::ValuesIn(samples::modules()),
                         [](const testing::TestParamInfo<samples::Module>& row) {
                           return std::string(row.param.name);
                         });

// The shortcuts of the search find what the long way does, one byte after another.
TEST(Examination, FindsWhatTryingEveryValueOfEveryByteFinds) {
  for (const auto& [name, index] : {
           std::pair{"AWR8P",           3U},
           {"ISCSIMP",         4U},
           {"ISNSC",           7U},
           {"STARTUPMP",       0U},
           {"SYSTEM_CONFIGMP", 9U}
  }) {
    SCOPED_TRACE(name);
    const Message message(module(name), module(name).samples().at(index));
    tool::Specimen specimen(message.unit());
    for (const ByteRun& run : tool::Examination(message.unit(), kNoLimit).runs()) {
      for (std::size_t i = 0; i < run.length && run.offset >= 144; ++i) {
        unsigned char& byte = specimen.bytes()[64 + static_cast<std::size_t>(run.offset) + i];
        const unsigned char before = byte;
        tool::Effect effect;
        for (unsigned value = 0; value < 256; ++value) {
          byte = static_cast<unsigned char>(value);
          if (byte != before) specimen.compare(effect);
        }
        byte = before;
        SCOPED_TRACE(testing::Message() << run.offset << "+" << i << ": " << run.field);
        EXPECT_EQ(!effect.any(), run.field == "not shown");
        EXPECT_EQ(effect.decides || (effect.summary && effect.shown.empty()),
                  run.field.find("decides the layout") != std::string::npos);
      }
    }
  }
}

TEST(Examination, TellsTheLayoutsOfThreeRecords) {
  for (const auto& [name, index] : {
           std::pair{"IOMGR8P",   7U },
           {"ISCSIMP",   5U },
           {"STARTUPMP", 22U}
  }) {
    const Message message(module(name), module(name).samples().at(index));
    tool::TextBuffer text;
    tool::appendExplainedDump(text, message.unit(),
                              tool::Examination(message.unit(), kNoLimit).runs());
    const std::string file = std::string(name) + '-' + std::to_string(index) + ".txt";
    std::ostringstream expected;
    expected << std::ifstream(kDirectory + file).rdbuf();
    if (expected.str() != text.view()) std::ofstream(file) << text.view();
    EXPECT_EQ(expected.str(), text.view()) << "what it is now has been left in " << file;
  }
}

// Only what was not seen for itself may be unknown, and then it is said.
TEST(Examination, SamplesALongRecord) {
  std::string list = support::Payload().u32(27).u32(1).u32(0).u32(7).u32(60000).str();
  for (std::uint32_t i = 1; list.size() < 60000; ++i) {
    list += support::Payload().u32(i).u32(i * 3).str();
  }
  const Message message(support::RecordBuilder().source(5).id(1).payload(list).str());
  for (const auto limit : {std::chrono::milliseconds(0), std::chrono::milliseconds(400)}) {
    const std::vector<ByteRun> runs = tool::Examination(message.unit(), limit).runs();
    expectWhole(runs, message.unit().record.size());
    for (const ByteRun& run : runs) EXPECT_TRUE(run.sampled) << run.offset;
  }
}

}  // namespace

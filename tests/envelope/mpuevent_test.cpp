#include <CMAP/CMAPErrorCodes.h>
#include <MPUEvent/MPUEvent.h>
#include <gtest/gtest.h>

#include <cstring>
#include <map>
#include <memory>
#include <optional>
#include <stdexcept>
#include <string>
#include <tuple>
#include <typeindex>

#include "records/SampleRecords.h"
#include "support/DecodedEvent.h"
#include "support/RecordBuilder.h"

namespace {

using mpuevent::support::decode;
using mpuevent::support::messageHeader;
using mpuevent::support::RecordBuilder;
using mpuevent::support::utf8;
using namespace Pegasus;

CMAPMessageHeader header(std::size_t totalLength) {
  const std::string wire = messageHeader(static_cast<std::uint16_t>(totalLength));
  return CMAPMessageHeader(reinterpret_cast<const unsigned char*>(wire.data()));
}

Quarn_imemstream streamOver(const std::string& bytes) {
  return Quarn_imemstream(bytes.data(), static_cast<int>(bytes.size()));
}

MPUEvent loaded(const std::string& record) {
  Quarn_imemstream stream = streamOver(record);
  return MPUEvent(header(record.size() + 64), stream);
}

/// A stream whose every read fails.
class BrokenStream : public Quarn_istream {
 public:
  Quarn_istream& read(char*, int) override { return *this; }
  int gcount() const override { return -7; }
};

const std::string numbers = RecordBuilder()
                                .source(12)
                                .type(3)
                                .category(13)
                                .idVersion(9)
                                .id(65535)
                                .sequenceId(0x80000001)
                                .timestamp(77)
                                .payload("four")
                                .str();
const char numbersText[] =
    "SequenceId: -2147483647, time: 77, len: 4, source: 12, type: 3, category: 13, eventId (9): "
    "65535";

TEST(Envelope, PrintsItsHeaderAndTheRecordsNumbers) {
  const CMAPMessageHeader empty = header(64);
  EXPECT_EQ(utf8(MPUEvent(empty).str()), utf8(empty.str()) + ", <No MMSG Data!>");
  EXPECT_EQ(utf8(loaded(numbers).str()),
            utf8(header(numbers.size() + 64).str()) + ", " + numbersText);
  // A loaded envelope without a record's header: every number reads as 0.
  EXPECT_EQ(
      utf8(loaded("").str()),
      utf8(empty.str()) +
          ", SequenceId: 0, time: 0, len: 0, source: 0, type: 0, category: 0, eventId (0): 0");
}

TEST(Envelope, EveryConstructionDrawsAHandle) {
  const CMAPMessageHeader wire = header(64);
  const Uint32 before = CMAPMessageHeader::nextHandleValue;
  const MPUEvent first(wire);
  EXPECT_EQ(CMAPMessageHeader::nextHandleValue, before + 1);
  const MPUEvent second(first);
  EXPECT_EQ(CMAPMessageHeader::nextHandleValue, before + 2);
  loaded("");
  EXPECT_EQ(CMAPMessageHeader::nextHandleValue, before + 3);
  EXPECT_EQ(utf8(second.getCMAPMessageHeader().str()), utf8(wire.str()));
}

TEST(Envelope, CopiesHeaderAndRecord) {
  const MPUEvent original = loaded(numbers);
  MPUEvent copy(original);
  EXPECT_EQ(utf8(copy.str()), utf8(original.str()));
  copy.setCMAPMessageHeader(header(999));
  EXPECT_EQ(copy.getCMAPMessageHeader().getTotalLength(), 999);
  EXPECT_NE(utf8(copy.str()).find(numbersText), std::string::npos);
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wdeprecated-declarations"
  const MPUEvent& same = copy;
  const MPUEvent assigned = copy = same;
#pragma GCC diagnostic pop
  EXPECT_EQ(utf8(assigned.str()), utf8(copy.str()));
  EXPECT_EQ(original.getCMAPMessageHeader().getTotalLength(), numbers.size() + 64);

  // A copy of an empty envelope counts as loaded, with a record of 0 bytes.
  const MPUEvent empty(header(64));
  const MPUEvent copyOfEmpty(empty);
  EXPECT_EQ(utf8(copyOfEmpty.str()).find("<No MMSG Data!>"), std::string::npos);
  EXPECT_EQ(copyOfEmpty.create_Quarn_Event(), nullptr);
}

TEST(Envelope, ReadsAsManyBytesAsTheHeaderSays) {
  const std::string bytes(65600, '\0');
  // Below 64 the length wraps.
  const std::pair<std::size_t, int> cases[] = {
      {64,    0    },
      {65,    1    },
      {65535, 65471},
      {0,     65472},
      {63,    65535}
  };
  for (const auto& [totalLength, recordLength] : cases) {
    Quarn_imemstream stream = streamOver(bytes);
    MPUEvent event(header(totalLength), stream);
    EXPECT_EQ(stream.gcount(), recordLength) << totalLength;
    if (recordLength == 0) continue;
    Quarn_imemstream tooShort(bytes.data(), recordLength - 1);
    EXPECT_THROW(event.deserialize(tooShort), CMAPOperationFailedException);
  }
}

TEST(Envelope, AFailedReadThrowsTheCodeOfItsKind) {
  const auto expectThrow = [](Quarn_istream& stream, std::size_t entry) {
    MPUEvent event(header(numbers.size() + 64));
    try {
      event.deserialize(stream);
      ADD_FAILURE() << "no exception";
    } catch (const CIMOperationFailedException& caught) {
      const auto& exception = dynamic_cast<const CMAPOperationFailedException&>(caught);
      const unsigned int code = CMAPErrorCodes::_errorCodeArray[entry].code;
      EXPECT_EQ(exception.getErrorCode(), code);
      EXPECT_EQ(utf8(exception.getMessage()),
                utf8(CMAPErrorCodes::getTextForIndex(CMAPErrorCodes::getIndex(code))));
    }
    return utf8(event.str());
  };
  BrokenStream broken;
  expectThrow(broken, 28);
  Quarn_imemstream nothing("", 0);
  expectThrow(nothing, 30);
  // What arrived stays with the envelope, and zeros for what did not.
  const std::string start = numbers.substr(0, 145);
  Quarn_imemstream part = streamOver(start);
  EXPECT_NE(expectThrow(part, 30).find("SequenceId: -2147483647, time: 77, len: 0, source: 0,"),
            std::string::npos);
}

/// Writes `written` bytes of 0xFF of those that it is asked for, and then throws or reports
/// `count`.
class DeceitfulStream : public Quarn_istream {
 public:
  DeceitfulStream(int written, std::optional<int> count) : written_(written), count_(count) {}
  Quarn_istream& read(char* buffer, int) override {
    std::memset(buffer, 0xFF, static_cast<std::size_t>(written_));
    if (!count_) throw std::runtime_error("the line is dead");
    return *this;
  }
  int gcount() const override { return *count_; }

 private:
  int written_;
  std::optional<int> count_;
};

TEST(Envelope, ShowsZerosForWhatAStreamDidNotWrite) {
  constexpr std::size_t size = 200;
  const std::tuple<int, std::optional<int>, const char*> cases[] = {
      {144, std::nullopt, "SequenceId: -1, time: -1, len: 0, source: 0, type: 0"},
      {0,   std::nullopt, "SequenceId: 0, time: 0, len: 0, source: 0, type: 0"  },
      {140, 200,          "SequenceId: -1, time: 0, len: 0, source: 0, type: 0" },
      {140, 201,          "SequenceId: -1, time: 0, len: 0, source: 0, type: 0" },
      {144, 140,          "SequenceId: -1, time: 0, len: 0, source: 0, type: 0" },
  };
  for (const auto& [written, count, expected] : cases) {
    MPUEvent event(header(size + 64));
    // What was freed last is what the envelope gets.
    delete[] static_cast<char*>(std::memset(new char[size], 0xA5, size));
    DeceitfulStream stream(written, count);
    try {
      event.deserialize(stream);
    } catch (const std::runtime_error&) {
    } catch (const CMAPOperationFailedException&) {
    }
    EXPECT_NE(utf8(event.str()).find(expected), std::string::npos) << utf8(event.str());
  }
}

// That each module's class is the required one is seen in the samples' texts.
TEST(Factory, GivesEachSourceTheClassOfItsRow) {
  std::map<int, std::type_index> classes;
  for (const mpuevent::samples::Module& module : mpuevent::samples::modules()) {
    const std::unique_ptr<Quarn_Event> event(module.construct(nullptr, 0));
    classes.emplace(module.source, typeid(*event));
  }
  for (int source = 0; source < 256; ++source) {
    const auto event = decode(RecordBuilder().source(static_cast<std::uint8_t>(source)).str());
    const auto known = classes.find(source);
    EXPECT_EQ(std::type_index(typeid(*event)),
              known == classes.end() ? typeid(Quarn_Event) : known->second)
        << source;
  }
}

TEST(Factory, GivesNothingForAnEnvelopeWithoutAWholeHeader) {
  EXPECT_EQ(MPUEvent(header(300)).create_Quarn_Event(), nullptr);
  EXPECT_EQ(loaded(std::string(151, 'x')).create_Quarn_Event(), nullptr);
  EXPECT_NE(decode(std::string(152, 'x')), nullptr);
}

}  // namespace

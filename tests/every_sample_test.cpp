// What holds for every decoder, shown on the sample records of each.
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <limits>
#include <memory>
#include <optional>
#include <ostream>
#include <string>
#include <string_view>
#include <vector>

#include "records/SampleRecords.h"
#include "support/DecodedEvent.h"
#include "support/RecordBuilder.h"
#include "support/TraceCapture.h"

namespace mpuevent::samples {

// Else a failure is headed by the row's bytes.
void PrintTo(const Module& module, std::ostream* out) { *out << module.name; }

}  // namespace mpuevent::samples

namespace {

using mpuevent::samples::Module;
using mpuevent::samples::Sample;
using mpuevent::support::EventFields;
using mpuevent::support::fieldsOf;
using mpuevent::support::RecordBuilder;

constexpr std::size_t kHeaderSize = 152;

/// From one length to the next where not every length of a long record is worth its time.
std::size_t stride(const std::string& record) { return 1 + record.size() / 256; }

/// A copy of the record that begins `misalignment` bytes into an allocation and ends with it: an
/// address sanitizer sees every read past the record.
class PlacedRecord {
 public:
  PlacedRecord(std::string_view record, std::size_t misalignment)
      : bytes_(new unsigned char[misalignment + record.size()]),
        begin_(bytes_.get() + misalignment),
        length_(static_cast<int>(record.size())) {
    std::copy(record.begin(), record.end(), begin_);
  }

  EventFields decodeAs(const Module& module) const { return decodeAs(module, length_); }
  EventFields decodeAs(const Module& module, int length) const {
    auto* record = reinterpret_cast<Pegasus::EmpEvLogMsg_s*>(begin_);
    return fieldsOf(*std::unique_ptr<Pegasus::Quarn_Event>(module.construct(record, length)));
  }

 private:
  std::unique_ptr<unsigned char[]> bytes_;
  unsigned char* begin_;
  int length_;
};

std::optional<EventFields> decodeByEnvelope(std::string_view record) {
  const auto event = mpuevent::support::decode(record);
  return event ? std::optional(fieldsOf(*event)) : std::nullopt;
}

class EverySample : public testing::TestWithParam<Module> {
 protected:
  /// Calls `check(builder)` with a record builder for each sample of the module.
  template <class Check>
  static void forEach(Check check) {
    int index = 0;
    for (const Sample& sample : GetParam().samples()) {
      SCOPED_TRACE(testing::Message() << "sample " << index++ << ", event id " << sample.id);
      check(mpuevent::samples::record(GetParam(), sample));
    }
  }
};

TEST_P(EverySample, HasAnEmptyEventForANullRecord) {
  const mpuevent::support::TraceCapture trace;
  const std::unique_ptr<Pegasus::Quarn_Event> event(GetParam().construct(nullptr, 200));
  EXPECT_EQ(fieldsOf(*event), EventFields{});
  EXPECT_TRUE(trace.lines().empty());
}

TEST_P(EverySample, DecodesAtEveryLength) {
  forEach([](const RecordBuilder& builder) {
    const std::string whole = builder.str();
    const EventFields full = *decodeByEnvelope(whole);
    for (std::size_t length = 0; length <= whole.size(); ++length) {
      SCOPED_TRACE(testing::Message() << "cut at " << length);
      const std::string_view cut = std::string_view(whole).substr(0, length);
      const std::optional<EventFields> byEnvelope = decodeByEnvelope(cut);
      if (length < kHeaderSize) {
        EXPECT_FALSE(byEnvelope);
        continue;
      }
      const EventFields event = PlacedRecord(cut, length % 8).decodeAs(GetParam());
      EXPECT_EQ(byEnvelope, event);
      EXPECT_EQ(event.numbers, full.numbers);
      EXPECT_TRUE(std::equal(full.texts.begin(), full.texts.begin() + 4, event.texts.begin()));
    }
  });
}

TEST_P(EverySample, HasAWholeHeaderAndNoPayloadBelowItsLength) {
  forEach([](const RecordBuilder& builder) {
    const std::string whole = builder.str();
    const PlacedRecord header(std::string_view(whole).substr(0, kHeaderSize), 0);
    const EventFields expected = header.decodeAs(GetParam());
    for (const int length : {151, 1, 0, -1, std::numeric_limits<int>::min()}) {
      const mpuevent::support::TraceCapture trace;
      EXPECT_EQ(header.decodeAs(GetParam(), length), expected) << length;
      std::string lines;
      for (const std::string& line : trace.lines()) lines += line + '\n';
      EXPECT_NE(lines.find("constructed with len=" + std::to_string(static_cast<unsigned>(length)) +
                           ", but evStructLength=" + std::to_string(whole.size() - kHeaderSize)),
                std::string::npos)
          << lines;
    }
  });
}

TEST_P(EverySample, BelievesNoStructLength) {
  forEach([](RecordBuilder builder) {
    const std::size_t size = builder.str().size() - kHeaderSize;
    for (const std::size_t claimed : {std::size_t{0}, size / 2, size + 1, std::size_t{65535}}) {
      SCOPED_TRACE(testing::Message() << "claims " << claimed);
      const std::string whole = builder.structLength(static_cast<std::uint16_t>(claimed)).str();
      for (std::size_t length = kHeaderSize; length <= whole.size(); length += stride(whole)) {
        SCOPED_TRACE(testing::Message() << "cut at " << length);
        const std::string_view cut = std::string_view(whole).substr(0, length);
        EXPECT_EQ(decodeByEnvelope(cut), PlacedRecord(cut, length % 8).decodeAs(GetParam()));
      }
    }
  });
}

INSTANTIATE_TEST_SUITE_P(Modules, EverySample, testing::ValuesIn(mpuevent::samples::modules()),
                         [](const testing::TestParamInfo<Module>& row) {
                           return std::string(row.param.name);
                         });

}  // namespace

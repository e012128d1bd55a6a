#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <vector>

#include "event/RecordView.h"

namespace {

using mpuevent::Record;
using mpuevent::RecordView;

constexpr std::size_t huge = static_cast<std::size_t>(-1);

/// The bytes 0xA1, 0xA2, ... at an odd address, with nothing behind them.
class Bytes {
 public:
  explicit Bytes(std::size_t size) : bytes_(1 + size) {
    for (std::size_t i = 1; i <= size; ++i) bytes_[i] = static_cast<unsigned char>(0xA0 + i);
  }
  RecordView view() const { return {bytes_.data() + 1, bytes_.size() - 1}; }
  unsigned char& operator[](std::size_t at) { return bytes_[1 + at]; }

 private:
  std::vector<unsigned char> bytes_;
};

TEST(RecordView, ReadsBigEndianNumbersThatAreHeldWholeAndNoOthers) {
  const Bytes bytes(11);
  const RecordView view = bytes.view();
  const auto expected = [](std::size_t at, std::size_t width) {
    std::uint64_t value = 0;
    for (std::size_t i = at; i < at + width; ++i) value = value << 8 | (0xA1 + i);
    return at + width <= 11 ? value : 0;
  };
  for (std::size_t at = 0; at <= 13; ++at) {
    SCOPED_TRACE(at);
    for (std::size_t width = 0; width <= 12; ++width) {
      EXPECT_EQ(view.holds(at, width), at + width <= 11) << width;
    }
    EXPECT_EQ(view.u8(at), expected(at, 1));
    EXPECT_EQ(view.u16(at), expected(at, 2));
    EXPECT_EQ(view.u24(at), expected(at, 4) & 0xFFFFFF);
    EXPECT_EQ(view.u32(at), expected(at, 4));
    EXPECT_EQ(view.s32(at), static_cast<std::int32_t>(expected(at, 4)));
    EXPECT_EQ(view.u48(at), expected(at, 6));
    EXPECT_EQ(view.u64(at), expected(at, 8));
  }
  for (const std::size_t at : {huge, huge - 1, huge - 7, huge / 2 + 1}) {
    EXPECT_FALSE(view.holds(at, 1)) << at;
    EXPECT_FALSE(view.holds(1, at)) << at;
    EXPECT_EQ(view.u64(at), 0U) << at;
    EXPECT_TRUE(view.bytes(at, huge).empty()) << at;
  }
}

TEST(RecordView, ReadsNumbersOfEachWidthWhereverTheyAreHeld) {
  for (std::size_t size = 1; size <= 17; ++size) {
    const Bytes bytes(size);
    for (std::size_t width = 1; width <= std::min<std::size_t>(size, 8); ++width) {
      for (std::size_t at = 0; at + width <= size; ++at) {
        std::uint64_t expected = 0;
        for (std::size_t i = at; i < at + width; ++i) expected = expected << 8 | (0xA1 + i);
        EXPECT_EQ(bytes.view().numberBefore(at + width, width), expected)
            << size << " " << at << " " << width;
        EXPECT_EQ(RecordView::unbounded(bytes.view().data()).numberBefore(at + width, width),
                  expected);
      }
    }
  }
}

TEST(RecordView, CutsTextsAndPartsAtTheEnd) {
  Bytes bytes(8);
  bytes[5] = 0;
  const RecordView view = bytes.view();
  EXPECT_EQ(view.text(0), "\xA1\xA2\xA3\xA4\xA5");
  EXPECT_EQ(view.text(0, 5), "\xA1\xA2\xA3\xA4\xA5");
  EXPECT_EQ(view.text(0, 4), "\xA1\xA2\xA3\xA4");
  EXPECT_EQ(view.text(5), "");
  EXPECT_EQ(view.text(6), "\xA7\xA8");
  EXPECT_EQ(view.text(8), "");
  EXPECT_EQ(view.text(0, 0), "");
  EXPECT_EQ(view.bytes(6, 2), "\xA7\xA8");
  EXPECT_EQ(view.bytes(6, huge), "\xA7\xA8");
  EXPECT_EQ(view.from(7, 9).size(), 1U);
  EXPECT_EQ(view.from(7).u8(0), 0xA8);
  EXPECT_EQ(view.from(8).size(), 0U);
  EXPECT_EQ(RecordView(nullptr, 9).size(), 0U);
  EXPECT_EQ(RecordView().text(0), "");
}

TEST(Record, HasItsFieldsWhereTheHeaderHasThem) {
  Bytes bytes(160);
  const auto* whole = reinterpret_cast<const Pegasus::EmpEvLogMsg_s*>(bytes.view().data());
  bytes[144] = 0;  // a payload of 6 bytes
  bytes[145] = 6;
  const Record record(whole, 160);
  EXPECT_EQ(record.payload().size(), 8U);
  EXPECT_EQ(Record(whole, 151).payload().size(), 0U);
  EXPECT_EQ(Record(whole, -1).payload().size(), 0U);
  const Record trusting = Record::trusting(whole);
  EXPECT_EQ(trusting.size(), 158U);
  EXPECT_EQ(Record::trusting(nullptr).size(), 0U);
  EXPECT_EQ(trusting.controllerSlot(), 0x21222324U);
  EXPECT_EQ(trusting.source(), 0x33);
  EXPECT_EQ(trusting.idVersion(), 0x36);
  EXPECT_EQ(trusting.id(), 0x3738);
}

}  // namespace

// What the events of the I/O manager carry.
#include <MPUEvent/IOMGR8P_Event.h>
#include <gtest/gtest.h>

#include <sstream>
#include <string>
#include <vector>

#include "decoders/EventPayload.h"

namespace {

using namespace mpuevent::support;
using namespace Pegasus;

/// The entries of a list of "key=value" with blanks between them.
std::string entries(const std::string& list) {
  std::istringstream words(list);
  std::string text;
  for (std::string word; words >> word;) {
    const std::string key = word.substr(0, word.find('='));
    text += "<" + key + ">" + word.substr(key.size() + 1) + "</" + key + ">";
  }
  return text;
}

/// What the function of a record appends for these bytes, of which there is none too many.
template <class Record>
std::string shown(char* (IOMGR8P_Event::*show)(const Record*, char*), const Payload& record) {
  IOMGR8P_Event event(nullptr, 0);
  char place = 0;
  EXPECT_EQ((event.*show)(nullptr, &place), &place);
  EXPECT_EQ(bodyOf(event), "");
  const std::vector<char> bytes(record.str().begin(), record.str().end());
  EXPECT_EQ((event.*show)(reinterpret_cast<const Record*>(bytes.data()), &place), &place);
  return bodyOf(event);
}

TEST(IomgrRecords, EndATableWithItsFirstEntryWithoutAddress) {
  EXPECT_EQ(shown(&IOMGR8P_Event::get_IOMGR8P_sgt_event_body, ramp(64).at(16).u32(0)),
            entries("sgt_address=0x81828384 sgt_byte_count=0x85868788 sgt_address=0x898A8B8C "
                    "sgt_byte_count=0x8D8E8F90"));
}

std::string decoded(std::uint32_t eventClass, std::uint32_t number, std::uint32_t dataLength,
                    const Payload& data) {
  return bodyOf(*decodePayload(5, eventPayload(eventClass, number, dataLength, data)));
}

TEST(IomgrRecords, EndWithExtentsThatBeginInTheData) {
  const auto extents = [](std::uint32_t number, std::uint32_t dataLength, std::size_t held) {
    return count(decoded(6, number, dataLength, ramp(held)), "<ext_men>");
  };
  EXPECT_EQ(extents(510, 264, 600), 0U);
  EXPECT_EQ(extents(510, 265, 600), 1U);
  EXPECT_EQ(extents(510, 344, 600), 1U);
  EXPECT_EQ(extents(510, 345, 600), 2U);
  // A drive request packet before the volume counts.
  EXPECT_EQ(extents(5, 304, 600), 0U);
  EXPECT_EQ(extents(5, 305, 600), 1U);
  // The record's end comes before the data's.
  for (const std::uint32_t dataLength : {600U, 0x7FFFFFFFU, 0xFFFFFFFFU}) {
    SCOPED_TRACE(dataLength);
    EXPECT_EQ(extents(510, dataLength, 264 + 2 * 80), 2U);
    EXPECT_EQ(extents(510, dataLength, 264 + 2 * 80 + 2), 3U);
  }
  const std::string cut = decoded(6, 510, 0xFFFFFFFF, ramp(264 + 6));
  EXPECT_TRUE(cut.ends_with(entries("ext_men=143 ext_status=0x00009293"))) << cut;
}

TEST(IomgrRecords, EndWithScatterGatherTablesThatBeginInTheData) {
  Payload tables;
  tables.u32(0).u32(0x11).padTo(64);
  for (std::uint32_t i = 1; i <= 9; ++i) tables.u32(0x4000 + i).u32(i);
  const auto addresses = [](std::uint32_t eventClass, std::uint32_t number,
                            std::uint32_t dataLength, const Payload& data) {
    return count(decoded(eventClass, number, dataLength, data), "<sgt_address>");
  };
  EXPECT_EQ(addresses(27, 1, 0, ramp(64)), 0U);
  EXPECT_EQ(addresses(27, 1, 1, ramp(64)), 8U);
  EXPECT_EQ(addresses(27, 1, 64, tables), 0U);
  EXPECT_EQ(addresses(27, 1, 65, tables), 8U);
  EXPECT_EQ(addresses(27, 1, 128, tables), 8U);
  EXPECT_EQ(addresses(27, 1, 0xFFFFFFFF, tables), 9U);
  // Behind an internal request the first table begins at 28.
  EXPECT_EQ(addresses(14, 8, 28, ramp(92)), 0U);
  EXPECT_EQ(addresses(14, 8, 29, ramp(92)), 8U);
  const std::string cut = decoded(27, 1, 8, Payload().u32(0x81828384).u16(9));
  EXPECT_TRUE(cut.ends_with(entries("sgt_address=0x81828384"))) << cut;
}

TEST(IomgrRecords, HaveTwentyRegionsAtMost) {
  const auto regions = [](const Payload& record) {
    return count(shown(&IOMGR8P_Event::get_IOMGR8P_dib_event_body, record), "<Region_Type>");
  };
  EXPECT_EQ(regions(ramp(492)), 20U);
  EXPECT_EQ(regions(ramp(492).at(456).u16(0)), 19U);
  EXPECT_EQ(regions(ramp(492).at(76).u16(0)), 0U);
}

TEST(IomgrRecords, AreWalkedFromAnyPlaceInTheData) {
  IOMGR8P_Event event(nullptr, 0);
  char place = 0;
  const std::string bytes = eventPayload(99, 1, 40 + 264 + 1, ramp(40 + 264 + 80)).str();
  const auto* payload = reinterpret_cast<const IOMGR_EVL*>(bytes.data());
  const char* at = bytes.data() + 20 + 40;
  EXPECT_EQ(event.dump_volume(payload, &place, reinterpret_cast<const IOMGR_EVL_VT*>(at)), &place);
  EXPECT_TRUE(bodyOf(event).starts_with("<vt_common_flags>0xA9AAABAC<")) << bodyOf(event);
  EXPECT_EQ(count(bodyOf(event), "<ext_men>"), 1U);
  EXPECT_EQ(event.dump_sgt_list(payload, &place, reinterpret_cast<const IOMGR_EVL_SGT*>(at)),
            &place);
  EXPECT_EQ(count(bodyOf(event), "<sgt_address>"), 40U);
  EXPECT_EQ(event.dump_volume(nullptr, nullptr, nullptr), nullptr);
  EXPECT_EQ(event.dump_sgt_list(payload, nullptr, nullptr), nullptr);
  EXPECT_EQ(count(bodyOf(event), "<vt_common_flags>"), 1U);
}

}  // namespace

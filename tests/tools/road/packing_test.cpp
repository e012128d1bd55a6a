#include <gtest/gtest.h>

#include <map>
#include <random>
#include <set>
#include <string>
#include <vector>

#include "road/Frame.h"
#include "road/Packer.h"
#include "store/RecordKey.h"
#include "support/RecordBuilder.h"

namespace mpuevent::tool {

namespace {

using Random = std::mt19937;

constexpr std::size_t kHashSize = std::tuple_size_v<RecordHash>;

std::span<const unsigned char> asBytes(const std::string& text) {
  return {reinterpret_cast<const unsigned char*>(text.data()), text.size()};
}

std::string asText(std::span<const unsigned char> bytes) {
  return {reinterpret_cast<const char*>(bytes.data()), bytes.size()};
}

std::size_t below(Random& random, std::size_t bound) { return random() % bound; }

/// Three logs in turns, ids rising with gaps, repeats and steps back; sizes up to the longest.
std::vector<std::string> makeRecords(Random& random, std::size_t count) {
  std::vector<std::string> records;
  std::map<std::size_t, std::uint32_t> ids;
  for (std::size_t at = 0; at < count; ++at) {
    const std::size_t log = below(random, 3);
    std::uint32_t& id = ids[log];
    id += below(random, 20) == 0 ? static_cast<std::uint32_t>(below(random, 200)) - 100 : 1;
    const std::size_t size = below(random, 50) == 0 ? 0xFFFF : below(random, 400);
    records.push_back(support::RecordBuilder()
                          .controllerSerial(log == 0 ? "A\r\nB %" : "CTL-0426-1189")
                          .logInstance(static_cast<std::uint32_t>(log))
                          .sequenceId(id)
                          .payload(std::string(size, static_cast<char>(random())))
                          .str());
  }
  return records;
}

std::map<std::string, Parcel> pack(const std::vector<std::string>& records, std::size_t first,
                                   std::size_t count) {
  std::map<std::string, Parcel> parcels;
  Packer packer([&](Parcel parcel, std::uint64_t) {
    const std::string id = parcel.id;
    EXPECT_TRUE(parcels.emplace(id, std::move(parcel)).second) << id;
  });
  for (std::size_t at = first; at < first + count; ++at) packer.add(asBytes(records[at]), at);
  packer.flush();
  EXPECT_FALSE(packer.oldest());
  return parcels;
}

TEST(Packing, EveryRecordTravelsOnceAndUnchanged) {
  Random random(20061113);
  const std::vector<std::string> records = makeRecords(random, 3000);
  std::multiset<std::string> arrived;
  for (const auto& [id, parcel] : pack(records, 0, records.size())) {
    const FrameContent content = readFrame(asBytes(parcel.bytes));
    ASSERT_EQ(content.problem, "");
    EXPECT_EQ(content.records.size(), parcel.records);
    EXPECT_LE(parcel.records, FrameWriter::mostRecords);
    EXPECT_LE(parcel.bytes.size(), FrameWriter::mostBytes + kHashSize);
    EXPECT_LT(parcel.shard, roadShards);
    EXPECT_EQ(id.find_first_of("\r\n "), std::string::npos);
    for (const auto record : content.records) arrived.insert(asText(record));
  }
  EXPECT_EQ(arrived, std::multiset<std::string>(records.begin(), records.end()));
}

TEST(Packing, PullsThatOverlapMakeTheSameMessages) {
  std::vector<std::string> records;
  for (std::uint32_t id = 0; id < 4000; ++id) {
    records.push_back(support::RecordBuilder().logInstance(id % 2).sequenceId(id / 2).str());
  }
  const auto one = pack(records, 0, 3000);
  std::size_t same = 0;
  for (const auto& [id, parcel] : pack(records, 1001, 2999)) {
    const auto known = one.find(id);
    if (known == one.end()) continue;
    EXPECT_EQ(known->second.bytes, parcel.bytes);
    ++same;
  }
  // Of each log 15 whole blocks of 64 lie in both; what is cut at an end differs.
  EXPECT_EQ(same, 30U);
}

std::string damage(std::string bytes, Random& random) {
  const std::size_t at = below(random, below(random, 2) == 0 ? 200 : bytes.size());
  switch (below(random, 4)) {
    case 0:
      bytes[at] = static_cast<char>(bytes[at] ^ (1 << below(random, 8)));
      break;
    case 1:
      bytes.resize(at);
      break;
    case 2:
      bytes.insert(at, 1 + below(random, 9), static_cast<char>(random()));
      break;
    default:
      bytes.erase(at, 1 + below(random, 9));
  }
  return bytes;
}

// Damage is seen by the hash, what somebody put one behind by its lengths; all that is given out
// lies in the message.
TEST(Frame, HoldsAgainstDamageAndForgery) {
  Random random(421);
  FrameWriter writer;
  for (const std::string& record : makeRecords(random, 5)) writer.add(asBytes(record));
  const std::string frame = writer.finish();
  int forged = 0;
  for (int round = 0; round < 4000; ++round) {
    const std::string damaged = damage(frame, random);
    EXPECT_TRUE(!readFrame(asBytes(damaged)).problem.empty() || damaged == frame);
    const std::string content = damage(frame.substr(0, frame.size() - kHashSize), random);
    const std::string message = content + asText(hashOf(asBytes(content)));
    const FrameContent read = readFrame(asBytes(message));
    if (!read.problem.empty()) continue;
    ++forged;
    std::size_t size = 8 + kHashSize;
    for (const auto record : read.records) size += 4 + record.size();
    EXPECT_EQ(size, message.size());
  }
  EXPECT_GT(forged, 0);
}

}  // namespace

}  // namespace mpuevent::tool

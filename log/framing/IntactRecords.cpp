#include "log/framing/IntactRecords.h"

#include <array>
#include <cstddef>

#include "log/recognition/HeaderVerdict.h"

namespace mpuevent::log {

std::optional<std::uint64_t> endOfIntactRecords(const ReadBytesAt& readAt, std::uint64_t offset) {
  const LogProfile nothingKnown{};
  std::array<unsigned char, Record::headerSize> bytes;
  const auto readAll = [&](std::uint64_t at, std::size_t count) {
    return readAt(at, bytes.data(), count) == static_cast<long>(count);
  };
  std::uint64_t at = offset;
  std::uint64_t records = 0;
  std::uint64_t withCodes = 0;
  std::uint64_t withText = 0;
  bool beginsWithOne = false;
  for (; readAll(at, bytes.size()); ++records) {
    if (isBlank(bytes.data(), bytes.size())) return std::nullopt;
    const Record record(reinterpret_cast<const Pegasus::EmpEvLogMsg_s*>(bytes.data()), 0);
    const bool hasCodes = knownCodes(record) >= 2;
    const bool hasText = judgeHeader(record, nothingKnown) >= Verdict::byText;
    if (hasCodes) ++withCodes;
    if (hasText) ++withText;
    if (records == 0) beginsWithOne = hasCodes || hasText;
    at += Record::headerSize + record.structLength();
  }
  // Bytes of another kind hardly ever lead to the end, and their codes are all over the place.
  const bool likely = withCodes * 2 >= records && (beginsWithOne || withText * 2 < records);
  const bool endsHere = records != 0 && readAll(at - 1, 1) && readAt(at, bytes.data(), 1) == 0;
  return likely && endsHere ? std::optional<std::uint64_t>(at) : std::nullopt;
}

LikelyRecords likelyRecords(std::span<const unsigned char> bytes) {
  const LogProfile nothingKnown{};
  LikelyRecords records;
  std::size_t likely = 0;
  std::size_t withText = 0;
  while (bytes.size() - records.length >= Record::headerSize) {
    const unsigned char* header = &bytes[records.length];
    const Record record(reinterpret_cast<const Pegasus::EmpEvLogMsg_s*>(header), 0);
    const std::size_t length = Record::headerSize + record.structLength();
    if (isBlank(header, Record::headerSize) || length > bytes.size() - records.length) break;
    ++records.count;
    records.length += length;
    const Verdict verdict = judgeHeader(record, nothingKnown);
    if (verdict >= Verdict::byCodes && hasSmallNumbers(record)) ++likely;
    if (verdict >= Verdict::byText) ++withText;
  }
  const bool nearlyAll = likely * 8 >= records.count * 7;
  return nearlyAll && withText * 2 < records.count ? records : LikelyRecords{};
}

}  // namespace mpuevent::log

#include "road/Frame.h"

#include <algorithm>
#include <cstdint>
#include <string_view>
#include <utility>

#include "event/RecordView.h"
#include "store/RecordKey.h"

namespace mpuevent::tool {

namespace {

constexpr std::string_view kMark = "MPUR";
constexpr std::uint16_t kVersion = 1;
constexpr std::size_t kVersionAt = 4;
constexpr std::size_t kCountAt = 6;
constexpr std::size_t kHeadSize = 8;
constexpr std::size_t kLengthSize = 4;
constexpr std::size_t kHashSize = std::tuple_size_v<RecordHash>;

void appendBigEndian(std::string& to, std::size_t value, unsigned width) {
  for (unsigned left = width; left-- > 0;) to += static_cast<char>(value >> (8 * left) & 0xFF);
}

std::span<const unsigned char> asBytes(std::string_view text) {
  return {reinterpret_cast<const unsigned char*>(text.data()), text.size()};
}

bool endsInItsHash(std::span<const unsigned char> message) {
  const RecordHash hash = hashOf(message.first(message.size() - kHashSize));
  return std::equal(hash.begin(), hash.end(), message.last(kHashSize).begin());
}

}  // namespace

FrameWriter::FrameWriter() { begin(); }

void FrameWriter::begin() {
  records_ = 0;
  bytes_ = kMark;
  appendBigEndian(bytes_, kVersion, 2);
  appendBigEndian(bytes_, 0, 2);
}

bool FrameWriter::hasRoomFor(std::size_t recordSize) const {
  return empty() || (records_ < mostRecords && bytes_.size() + kLengthSize <= mostBytes &&
                     recordSize <= mostBytes - bytes_.size() - kLengthSize);
}

void FrameWriter::add(std::span<const unsigned char> record) {
  appendBigEndian(bytes_, record.size(), kLengthSize);
  bytes_.append(reinterpret_cast<const char*>(record.data()), record.size());
  ++records_;
}

std::string FrameWriter::finish() {
  bytes_[kCountAt] = static_cast<char>(records_ >> 8);
  bytes_[kCountAt + 1] = static_cast<char>(records_ & 0xFF);
  for (const unsigned char byte : hashOf(asBytes(bytes_))) bytes_ += static_cast<char>(byte);
  std::string message = std::move(bytes_);
  begin();
  return message;
}

FrameContent readFrame(std::span<const unsigned char> message) {
  const RecordView view(message.data(), message.size());
  if (view.bytes(0, kMark.size()) != kMark || message.size() < kHeadSize + kHashSize) {
    return {{}, "the message is no frame of records"};
  }
  if (view.u16(kVersionAt) != kVersion) {
    return {{},
            "the message is a frame of version " + std::to_string(view.u16(kVersionAt)) +
                ", this program knows version " + std::to_string(kVersion)};
  }
  if (!endsInItsHash(message)) return {{}, "the message is damaged"};
  FrameContent content;
  std::size_t at = kHeadSize;
  const std::size_t end = message.size() - kHashSize;
  for (unsigned left = view.u16(kCountAt); left > 0; --left) {
    const std::size_t length = view.u32(at);
    if (end - at < kLengthSize || length > end - at - kLengthSize) break;
    content.records.push_back(message.subspan(at + kLengthSize, length));
    at += kLengthSize + length;
  }
  if (at != end || content.records.size() != view.u16(kCountAt)) {
    return {{}, "the lengths in the message contradict each other"};
  }
  return content;
}

}  // namespace mpuevent::tool
